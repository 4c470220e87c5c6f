// Fuzz target: the rules of serials and wildcards over any two texts.
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>
#include <vector>

#include "afxcoll.h"
#include "PwxTool.h"

namespace {

void require(bool holds) {
    if (!holds) std::abort();
}

}  // namespace

// The first byte is the step, a zero parts the two texts.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (size == 0) return 0;
    const int step = static_cast<std::int8_t>(data[0]) * 0xFFFFFF;
    std::wstring all(data + 1, data + size);
    const std::size_t parting = all.find(L'\0');
    const CString a(all.substr(0, parting));
    const CString b(parting == std::wstring::npos ? std::wstring() : all.substr(parting + 1));

    std::vector<CString> pieces;
    require(PwxTool::SplitSerial(a, pieces) == !a.IsEmpty());
    require(PwxTool::CompareSerial(a, a) == 0);
    PwxTool::CompareSerial(a, b);
    CString next = a;
    PwxTool::IncreaseSerial(next, step);
    require(next.GetLength() >= a.GetLength());
    require(!PwxTool::IsDigit(a, true) || PwxTool::IsDigit(a, false));
    require(!PwxTool::IsDigit(a, false) || IsStrAllNum(a));
    CStringArray parts;
    PwxTool::SplitText(a, b, parts);
    require(!parts.IsEmpty());
    // What fits with regard to case fits without.
    require(!PwxTool::MatchingString(a, b, true) || PwxTool::MatchingString(a, b, false));
    require(PwxTool::MultiMatching(a, b, 0, true, true) != PwxTool::MultiMatching(a, b, 0, false, true));
    require(PwxTool::MultiMatching(a, b, 1, true, true) != PwxTool::MultiMatching(a, b, 1, false, true));
    return 0;
}
