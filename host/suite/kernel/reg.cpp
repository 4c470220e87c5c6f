// The suite's registry locations and wrapper.
