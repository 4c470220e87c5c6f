// Per-document entries of the module and the reactor that keeps them.
