// The table of rules, and the severities a file gives them.
#include "rules.h"

#include <algorithm>
#include <cwchar>
#include <iterator>
#include <utility>

#include "csv.h"

namespace qrs::audit {

const std::vector<Rule>& allRules() {
    static const std::vector<Rule> rules = {
        {L"layer-missing", Severity::Error,
         platform::untranslated(L"Objects on a layer that the drawing does not have"),
         platform::untranslated(L"make the layer, or move the objects"), &findMissingLayers},
        {L"layer-foreign", Severity::Warning, platform::untranslated(L"Layers that are not in the standard"),
         platform::untranslated(L"move the objects to a layer of the standard, or map the layer to one"),
         &findForeignLayers},
        {L"layer-different", Severity::Warning, platform::untranslated(L"Layers of the standard with other properties"),
         platform::untranslated(L"give the layer what the standard says"), &findDifferentLayers},
        {L"layer-old-name", Severity::Warning, platform::untranslated(L"Layers under a name of an older standard"),
         platform::untranslated(L"rename the layer, or move its objects"), &findOldLayers},
        {L"layer-case", Severity::Note,
         platform::untranslated(L"Layers spelled with other capitals than in the standard"),
         platform::untranslated(L"spell the name as the standard does"), &findMisspeltLayers},
        {L"layer-unused", Severity::Note, platform::untranslated(L"Layers that nothing lies on"),
         platform::untranslated(L"purge the layer if nobody needs it"), &findUnusedLayers},
        {L"layer-absent", Severity::Off,
         platform::untranslated(L"Layers of the standard that the drawing does not have"),
         platform::untranslated(L"make the layer if the drawing is to have all of them"), &findAbsentLayers},
        {L"own-color", Severity::Warning,
         platform::untranslated(L"Objects with a colour of their own on layers of the standard"),
         platform::untranslated(L"make the colour by layer"), &findOwnColors},
        {L"own-linetype", Severity::Warning,
         platform::untranslated(L"Objects with a linetype of their own on layers of the standard"),
         platform::untranslated(L"make the linetype by layer"), &findOwnLinetypes},
        {L"own-lineweight", Severity::Warning,
         platform::untranslated(L"Objects with a lineweight of their own on layers of the standard"),
         platform::untranslated(L"make the lineweight by layer"), &findOwnLineWeights},
        {L"on-layer-0", Severity::Warning, platform::untranslated(L"Objects of model space on layer 0"),
         platform::untranslated(L"move the objects to a layer of the standard"), &findOnLayerZero},
        {L"linetype-missing", Severity::Error,
         platform::untranslated(L"Objects or layers with a linetype that the drawing does not have"),
         platform::untranslated(L"load the linetype, or give the objects another"), &findMissingLinetypes},
        {L"linetype-foreign", Severity::Warning, platform::untranslated(L"Linetypes that are not in the standard"),
         platform::untranslated(L"use a linetype of the standard"), &findForeignLinetypes},
        {L"linetype-different", Severity::Warning,
         platform::untranslated(L"Linetypes of the standard with another pattern"),
         platform::untranslated(L"load the linetype anew"), &findDifferentLinetypes},
        {L"linetype-case", Severity::Note,
         platform::untranslated(L"Linetypes spelled with other capitals than in the standard"),
         platform::untranslated(L"spell the name as the standard does"), &findMisspeltLinetypes},
        {L"linetype-unused", Severity::Note, platform::untranslated(L"Linetypes that nothing is drawn with"),
         platform::untranslated(L"purge the linetype if nobody needs it"), &findUnusedLinetypes},
        {L"linetype-absent", Severity::Off,
         platform::untranslated(L"Linetypes of linetype.dbf that the drawing does not have"),
         platform::untranslated(L"load the linetype if the drawing is to have all of them"), &findAbsentLinetypes},
        {L"textstyle-missing", Severity::Error,
         platform::untranslated(L"Texts in a style that the drawing does not have"),
         platform::untranslated(L"make the style, or give the texts another"), &findMissingTextStyles},
        {L"textstyle-foreign", Severity::Warning, platform::untranslated(L"Text styles that are not in the standard"),
         platform::untranslated(L"use a text style of the standard"), &findForeignTextStyles},
        {L"textstyle-different", Severity::Warning,
         platform::untranslated(L"Text styles of the standard with other properties"),
         platform::untranslated(L"give the style what the standard says"), &findDifferentTextStyles},
        {L"textstyle-case", Severity::Note,
         platform::untranslated(L"Text styles spelled with other capitals than in the standard"),
         platform::untranslated(L"spell the name as the standard does"), &findMisspeltTextStyles},
        {L"textstyle-unused", Severity::Note, platform::untranslated(L"Text styles that nothing is written in"),
         platform::untranslated(L"purge the style if nobody needs it"), &findUnusedTextStyles},
        {L"textstyle-absent", Severity::Off,
         platform::untranslated(L"Text styles of the standard that the drawing does not have"),
         platform::untranslated(L"make the style if the drawing is to have all of them"), &findAbsentTextStyles},
        {L"text-in-foreign-style", Severity::Warning,
         platform::untranslated(L"Texts in styles that are not in the standard"),
         platform::untranslated(L"give the texts a style of the standard"), &findTextsInForeignStyles},
        {L"dimstyle-missing", Severity::Error,
         platform::untranslated(L"Dimensions in a style that the drawing does not have"),
         platform::untranslated(L"make the style, or give the dimensions another"), &findMissingDimStyles},
        {L"dimstyle-text", Severity::Warning,
         platform::untranslated(L"Dimension styles that write in a text style that is not in the standard"),
         platform::untranslated(L"give the dimension style a text style of the standard"), &findDimStylesOfForeignText},
        {L"dimstyle-layer", Severity::Warning,
         platform::untranslated(L"Dimensions on layers that are not in the standard"),
         platform::untranslated(L"move the dimensions to a layer of the standard"), &findDimStylesOnForeignLayers},
        {L"pipe-system-unknown", Severity::Error,
         platform::untranslated(L"Pipes of a system that the standard does not have"),
         platform::untranslated(L"give the pipes a system of the standard"), &findUnknownSystems},
        {L"pipe-system-old", Severity::Warning, platform::untranslated(L"Pipes that bear an old name of their system"),
         platform::untranslated(L"give the pipes the name of today"), &findOldSystems},
        {L"pipe-layer", Severity::Error, platform::untranslated(L"Pipes on a layer that is not their system's"),
         platform::untranslated(L"move the pipes to the layer of their system, or give them the system of the layer"),
         &findPipesOnOtherLayers},
        {L"riser-without-serial", Severity::Warning, platform::untranslated(L"Risers without a serial"),
         platform::untranslated(L"number the risers"), &findRisersWithoutSerial},
        {L"riser-serial-doubled", Severity::Warning,
         platform::untranslated(L"Risers of one system with the same serial"),
         platform::untranslated(L"number the risers anew, or check that they are one"), &findDoubledSerials},
    };
    return rules;
}

const Rule* ruleNamed(const std::wstring& id) {
    const auto& rules = allRules();
    const auto found = std::find_if(rules.begin(), rules.end(), [&id](const Rule& rule) { return rule.id == id; });
    return found != rules.end() ? &*found : nullptr;
}

Finding::Finding(std::wstring what, const Tally& objects, std::wstring more)
    : subject(std::move(what)), detail(std::move(more)), count(objects.count) {
    for (const AcDbObjectId& id : objects.first)
        if (std::wstring handle = handleOf(id); !handle.empty()) handles.push_back(std::move(handle));
}

// --- weights

RuleWeights::RuleWeights() {
    for (const Rule& rule : allRules())
        weights_.push_back(rule.severity);
}

Severity RuleWeights::of(const Rule& rule) const {
    return weights_[static_cast<std::size_t>(&rule - allRules().data())];
}

bool RuleWeights::read(const std::wstring& path, platform::Error& error) {
    std::vector<CsvRow> rows;
    if (!readCsv(path, rows, error)) return false;
    for (const CsvRow& row : rows) {
        const Rule* rule = ruleNamed(row.cells[0]);
        const std::wstring severity = row.cells.size() > 1 ? row.cells[1] : std::wstring();
        const auto named = std::find(std::begin(kSeverityNames), std::end(kSeverityNames), severity);
        std::wstring fault;
        if (row.cells.size() != 2)
            fault = platform::translated(L"a row is a rule and a severity");
        else if (rule == nullptr)
            fault = platform::translated(L"there is no rule \"%1\"", row.cells[0]);
        else if (named == std::end(kSeverityNames))
            fault = platform::translated(L"\"%1\" is no severity: error, warning, note or off", severity);
        if (!fault.empty()) {
            error.message = faultAt(path, row.line, fault);
            return false;
        }
        weights_[static_cast<std::size_t>(rule - allRules().data())] =
            static_cast<Severity>(named - std::begin(kSeverityNames));
    }
    return true;
}

// --- what rules share

bool isBuiltInLayer(std::wstring_view name) {
    return name == L"0" || isSameName(name, L"Defpoints") || name.substr(0, 1) == L"*";
}

bool isBuiltInLinetype(std::wstring_view name) {
    return isSameName(name, L"Continuous") || isSameName(name, L"ByLayer") || isSameName(name, L"ByBlock");
}

bool isBuiltInTextStyle(std::wstring_view name) {
    // The last one is that of texts in linetypes, which is made with the linetypes.
    return isSameName(name, L"Standard") || isSameName(name, L"Annotative") || name == L"文字线形";
}

std::wstring textOf(const AcCmColor& color) {
    if (color.isByLayer()) return platform::translated(L"by layer");
    if (color.isByBlock()) return platform::translated(L"by block");
    if (!color.isByColor()) return std::to_wstring(color.colorIndex());
    return std::to_wstring(color.red()) + L"," + std::to_wstring(color.green()) + L"," + std::to_wstring(color.blue());
}

std::wstring textOf(AcDb::LineWeight weight) {
    if (weight == AcDb::kLnWtByLwDefault) return platform::translated(L"default");
    if (weight < 0) return platform::translated(weight == AcDb::kLnWtByLayer ? L"by layer" : L"by block");
    wchar_t text[32];
    std::swprintf(text, std::size(text), L"%.2f mm", static_cast<int>(weight) / 100.0);
    return text;
}

std::wstring textOf(double number) {
    wchar_t text[64];
    std::swprintf(text, std::size(text), L"%.6g", number);
    return text;
}

}  // namespace qrs::audit
