set(QRS_FRAME_SOURCES
    chinese.cpp cmdconfig.cpp cmdtable.cpp docglobals.cpp entry.cpp specdata.cpp startup.cpp xmlfile.cpp)
