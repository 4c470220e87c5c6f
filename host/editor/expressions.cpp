// Finds what an expression names: a table of forms over the tree that was read.
#include "host/editor/expressions.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <deque>
#include <limits>
#include <string>
#include <vector>

#include "acedads.h"
#include "dbhandle.h"
#include "dbmain.h"
#include "host/drawing/spaces.h"
#include "host/dxf/groupcodes.h"
#include "host/editor/documents.h"
#include "host/editor/entityfilter.h"
#include "host/editor/expressiontree.h"
#include "host/editor/hostselect.h"
#include "host/editor/viewport.h"
#include "host/objectarx/db/access.h"
#include "host/platform/codepage.h"
#include "host/platform/language.h"

namespace qrs::host::ed {

using platform::translated;
using platform::untranslated;

namespace {

using Kind = Expression::Kind;
namespace codes = dxf::codes;

constexpr int kXdataSentinel = -3;

// The modes of ssget that need no points.
struct Mode {
    const wchar_t* letter;
    const wchar_t* selects;
    bool reachesAll = false;
};

constexpr Mode kModes[] = {
    {L"X", untranslated(L"everything"), true},
    {L"A", untranslated(L"what is not frozen")},
    {L"P", untranslated(L"the previous selection")},
    {L"I", untranslated(L"what SELECT or a program left")},
    {L"L", untranslated(L"the newest that is not frozen")},
};

bool isWhole(const Expression& expression) {
    return expression.kind == Kind::Number && expression.isWhole;
}

// What was typed, for a message.
std::wstring shortened(std::wstring source) {
    constexpr std::size_t kLongest = 60;
    std::replace(source.begin(), source.end(), L'\n', L' ');
    if (source.size() > kLongest) source.replace(kLongest, std::wstring::npos, L"...");
    return source;
}

// A chain for acedSSGet, made of the conditions of a list.
class FilterChain {
  public:
    // False, with the fault, for a list that is no filter.
    bool read(const Expression& list, std::wstring& fault) {
        for (const Expression& condition : list.items) {
            if (addCondition(condition)) continue;
            fault = translated(L"%1 is no condition", shortened(condition.source));
            return false;
        }
        return true;
    }
    const resbuf* first() const { return links_.empty() ? nullptr : &links_.front(); }

  private:
    resbuf& add(int type) {
        resbuf& link = links_.emplace_back();
        link.restype = static_cast<short>(type);
        if (links_.size() > 1) links_[links_.size() - 2].rbnext = &link;
        return link;
    }

    void addText(int type, const std::wstring& text) {
        texts_.push_back(text);
        add(type).resval.rstring = texts_.back().data();
    }

    bool addCondition(const Expression& condition) {
        if (condition.kind != Kind::List || condition.isQuoted || condition.items.size() < 2) return false;
        const Expression& code = condition.items.front();
        if (!isWhole(code)) return false;
        if (code.number == kXdataSentinel) return !condition.isPair && addApplications(condition);
        const bool isOperator = code.number == int{AcDb::kDxfOperator};
        if (!isOperator && (code.number < 0 || code.number > codes::kXdataLong)) return false;
        const int group = static_cast<int>(code.number);
        if (dxf::valueKindOf(group) == dxf::ValueKind::Point) return addPoint(group, condition);
        if (!condition.isPair) return false;
        const Expression& value = condition.items.back();
        if (!isOperator) return addValue(group, value);
        if (value.kind == Kind::Text) addText(group, value.text);
        return value.kind == Kind::Text;
    }

    bool addValue(int code, const Expression& value) {
        const dxf::ValueKind kind = dxf::valueKindOf(code);
        if (dxf::isTextual(kind)) {
            if (value.kind == Kind::Text) addText(code == codes::kType ? int{RTDXF0} : code, value.text);
            return value.kind == Kind::Text;
        }
        if (value.kind != Kind::Number) return false;
        if (dxf::isReal(kind)) {
            add(code).resval.rreal = value.number;
            return true;
        }
        using Short = std::numeric_limits<short>;
        using Long = std::numeric_limits<std::int32_t>;
        const bool isLong = kind == dxf::ValueKind::Integer32;
        const double least = isLong ? Long::min() : Short::min();
        const double most = isLong ? Long::max() : Short::max();
        if (!value.isWhole || value.number < least || value.number > most) return false;
        resbuf& link = add(code);
        if (isLong)
            link.resval.rlong = static_cast<std::int32_t>(value.number);
        else
            link.resval.rint = static_cast<short>(value.number);
        return true;
    }

