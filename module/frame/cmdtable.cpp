// The table of the thirty commands.
