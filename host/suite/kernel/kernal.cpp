// The kernel library.
