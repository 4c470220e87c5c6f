# Sources of the host's own commands.
list(APPEND objectarx_sources
    commands/asking.cpp
    commands/documents.cpp
    commands/entities.cpp
    commands/layerlist.cpp
    commands/layers.cpp
    commands/plugins.cpp
    commands/registration.cpp
    commands/tablelist.cpp
    commands/tables.cpp
    commands/undo.cpp
    commands/variables.cpp
    commands/views.cpp)
