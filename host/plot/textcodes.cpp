// Reads the codes in texts.
#include "host/plot/textcodes.h"

#include <cmath>
#include <cwchar>
#include <optional>

#include "host/platform/angle.h"

namespace qrs::host::plot {

namespace {

constexpr wchar_t kDegree = 0x00B0;
constexpr wchar_t kPlusMinus = 0x00B1;
constexpr wchar_t kDiameter = 0x2300;

// %%123: a character by its number. The number of digits that were read, 0 for none.
std::size_t characterCode(std::wstring_view text, wchar_t& character) {
    std::size_t digits = 0;
    int code = 0;
    while (digits < 3 && digits < text.size() && text[digits] >= L'0' && text[digits] <= L'9')
        code = code * 10 + (text[digits++] - L'0');
    if (digits == 3) character = static_cast<wchar_t>(code);
    return digits == 3 && code >= 32 ? digits : 0;
}

// What follows %%; gives how many characters of it were read.
std::size_t readPercents(std::wstring_view rest, TextRun& now, std::wstring& out) {
    wchar_t character = 0;
    if (const std::size_t digits = characterCode(rest, character)) {
        out += character;
        return digits;
    }
    switch (rest.front()) {
        case L'd':
        case L'D':
            out += kDegree;
            return 1;
        case L'p':
        case L'P':
            out += kPlusMinus;
            return 1;
        case L'c':
        case L'C':
            out += kDiameter;
            return 1;
        case L'u':
        case L'U':
            now.isUnderlined = !now.isUnderlined;
            return 1;
        case L'o':
        case L'O':
            now.isOverlined = !now.isOverlined;
            return 1;
        case L'k':
        case L'K':
            now.isStruck = !now.isStruck;
            return 1;
        case L'%':
            out += L'%';
            return 1;
        default:
            return 0;  // two percent signs
    }
}

// A tab, the end of a line and a caret are spelled with a caret.
std::optional<wchar_t> readCaret(std::wstring_view text) {
    if (text.size() < 2 || text[0] != L'^') return std::nullopt;
    switch (text[1]) {
        case L'I':
            return L' ';
        case L'J':
            return L'\n';
        case L'M':
            return L'\r';
        case L' ':
            return L'^';
        default:
            return std::nullopt;
    }
}

void addRun(std::vector<TextRun>& runs, const TextRun& looks, std::wstring& text) {
    if (text.empty()) return;
    runs.push_back(looks);
    runs.back().text = std::move(text);
    text.clear();
}

double numberOf(const std::wstring& text, double fallback) {
    wchar_t* end = nullptr;
    const double value = std::wcstod(text.c_str(), &end);
    return end != text.c_str() && std::isfinite(value) ? value : fallback;
}

class Reader {
  public:
    Reader(std::wstring_view text, double height) : text_(text), height_(height > 0.0 ? height : 1.0) {
        paragraphs_.emplace_back();
        states_.emplace_back();
    }

    std::vector<TextParagraph> read() {
        while (at_ < text_.size())
            step();
        endRun();
        return std::move(paragraphs_);
    }

  private:
    TextRun& now() { return states_.back(); }
    void endRun() { addRun(paragraphs_.back().runs, now(), pending_); }
    void endParagraph() {
        endRun();
        TextParagraph next = paragraphs_.back();
        next.runs.clear();
        next.startsColumn = false;
        paragraphs_.push_back(std::move(next));
    }

    void step() {
        constexpr std::size_t kDeepest = 256;
        const std::optional<wchar_t> spelled = readCaret(text_.substr(at_));
        const wchar_t c = spelled.value_or(text_[at_]);
        at_ += spelled ? 2 : 1;
        if (c == L'{' && states_.size() < kDeepest) {
            endRun();
            states_.push_back(now());
        } else if (c == L'}') {
            endRun();
            if (states_.size() > 1) states_.pop_back();
        } else if (c == L'\n') {
            endParagraph();
        } else if (c == L'\\' && at_ < text_.size()) {
            escape();
        } else if (c == L'%' && at_ + 1 < text_.size() && text_[at_] == L'%') {
            percents();
        } else if (c >= L' ' || c == L'\t') {
            pending_ += c;
        }
    }

    void percents() {
        TextRun after = now();
        std::wstring character;
        const std::size_t read = readPercents(text_.substr(at_ + 1), after, character);
        if (read == 0) {
            pending_ += L"%%";
        } else {
            if (character.empty()) endRun();
            now() = after;
            pending_ += character;
        }
        at_ += 1 + read;
    }

    // The value of a code, up to its semicolon.
    std::wstring value() {
        const std::size_t end = text_.find(L';', at_);
        const std::wstring value(text_.substr(at_, end == std::wstring_view::npos ? end : end - at_));
        at_ = end == std::wstring_view::npos ? text_.size() : end + 1;
        return value;
    }

