set(QRS_TOOLS_SOURCES
    changeable.cpp interfacecount.cpp layertag.cpp linetypeoptimize.cpp pipeupdate.cpp textpattern.cpp
    canal.cpp marks.cpp pipeserials.cpp serial.cpp titleblocks.cpp wildcard.cpp)
