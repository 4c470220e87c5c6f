// The library entry and the message entry of the module.