    // (10 1.0 2.0 0.0)
    bool addPoint(int code, const Expression& condition) {
        const std::size_t count = condition.items.size() - 1;
        if (condition.isPair || count < 2 || count > 3) return false;
        resbuf& link = add(code);
        for (std::size_t i = 0; i < count; ++i) {
            const Expression& coordinate = condition.items[i + 1];
            if (coordinate.kind != Kind::Number) return false;
            link.resval.rpoint[i] = coordinate.number;
        }
        return true;
    }

    // (-3 ("ONE") ("OTHER")): data of each of them.
    bool addApplications(const Expression& condition) {
        addText(AcDb::kDxfOperator, L"<AND");
        add(kXdataSentinel);
        for (std::size_t i = 1; i < condition.items.size(); ++i) {
            const Expression& one = condition.items[i];
            if (one.kind != Kind::List || one.items.size() != 1 || one.items.front().kind != Kind::Text) return false;
            addText(codes::kXdataApplication, one.items.front().text);
        }
        addText(AcDb::kDxfOperator, L"AND>");
        return true;
    }

    // Neither moves what it holds.
    std::deque<std::wstring> texts_;
    std::deque<resbuf> links_;
};

// Finds what a tree names.
class Finder {
  public:
    explicit Finder(AcDbDatabase& database) : database_(database) {}

    // False, with the fault and what is understood, for what is none of the forms.
    bool find(const Expression& expression, NamedEntities& found);
    const std::wstring& fault() const { return fault_; }
    static std::wstring faultText(const std::wstring& fault, const std::wstring& wanted);
    static std::wstring knownForms();

  private:
    using Arguments = std::vector<Expression>;  // after the name of the form
    struct Form;
    static const Form kForms[];

    bool fail(const std::wstring& fault, const std::wstring& wanted = knownForms()) {
        fault_ = faultText(fault, wanted);
        return false;
    }

    bool findByHandle(const Arguments& arguments, NamedEntities& found) {
        AcDbObjectId id;
        const AcDbHandle handle(arguments[0].text.c_str());
        const bool isThere = database_.getAcDbObjectId(id, false, handle) == Acad::eOk && !id.isErased();
        if (isThere && isMainEntity(DatabaseAccess::recordOf(id))) found.ids.append(id);
        found.reachesAll = true;
        return true;
    }

    // An entity of a layout, no part of one.
    bool isMainEntity(dxf::RecordId id) const {
        const dxf::Drawing& drawing = DatabaseAccess::drawing(database_);
        return id != dxf::kNoRecord && drawing.record(id).kind == dxf::RecordKind::Entity &&
               (drawing.record(id).flags & dxf::kSubEntity) == 0 && liesInLayout(drawing, id);
    }

    bool findLast(const Arguments&, NamedEntities& found) {
        dxf::RecordId last = dxf::kNoRecord;
        forEachEntityOfSpace(DatabaseAccess::drawing(database_), currentSpace(database_),
                             [&](dxf::RecordId id) { last = id; });
        if (last != dxf::kNoRecord) found.ids.append(DatabaseAccess::idOf(database_, last));
        found.reachesAll = true;
        return true;
    }

    bool select(const Arguments& arguments, NamedEntities& found) {
        std::wstring letters = platform::foldCase(arguments[0].text);
        if (!letters.empty() && letters.front() == L'_') letters.erase(0, 1);
        const Mode* mode = nullptr;
        for (const Mode& one : kModes)
            if (letters == one.letter) mode = &one;
        if (!mode) return fail(translated(L"ssget has no mode %1 here", shortened(arguments[0].source)), knownModes());
        FilterChain chain;
        std::wstring fault;
        if (arguments.size() > 1 && !chain.read(arguments[1], fault)) return fail(fault, knownConditions());
        const EntityFilter filter(database_, chain.first(), true);
        if (!filter.isUsable()) return fail(filter.fault(), knownConditions());
        ads_name set = {};
        const int result = acedSSGet(mode->letter, nullptr, nullptr, chain.first(), set);
        found.isSet = true;
        found.reachesAll = mode->reachesAll;
        if (result != RTNORM) return true;
        found.ids = selectedIds(set);
        acedSSFree(set);
        return true;
    }

