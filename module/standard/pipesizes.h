// The tables of pipe sizes and of material prefixes, read whole and kept.
#pragma once

#include <map>
#include <string>
#include <vector>

#include "afx.h"

namespace qrs::standard {

// One size of pipe; all diameters in millimetres.
struct PipeSize {
    double dn = 0.0;
    double outer = 0.0;
    double inner = 0.0;
};

// Materials, in order of first appearance, and their sizes.
class PipeSizeTable {
  public:
    // False until a read; after it, whatever it found, there is at least the empty material.
    bool isRead() const { return !indexes_.empty(); }
    // Replaces all by what the table at the path (inner form) holds, and the empty material, whose index is -1. A path
    // that is empty or names no table gives that one alone.
    void read(const std::wstring& path);

    // -1 when there is no such material.
    int indexOf(const CString& material) const;
    // Empty when there is none.
    CString materialAt(int index) const;
    // In the table's order; empty for an unknown material.
    const std::vector<PipeSize>& sizes(const CString& material) const;
    // The first size whose DN is less than 0.001 away; null when there is none.
    const PipeSize* find(const CString& material, double dn) const;

  private:
    std::map<CString, int> indexes_;
    std::map<int, CString> materials_;
    std::map<CString, std::vector<PipeSize>> sizes_;
};

// What diameters of a material are written with.
class MaterialPrefixTable {
  public:
    // As in PipeSizeTable; the empty material has an empty prefix.
    bool isRead() const { return !prefixes_.empty(); }
    void read(const std::wstring& path);

    // Empty when there is none.
    CString prefixOf(const CString& material) const;

  private:
    std::map<CString, CString> prefixes_;
};

}  // namespace qrs::standard
