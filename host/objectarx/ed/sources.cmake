# Sources of the editor: command line, commands, documents, selection, plug-ins.
list(APPEND objectarx_sources
    ed/application.cpp
    ed/calls.cpp
    ed/colordialog.cpp
    ed/commandstack.cpp
    ed/dialogs.cpp
    ed/docmanager.cpp
    ed/documents.cpp
    ed/editor.cpp
    ed/entityfilter.cpp
    ed/entitynames.cpp
    ed/frame.cpp
    ed/input.cpp
    ed/keywords.cpp
    ed/output.cpp
    ed/plugins.cpp
    ed/points.cpp
    ed/prompts.cpp
    ed/runtime.cpp
    ed/selection.cpp
    ed/selectionsets.cpp
    ed/session.cpp
    ed/variables.cpp
    ed/viewport.cpp
    ed/wildcard.cpp
    rx/dictionary.cpp
    rx/services.cpp)
