# Package.
