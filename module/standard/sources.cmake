# Sources of the standard; included where the target qrs_pipeSystem_objects is made.
set(QRS_STANDARD_SOURCES
    chinese.cpp
    fontlist.cpp
    fonttool.cpp
    holder.cpp
    itemcut.cpp
    itemtree.cpp
    layercreation.cpp
    layerdef.cpp
    layerlookup.cpp
    layernode.cpp
    linetypepattern.cpp
    linetypes.cpp
    otherlayernode.cpp
    pipegroupnode.cpp
    pipenode.cpp
    pipequeries.cpp
    pipesizes.cpp
    queries_layers.cpp
    queries_sizes.cpp
    queries_systems.cpp
    selection.cpp
    standardedit.cpp
    standardreader.cpp
    standardwriter.cpp
    tabletext.cpp
    systemindex.cpp
    startup.cpp
    text.cpp
    textstyles.cpp
    tool.cpp
    values.cpp
    xmltext.cpp)

# The standard that serves when there is no file at all is the shipped one, carried inside.
set(builtin_standard ${CMAKE_CURRENT_BINARY_DIR}/builtinstandard.cpp)
add_custom_command(OUTPUT ${builtin_standard}
    COMMAND ${CMAKE_COMMAND} -DINPUT=${CMAKE_SOURCE_DIR}/data/pwx.qdsl -DOUTPUT=${builtin_standard}
            -P ${CMAKE_CURRENT_LIST_DIR}/embed.cmake
    DEPENDS ${CMAKE_SOURCE_DIR}/data/pwx.qdsl ${CMAKE_CURRENT_LIST_DIR}/embed.cmake
    VERBATIM)
target_sources(qrs_pipeSystem_objects PRIVATE ${builtin_standard})
