// The layer commands.
