// Names, types and object colours of the pipe library.
