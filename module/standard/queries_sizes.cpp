// Materials, sizes and prefixes of pipes.
#include <cmath>
#include <limits>

#include "host/platform/codepage.h"
#include "PipeSystemTool.h"
#include "qrs_kernal.h"
#include "qrs_public.h"
#include "standard/holder.h"
#include "standard/pipesizes.h"
#include "standard/startup.h"
#include "standard/text.h"

using qrs::standard::MaterialPrefixTable;
using qrs::standard::PipeSize;
using qrs::standard::PipeSizeTable;

namespace {

// The table, read when first asked for and kept as long as the module is loaded: neither another standard nor a change
// of the file makes it read again, so that one session measures with one set of sizes.
template <class Table>
const Table& keptTable(const wchar_t* file) {
    static Table table;
    if (!table.isRead()) {
        std::wstring path;
        QrsExport::FindFile(file, path);
        table.read(path);
    }
    return table;
}

const PipeSizeTable& pipeSizes() {
    return keptTable<PipeSizeTable>(L"pipe.dbf");
}

const MaterialPrefixTable& prefixes() {
    return keptTable<MaterialPrefixTable>(L"DataStore.dbf");
}

// Cut towards zero; numbers that no int holds become the nearest that one does.
int cutToInteger(double value) {
    using Limits = std::numeric_limits<int>;
    if (std::isnan(value)) return 0;
    if (value >= Limits::max()) return Limits::max();
    if (value <= Limits::min()) return Limits::min();
    return static_cast<int>(value);
}

TWCStringList materialNames() {
    TWCStringList names;
    for (int i = 0;; ++i) {
        const CString name = pipeSizes().materialAt(i);
        if (name.IsEmpty()) return names;
        names.push_back(qrs::standard::wide(name));
    }
}

}  // namespace

void qrs::standard::offerPipeMaterials() {
    SetPipeMaterialSource(materialNames);
}

void qrs::standard::withdrawPipeMaterials() {
    SetPipeMaterialSource(nullptr);
}

namespace PipeSystemTool {

int GetIndexOfPIpeMaterial(const CString& material) {
    return pipeSizes().indexOf(material);
}

CString GetPipeMaterialByIndex(int index) {
    return pipeSizes().materialAt(index);
}

int GetPipeMaterialIndex(const CString& systemName, PipeMaterialEnum material) {
    if (qrs::standard::currentStandard() == nullptr) return -1;
    return GetIndexOfPIpeMaterial(GetPipeMaterial(systemName, material));
}

int GetMaterialIndex(const CString& material) {
    return GetMaterialIndex(GetPipeMaterialList(), material);
}

int GetMaterialIndex(const TWCStringList& materials, const CString& material) {
    for (std::size_t i = 0; i < materials.size(); ++i) {
        if (qrs::platform::compareNoCase(materials[i], qrs::standard::view(material)) == 0) return static_cast<int>(i);
    }
    // Not -1 as GetIndexOfPIpeMaterial: combo boxes select what this answers, and fall back to their first line.
    return 0;
}

bool GetPipeDnByMaterial(const CString& material, TDPtrList<int>& out) {
    for (const PipeSize& size : pipeSizes().sizes(material))
        out.Append(cutToInteger(size.dn));
    return !out.IsEmpty();
}

double GetPipeOuterDn(const CString& material, double dn) {
    const PipeSize* size = pipeSizes().find(material, dn);
    return size != nullptr ? size->outer : dn;
}

double GetPipeInnerDn(const CString& material, double dn) {
    const PipeSize* size = pipeSizes().find(material, dn);
    return size != nullptr ? size->inner : dn;
}

double GetPipeThick(const CString& material, double dn) {
    const PipeSize* size = pipeSizes().find(material, dn);
    // The difference of the diameters, not half of it as the name would have it: callers reckon with the difference.
    return size != nullptr ? size->outer - size->inner : 0.0;
}

CString GetPrefixOfPipeMaterial(const CString& material) {
    return prefixes().prefixOf(material);
}

CString GetPrefixOfPipeMaterial(int index) {
    return GetPrefixOfPipeMaterial(GetPipeMaterialByIndex(index));
}

}  // namespace PipeSystemTool
