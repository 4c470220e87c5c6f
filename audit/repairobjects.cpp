// Gives objects the layers, linetypes and text styles that a repair has planned for them.
#include <map>
#include <memory>
#include <utility>
#include <vector>

#include "acdb.h"
#include "acutads.h"
#include "acutmem.h"
#include "dbents.h"
#include "dbobjptr.h"
#include "host/platform/language.h"
#include "PipeSystemTool.h"
#include "qrs_looks.h"
#include "repair.h"

namespace qrs::audit {

// Gives objects what they are to have instead. The drawing is not changed while it is walked through.
class Repair::Mover {
  public:
    explicit Mover(const Repair& repair) : repair_(repair) { collect(); }

    // What cannot be changed, by its layer and the reason: what lies on locked layers, cells of tables, and, when it is
    // carried out, what does not succeed.
    std::map<std::pair<const LayerFacts*, std::wstring>, Tally> refused(bool isCarriedOut) const {
        std::map<std::pair<const LayerFacts*, std::wstring>, Tally> refused;
        for (const Move& move : moves_) {
            std::wstring reason;
            if (move.on != nullptr && move.on->isLocked)
                reason = platform::translated(L"the layer is locked");
            else if (isCarriedOut && !carryOut(move))
                reason = platform::translated(L"they cannot be changed");
            else if (move.hasParts)
                reason =
                    platform::translated(L"cells of tables and lines of attributes keep a text style of their own");
            if (!reason.empty()) refused[{move.on, reason}].add(move.id);
        }
        return refused;
    }

  private:
    struct Move {
        AcDbObjectId id;
        const LayerFacts* on = nullptr;
        const std::wstring* layer = nullptr;
        const std::wstring* linetype = nullptr;
        const std::wstring* textStyle = nullptr;
        const std::wstring* override = nullptr;  // the text style of a dimension in place of its style's
        bool hasParts = false;                   // in such a style, which stay
        bool isOne() const { return layer || linetype || textStyle || override || hasParts; }
    };

    static const std::wstring* find(const ByName<std::wstring>& moves, std::wstring_view name) {
        const auto found = name.empty() ? moves.end() : moves.find(name);
        return found != moves.end() ? &found->second : nullptr;
    }

    struct Layer {
        const LayerFacts* facts = nullptr;
        const std::wstring* to = nullptr;
    };

    const std::wstring* layerOf(const TEntityLook& look, const Layer& on) const {
        if (on.facts == nullptr) return find(repair_.layerMoves_, look.layerName);
        const bool isModelOnly = isLayerZero(on.facts->name);
        return isModelOnly && look.space != TEntityLook::kModel ? nullptr : on.to;
    }

    void collect() {
        std::map<AcDbObjectId, Layer> layers;
        for (const LayerFacts& layer : repair_.facts_.layers)
            layers.emplace(layer.id, Layer{&layer, find(repair_.layerMoves_, layer.name)});
        TEntityLooks looks(&repair_.facts_.database);
        for (TEntityLook look; looks.Next(look);) {
            const auto found = layers.find(look.layer);
            const Layer on = found != layers.end() ? found->second : Layer();
            Move move;
            move.id = look.id;
            move.on = on.facts;
            move.layer = layerOf(look, on);
            move.linetype = find(repair_.linetypeMoves_, look.linetype);
            move.textStyle = find(repair_.textStyleMoves_, look.textStyle);
            for (const std::wstring_view style : look.furtherTextStyles) {
                const std::wstring* const to = find(repair_.textStyleMoves_, style);
                if (!look.dimStyle.empty()) move.override = to;
                move.hasParts = move.hasParts || (to != nullptr && look.dimStyle.empty());
            }
            if (move.isOne()) moves_.push_back(move);
        }
    }

    static bool carryOut(const Move& move) {
        AcDbEntityPointer entity(move.id, AcDb::kForWrite);
        if (entity.openStatus() != Acad::eOk) return false;
        bool isDone = true;
        if (move.layer != nullptr) isDone = entity->setLayer(move.layer->c_str(), false) == Acad::eOk;
        if (move.linetype != nullptr)
            isDone = entity->setLinetype(move.linetype->c_str(), false) == Acad::eOk && isDone;
        if (move.textStyle != nullptr) {
            const AcDbObjectId style = PipeSystemTool::InitTextStyle(CString(*move.textStyle));
            isDone = SetTextStyle(entity.object(), style) && isDone;
        }
        if (move.override != nullptr)
            isDone = setOverride(*entity.object(), PipeSystemTool::InitTextStyle(CString(*move.override))) && isDone;
        return isDone;
    }

    // In the extended data of the editor the handle of the text style follows the code that the style has it under.
    static bool setOverride(AcDbEntity& entity, AcDbObjectId style) {
        constexpr short kTextStyle = 340;
        const std::unique_ptr<resbuf, decltype(&acutRelRb)> chain(entity.xData(L"ACAD"), &acutRelRb);
        bool isOverride = false;
        for (resbuf* value = chain.get(); value != nullptr; value = value->rbnext) {
            if (value->restype == AcDb::kDxfXdAsciiString)
                isOverride = std::wstring_view(value->resval.rstring) == L"DSTYLE";
            const bool isIt = isOverride && value->restype == AcDb::kDxfXdInteger16 && value->resval.rint == kTextStyle;
            resbuf* const handle = isIt ? value->rbnext : nullptr;
            if (handle == nullptr || handle->restype != AcDb::kDxfXdHandle) continue;
            acutDelString(handle->resval.rstring);
            return acutNewString(handleOf(style).c_str(), handle->resval.rstring) == Acad::eOk &&
                   entity.setXData(chain.get()) == Acad::eOk;
        }
        return false;
    }

    const Repair& repair_;
    std::vector<Move> moves_;
};

void Repair::moveObjects(bool isCarriedOut) {
    if (layerMoves_.empty() && linetypeMoves_.empty() && textStyleMoves_.empty()) return;
    for (const auto& [where, objects] : Mover(*this).refused(isCarriedOut))
        refusals_.push_back(textOf(objects, where.first) + L": " + where.second);
}

}  // namespace qrs::audit
