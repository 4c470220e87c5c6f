// Which entities of a drawing a selection takes.
#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <string_view>
#include <unordered_set>
#include <vector>

#include "adsdef.h"
#include "dbmain.h"
#include "host/drawing/spaces.h"
#include "host/dxf/drawing.h"
#include "host/dxf/groupcodes.h"

namespace qrs::host::ed {

// The conditions of a filter chain; all must hold. Groups of conditions stand between the operators "<AND" and "AND>",
// "<OR", "<XOR" and "<NOT"; a comparison (">=") stands before the number it is for, a list of them (">,>,*") before a
// point. Names of applications whose extended data an entity must have follow the type -3.
class EntityFilter {
  public:
    // wildcards: in layer names, too (other texts always take them). False from isUsable for a chain with conditions or
    // operators that are not known; fault tells which.
    EntityFilter(AcDbDatabase& database, const resbuf* chain, bool wildcards);

    bool isUsable() const { return fault_.empty(); }
    const std::wstring& fault() const { return fault_; }
    bool passesAll() const { return all_.parts.empty(); }
    bool passes(dxf::RecordId id) const { return holds(all_, id); }

    // The group codes that conditions may have, and the comparisons, for messages.
    static std::wstring knownCodes();
    static std::wstring knownComparisons();

  private:
    enum class Kind { Condition, And, Or, Xor, Not };
    struct Field;
    struct Comparison;
    struct Operator;
    static const Field kFields[];
    static const Comparison kComparisons[];
    static const Operator kOperators[];

    using Values = std::array<double, 3>;  // a point; of a number the first

    struct Node {
        Kind kind = Kind::And;
        std::vector<Node> parts;  // of a group
        const Field* field = nullptr;
        std::vector<const Comparison*> comparisons;  // none: equal
        Values point{};
        std::wstring text;
        // Of layers: those meant, in one case, and the patterns among them.
        std::unordered_set<std::wstring> layers;
        std::vector<std::wstring> patterns;
        std::vector<EntitySpace> spaces;  // of the layouts meant
        // Answers by layer name or by type: a drawing has few of them and many entities.
        enum class Answer : unsigned char { None, No, Yes };
        mutable std::vector<Answer> known;
    };

    bool holds(const Node& node, dxf::RecordId id) const;
    // --- what the fields ask
    bool typeHolds(const Node& condition, dxf::RecordId id) const;
    bool layerHolds(const Node& condition, dxf::RecordId id) const;
    bool textHolds(const Node& condition, dxf::RecordId id) const;
    bool anyTextHolds(const Node& condition, dxf::RecordId id) const;
    bool xdataHolds(const Node& condition, dxf::RecordId id) const;
    bool layoutHolds(const Node& condition, dxf::RecordId id) const;
    bool numberHolds(const Node& condition, dxf::RecordId id) const;
    bool pointHolds(const Node& condition, dxf::RecordId id) const;
    bool paperHolds(const Node& condition, dxf::RecordId id) const;
    // The answer that is kept under a key, or is found now.
    template <typename Find>
    static bool knownOr(const Node& condition, std::uint32_t key, Find&& find);
    bool isOneOf(const Node& condition, dxf::NameId layer) const;
    bool hasDefault(const Field& field, dxf::RecordId id) const;
    static bool fits(const Node& condition, const Values& values);

    // Reads a group up to its end; the link after it.
    const resbuf* readGroup(Node& group, const resbuf* link, const wchar_t* end, int depth);
    // Whether it has as many parts as its kind takes.
    static bool isWhole(const Node& group);
    // A chain that cannot be used is read no further.
    const resbuf* refuse(const std::wstring& fault);
    void addCondition(Node& group, const resbuf& link, const wchar_t* comparisons);
    static bool readComparisons(Node& condition, std::wstring_view list, dxf::ValueKind kind);
    void addLayer(Node& group, const Field& field, const wchar_t* name);

    AcDbDatabase& database_;
    dxf::Drawing& drawing_;
    bool wildcards_;
    std::wstring fault_;
    bool inXdata_ = false;
    Node all_;
};

}  // namespace qrs::host::ed
