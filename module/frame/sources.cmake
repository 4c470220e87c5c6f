set(QRS_FRAME_SOURCES
    cmdconfig.cpp cmdtable.cpp docglobals.cpp entry.cpp guard.cpp specdata.cpp startup.cpp xmlfile.cpp)
