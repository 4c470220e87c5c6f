# Turns the bytes of a file into a source that hands them out: cmake -DINPUT=... -DOUTPUT=... -P embed.cmake
file(READ ${INPUT} hex HEX)
string(REGEX REPLACE "([0-9a-f][0-9a-f])" "0x\\1," bytes "${hex}")
string(REGEX REPLACE "((0x..,){24})" "\\1\n" bytes "${bytes}")
file(WRITE ${OUTPUT} "// Made from pwx.qdsl by the build.
#include \"standard/standard.h\"

namespace {

const unsigned char kBytes[] = {
${bytes}};

}  // namespace

std::string_view qrs::standard::builtinStandard() {
    return {reinterpret_cast<const char*>(kBytes), sizeof kBytes};
}
")
