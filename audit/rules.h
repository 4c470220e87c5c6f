// The rules of a check, and what one finds.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "facts.h"
#include "host/platform/error.h"
#include "host/platform/language.h"
#include "standardlists.h"

namespace qrs::audit {

enum class Severity { Off, Note, Warning, Error };
// As files of rules spell them.
constexpr const wchar_t* kSeverityNames[] = {L"off", platform::untranslated(L"note"),
                                             platform::untranslated(L"warning"), platform::untranslated(L"error")};
inline const wchar_t* nameOf(Severity severity) {
    return kSeverityNames[static_cast<int>(severity)];
}

struct Rule;

// One property of something that the standard has otherwise.
struct Difference {
    std::wstring property, drawing, standard;
};

struct Finding {
    const Rule* rule = nullptr;
    Severity severity = Severity::Off;
    std::wstring subject;  // the layer, style or pipe system it is about
    std::wstring detail;   // what else is to be said; may be empty
    // What rows of accepted findings call it where the subject alone would take in others: subject and detail, as any
    // language prints them. Empty: the subject.
    std::vector<std::wstring> names;
    std::vector<Difference> differences;
    std::uint64_t count = 0;  // of objects
    std::vector<std::wstring> handles;
    std::wstring reason;  // why it was accepted; empty when it was not

    Finding(std::wstring what, const Tally& objects, std::wstring more = {});
};

struct CheckedDrawing {
    const DrawingFacts& facts;
    const StandardLists& standard;
};
using Findings = std::vector<Finding>;

struct Rule {
    const wchar_t* id;
    Severity severity;      // unless a file says otherwise
    const wchar_t* title;   // what it finds; this and the next are translated where they are shown
    const wchar_t* remedy;  // what to do
    void (*find)(const CheckedDrawing& drawing, Findings& findings);
};

// All of them, in the order in which they are told.
const std::vector<Rule>& allRules();
// Null when there is none of that name.
const Rule* ruleNamed(const std::wstring& id);

// How much each rule weighs in a check.
class RuleWeights {
  public:
    RuleWeights();
    // Rows of a rule and a severity. False, with file and line in error, when a row names another rule or severity.
    bool read(const std::wstring& path, platform::Error& error);
    Severity of(const Rule& rule) const;

  private:
    std::vector<Severity> weights_;
};

// What every drawing of the editor has, and a standard therefore need not name.
bool isBuiltInLayer(std::wstring_view name);
bool isBuiltInLinetype(std::wstring_view name);
bool isBuiltInTextStyle(std::wstring_view name);
// "3", "by layer", "255,128,0", in the language of the user.
std::wstring textOf(const AcCmColor& color);
// "0.35 mm", "default".
std::wstring textOf(AcDb::LineWeight weight);
// Without digits that say nothing.
std::wstring textOf(double number);

// In what they differ; what a definition leaves open ("by layer") is never different.
std::vector<Difference> differencesOf(const CheckedDrawing& drawing, const LayerFacts& layer,
                                      const LayerNode& definition);
std::vector<Difference> differencesOf(const CheckedDrawing& drawing, const RecordFacts& linetype);
std::vector<Difference> differencesOf(const TextStyleFacts& style, const TextStyleNode& node);
// Whether styles can be given its font here. A typeface that is not installed can neither be written nor compared.
bool canHaveFontOf(const TextStyleNode& node);
// A standard that says nothing of the width has 0.
double widthFactorOf(const TextStyleNode& node);
// The layers of the standard that a name stands for: itself, or what an old name became.
std::vector<const LayerNode*> layersOfToday(const StandardLists& standard, std::wstring_view name);
// What a layer under an old name is called today; none when its name is no old one, or nothing lies on it.
std::vector<const LayerNode*> newLayersOf(const StandardLists& standard, const LayerFacts& layer);

// --- layers
void findMissingLayers(const CheckedDrawing& drawing, Findings& findings);
void findForeignLayers(const CheckedDrawing& drawing, Findings& findings);
void findDifferentLayers(const CheckedDrawing& drawing, Findings& findings);
void findOldLayers(const CheckedDrawing& drawing, Findings& findings);
void findMisspeltLayers(const CheckedDrawing& drawing, Findings& findings);
void findUnusedLayers(const CheckedDrawing& drawing, Findings& findings);
void findAbsentLayers(const CheckedDrawing& drawing, Findings& findings);
void findOwnColors(const CheckedDrawing& drawing, Findings& findings);
void findOwnLinetypes(const CheckedDrawing& drawing, Findings& findings);
void findOwnLineWeights(const CheckedDrawing& drawing, Findings& findings);
void findOnLayerZero(const CheckedDrawing& drawing, Findings& findings);
// --- linetypes, text and dimension styles
void findMissingLinetypes(const CheckedDrawing& drawing, Findings& findings);
void findForeignLinetypes(const CheckedDrawing& drawing, Findings& findings);
void findDifferentLinetypes(const CheckedDrawing& drawing, Findings& findings);
void findMisspeltLinetypes(const CheckedDrawing& drawing, Findings& findings);
void findUnusedLinetypes(const CheckedDrawing& drawing, Findings& findings);
void findAbsentLinetypes(const CheckedDrawing& drawing, Findings& findings);
void findMissingTextStyles(const CheckedDrawing& drawing, Findings& findings);
void findForeignTextStyles(const CheckedDrawing& drawing, Findings& findings);
void findDifferentTextStyles(const CheckedDrawing& drawing, Findings& findings);
void findMisspeltTextStyles(const CheckedDrawing& drawing, Findings& findings);
void findUnusedTextStyles(const CheckedDrawing& drawing, Findings& findings);
void findAbsentTextStyles(const CheckedDrawing& drawing, Findings& findings);
void findTextsInForeignStyles(const CheckedDrawing& drawing, Findings& findings);
void findMissingDimStyles(const CheckedDrawing& drawing, Findings& findings);
void findDimStylesOfForeignText(const CheckedDrawing& drawing, Findings& findings);
void findDimStylesOnForeignLayers(const CheckedDrawing& drawing, Findings& findings);
// --- pipes
void findUnknownSystems(const CheckedDrawing& drawing, Findings& findings);
void findOldSystems(const CheckedDrawing& drawing, Findings& findings);
void findPipesOnOtherLayers(const CheckedDrawing& drawing, Findings& findings);
void findRisersWithoutSerial(const CheckedDrawing& drawing, Findings& findings);
void findDoubledSerials(const CheckedDrawing& drawing, Findings& findings);

}  // namespace qrs::audit
