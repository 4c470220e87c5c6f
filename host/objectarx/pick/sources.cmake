# Sources of picking: the shapes of entities and the tests against points and windows.
list(APPEND objectarx_sources
    pick/curves.cpp
    pick/entity.cpp
    pick/frames.cpp
    pick/hatches.cpp
    pick/inserts.cpp
    pick/kinds.cpp
    pick/layerstates.cpp
    pick/pen.cpp
    pick/polylines.cpp
    pick/probe.cpp
    pick/references.cpp
    pick/region.cpp
    pick/scene.cpp
    pick/splines.cpp
    pick/texts.cpp)
