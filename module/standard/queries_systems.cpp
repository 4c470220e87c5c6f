// What pipe systems and their groups say of themselves.
#include "PipeSystemTool.h"
#include "standard/holder.h"
#include "standard/layerlookup.h"
#include "standard/systemindex.h"
#include "standard/text.h"

using qrs::standard::currentStandard;
using qrs::standard::Standard;

namespace {

// Answers of a miss, millimetres on paper.
constexpr double kLineWidth = 0.35;
constexpr double kVPipeRadius = 0.5;
constexpr double kVPipeRadius1 = 0.5;
constexpr double kVPipeRadius2 = 0.25;

// Asked anew by every question: the standard may have been edited since.
const PipeNode* currentSystem(const CString& name) {
    const Standard* standard = currentStandard();
    return standard != nullptr ? qrs::standard::systemNamed(*standard, name) : nullptr;
}

// A property of the current system of that name; the answer of a miss when there is none.
template <class Value>
Value property(const CString& systemName, Value PipeNode::*field, const Value& miss = {}) {
    const PipeNode* system = currentSystem(systemName);
    return system != nullptr ? system->*field : miss;
}

// Where the separator first stands in the text; -1 when it does not. An empty one stands nowhere.
int findSeparator(const CString& text, const CString& separator) {
    return separator.IsEmpty() ? -1 : text.Find(separator);
}

bool appendSystemNames(const PipeGroupNode* group, std::vector<CString>& out) {
    if (group != nullptr) group->GetAllPipeSystemNames(out);
    // Names that the caller's list held before count: callers go on with the list as a whole.
    return !out.empty();
}

}  // namespace

namespace PipeSystemTool {

double GetPipeLineWidth(const CString& systemName) {
    return property(systemName, &PipeNode::LineWidth, kLineWidth);
}

double GetVPipeRadius(const CString& systemName) {
    return property(systemName, &PipeNode::VPipeRaidus, kVPipeRadius);
}

double GetVPipeRadius1(const CString& systemName) {
    return property(systemName, &PipeNode::VPipeRaidus1, kVPipeRadius1);
}

double GetVPipeRadius2(const CString& systemName) {
    return property(systemName, &PipeNode::VPipeRaidus2, kVPipeRadius2);
}

int GetVPipeType(const CString& systemName) {
    return property(systemName, &PipeNode::VPipeType);
}

CString GetPipeMaterial(const CString& systemName, PipeMaterialEnum material) {
    // Every value but the first means outdoors: siblings pass further values.
    return property(systemName, material == kIndoorMaterial ? &PipeNode::Material : &PipeNode::OutdoorMaterial);
}

CString GetPipeWaterFlowStatus(const CString& systemName) {
    return property(systemName, &PipeNode::WaterFlowStatus);
}

CString GetPipeRemark(const CString& systemName) {
    return property(systemName, &PipeNode::Remark);
}

Adesk::UInt32 GetPipeStatus(const CString& systemName) {
    // The file keeps the status with a sign, callers take it for flags: -1 is 4294967295.
    return static_cast<Adesk::UInt32>(property(systemName, &PipeNode::Status));
}

void SetPipeStatus(const CString& systemName, Adesk::UInt32 status) {
    const Standard* standard = currentStandard();
    if (standard == nullptr) return;
    // Every group, unlike the questions, which the first one answers: a status holds for all systems of the name.
    for (const qrs::standard::IndexEntry* entry : standard->systems().named(systemName)) {
        PipeNode* system = entry->group->FindPipeSystem(systemName);
        if (system != nullptr) system->Status = static_cast<Adesk::Int32>(status);
    }
}

CString GetPipeDim(const CString& systemName, bool leftPart, const CString& separator) {
    CString text = property(systemName, &PipeNode::Dim);
    const int place = findSeparator(text, separator);
    if (place < 0) return text;
    if (leftPart) return text.Left(place);
    text.Replace(separator, L"");
    return text;
}

CString GetPipeDimB(const CString& systemName, const CString& separator) {
    const CString text = property(systemName, &PipeNode::Dim);
    const int place = findSeparator(text, separator);
    return place < 0 ? CString() : text.Mid(place + separator.GetLength());
}

void GetPipeSystems(std::vector<PipeClassificationNode>& out, bool includeAliases) {
    const Standard* standard = currentStandard();
    if (standard == nullptr) return;
    out.assign(standard->groups.size(), {});
    for (std::size_t i = 0; i < out.size(); ++i)
        standard->groups[i]->GetPipeGroupInfo(out[i], includeAliases);
}

bool GetPipeSystemGroup(const CString& groupName, PipeClassificationNode& info) {
    const Standard* standard = currentStandard();
    if (standard == nullptr) return false;
    for (const auto& group : standard->groups) {
        // The one question that takes a group's name in any case: people type it.
        if (!qrs::standard::equalNoCase(group->GroupName(), groupName)) continue;
        group->GetPipeGroupInfo(info, true);
        return true;
    }
    return false;
}

bool GetPipeSystemsBySystemGroup(const CString& groupName, std::vector<CString>& out) {
    const Standard* standard = currentStandard();
    return standard != nullptr && appendSystemNames(qrs::standard::groupNamed(*standard, groupName), out);
}

bool GetPipeSystemNamesOfGroupByPipeSystemName(const CString& systemName, std::vector<CString>& out) {
    const Standard* standard = currentStandard();
    return standard != nullptr && appendSystemNames(qrs::standard::groupOfSystem(*standard, systemName), out);
}

bool IsGroupIncludedSystem(const CString& groupName, const CString& systemName) {
    const Standard* standard = currentStandard();
    const PipeGroupNode* group = standard != nullptr ? qrs::standard::groupNamed(*standard, groupName) : nullptr;
    return group != nullptr && group->IsIncludedSystem(systemName);
}

}  // namespace PipeSystemTool
