# Turns the pages of the commands into a source that holds them:
#     cmake -DFOLDER=docs/commands -DOUTPUT=pages.cpp -P pages.cmake
file(GLOB pages ${FOLDER}/*.md)
list(SORT pages)
set(rows "")
foreach(page ${pages})
    get_filename_component(name ${page} NAME)
    file(READ ${page} hex HEX)
    string(REGEX REPLACE "([0-9a-f][0-9a-f])" "\\\\x\\1" bytes "${hex}")
    # In pieces, so that no line is endless.
    string(REGEX REPLACE "((\\\\x..){30})" "\\1\"\n     \"" bytes "${bytes}")
    string(APPEND rows "    {\"${name}\",\n     \"${bytes}\"},\n")
endforeach()
file(WRITE ${OUTPUT} "// Made from docs/commands by the build.
#include \"console/help.h\"

const std::vector<qrs::console::CommandPage> qrs::console::kCommandPages = {
${rows}};
")
