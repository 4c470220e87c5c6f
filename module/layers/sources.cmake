set(QRS_LAYERS_SOURCES
    bimlayers.cpp contents.cpp dialogcommands.cpp externalblocks.cpp freezing.cpp layerexport.cpp layerstate.cpp
    layertoolbar.cpp locks.cpp onoff.cpp picking.cpp pwxlayers.cpp showall.cpp)
