// Dialogs as windows.
