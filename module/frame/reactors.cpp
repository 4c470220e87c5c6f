// The reactor that listens to the editor's commands.
