// Any two texts: the module's rules of serials and wildcards say what the same rules say when they are written out.
#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "afxcoll.h"
#include "fuzz/check.h"
#include "fuzz/literalrules.h"
#include "host/platform/codepage.h"
#include "PwxTool.h"

namespace {

using qrs::fuzz::check;

std::wstring wide(const CString& text) {
    return {text.GetString(), static_cast<std::size_t>(text.GetLength())};
}

int sign(int n) {
    return n < 0 ? -1 : n > 0 ? 1 : 0;
}

void serials(const std::wstring& a, const std::wstring& b, int step) {
    namespace literal = qrs::fuzz;
    std::vector<CString> pieces;
    std::vector<std::wstring> widePieces;
    check(PwxTool::SplitSerial(a.c_str(), pieces) == !a.empty(), "pieces or none");
    for (const CString& piece : pieces)
        widePieces.push_back(wide(piece));
    check(widePieces == literal::splitSerial(a), "other pieces");
    check(sign(PwxTool::CompareSerial(a.c_str(), b.c_str())) == literal::compareSerial(a, b), "another order");
    CString next = a.c_str();
    PwxTool::IncreaseSerial(next, step);
    check(wide(next) == literal::increasedSerial(a, step), "another next serial");
    const bool isDigits = !a.empty() && a.find_first_not_of(L"0123456789") == std::wstring::npos;
    check(PwxTool::IsDigit(a.c_str(), false) == isDigits, "digits or not");
    check(PwxTool::IsDigit(a.c_str(), true) == (isDigits && a[0] != L'0'), "digits without a zero first or not");
    check(!isDigits || IsStrAllNum(a.c_str()), "digits and no number");
    CStringArray parts;
    PwxTool::SplitText(a.c_str(), b.c_str(), parts);
    std::wstring joined, kept;
    for (int i = 0; i < parts.GetSize(); ++i)
        joined += wide(parts[i]);
    for (const wchar_t c : a)
        if (b.find(c) == std::wstring::npos) kept += c;
    check(kept.empty() ? joined == a : joined == kept, "other parts");
}

void wildcards(const std::wstring& text, const std::wstring& pattern) {
    namespace literal = qrs::fuzz;
    for (const bool caseSensitive : {false, true}) {
        check(PwxTool::MatchingString(text.c_str(), pattern.c_str(), caseSensitive) ==
                  literal::matchesWildcard(text, pattern, caseSensitive),
              "fits or not");
        for (const bool all : {false, true})
            for (const bool negate : {false, true})
                check(PwxTool::MultiMatching(text.c_str(), pattern.c_str(), all ? 1 : 0, negate, caseSensitive) ==
                          literal::matchesWildcards(text, pattern, all, negate, caseSensitive),
                      "fits a list or not");
    }
}

}  // namespace

// The first byte is the step, then two texts in UTF-8, parted by a zero; where further zeros stand, they end the
// second.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (size == 0) return 0;
    const int step = static_cast<std::int8_t>(data[0]) * (data[0] % 4 == 3 ? 0xFFFFFF : 1);
    const std::string all(reinterpret_cast<const char*>(data) + 1, size - 1);
    const std::size_t parting = std::min(all.find('\0'), all.size());
    const std::wstring a = qrs::platform::fromUtf8(all.substr(0, parting).c_str());
    const std::wstring b = qrs::platform::fromUtf8(parting < all.size() ? all.c_str() + parting + 1 : "");
    serials(a, b, step);
    wildcards(a, b);
    wildcards(b, a);
    return 0;
}
