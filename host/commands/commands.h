// The commands the host brings itself: those a script needs to look at a drawing, change its layers and save it.
#pragma once

namespace qrs::host::commands {

// Drawings (documents.cpp).
void openDrawing();
void newDrawing();
void saveDrawing();
void saveDrawingAs();
void closeDrawing();
void quit();
// Taking commands back (undo.cpp).
void undo();
// Plug-ins (plugins.cpp).
void managePlugins();
// Entities (entities.cpp).
void listEntities();
void selectEntities();
// Their layers, colours and linetypes (properties.cpp).
void changeProperties();
// The view and the viewport that is picked from; nothing is shown (views.cpp).
void regenerate();
void zoom();
void enterModelSpace();
void enterPaperSpace();
// The tabs of the drawing (layouts.cpp).
void manageLayouts();
// The pictures of plug-ins' entities in the drawing file (pictures.cpp).
void givePictures();
// The current layout as a picture (plotting.cpp).
void plotFile();
// System variables (variables.cpp).
void setVariable();
// Layers (layers.cpp).
void changeLayers();
// Layers in the viewports of layouts (viewportlayers.cpp).
void changeViewportLayers();
// Linetypes and text styles; they are listed only (tables.cpp).
void listLinetypes();
void listTextStyles();

}  // namespace qrs::host::commands
