// PwxTool: layers of a drawing.
