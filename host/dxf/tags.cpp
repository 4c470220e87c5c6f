// Tags.
