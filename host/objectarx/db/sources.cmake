# The drawing database.
list(APPEND objectarx_sources
    db/blockrecord.cpp
    db/blocks.cpp
    db/color.cpp
    db/database.cpp
    db/dictionary.cpp
    db/entity.cpp
    db/header.cpp
    db/kinds.cpp
    db/layer.cpp
    db/linetype.cpp
    db/newdrawing.cpp
    db/object.cpp
    db/objecttags.cpp
    db/records.cpp
    db/resbuf.cpp
    db/services.cpp
    db/state.cpp
    db/symboltable.cpp
    db/tableformat.cpp
    db/tables.cpp
    db/xdata.cpp)
