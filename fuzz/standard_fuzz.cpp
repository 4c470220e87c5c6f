// Any bytes as a standard file: they are refused with a message of one line, or what is read is written, and reading
// that gives the same again. What is parsed piece by piece is parsed alike as a whole.
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include "fuzz/check.h"
#include "standard/standard.h"

namespace {

using namespace qrs;
using fuzz::check;

// What is written of the bytes, or the reason why they are refused.
std::string told(std::string_view bytes, bool& isRead) {
    standard::Standard read;
    platform::Error error;
    isRead = standard::parseStandard(bytes, "input", read, error);
    std::string text;
    if (isRead && standard::formatStandard(read, text, error)) return text;
    check(!error.message.empty() && error.message.find('\n') == std::string::npos, "no message of one line");
    return error.message;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view bytes(reinterpret_cast<const char*>(data), size);
    bool isRead = false;
    const std::string text = told(bytes, isRead);
    if (isRead && text.substr(0, 1) == "<") {
        bool isReadAgain = false;
        check(told(text, isReadAgain) == text && isReadAgain, "what was written is not read as it was");
    }
    // A document type makes the file be parsed as a whole; it may not stand after some things.
    if (bytes.substr(0, 1) != "<" || bytes.find("<?") != bytes.npos || bytes.find("<!") != bytes.npos) return 0;
    bool isReadWhole = false;
    const std::string whole = told("<!DOCTYPE Morvel>" + std::string(bytes), isReadWhole);
    check(isRead == isReadWhole, "pieces are taken and the whole is not, or the other way round");
    check(!isRead || whole == text, "in pieces another standard than as a whole");
    return 0;
}
