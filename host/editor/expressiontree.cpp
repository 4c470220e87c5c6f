// Reads lists of symbols, texts and numbers, with comments (from ";" to the line's end) between them.
#include "host/editor/expressiontree.h"

#include <cmath>
#include <cstddef>
#include <utility>

#include "host/editor/points.h"
#include "host/platform/language.h"
#include "host/platform/text.h"

namespace qrs::host::ed {

using platform::translated;
using platform::untranslated;

namespace {

constexpr int kMostDepth = 32;

class Reader {
  public:
    explicit Reader(std::wstring_view text) : text_(text) {}

    bool readAll(Expression& whole) {
        if (!read(whole, 0)) return false;
        passBlanks();
        return at_ == text_.size() || fail(untranslated(L"something stands after its end"));
    }
    const std::wstring& fault() const { return fault_; }

  private:
    bool fail(const wchar_t* fault) {
        fault_ = translated(fault);
        return false;
    }
    void passBlanks() {
        bool isComment = false;
        for (; at_ < text_.size(); ++at_) {
            isComment = text_[at_] != L'\n' && (isComment || text_[at_] == L';');
            if (!isComment && !isBetween(text_[at_])) return;
        }
    }
    static bool isBetween(wchar_t c) { return c == L'\n' || platform::isBlank(static_cast<char32_t>(c)); }

    bool read(Expression& one, int depth) {
        if (depth > kMostDepth) return fail(untranslated(L"too many parentheses"));
        passBlanks();
        const std::size_t begin = at_;
        if (at_ < text_.size() && text_[at_] == L'\'') {
            one.isQuoted = true;
            ++at_;
        }
        if (at_ == text_.size() || text_[at_] == L')') return fail(untranslated(L"something is missing"));
        const bool isRead = text_[at_] == L'(' ? readList(one, depth) : readAtom(one);
        one.source = std::wstring(text_.substr(begin, at_ - begin));
        return isRead;
    }

    bool readList(Expression& list, int depth) {
        list.kind = Expression::Kind::List;
        for (++at_;;) {
            passBlanks();
            if (at_ == text_.size()) return fail(untranslated(L"a closing parenthesis is missing"));
            if (text_[at_] == L')') break;
            Expression item;
            if (!read(item, depth + 1)) return false;
            const bool isPoint = item.kind == Expression::Kind::Symbol && item.source == L".";
            if (!isPoint) {
                list.items.push_back(std::move(item));
            } else if (list.isPair || list.items.size() != 1) {
                return fail(untranslated(L"a point stands where none belongs"));
            } else {
                list.isPair = true;
            }
        }
        ++at_;
        return !list.isPair || list.items.size() == 2 ||
               fail(untranslated(L"a point has one value before it and one after it"));
    }

    bool readAtom(Expression& atom) {
        if (text_[at_] == L'"') return readText(atom);
        const std::size_t begin = at_;
        while (at_ < text_.size() && !endsAtom(text_[at_]))
            ++at_;
        const std::wstring word(text_.substr(begin, at_ - begin));
        atom.kind = parseReal(word, atom.number) ? Expression::Kind::Number : Expression::Kind::Symbol;
        atom.isWhole = atom.kind == Expression::Kind::Number && std::floor(atom.number) == atom.number;
        return true;
    }

    static bool endsAtom(wchar_t c) {
        return isBetween(c) || c == L'(' || c == L')' || c == L'"' || c == L'\'' || c == L';';
    }

    // A backslash stands before a quote or a backslash that belongs to the text.
    bool readText(Expression& atom) {
        atom.kind = Expression::Kind::Text;
        for (++at_; at_ < text_.size(); ++at_) {
            if (text_[at_] == L'"') {
                ++at_;
                return true;
            }
            const wchar_t following = at_ + 1 < text_.size() ? text_[at_ + 1] : L'\0';
            if (text_[at_] == L'\\' && (following == L'"' || following == L'\\')) ++at_;
            atom.text += text_[at_];
        }
        return fail(untranslated(L"a closing quote is missing"));
    }

    std::wstring_view text_;
    std::size_t at_ = 0;
    std::wstring fault_;
};

}  // namespace

std::optional<Expression> readExpression(std::wstring_view text, std::wstring& fault) {
    Expression whole;
    Reader reader(text);
    if (reader.readAll(whole)) return whole;
    fault = reader.fault();
    return std::nullopt;
}

}  // namespace qrs::host::ed
