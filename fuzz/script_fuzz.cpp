// Any bytes as a script whose lines answer the prompts for objects: selections, expressions, points, and commands that
// run in between.
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include "console/script.h"
#include "fuzz/check.h"
#include "fuzz/session.h"

namespace {

using qrs::fuzz::Session;
using qrs::host::Reply;

const wchar_t* const kAsking[] = {L"SELECT", L"LIST", L"CHPROP", L"CloseSelLayer", L"SELECT", L"-LAYER"};

}  // namespace

// The first byte is the example and the command that the script answers first.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (size == 0) return 0;
    qrs::console::Script script;
    qrs::platform::Error error;
    const std::string_view bytes(reinterpret_cast<const char*>(data) + 1, size - 1);
    if (!script.addBytes(bytes, "input", error)) {
        qrs::fuzz::check(error.message.substr(0, 5) == "input", "no message that names the script");
        return 0;
    }
    std::size_t asking = data[0] / 4;
    const qrs::console::ScriptLine* line = script.next();
    Session::instance().run(data[0], [&](bool isCommandPrompt) -> Session::Typed {
        if (line == nullptr) return {};
        if (isCommandPrompt) return {Reply::Line, kAsking[asking++ % std::size(kAsking)]};
        const std::wstring text = line->text;
        line = script.next();
        return {Reply::Line, text};
    });
    return 0;
}
