set(QRS_LAYERS_SOURCES
    bimlayers.cpp colorrecord.cpp contents.cpp dialogcommands.cpp externalblocks.cpp freezing.cpp layerexport.cpp
    layerstate.cpp layertoolbar.cpp locks.cpp merging.cpp onoff.cpp painting.cpp pwxlayers.cpp showall.cpp
    viewports.cpp)