    bool findInSet(const Arguments& arguments, NamedEntities& found) {
        NamedEntities set;
        if (!find(arguments[0], set)) return false;
        if (!set.isSet) return fail(translated(L"ssname takes a selection"));
        const double index = arguments[1].number;
        if (!arguments[1].isWhole || index < 0) return fail(translated(L"ssname counts from 0"));
        if (index < set.ids.length()) found.ids.append(set.ids[static_cast<int>(index)]);
        found.reachesAll = set.reachesAll;
        return true;
    }

    static std::wstring knownModes();
    static std::wstring knownConditions();

    AcDbDatabase& database_;
    std::wstring fault_;
};

// takes: t a text, q a list after ', e an expression, n a number; those after / may be missing.
struct Finder::Form {
    const wchar_t* name;
    const wchar_t* takes;
    const wchar_t* spelled;
    bool (Finder::*find)(const Arguments& arguments, NamedEntities& found);
};

const Finder::Form Finder::kForms[] = {
    {L"HANDENT", L"t", L"(handent \"2A7\")", &Finder::findByHandle},
    {L"ENTLAST", L"", L"(entlast)", &Finder::findLast},
    {L"SSGET", L"t/q", L"(ssget \"X\" '((8 . \"PIPE*\") (0 . \"LINE,ARC\")))", &Finder::select},
    {L"SSNAME", L"en", L"(ssname (ssget ...) 0)", &Finder::findInSet},
};

bool isOfKind(const Expression& argument, wchar_t kind) {
    switch (kind) {
        case L't':
            return argument.kind == Kind::Text;
        case L'n':
            return argument.kind == Kind::Number;
        case L'q':
            return argument.kind == Kind::List && argument.isQuoted && !argument.isPair;
        default:
            return argument.kind == Kind::List && !argument.isQuoted;
    }
}

bool areTaken(const std::vector<Expression>& arguments, const wchar_t* takes) {
    std::size_t count = 0;
    bool mayMiss = false;
    for (; *takes != L'\0'; ++takes) {
        if (*takes == L'/') {
            mayMiss = true;
        } else if (count == arguments.size()) {
            return mayMiss;
        } else if (!isOfKind(arguments[count++], *takes)) {
            return false;
        }
    }
    return count == arguments.size();
}

bool Finder::find(const Expression& expression, NamedEntities& found) {
    const bool isCall = expression.kind == Kind::List && !expression.isQuoted && !expression.isPair &&
                        !expression.items.empty() && expression.items.front().kind == Kind::Symbol;
    if (!isCall) return fail(translated(L"%1 names nothing", shortened(expression.source)));
    const std::wstring name = shortened(expression.items.front().source);
    for (const Form& form : kForms) {
        if (platform::compareNoCase(name, form.name) != 0) continue;
        const Arguments arguments(expression.items.begin() + 1, expression.items.end());
        if (!areTaken(arguments, form.takes)) return fail(translated(L"%1 is used in another way", name));
        return (this->*form.find)(arguments, found);
    }
    return fail(translated(L"there is no %1", name));
}

std::wstring Finder::knownForms() {
    std::wstring text;
    for (const Form& form : kForms)
        text += (text.empty() ? std::wstring() : translated(L", ")) + form.spelled;
    return text;
}

std::wstring Finder::knownModes() {
    std::wstring text;
    for (const Mode& mode : kModes)
        text += (text.empty() ? std::wstring() : translated(L", ")) +
                translated(L"%1 (%2)", mode.letter, translated(mode.selects));
    return text;
}

std::wstring Finder::knownConditions() {
    return translated(
        L"(8 . \"PIPE*\"), with the group codes %1; (-3 (\"APPLICATION\")); groups from (-4 . \"<OR\") to "
        L"(-4 . \"OR>\"), AND, XOR, NOT; before a number (-4 . \">=\"), one of %2",
        EntityFilter::knownCodes(), EntityFilter::knownComparisons());
}

std::wstring Finder::faultText(const std::wstring& fault, const std::wstring& wanted) {
    return translated(L"*Invalid expression*: %1\nExpects %2", fault, wanted);
}

}  // namespace

bool beginsExpression(std::wstring_view text) {
    return !text.empty() && text.front() == L'(';
}

std::optional<NamedEntities> entitiesOfExpression(AcApDocument& document, std::wstring_view text, std::wstring& fault) {
    NamedEntities found;
    const std::optional<Expression> expression = readExpression(text, fault);
    if (!expression) {
        fault = Finder::faultText(fault, Finder::knownForms());
        return std::nullopt;
    }
    Finder finder(*document.database());
    if (finder.find(*expression, found)) return found;
    fault = finder.fault();
    return std::nullopt;
}

}  // namespace qrs::host::ed
