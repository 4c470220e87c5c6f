# The drawing database.
list(APPEND objectarx_sources
    db/append.cpp
    db/blockrecord.cpp
    db/blocks.cpp
    db/color.cpp
    db/database.cpp
    db/dictionary.cpp
    db/entity.cpp
    db/fields.cpp
    db/filer.cpp
    db/header.cpp
    db/kinds.cpp
    db/layer.cpp
    db/linetype.cpp
    db/newdrawing.cpp
    db/object.cpp
    db/objecttags.cpp
    db/records.cpp
    db/resbuf.cpp
    db/sections.cpp
    db/services.cpp
    db/state.cpp
    db/symboltable.cpp
    db/tableformat.cpp
    db/tables.cpp
    db/textstyle.cpp
    db/xdata.cpp)
