set(QRS_LAYERS_SOURCES
    layercommands.cpp layerstate.cpp layertoolbar.cpp pwxlayers.cpp showall.cpp)
