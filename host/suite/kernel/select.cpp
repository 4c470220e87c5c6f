// The suite's selection services.
