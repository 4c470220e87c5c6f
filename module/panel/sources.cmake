set(QRS_PANEL_SOURCES layercontrolbar.cpp)
