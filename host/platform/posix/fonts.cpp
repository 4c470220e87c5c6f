// Installed fonts, as fontconfig knows them.
#include "host/platform/fonts.h"

#include <fontconfig/fontconfig.h>

#include <map>
#include <memory>
#include <string_view>
#include <utility>

#include "host/platform/codepage.h"

namespace qrs::platform {

namespace {

// A font writes a script when it covers the language that stands for it.
struct Script {
    int charset;
    const wchar_t* name;
    const char* language;
};

constexpr Script kScripts[] = {
    {0, L"Western", "en"},
    {128, L"Japanese", "ja"},
    {129, L"Hangul", "ko"},
    {134, L"CHINESE_GB2312", "zh-cn"},
    {136, L"CHINESE_BIG5", "zh-tw"},
    {161, L"Greek", "el"},
    {162, L"Turkish", "tr"},
    {163, L"Vietnamese", "vi"},
    {177, L"Hebrew", "he"},
    {178, L"Arabic", "ar"},
    {186, L"Baltic", "lt"},
    {204, L"Cyrillic", "ru"},
    {222, L"Thai", "th"},
    {238, L"Central European", "pl"},
};
constexpr Script kSymbol = {2, L"Symbol", nullptr};

struct Family {
    std::string_view generic;
    int bits;
};
constexpr Family kFamilies[] = {
    {"serif", 0x10}, {"sans-serif", 0x20}, {"monospace", 0x30}, {"cursive", 0x40}, {"fantasy", 0x50},
};

constexpr int kFixedPitch = 1;
constexpr int kVariablePitch = 2;

template <auto destroy>
struct Destroyer {
    template <class Object>
    void operator()(Object* object) const {
        destroy(object);
    }
};
using Config = std::unique_ptr<FcConfig, Destroyer<FcConfigDestroy>>;
using Pattern = std::unique_ptr<FcPattern, Destroyer<FcPatternDestroy>>;
using ObjectSet = std::unique_ptr<FcObjectSet, Destroyer<FcObjectSetDestroy>>;
using FontSet = std::unique_ptr<FcFontSet, Destroyer<FcFontSetDestroy>>;

const char* characters(const FcChar8* text) {
    return reinterpret_cast<const char*>(text);
}

// Outline fonts alone: text of a drawing is drawn in every size.
FontSet listFonts(FcConfig* config) {
    const Pattern wanted(FcPatternCreate());
    const ObjectSet objects(
        FcObjectSetBuild(FC_FAMILY, FC_LANG, FC_SPACING, FC_SYMBOL, static_cast<const char*>(nullptr)));
    if (!wanted || !objects || !FcPatternAddBool(wanted.get(), FC_SCALABLE, FcTrue)) return nullptr;
    return FontSet(FcFontList(config, wanted.get(), objects.get()));
}

bool isSymbolFont(const FcPattern* font) {
    FcBool symbol = FcFalse;
    return FcPatternGetBool(font, FC_SYMBOL, 0, &symbol) == FcResultMatch && symbol;
}

std::vector<const Script*> scriptsOf(const FcPattern* font) {
    if (isSymbolFont(font)) return {&kSymbol};
    std::vector<const Script*> scripts;
    FcLangSet* languages = nullptr;
    if (FcPatternGetLangSet(font, FC_LANG, 0, &languages) == FcResultMatch) {
        for (const Script& script : kScripts)
            if (FcLangSetHasLang(languages, reinterpret_cast<const FcChar8*>(script.language)) == FcLangEqual)
                scripts.push_back(&script);
    }
    // A font for nothing known is not lost: it counts as one of the first script.
    if (scripts.empty()) scripts.push_back(&kScripts[0]);
    return scripts;
}

int pitchOf(const FcPattern* font) {
    int spacing = FC_PROPORTIONAL;
    FcPatternGetInteger(font, FC_SPACING, 0, &spacing);
    return spacing == FC_PROPORTIONAL ? kVariablePitch : kFixedPitch;
}

// The configuration adds to a family the generic one that stands in for it; one of its names it will know.
int familyBits(FcConfig* config, const FcPattern* font) {
    const Pattern pattern(FcPatternCreate());
    FcChar8* name = nullptr;
    for (int i = 0; pattern && FcPatternGetString(font, FC_FAMILY, i, &name) == FcResultMatch; ++i)
        FcPatternAddString(pattern.get(), FC_FAMILY, name);
    if (!pattern || !FcConfigSubstitute(config, pattern.get(), FcMatchPattern)) return 0;
    for (int i = 0; FcPatternGetString(pattern.get(), FC_FAMILY, i, &name) == FcResultMatch; ++i)
        for (const Family& one : kFamilies)
            if (one.generic == characters(name)) return one.bits;
    return 0;
}

// Faces by name and script, with their pitch and family.
using Faces = std::map<std::pair<std::string, const Script*>, int>;

// A family counts by each of its names: fonts are asked for by the one of any language.
void addFaces(FcConfig* config, const FcPattern* font, Faces& faces) {
    const std::vector<const Script*> scripts = scriptsOf(font);
    const int pitchAndFamily = pitchOf(font) | familyBits(config, font);
    FcChar8* name = nullptr;
    for (int i = 0; FcPatternGetString(font, FC_FAMILY, i, &name) == FcResultMatch; ++i) {
        for (const Script* script : scripts) {
            // Bold and slanted fonts of the family tell the same; where they do not, the lower number counts.
            const auto [known, isNew] = faces.emplace(std::pair(characters(name), script), pitchAndFamily);
            if (!isNew && pitchAndFamily < known->second) known->second = pitchAndFamily;
        }
    }
}

}  // namespace

std::vector<InstalledFont> installedFonts(void*) {
    // A configuration of our own: it sees fonts that came since the last one, and is gone afterwards.
    const Config config(FcInitLoadConfigAndFonts());
    const FontSet fonts = config ? listFonts(config.get()) : nullptr;
    if (!fonts) return {};
    Faces faces;
    for (int i = 0; i < fonts->nfont; ++i)
        addFaces(config.get(), fonts->fonts[i], faces);
    std::vector<InstalledFont> list;
    for (const auto& [face, pitchAndFamily] : faces)
        list.push_back({fromUtf8(face.first), face.second->charset, pitchAndFamily, face.second->name});
    return list;
}

}  // namespace qrs::platform
