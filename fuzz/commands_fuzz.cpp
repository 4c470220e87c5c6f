// Commands and answers chosen from tables by the bytes of the input: after all is taken back the drawing is what it
// was.
#include <cstddef>
#include <cstdint>
#include <iterator>
#include <string>

#include "fuzz/session.h"

namespace {

using qrs::fuzz::Session;
using qrs::host::Reply;

const wchar_t* const kAnswers[] = {
    // Selections and points.
    L"", L"ALL", L"L", L"P", L"W", L"C", L"0,0", L"100000,80000", L"5000,5000", L"-1e6,-1e6", L"@1000,0",
    L"(ssget \"X\")", L"(ssget \"X\" '((0 . \"LINE\")))", L"(ssget \"X\" '((8 . \"*\")(62 . 1)))", L"(entlast)",
    L"(ssget \"X\" '((-3 (\"*\"))))", L"R", L"A", L"M",
    // Options.
    L"ON", L"OFF", L"Freeze", L"Thaw", L"LOck", L"Unlock", L"Make", L"Set", L"New", L"Rename", L"Color", L"LTYPE",
    L"stAte", L"Save", L"Restore", L"Delete", L"?", L"LAyer", L"LType", L"LWeight", L"LtScale", L"Newfrz", L"Reset",
    L"Vpvisdflt", L"Frozen", L"Thawed", L"Select", L"Current", L"Extents", L"Window", L"Y", L"N", L"OK", L"Cancel",
    // Names and numbers.
    L"0", L"1", L"2", L"3", L"7", L"255", L"-1", L"0.5", L"1e9", L"x", L"*", L"a,b", L"给排-*", L"A*", L"~*", L"Model",
    L"Layout1", L"T", L"255,0,128", L"ByLayer", L"ByBlock", L"CONTINUOUS", L"点划线", L"*=1", L"*=0", L"1-5", L"开",
    L"关", L"锁定", L"冻结", L"全部"};

// A command, an answer, an entity by its handle (its number follows), Esc.
constexpr std::uint8_t kFirstAnswer = 0x40, kHandle = 0xF0, kEscape = 0xF8;

class Bytes {
  public:
    Bytes(const std::uint8_t* data, std::size_t size) : data_(data), end_(data + size) {}

    Session::Typed next(bool isCommandPrompt) {
        if (isCommandPrompt)
            while (data_ != end_ && *data_ >= kFirstAnswer)
                ++data_;
        if (data_ == end_) return {};
        const std::uint8_t byte = *data_;
        // A command where an answer is awaited: Enter first.
        if (byte < kFirstAnswer && !isCommandPrompt) return {++entered_ % 4 == 0 ? Reply::Cancel : Reply::Line, L""};
        ++data_;
        if (byte < kFirstAnswer) return {Reply::Line, Session::kCommands[byte % Session::kCommands.size()]};
        if (byte >= kEscape) return {Reply::Cancel, L""};
        if (byte < kHandle) return {Reply::Line, kAnswers[(byte - kFirstAnswer) % std::size(kAnswers)]};
        const auto& handles = Session::instance().handles();
        const std::size_t number = data_ == end_ ? 0 : *data_++;
        return {Reply::Line, L"(handent \"" + (handles.empty() ? L"0" : handles[number % handles.size()]) + L"\")"};
    }

  private:
    const std::uint8_t* data_;
    const std::uint8_t* end_;
    int entered_ = 0;
};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (size == 0) return 0;
    Bytes bytes(data + 1, size - 1);
    Session::instance().run(data[0], [&](bool isCommandPrompt) { return bytes.next(isCommandPrompt); });
    return 0;
}
