// The suite's shared settings and pipe materials.
