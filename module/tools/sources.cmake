set(QRS_TOOLS_SOURCES
    changeable.cpp interfacecount.cpp layertag.cpp linetypeoptimize.cpp pipeupdate.cpp textpattern.cpp)
