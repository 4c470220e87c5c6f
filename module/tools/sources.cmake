set(QRS_TOOLS_SOURCES
    blockreset.cpp changeable.cpp interfacecount.cpp layertag.cpp linetypeoptimize.cpp pipeupdate.cpp textpattern.cpp
    canal.cpp marks.cpp pipeserials.cpp runnumbers.cpp serial.cpp titleblocks.cpp wildcard.cpp)
