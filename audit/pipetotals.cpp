// Sums up pipes, and tells the sums.
#include "pipetotals.h"

#include <algorithm>
#include <array>
#include <cwchar>
#include <iterator>
#include <nlohmann/json.hpp>
#include <set>
#include <tuple>

#include "csv.h"
#include "host/platform/codepage.h"
#include "host/platform/language.h"
#include "PwxTool.h"
#include "report.h"

namespace qrs::audit {

namespace {

using Json = nlohmann::ordered_json;

std::string utf8(const std::wstring& text) {
    return platform::toUtf8(text);
}

bool comesBefore(const RiserTotals& a, const RiserTotals& b) {
    if (a.building != b.building) return a.building < b.building;
    const int order = PwxTool::CompareSerial(CString(a.serial), CString(b.serial));
    if (order != 0) return order < 0;
    return std::tie(a.serial, a.diameter, a.material) < std::tie(b.serial, b.diameter, b.material);
}

void add(const PipeFacts& pipe, SystemTotals& system) {
    if (!pipe.isRiser) {
        system.pipes.add(pipe.length);
        system.bySize[{std::wstring(pipe.diameter), std::wstring(pipe.material)}].add(pipe.length);
        return;
    }
    system.riserLength.add(pipe.length);
    const auto keyOf = [](const auto& riser) {
        return std::array<std::wstring_view, 4>{riser.building, riser.serial, riser.diameter, riser.material};
    };
    const auto known = std::find_if(system.risers.begin(), system.risers.end(),
                                    [&](const RiserTotals& one) { return keyOf(one) == keyOf(pipe); });
    if (known != system.risers.end()) return known->length.add(pipe.length);
    system.risers.push_back({std::wstring(pipe.building),
                             std::wstring(pipe.serial),
                             std::wstring(pipe.diameter),
                             std::wstring(pipe.material),
                             {}});
    system.risers.back().length.add(pipe.length);
}

std::wstring lengthText(double length) {
    wchar_t text[64];
    std::swprintf(text, std::size(text), L"%.1f", length);
    return text;
}

// "3 pipes, length 7.5"
std::wstring lengthOf(const Length& length, const wchar_t* one, const wchar_t* many) {
    return countedText(length.pipes, one, many) + platform::translated(L", length %1", lengthText(length.length));
}

std::wstring pipesOf(const Length& length) {
    return lengthOf(length, platform::untranslated(L"%1 pipe"), platform::untranslated(L"%1 pipes"));
}

// Wells or attachments: what belongs to the pipes of a system, each once, and what belongs to none.
class Belongings {
  public:
    explicit Belongings(const std::vector<AcDbObjectId>& all) : all_(all.begin(), all.end()) {}

    void add(std::wstring_view system, AcDbObjectId id) {
        if (all_.count(id) == 0) return;
        bySystem_[system].insert(id);
        reached_.insert(id);
    }
    std::uint64_t of(std::wstring_view system) const {
        const auto found = bySystem_.find(system);
        return found != bySystem_.end() ? found->second.size() : 0;
    }
    // One that two systems share is one.
    std::uint64_t all() const { return all_.size(); }
    std::uint64_t lone() const { return all_.size() - reached_.size(); }

