set(QRS_FRAME_SOURCES
    cmdconfig.cpp cmdtable.cpp docglobals.cpp entry.cpp specdata.cpp startup.cpp xmlfile.cpp)
