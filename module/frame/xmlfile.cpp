// Opens XML files of the system folder.