  private:
    std::set<AcDbObjectId> all_, reached_;
    std::map<std::wstring_view, std::set<AcDbObjectId>> bySystem_;
};

}  // namespace

void sumUp(const DrawingFacts& facts, PipeTotals& totals) {
    std::map<std::wstring_view, SystemTotals> systems;
    Belongings wells(facts.wells);
    Belongings attachments(facts.attachments);
    for (const PipeFacts& pipe : facts.pipes) {
        add(pipe, systems[pipe.system]);
        if (!pipe.isMeasured) ++totals.unmeasured;
        wells.add(pipe.system, pipe.startNode);
        wells.add(pipe.system, pipe.endNode);
        for (const AcDbObjectId& attachment : pipe.attachments)
            attachments.add(pipe.system, attachment);
    }
    for (auto& [name, system] : systems) {
        system.name = name;
        system.wells = wells.of(name);
        system.attachments = attachments.of(name);
        std::sort(system.risers.begin(), system.risers.end(), &comesBefore);
        totals.all.pipes.add(system.pipes);
        for (const auto& [size, length] : system.bySize)
            totals.all.bySize[size].add(length);
        totals.all.riserLength.add(system.riserLength);
        totals.systems.push_back(std::move(system));
    }
    totals.all.wells = wells.all();
    totals.loneWells = wells.lone();
    totals.all.attachments = attachments.all();
    totals.loneAttachments = attachments.lone();
}

// --- text

namespace {

std::wstring sizeOf(const std::wstring& diameter, const std::wstring& material) {
    return (diameter.empty() ? platform::translated(L"diameter not given") : diameter) + L", " +
           (material.empty() ? platform::translated(L"material not given") : material);
}

std::wstring risersOf(const Length& length) {
    return lengthOf(length, platform::untranslated(L"%1 riser"), platform::untranslated(L"%1 risers"));
}

void addRiser(const RiserTotals& riser, std::wstring& text) {
    text += L"    " + (riser.serial.empty() ? platform::translated(L"serial not given") : riser.serial);
    if (!riser.building.empty()) text += platform::translated(L", building %1", riser.building);
    text += L", " + sizeOf(riser.diameter, riser.material) + L": " + risersOf(riser.length) + L"\n";
}

void addSystem(const SystemTotals& system, std::wstring& text) {
    text += system.name + L"\n  " + pipesOf(system.pipes) + L"\n";
    for (const auto& [size, length] : system.bySize)
        text += L"    " + sizeOf(size.first, size.second) + L": " + pipesOf(length) + L"\n";
    if (system.riserLength.pipes > 0) text += L"  " + risersOf(system.riserLength) + L"\n";
    for (const RiserTotals& riser : system.risers)
        addRiser(riser, text);
    text += L"  " + countedText(system.wells, platform::untranslated(L"%1 well"), platform::untranslated(L"%1 wells")) +
            L", " +
            countedText(system.attachments, platform::untranslated(L"%1 attachment"),
                        platform::untranslated(L"%1 attachments")) +
            L"\n";
}

}  // namespace

std::string textPipes(const PipeReport& report) {
    std::wstring text;
    for (const PipeTotals& totals : report) {
        if (&totals != &report.front()) text += L"\n";
        text += platform::translated(L"Pipes of %1\n",
                                     totals.drawing.empty() ? platform::translated(L"the drawing") : totals.drawing);
        if (!totals.unreadable.empty()) {
            text += platform::translated(L"not read: %1", platform::fromUtf8(totals.unreadable)) + L"\n";
            continue;
        }
        for (const SystemTotals& system : totals.systems)
            addSystem(system, text);
        SystemTotals all = totals.all;
        all.name = platform::translated(L"All systems (%1), lengths in drawing units", totals.systems.size());
        addSystem(all, text);
        if (totals.unmeasured > 0)
            text += L"  " +
                    countedText(totals.unmeasured, platform::untranslated(L"%1 pipe of these too long to be measured"),
                                platform::untranslated(L"%1 pipes of these too long to be measured")) +
                    L"\n";
        if (totals.loneWells > 0)
            text += L"  " +
                    countedText(totals.loneWells, platform::untranslated(L"%1 well of these at no pipe"),
                                platform::untranslated(L"%1 wells of these at no pipe")) +
                    L"\n";
        if (totals.loneAttachments > 0)
            text += L"  " +
                    countedText(totals.loneAttachments, platform::untranslated(L"%1 attachment of these at no pipe"),
                                platform::untranslated(L"%1 attachments of these at no pipe")) +
                    L"\n";
    }
    return utf8(text);
}

// --- CSV: a row for each size, riser and sum

namespace {

class Table {
  public:
    explicit Table(std::wstring drawing) : drawing_(std::move(drawing)) {}

