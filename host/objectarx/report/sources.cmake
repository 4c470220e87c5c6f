# Reports about drawing files.
list(APPEND objectarx_sources
    report/compare.cpp
    report/info.cpp
    report/sequence.cpp
    report/tagdiff.cpp)
