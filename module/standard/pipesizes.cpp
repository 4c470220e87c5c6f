// The tables of pipe sizes and of material prefixes.
#include "standard/pipesizes.h"

#include <algorithm>
#include <cmath>
#include <string_view>

#include "standard/tabletext.h"

namespace qrs::standard {
namespace {

constexpr double kSameDn = 0.001;

// In DataStore.dbf, the records about materials.
constexpr std::int32_t kMaterialRecords = 40;

double number(CDBFRecordset& table, std::wstring_view field) {
    double value = 0.0;
    table.GetFieldValue(field, value);
    return value;
}

}  // namespace

void PipeSizeTable::read(const std::wstring& path) {
    indexes_.clear();
    materials_.clear();
    sizes_.clear();
    CDBFRecordset table;
    if (openTable(table, path)) {
        for (table.MoveFirst(); !table.IsEOF(); table.MoveNext()) {
            const CString material = trimmedText(table, L"GC");
            if (material.IsEmpty()) continue;
            const int next = static_cast<int>(indexes_.size());
            if (indexes_.emplace(material, next).second) materials_.emplace(next, material);
            sizes_[material].push_back({number(table, L"DN"), number(table, L"D"), number(table, L"DJ")});
        }
    }
    indexes_[CString()] = -1;
    materials_[-1] = CString();
    sizes_[CString()].clear();
}

int PipeSizeTable::indexOf(const CString& material) const {
    const auto found = indexes_.find(material);
    return found != indexes_.end() ? found->second : -1;
}

CString PipeSizeTable::materialAt(int index) const {
    const auto found = materials_.find(index);
    return found != materials_.end() ? found->second : CString();
}

const std::vector<PipeSize>& PipeSizeTable::sizes(const CString& material) const {
    static const std::vector<PipeSize> none;
    const auto found = sizes_.find(material);
    return found != sizes_.end() ? found->second : none;
}

const PipeSize* PipeSizeTable::find(const CString& material, double dn) const {
    const std::vector<PipeSize>& all = sizes(material);
    const auto found =
        std::find_if(all.begin(), all.end(), [dn](const PipeSize& size) { return std::fabs(size.dn - dn) < kSameDn; });
    return found != all.end() ? &*found : nullptr;
}

void MaterialPrefixTable::read(const std::wstring& path) {
    prefixes_.clear();
    CDBFRecordset table;
    if (openTable(table, path)) {
        for (table.MoveFirst(); !table.IsEOF(); table.MoveNext()) {
            std::int32_t kind = 0;
            table.GetFieldValue(L"TypeNumber", kind);
            // Of several records of one material the last one counts.
            if (kind == kMaterialRecords) prefixes_[trimmedText(table, L"TypeValue")] = trimmedText(table, L"Remark");
        }
    }
    prefixes_[CString()] = CString();
}

CString MaterialPrefixTable::prefixOf(const CString& material) const {
    const auto found = prefixes_.find(material);
    return found != prefixes_.end() ? found->second : CString();
}

}  // namespace qrs::standard