    void escape() {
        const wchar_t code = text_[at_++];
        switch (code) {
            case L'P':
            case L'X':
                return endParagraph();
            case L'N':
                endParagraph();
                paragraphs_.back().startsColumn = true;
                return;
            case L'~':
                pending_ += L'\x00A0';
                return;
            case L'\\':
            case L'{':
            case L'}':
                pending_ += code;
                return;
            case L'L':
            case L'l':
            case L'O':
            case L'o':
            case L'K':
            case L'k':
                return toggle(code);
            case L'A':
            case L'C':
            case L'c':
            case L'F':
            case L'f':
            case L'H':
            case L'Q':
            case L'T':
            case L'W':
                return take(code, value());
            case L'p':
                return paragraph(value());
            case L'S':
                return fraction(value());
            default:
                return;  // \N and what nobody knows
        }
    }

    void toggle(wchar_t code) {
        endRun();
        if (code == L'L' || code == L'l') now().isUnderlined = code == L'L';
        if (code == L'O' || code == L'o') now().isOverlined = code == L'O';
        if (code == L'K' || code == L'k') now().isStruck = code == L'K';
    }

    void take(wchar_t code, const std::wstring& value) {
        endRun();
        TextRun& run = now();
        if (code == L'H') {
            const double number = numberOf(value, 0.0);
            const bool isFactor = !value.empty() && (value.back() == L'x' || value.back() == L'X');
            if (number > 0.0) run.height = isFactor ? run.height * number : number / height_;
        } else if (code == L'W') {
            const double number = numberOf(value, 1.0);
            if (number > 0.0) run.widthFactor = number;
        } else if (code == L'Q') {
            run.oblique = numberOf(value, 0.0) * platform::kRadiansPerDegree;
        } else if (code == L'C') {
            run.color = static_cast<long>(numberOf(value, 7));
            run.trueColor.reset();
        } else if (code == L'c') {
            // The parts stand the other way round here.
            const auto number = static_cast<long>(numberOf(value, 0));
            run.trueColor = (number & 0xFF) << 16 | (number & 0xFF00) | (number >> 16 & 0xFF);
        } else if (code == L'F' || code == L'f') {
            font(value);
        }
    }

    // "SimSun|b0|i1|c134|p2".
    void font(const std::wstring& value) {
        std::size_t bar = value.find(L'|');
        now().font = value.substr(0, bar);
        now().isBold = now().isItalic = false;
        while (bar != std::wstring::npos) {
            const std::wstring part = value.substr(bar + 1, 2);
            if (part == L"b1") now().isBold = true;
            if (part == L"i1") now().isItalic = true;
            bar = value.find(L'|', bar + 1);
        }
    }

    // "xi-3,l3,qc": indents in drawing units, and the column.
    void paragraph(const std::wstring& value) {
        TextParagraph& last = paragraphs_.back();
        for (std::size_t begin = 0; begin <= value.size();) {
            const std::size_t end = std::min(value.find(L',', begin), value.size());
            std::wstring part = value.substr(begin, end - begin);
            begin = end + 1;
            // An x, which says nothing here, may stand before the first one.
            if (part.size() > 1 && part[0] == L'x') part.erase(0, 1);
            if (part.empty()) continue;
            const double number = numberOf(part.substr(1), 0.0) / height_;
            if (part[0] == L'i') last.firstIndent = number;
            if (part[0] == L'l') last.indent = number;
            if (part == L"ql" || part == L"qj" || part == L"qd") last.column = 0;
            if (part == L"qc") last.column = 1;
            if (part == L"qr") last.column = 2;
        }
    }

    // "1/2", "1#2" in one row; "+1^-1" one part over the other; "2^" raised.
    void fraction(const std::wstring& value) {
        endRun();
        const std::size_t cut = value.find_first_of(L"^/#");
        if (cut == std::wstring::npos) {
            pending_ += value;
            return;
        }
        TextRun part = now();
        part.height *= 0.7;
        const auto add = [&](std::wstring text, Lift lift) {
            part.lift = lift;
            addRun(paragraphs_.back().runs, part, text);
        };
        add(value.substr(0, cut), Lift::Over);
        if (value[cut] != L'^') {
            part.height = now().height;
            add(L"/", Lift::None);
            part.height *= 0.7;
        }
        add(value.substr(cut + 1), Lift::Under);
    }

    std::wstring_view text_;
    double height_;
    std::size_t at_ = 0;
    std::wstring pending_;
    std::vector<TextParagraph> paragraphs_;
    std::vector<TextRun> states_;
};

}  // namespace

std::vector<TextRun> lineRuns(std::wstring_view text) {
    std::vector<TextRun> runs;
    TextRun now;
    std::wstring pending;
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (const std::optional<wchar_t> spelled = readCaret(text.substr(i))) {
            if (*spelled >= L' ') pending += *spelled;
            ++i;
            continue;
        }
        if (text[i] != L'%' || i + 2 >= text.size() || text[i + 1] != L'%') {
            if (text[i] >= L' ') pending += text[i];
            continue;
        }
        TextRun after = now;
        std::wstring character;
        const std::size_t read = readPercents(text.substr(i + 2), after, character);
        if (read == 0) {
            pending += L"%%";
        } else {
            if (character.empty()) addRun(runs, now, pending);
            now = after;
            pending += character;
        }
        i += 1 + read;
    }
    addRun(runs, now, pending);
    return runs;
}

std::vector<TextParagraph> paragraphRuns(std::wstring_view text, double height) {
    return Reader(text, height).read();
}

}  // namespace qrs::host::plot
