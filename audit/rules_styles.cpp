// What is wrong with linetypes, text styles and dimension styles.
#include <algorithm>
#include <cmath>
#include <iterator>
#include <set>
#include <string_view>
#include <utility>

#include "FontTool.h"
#include "PwxTool.h"
#include "rules.h"

namespace qrs::audit {

namespace {

constexpr double kTolerance = 1e-6;
constexpr std::wstring_view kFontSuffix = L".shx";

// Dimension styles that every new drawing brings along: not worth a word while nothing is measured with them.
constexpr const wchar_t* kBuiltInDimStyles[] = {L"Standard", L"Annotative", L"ISO-25"};

bool isBuiltInDimStyle(std::wstring_view style) {
    return std::any_of(std::begin(kBuiltInDimStyles), std::end(kBuiltInDimStyles),
                       [&](const wchar_t* name) { return isSameName(name, style); });
}

std::wstring wide(const CString& text) {
    return std::wstring(text.view());
}

template <class Facts, class IsBuiltIn, class Visit>
void visit(const std::vector<Facts>& records, const IsBuiltIn& isBuiltIn, const Visit& visitor) {
    for (const Facts& record : records)
        if (!record.isDependent() && !isBuiltIn(record.name)) visitor(record);
}

template <class Visit>
void visitLinetypes(const CheckedDrawing& drawing, const Visit& visitor) {
    visit(drawing.facts.linetypes, isBuiltInLinetype, visitor);
}

template <class Visit>
void visitTextStyles(const CheckedDrawing& drawing, const Visit& visitor) {
    visit(drawing.facts.textStyles, isBuiltInTextStyle, visitor);
}

// What every drawing has, the editor makes when a file leaves it out.
template <class IsBuiltIn>
void tellMissing(const ByName<Tally>& missing, const IsBuiltIn& isBuiltIn, Findings& findings) {
    for (const auto& [name, objects] : missing)
        if (objects.count > 0 && !isBuiltIn(name)) findings.emplace_back(name, objects);
}

// The texts in brackets, which drawings of R12 cannot hold.
std::wstring withoutTexts(std::wstring pattern) {
    for (std::size_t begin; (begin = pattern.find(L'[')) != std::wstring::npos;) {
        const std::size_t end = pattern.find(L']', begin);
        pattern.erase(begin, end == std::wstring::npos ? std::wstring::npos : end - begin + 1);
    }
    return pattern;
}

std::wstring shownPattern(const std::wstring& pattern) {
    return pattern.empty() ? platform::translated(L"continuous") : pattern;
}

// Font files are named with and without their suffix.
bool isSameFont(std::wstring_view a, std::wstring_view b) {
    const auto withoutSuffix = [](std::wstring_view name) {
        const bool hasSuffix =
            name.size() > kFontSuffix.size() && isSameName(name.substr(name.size() - kFontSuffix.size()), kFontSuffix);
        return hasSuffix ? name.substr(0, name.size() - kFontSuffix.size()) : name;
    };
    return isSameName(withoutSuffix(a), withoutSuffix(b));
}

std::wstring shownFont(const std::wstring& font, const std::wstring& bigFont) {
    return bigFont.empty() ? font : font + L" + " + bigFont;
}

std::wstring shownTypeface(const std::wstring& typeface, bool isBold, bool isItalic) {
    return typeface + (isBold ? platform::translated(L", bold") : L"") +
           (isItalic ? platform::translated(L", italic") : L"");
}

std::wstring shownFont(const TextStyleFacts& style) {
    return style.typeface.empty() ? shownFont(style.font, style.bigFont)
                                  : shownTypeface(style.typeface, style.isBold, style.isItalic);
}

// A style is made with the typeface where it is installed, with the font files elsewhere: both follow the standard.
bool hasFontOf(const TextStyleFacts& style, const TextStyleNode& node) {
    if (!style.typeface.empty())
        return isSameName(style.typeface, node.ChineseFont.view()) && style.isBold == (node.Bold != 0) &&
               style.isItalic == (node.Italic != 0);
    return isSameFont(style.font, node.EnglishFont.view()) && isSameFont(style.bigFont, node.ChineseFont.view());
}

bool isInstalled(const TextStyleNode& node) {
    return FontTool::IsWinFont(node.ChineseFont, node.Encoded, nullptr, nullptr, false);
}

std::wstring shownFont(const TextStyleNode& node) {
    if (isInstalled(node)) return shownTypeface(wide(node.ChineseFont), node.Bold != 0, node.Italic != 0);
    return shownFont(wide(node.EnglishFont), wide(node.ChineseFont));
}

void compare(const wchar_t* property, double drawing, double standard, std::vector<Difference>& differences) {
    if (std::fabs(drawing - standard) > kTolerance)
        differences.push_back({platform::translated(property), textOf(drawing), textOf(standard)});
}

bool isForeignTextStyle(const CheckedDrawing& drawing, std::wstring_view name) {
    return drawing.standard.textStyle(name) == nullptr;
}

}  // namespace

std::vector<Difference> differencesOf(const CheckedDrawing& drawing, const RecordFacts& linetype) {
    const bool holdsTexts = drawing.facts.database.originalFileVersion() >= AcDb::kDHL_1012;
    CString own;
    std::wstring standard;
    if (!drawing.standard.pattern(linetype.name, standard) || !PwxTool::GetLinetypePattern(linetype.id, own)) return {};
    if (own.view() == (holdsTexts ? standard : withoutTexts(standard))) return {};
    return {{platform::translated(L"pattern"), shownPattern(wide(own)), shownPattern(standard)}};
}

bool canHaveFontOf(const TextStyleNode& node) {
    return isInstalled(node) || (node.WinFont == 0 && !node.EnglishFont.IsEmpty());
}

double widthFactorOf(const TextStyleNode& node) {
    return node.WHScale == 0.0 ? 1.0 : node.WHScale;
}

std::vector<Difference> differencesOf(const TextStyleFacts& style, const TextStyleNode& node) {
    std::vector<Difference> differences;
    compare(platform::untranslated(L"height"), style.height, node.FontHeigth, differences);
    compare(platform::untranslated(L"width factor"), style.widthFactor, widthFactorOf(node), differences);
    if (canHaveFontOf(node) && !hasFontOf(style, node))
        differences.push_back({platform::translated(L"font"), shownFont(style), shownFont(node)});
    return differences;
}

// --- linetypes

namespace {

// Most objects take their linetype from their layer, and are not counted.
std::wstring layersWith(const CheckedDrawing& drawing, std::wstring_view linetype) {
    std::wstring names;
    std::size_t count = 0;
    for (const LayerFacts& layer : drawing.facts.layers) {
        const bool isOf = isSameName(layer.linetype, linetype) || isSameName(layer.lostLinetype, linetype);
        if (layer.isDependent() || !isOf) continue;
        if (++count <= Tally::kShown) names += (count > 1 ? L", " : L"") + layer.name;
    }
    if (count == 0) return {};
    return platform::translated(L"of layer %1", count > Tally::kShown ? names + L", ..." : names);
}

}  // namespace

void findMissingLinetypes(const CheckedDrawing& drawing, Findings& findings) {
    for (const auto& [name, objects] : drawing.facts.missingLinetypes)
        if (!isBuiltInLinetype(name)) findings.emplace_back(name, objects, layersWith(drawing, name));
}

void findForeignLinetypes(const CheckedDrawing& drawing, Findings& findings) {
    visitLinetypes(drawing, [&](const RecordFacts& linetype) {
        if (drawing.standard.linetype(linetype.name) == nullptr)
            findings.emplace_back(linetype.name, linetype.objects, layersWith(drawing, linetype.name));
    });
}

void findDifferentLinetypes(const CheckedDrawing& drawing, Findings& findings) {
    visitLinetypes(drawing, [&](const RecordFacts& linetype) {
        std::vector<Difference> differences = differencesOf(drawing, linetype);
        if (differences.empty()) return;
        findings.emplace_back(linetype.name, linetype.objects, layersWith(drawing, linetype.name));
        findings.back().differences = std::move(differences);
    });
}

void findMisspeltLinetypes(const CheckedDrawing& drawing, Findings& findings) {
    visitLinetypes(drawing, [&](const RecordFacts& linetype) {
        const std::wstring* name = drawing.standard.linetype(linetype.name);
        if (name != nullptr && *name != linetype.name)
            findings.emplace_back(linetype.name, linetype.objects, platform::translated(L"spelled %1", *name));
    });
}

void findUnusedLinetypes(const CheckedDrawing& drawing, Findings& findings) {
    visitLinetypes(drawing, [&](const RecordFacts& linetype) {
        if (!linetype.isUsed) findings.emplace_back(linetype.name, linetype.objects);
    });
}

void findAbsentLinetypes(const CheckedDrawing& drawing, Findings& findings) {
    std::set<std::wstring, NameLess> present;
    for (const RecordFacts& linetype : drawing.facts.linetypes)
        present.insert(linetype.name);
    for (const LinetypeNode& linetype : drawing.standard.tableLinetypes())
        if (!isBuiltInLinetype(linetype.Name.view()) && present.count(wide(linetype.Name)) == 0)
            findings.emplace_back(wide(linetype.Name), Tally());
}

// --- text styles

void findMissingTextStyles(const CheckedDrawing& drawing, Findings& findings) {
    tellMissing(drawing.facts.missingTextStyles, isBuiltInTextStyle, findings);
    for (const DimStyleFacts& style : drawing.facts.dimStyles)
        if (!style.isDependent() && !style.lostTextStyle.empty())
            findings.emplace_back(style.lostTextStyle, style.objects,
                                  platform::translated(L"named by its handle in dimension style %1", style.name));
}

void findForeignTextStyles(const CheckedDrawing& drawing, Findings& findings) {
    visitTextStyles(drawing, [&](const TextStyleFacts& style) {
        if (isForeignTextStyle(drawing, style.name)) findings.emplace_back(style.name, style.objects);
    });
}

void findDifferentTextStyles(const CheckedDrawing& drawing, Findings& findings) {
    for (const TextStyleFacts& style : drawing.facts.textStyles) {
        const TextStyleNode* node = style.isDependent() ? nullptr : drawing.standard.textStyle(style.name);
        if (node == nullptr) continue;
        std::vector<Difference> differences = differencesOf(style, *node);
        if (differences.empty()) continue;
        findings.emplace_back(style.name, style.objects);
        findings.back().differences = std::move(differences);
    }
}

void findMisspeltTextStyles(const CheckedDrawing& drawing, Findings& findings) {
    visitTextStyles(drawing, [&](const TextStyleFacts& style) {
        const TextStyleNode* node = drawing.standard.textStyle(style.name);
        if (node != nullptr && node->Name.view() != style.name)
            findings.emplace_back(style.name, style.objects, platform::translated(L"spelled %1", node->Name.view()));
    });
}

void findUnusedTextStyles(const CheckedDrawing& drawing, Findings& findings) {
    visitTextStyles(drawing, [&](const TextStyleFacts& style) {
        if (!style.isUsed) findings.emplace_back(style.name, style.objects);
    });
}

void findAbsentTextStyles(const CheckedDrawing& drawing, Findings& findings) {
    std::set<std::wstring, NameLess> present;
    for (const TextStyleFacts& style : drawing.facts.textStyles)
        present.insert(style.name);
    for (const TextStyleNode& style : drawing.standard.textStyles())
        if (present.insert(wide(style.Name)).second) findings.emplace_back(wide(style.Name), Tally());
}

void findTextsInForeignStyles(const CheckedDrawing& drawing, Findings& findings) {
    for (const TextStyleFacts& style : drawing.facts.textStyles)
        if (!style.isDependent() && style.objects.count > 0 && isForeignTextStyle(drawing, style.name))
            findings.emplace_back(style.name, style.objects);
    // Of a style that every drawing has, also where the file leaves it out.
    for (const auto& [name, objects] : drawing.facts.missingTextStyles)
        if (isBuiltInTextStyle(name) && isForeignTextStyle(drawing, name)) findings.emplace_back(name, objects);
}

// --- dimension styles

void findMissingDimStyles(const CheckedDrawing& drawing, Findings& findings) {
    tellMissing(drawing.facts.missingDimStyles, isBuiltInDimStyle, findings);
}

void findDimStylesOfForeignText(const CheckedDrawing& drawing, Findings& findings) {
    for (const DimStyleFacts& style : drawing.facts.dimStyles) {
        if (style.isDependent() || style.textStyle.empty()) continue;
        if (style.objects.count == 0 && isBuiltInDimStyle(style.name)) continue;
        if (isForeignTextStyle(drawing, style.textStyle))
            findings.emplace_back(style.name, style.objects, platform::translated(L"writes in %1", style.textStyle));
    }
}

namespace {

// Those under an old name are told as such.
bool isForeignLayer(const CheckedDrawing& drawing, std::wstring_view layer) {
    const bool isDependent = layer.find(L'|') != std::wstring_view::npos;
    return !isDependent && !isBuiltInLayer(layer) && drawing.standard.layer(layer) == nullptr &&
           drawing.standard.layersOfOldName(layer).empty();
}

}  // namespace

void findDimStylesOnForeignLayers(const CheckedDrawing& drawing, Findings& findings) {
    for (const DimStyleFacts& style : drawing.facts.dimStyles) {
        Tally objects;
        std::wstring names;
        for (const auto& [layer, onLayer] : style.objectsByLayer) {
            if (!isForeignLayer(drawing, layer)) continue;
            objects.count += onLayer.count;
            objects.first.insert(objects.first.end(), onLayer.first.begin(), onLayer.first.end());
            names += (names.empty() ? L"" : L", ") + layer;
        }
        if (objects.count == 0) continue;
        // The first of all, not of the first layer.
        std::sort(objects.first.begin(), objects.first.end());
        if (objects.first.size() > Tally::kShown) objects.first.resize(Tally::kShown);
        findings.emplace_back(style.name, objects, platform::translated(L"on %1", names));
    }
}

}  // namespace qrs::audit
