// Gives objects the layers, linetypes and text styles that a repair has planned for them.
#include <algorithm>
#include <cstdint>
#include <map>
#include <memory>
#include <string>
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

// Gives objects what they are to have instead. The drawing is walked through before anything in it is changed.
class Repair::Mover {
  public:
    explicit Mover(Repair& repair) : repair_(repair) {
        if (repair.layerMoves_.empty() && repair.linetypeMoves_.empty() && repair.textStyleMoves_.empty()) return;
        collect();
        refuseBeforehand();
    }

    void carryOut() {
        for (const Move& move : moves_)
            if (!carryOut(move)) refuse(move, platform::translated(L"they cannot be changed"));
        repair_.takeOff(kept_);
    }

    // What is not changed, by its layer and the reason.
    const std::map<std::pair<const LayerFacts*, std::wstring>, Tally>& refused() const { return refused_; }

  private:
    struct Move {
        AcDbObjectId id;
        const LayerFacts* on = nullptr;
        const std::wstring* layer = nullptr;
        const std::wstring* linetype = nullptr;
        const std::wstring* textStyle = nullptr;
        const std::wstring* override = nullptr;  // the text style of a dimension in place of its style's
        bool isCounted = true;
        bool isOne() const { return layer || linetype || textStyle || override; }
    };

    // Cells of a table, or lines of an attribute.
    struct Part {
        AcDbObjectId of;
        const LayerFacts* on = nullptr;
        const std::wstring* textStyle = nullptr;
    };

    static const std::wstring* find(const ByName<std::wstring>& moves, std::wstring_view name) {
        const auto found = name.empty() ? moves.end() : moves.find(name);
        return found != moves.end() ? &found->second : nullptr;
    }

    struct Layer {
        const LayerFacts* facts = nullptr;
        const std::wstring* to = nullptr;
    };

    const std::wstring* layerOf(const TEntityLook& look, const Layer& on, bool isOfBlock) const {
        if (on.facts == nullptr) return find(repair_.layerMoves_, look.layerName);
        const bool isForBlock = look.space != TEntityLook::kModel || (look.isPart && isOfBlock);
        return isLayerZero(on.facts->name) && isForBlock ? nullptr : on.to;
    }

    // What lies on locked layers, and what keeps its text style.
    void refuseBeforehand() {
        const auto isRefused = [this](const Move& move) {
            const bool isLocked = move.on != nullptr && move.on->isLocked;
            if (isLocked) refuse(move, platform::translated(L"the layer is locked"));
            return isLocked;
        };
        moves_.erase(std::remove_if(moves_.begin(), moves_.end(), isRefused), moves_.end());
        AcDbObjectId last;
        for (const Part& part : parts_) {
            const std::wstring reason =
                platform::translated(L"cells of tables and lines of attributes keep a text style of their own");
            if (part.of != last) refused_[{part.on, reason}].add(part.of);
            last = part.of;
            ++kept_[part.textStyle];
        }
        repair_.takeOff(kept_);
        kept_.clear();
    }

    void refuse(const Move& move, const std::wstring& reason) {
        if (!move.isCounted) return;
        refused_[{move.on, reason}].add(move.id);
        for (const std::wstring* name : {move.layer, move.linetype, move.textStyle, move.override})
            if (name != nullptr) ++kept_[name];
    }

    void collect() {
        std::map<AcDbObjectId, Layer> layers;
        for (const LayerFacts& layer : repair_.facts_.layers)
            layers.emplace(layer.id, Layer{&layer, find(repair_.layerMoves_, layer.name)});
        TEntityLooks looks(&repair_.facts_.database);
        bool isOfBlock = false;
        for (TEntityLook look; looks.Next(look);) {
            if (!look.isPart) isOfBlock = look.typeName == "INSERT";
            const auto found = layers.find(look.layer);
            const Layer on = found != layers.end() ? found->second : Layer();
            Move move;
            move.id = look.id;
            move.on = on.facts;
            move.isCounted = isCounted(look);
            move.layer = layerOf(look, on, isOfBlock);
            move.linetype = find(repair_.linetypeMoves_, look.linetype);
            move.textStyle = find(repair_.textStyleMoves_, look.textStyle);
            for (const std::wstring_view style : look.furtherTextStyles) {
                const std::wstring* const to = find(repair_.textStyleMoves_, style);
                if (!look.dimStyle.empty())
                    move.override = to;
                else if (to != nullptr)
                    parts_.push_back({look.id, on.facts, to});
            }
            if (move.isOne()) moves_.push_back(move);
        }
    }

    static bool isMade(const std::wstring* name) { return name != nullptr && !name->empty(); }

    static bool carryOut(const Move& move) {
        AcDbEntityPointer entity(move.id, AcDb::kForWrite);
        if (entity.openStatus() != Acad::eOk) return false;
        bool isDone = true;
        if (isMade(move.layer)) isDone = entity->setLayer(move.layer->c_str(), false) == Acad::eOk;
        if (isMade(move.linetype)) isDone = entity->setLinetype(move.linetype->c_str(), false) == Acad::eOk && isDone;
        if (isMade(move.textStyle)) {
            const AcDbObjectId style = PipeSystemTool::InitTextStyle(CString(*move.textStyle));
            isDone = SetTextStyle(entity.object(), style) && isDone;
        }
        if (isMade(move.override))
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

    Repair& repair_;
    std::vector<Move> moves_;
    std::vector<Part> parts_;
    std::map<const std::wstring*, std::uint64_t> kept_;  // how many objects are not given a name
    std::map<std::pair<const LayerFacts*, std::wstring>, Tally> refused_;
};

void Repair::finish(bool isCarriedOut) {
    Mover mover(*this);
    if (isCarriedOut) {
        applyChanges();
        mover.carryOut();
    }
    for (const auto& [where, objects] : mover.refused())
        refusals_.push_back(textOf(objects, nameOf(where.first)) + L": " + where.second);
}

}  // namespace qrs::audit
