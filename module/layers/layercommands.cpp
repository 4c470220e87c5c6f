// Handlers of the layer commands.