    void add(const SystemTotals& system) {
        for (const auto& [size, length] : system.bySize)
            row({system.name, L"pipe", size.first, size.second, L"", L""}, length.pipes, lengthText(length.length));
        for (const RiserTotals& riser : system.risers)
            row({system.name, L"riser", riser.diameter, riser.material, riser.building, riser.serial},
                riser.length.pipes, lengthText(riser.length.length));
        addCount(system.name, L"well", system.wells);
        addCount(system.name, L"attachment", system.attachments);
    }
    // Of all systems, which these rows leave empty: what two of them share is one.
    void add(const PipeTotals& totals) {
        const SystemTotals& all = totals.all;
        row({L"", L"all-pipes", L"", L"", L"", L""}, all.pipes.pipes, lengthText(all.pipes.length));
        addCount(L"", L"pipes-not-measured", totals.unmeasured);
        row({L"", L"all-risers", L"", L"", L"", L""}, all.riserLength.pipes, lengthText(all.riserLength.length));
        addCount(L"", L"all-wells", all.wells);
        addCount(L"", L"wells-at-no-pipe", totals.loneWells);
        addCount(L"", L"all-attachments", all.attachments);
        addCount(L"", L"attachments-at-no-pipe", totals.loneAttachments);
    }
    void addUnreadable() { addCount(L"", L"unreadable", 1); }
    const std::wstring& text() const { return text_; }

  private:
    void addCount(const std::wstring& system, const wchar_t* what, std::uint64_t count) {
        row({system, what, L"", L"", L"", L""}, count, L"");
    }
    void row(const std::vector<std::wstring>& cells, std::uint64_t count, const std::wstring& length) {
        text_ += csvCell(drawing_);
        for (const std::wstring& cell : cells)
            text_ += L"," + csvCell(cell);
        text_ += L"," + std::to_wstring(count) + L"," + length + L"\n";
    }

    std::wstring drawing_;
    std::wstring text_;
};

}  // namespace

std::string csvPipes(const PipeReport& report) {
    std::wstring text = L"drawing,system,what,diameter,material,building,serial,count,length\n";
    for (const PipeTotals& totals : report) {
        Table table(totals.file);
        for (const SystemTotals& system : totals.systems)
            table.add(system);
        if (totals.unreadable.empty())
            table.add(totals);
        else
            table.addUnreadable();
        text += table.text();
    }
    return utf8(text);
}

// --- JSON

namespace {

// What was not given is null.
Json jsonOf(const std::wstring& text) {
    return text.empty() ? Json() : Json(utf8(text));
}

Json jsonOf(const SystemTotals& system) {
    Json json = {{"pipes", system.pipes.pipes}, {"length", system.pipes.length}, {"sizes", Json::array()}};
    for (const auto& [size, length] : system.bySize)
        json["sizes"].push_back({{"diameter", jsonOf(size.first)},
                                 {"material", jsonOf(size.second)},
                                 {"pipes", length.pipes},
                                 {"length", length.length}});
    json["risers"] = system.riserLength.pipes;
    json["riserLength"] = system.riserLength.length;
    json["wells"] = system.wells;
    json["attachments"] = system.attachments;
    return json;
}

}  // namespace

std::string jsonPipes(const PipeReport& report) {
    Json json = {{"format", 1}, {"drawings", Json::array()}};
    for (const PipeTotals& totals : report) {
        Json drawing = {{"drawing", utf8(totals.file)}};
        if (!totals.unreadable.empty()) drawing["unreadable"] = totals.unreadable;
        drawing["systems"] = Json::array();
        for (const SystemTotals& system : totals.systems) {
            Json one = {{"system", utf8(system.name)}};
            one.update(jsonOf(system));
            one["serials"] = Json::array();
            for (const RiserTotals& riser : system.risers)
                one["serials"].push_back({{"building", jsonOf(riser.building)},
                                          {"serial", jsonOf(riser.serial)},
                                          {"diameter", jsonOf(riser.diameter)},
                                          {"material", jsonOf(riser.material)},
                                          {"risers", riser.length.pipes},
                                          {"length", riser.length.length}});
            drawing["systems"].push_back(std::move(one));
        }
        drawing["all"] = jsonOf(totals.all);
        drawing["pipesNotMeasured"] = totals.unmeasured;
        drawing["wellsAtNoPipe"] = totals.loneWells;
        drawing["attachmentsAtNoPipe"] = totals.loneAttachments;
        json["drawings"].push_back(std::move(drawing));
    }
    return json.dump(2, ' ', false, Json::error_handler_t::replace) + "\n";
}

}  // namespace qrs::audit
