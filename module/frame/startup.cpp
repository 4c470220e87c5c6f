// Start-up and tear-down, step by step.
