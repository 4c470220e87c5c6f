// The table of papers, and the plot settings of layouts.
#include "host/plot/page.h"

#include <algorithm>
#include <cmath>
#include <cwchar>

#include "host/dxf/classcodes.h"
#include "host/dxf/recordwalk.h"
#include "host/pick/entity.h"
#include "host/platform/codepage.h"

namespace qrs::host::plot {

namespace {

constexpr double kLongestSide = 20000;  // millimetres

struct NamedPaper {
    const wchar_t* name;
    Paper paper;
};

constexpr NamedPaper kPapers[] = {
    {L"A0", {1189, 841}}, {L"A1", {841, 594}}, {L"A2", {594, 420}},         {L"A3", {420, 297}},
    {L"A4", {297, 210}},  {L"A5", {210, 148}}, {L"LETTER", {279.4, 215.9}},
};

}  // namespace

bool isFit(const std::wstring& name) {
    return platform::compareNoCase(name, L"fit") == 0;
}

std::optional<Paper> paperNamed(const std::wstring& name) {
    constexpr std::wstring_view kPortrait = L"-portrait";
    const std::wstring folded = platform::foldCase(name);
    for (const NamedPaper& one : kPapers) {
        if (folded == platform::foldCase(one.name)) return one.paper;
        if (folded == platform::foldCase(one.name + std::wstring(kPortrait)))
            return Paper{one.paper.height, one.paper.width};
    }
    const wchar_t* const text = name.c_str();
    wchar_t* end = nullptr;
    Paper paper;
    paper.width = std::wcstod(text, &end);
    if (end == text || (*end != L'x' && *end != L'X')) return std::nullopt;
    const wchar_t* const second = end + 1;
    paper.height = std::wcstod(second, &end);
    if (end == second || *end != L'\0') return std::nullopt;
    const auto isSound = [](double side) { return side >= 1.0 && side <= kLongestSide; };
    return isSound(paper.width) && isSound(paper.height) ? std::optional<Paper>(paper) : std::nullopt;
}

Paper turnedFor(const Paper& paper, const pick::Box& extents) {
    const bool isUpright = extents.high.y - extents.low.y > extents.high.x - extents.low.x;
    return isUpright == (paper.height > paper.width) ? paper : Paper{paper.height, paper.width};
}

std::optional<PageSetup> readPageSetup(const dxf::Drawing& drawing, std::uint64_t block) {
    namespace plotsettings = dxf::codes::plotsettings;
    const dxf::RecordId section = drawing.findSection("OBJECTS");
    if (section == dxf::kNoRecord || block == 0) return std::nullopt;
    for (dxf::RecordId id = drawing.next(section); id != dxf::kNoRecord; id = drawing.next(id)) {
        if (drawing.record(id).kind != dxf::RecordKind::Object) break;
        if (drawing.typeNameOf(id) != "LAYOUT") continue;
        double values[200] = {};
        std::uint64_t itsBlock = 0;
        dxf::RecordWalk walk(drawing.tags(id));
        for (dxf::Tag tag; walk.next(tag) && walk.part() != dxf::Part::Xdata;) {
            if (!walk.isOwn()) continue;
            if (walk.section() == "AcDbLayout" && tag.code == dxf::codes::layout::kBlock)
                itsBlock = dxf::toHandle(tag.value);
            if (walk.section() == "AcDbPlotSettings" && tag.code >= 40 && tag.code < 200)
                values[tag.code] = pick::finiteOf(tag.value).value_or(0.0);
        }
        if (itsBlock != block) continue;
        PageSetup setup;
        setup.paper = {values[plotsettings::kPaperWidth], values[plotsettings::kPaperHeight]};
        setup.left = values[plotsettings::kLeftMargin];
        setup.bottom = values[plotsettings::kBottomMargin];
        setup.right = values[plotsettings::kRightMargin];
        setup.top = values[plotsettings::kTopMargin];
        // A quarter turn to the left and to the right, and half a turn, which paper does not show.
        const int turns = static_cast<int>(values[plotsettings::kRotation]) & 3;
        if (turns == 1) {
            std::swap(setup.paper.width, setup.paper.height);
            const double left = setup.left;
            setup.left = setup.bottom, setup.bottom = setup.right, setup.right = setup.top, setup.top = left;
        } else if (turns == 3) {
            std::swap(setup.paper.width, setup.paper.height);
            const double left = setup.left;
            setup.left = setup.top, setup.top = setup.right, setup.right = setup.bottom, setup.bottom = left;
        }
        const bool isSound = setup.paper.width >= 1 && setup.paper.height >= 1 && setup.paper.width <= kLongestSide &&
                             setup.paper.height <= kLongestSide;
        if (!isSound) setup.paper = {};
        setup.area = static_cast<PageSetup::Area>(
            std::clamp(static_cast<int>(values[plotsettings::kArea]), 0, static_cast<int>(PageSetup::Area::Layout)));
        setup.window.add({values[plotsettings::kWindowLeft], values[plotsettings::kWindowBottom], 0});
        setup.window.add({values[plotsettings::kWindowRight], values[plotsettings::kWindowTop], 0});
        constexpr double kInches = 0;
        setup.millimetresPerUnit = values[plotsettings::kUnits] == kInches ? 25.4 : 1.0;
        const double units = values[plotsettings::kDrawingUnits];
        const bool fits = values[plotsettings::kStandardScale] == 0;
        if (!fits && units > 0) setup.scale = values[plotsettings::kPaperUnits] / units * setup.millimetresPerUnit;
        return setup;
    }
    return std::nullopt;
}

}  // namespace qrs::host::plot
