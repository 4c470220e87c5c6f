// Which entities of a drawing a selection takes.
#pragma once

#include <cstdint>
#include <string>
#include <unordered_map>
#include <unordered_set>
#include <vector>

#include "adsdef.h"
#include "dbmain.h"
#include "host/dxf/drawing.h"

namespace qrs::host::ed {

// The conditions of a filter chain; all must hold. Groups of conditions stand between the operators "<AND" and "AND>",
// "<OR", "<XOR" and "<NOT".
class EntityFilter {
  public:
    // wildcards: in layer names, too (types and linetypes always take them). False from isUsable for a chain with
    // conditions or operators that are not known.
    EntityFilter(AcDbDatabase& database, const resbuf* chain, bool wildcards);

    bool isUsable() const { return usable_; }
    bool passesAll() const { return all_.parts.empty(); }
    bool passes(dxf::RecordId id) const { return holds(all_, id); }

  private:
    enum class Kind { Condition, And, Or, Xor, Not };
    struct Node {
        Kind kind = Kind::And;
        std::vector<Node> parts;  // of a group
        short code = 0;
        int number = 0;
        std::wstring text;
        // Of layers: those meant, in one case, and the patterns among them.
        std::unordered_set<std::wstring> layers;
        std::vector<std::wstring> patterns;
        // Answers by layer name or by type: a drawing has few of them and many entities.
        mutable std::unordered_map<std::uint32_t, bool> known;
    };
    struct Operator;
    static const Operator kOperators[];

    bool holds(const Node& node, dxf::RecordId id) const;
    bool holdsCondition(const Node& condition, dxf::RecordId id) const;
    bool isOneOf(const Node& condition, dxf::NameId layer) const;
    bool hasXdataOf(dxf::RecordId id, const std::wstring& applications) const;
    bool textMatches(dxf::RecordId id, int code, const wchar_t* fallback, const std::wstring& pattern) const;
    // Reads a group up to its end; the link after it.
    const resbuf* readGroup(Node& group, const resbuf* link, const wchar_t* end);
    void addCondition(Node& group, const resbuf& link);
    void addLayer(Node& group, const wchar_t* name);

    dxf::Drawing& drawing_;
    bool wildcards_;
    bool usable_ = true;
    bool inXdata_ = false;
    Node all_;
};

}  // namespace qrs::host::ed
