// Colours, weights and linetypes, from entities, layers and block references.
#include "host/plot/entitylooks.h"

#include <cmath>
#include <optional>

#include "host/drawing/dictionaries.h"
#include "host/drawing/objecttags.h"
#include "host/dxf/classcodes.h"
#include "host/pick/layerstates.h"
#include "host/platform/codepage.h"

namespace qrs::host::plot {

namespace {

namespace codes = dxf::codes;

constexpr long kWeightByLayer = -1;
constexpr long kWeightByBlock = -2;
constexpr double kUsualWeight = 0.25;  // millimetres
constexpr long kOpacityByBlock = 0x01000000;
constexpr long kOpacityGiven = 0x02000000;

double weightOf(long hundredths) {
    return hundredths < 0 ? kUsualWeight : static_cast<double>(hundredths) / 100.0;
}

std::uint8_t opacityOf(long transparency) {
    return static_cast<std::uint8_t>(transparency & 0xFF);
}

// A layer's stands in its extended data.
long transparencyOfLayer(const dxf::Drawing& drawing, dxf::RecordId layer) {
    dxf::TagCursor cursor = drawing.tags(layer);
    bool isMeant = false;
    for (dxf::Tag tag; cursor.next(tag);) {
        if (tag.code == codes::kXdataApplication) isMeant = dxf::trimmed(tag.value) == "AcCmTransparency";
        if (isMeant && tag.code == codes::kXdataLong) return static_cast<long>(dxf::toInteger(tag.value));
    }
    return 0;
}

// The tags that say what an entity is drawn with.
struct OwnLook {
    long color = kByLayer;
    std::optional<long> trueColor;
    long weight = kWeightByLayer;
    std::string_view linetype;
    double linetypeScale = 1.0;
    long transparency = 0;
};

OwnLook readOwn(const pick::Entity& entity) {
    OwnLook own;
    bool hasMarks = false;
    for (const pick::Entity::Field& field : entity.fields())
        switch (field.code) {
            case codes::kColor:
                own.color = static_cast<long>(dxf::toInteger(field.value, kByLayer));
                break;
            case codes::kTrueColor:
                own.trueColor = static_cast<long>(dxf::toInteger(field.value));
                break;
            case codes::kLineWeight:
                own.weight = static_cast<long>(dxf::toInteger(field.value, kWeightByLayer));
                break;
            case codes::kLinetype:
                own.linetype = dxf::trimmed(field.value);
                break;
            case codes::kLinetypeScale:
                own.linetypeScale = pick::finiteOf(field.value).value_or(1.0);
                break;
            case codes::kTransparency:
                own.transparency = static_cast<long>(dxf::toInteger(field.value));
                break;
            case codes::kSubclass:
                hasMarks = true;
                break;
            case codes::kPoint:
                // What all entities share stands before; without marks, as in R12, anywhere.
                if (hasMarks) return own;
                break;
            default:
                break;
        }
    return own;
}

}  // namespace

double headerNumber(const dxf::Drawing& drawing, std::string_view name, int code, double fallback) {
    const dxf::RecordId id = drawing.findHeaderVariable(name);
    dxf::Tag tag;
    if (id == dxf::kNoRecord || !drawing.findTag(id, code, tag)) return fallback;
    return pick::finiteOf(tag.value).value_or(fallback);
}

EntityLooks::EntityLooks(const dxf::Drawing& drawing, dxf::RecordId window)
    : drawing_(drawing), viewport_(window == dxf::kNoRecord ? 0 : drawing.record(window).handle) {
    globalScale_ = headerNumber(drawing, "$LTSCALE", codes::variable::kReal, 1.0);
    usual_.look.weight = kUsualWeight;
}

EntityLooks::Source& EntityLooks::sourceOf(const dxf::Drawing& drawing, const std::wstring& prefix) {
    if (&drawing == lastDrawing_ && lastSource_->prefix == prefix) return *lastSource_;
    std::unique_ptr<Source>& source = sources_[{&drawing, prefix}];
    if (!source) source = std::make_unique<Source>(drawing, prefix);
    lastDrawing_ = &drawing;
    lastSource_ = source.get();
    return *source;
}

dxf::RecordId EntityLooks::findLayer(const dxf::Drawing& drawing, const std::wstring& name) {
    const auto [found, fresh] = layerTables_.try_emplace(&drawing);
    const dxf::RecordId table = drawing.findTable("LAYER");
    if (fresh && table != dxf::kNoRecord) {
        for (dxf::RecordId id = drawing.next(table); id != dxf::kNoRecord; id = drawing.next(id)) {
            if (drawing.record(id).kind != dxf::RecordKind::TableRecord) break;
            dxf::Tag tag;
            if (drawing.findTag(id, codes::kName, tag))
                found->second.emplace(platform::foldCase(readText(drawing, tag.value)), id);
        }
    }
    const auto record = found->second.find(platform::foldCase(name));
    return record == found->second.end() ? dxf::kNoRecord : record->second;
}

// What the viewport has in place of a layer's own stands in records of the layer's dictionary: after the viewport's
// handle the value.
void EntityLooks::override(Source& source, dxf::RecordId layer, Look& look) const {
    enum { kViewport = 335, kLinetypeHandle = 343, kWeight = 91 };
    constexpr long kRgb = 0xC2;
    if (viewport_ == 0 || &source.drawing != &drawing_) return;
    const dxf::RecordId dictionary = extensionDictionary(drawing_, layer);
    if (dictionary == dxf::kNoRecord) return;
    for (const DictionaryEntry& entry : dictionaryEntries(drawing_, dictionary)) {
        if (entry.object == dxf::kNoRecord || entry.name.rfind(L"ADSK_XREC_LAYER_", 0) != 0) continue;
        bool isMeant = false;
        dxf::TagCursor cursor = drawing_.tags(entry.object);
        for (dxf::Tag tag; cursor.next(tag);) {
            if (tag.code == kViewport) isMeant = dxf::toHandle(tag.value) == viewport_;
            if (!isMeant) continue;
            const auto number = static_cast<std::uint32_t>(dxf::toInteger(tag.value));
            if (tag.code == codes::kTrueColor) {
                const std::uint8_t opacity = look.color.alpha;
                look.color = number >> 24 == kRgb ? trueColor(static_cast<long>(number & 0xFFFFFF))
                                                  : paletteColor(static_cast<long>(number & 0xFFFF));
                look.color.alpha = opacity;
            }
            if (tag.code == codes::kTransparency && (number & kOpacityGiven) != 0) look.color.alpha = opacityOf(number);
            if (tag.code == kWeight) look.weight = weightOf(static_cast<std::int32_t>(number));
            dxf::Tag name;
            const dxf::RecordId linetype =
                tag.code == kLinetypeHandle ? drawing_.findHandle(dxf::toHandle(tag.value)) : dxf::kNoRecord;
            if (linetype != dxf::kNoRecord && drawing_.findTag(linetype, codes::kName, name))
                look.linetype = source.linetypes.find(platform::foldCase(readText(drawing_, name.value)));
        }
    }
}

LayerLook EntityLooks::readLayer(Source& source, dxf::RecordId record) {
    LayerLook layer = usual_;
    pick::Entity tags;
    tags.read(source.drawing, record);
    layer.look.color = paletteColor(std::labs(tags.integer(codes::kColor, kWhite)));
    if (tags.has(codes::kTrueColor)) layer.look.color = trueColor(tags.integer(codes::kTrueColor, 0));
    const long transparency = transparencyOfLayer(source.drawing, record);
    if ((transparency & kOpacityGiven) != 0) layer.look.color.alpha = opacityOf(transparency);
    layer.look.weight = weightOf(tags.integer(codes::kLineWeight, -3));
    layer.look.linetype = source.linetypes.find(platform::foldCase(tags.text(codes::kLinetype)));
    override(source, record, layer.look);
    layer.isPlotted = tags.integer(codes::kPlottable, 1) != 0;
    return layer;
}

// The drawing that shows a reference tells its layers; one it has not heard of is as the reference has it.
const LayerLook& EntityLooks::layerOf(Source& source, dxf::NameId layer) {
    const auto [known, fresh] = source.layers.emplace(layer, usual_);
    if (!fresh) return known->second;
    const std::wstring name = pick::layerName(source.drawing, layer);
    if (!source.prefix.empty() && name != L"0") {
        Source& shown = sourceOf(drawing_, std::wstring());
        const dxf::RecordId record = findLayer(drawing_, source.prefix + L"|" + name);
        if (record != dxf::kNoRecord) known->second = readLayer(shown, record);
        if (record != dxf::kNoRecord) return known->second;
    }
    const dxf::RecordId record = findLayer(source.drawing, name);
    if (record != dxf::kNoRecord) known->second = readLayer(source, record);
    known->second.isZero = name == L"0";
    // The editor keeps points of dimensions here, and never prints it.
    if (platform::foldCase(name) == platform::foldCase(L"DEFPOINTS")) known->second.isPlotted = false;
    return known->second;
}

const Linetype* EntityLooks::linetypeOf(Source& source, const dxf::Drawing& writer, std::string_view name) {
    const auto [known, fresh] = source.byName.emplace(name, nullptr);
    if (fresh) known->second = source.linetypes.find(platform::foldCase(readText(writer, name)));
    return known->second;
}

Color EntityLooks::colorOf(long index) const {
    if (index == kByBlock) return entered_.size() > 1 ? entered_[entered_.size() - 2].look.color : usual_.look.color;
    if (index == kByLayer) return entered_.empty() ? usual_.look.color : entered_.back().layer->look.color;
    return paletteColor(index);
}

void EntityLooks::enter(const pick::Shown& shown) {
    const dxf::Drawing& drawing = shown.entity.drawing();
    enterAs(shown, drawing, drawing.record(shown.entity.id()).layer);
}

void EntityLooks::enterAs(const pick::Shown& shown, const dxf::Drawing& drawing, dxf::NameId layerName) {
    Source& source = sourceOf(drawing, shown.prefix);
    const Look& outer = entered_.empty() ? usual_.look : entered_.back().look;
    const LayerLook* layer = &layerOf(source, layerName);
    // Layer "0" in a block is the block reference's layer.
    if (layer->isZero && !entered_.empty()) layer = entered_.back().layer;
    const OwnLook own = readOwn(shown.entity);
    Look look = layer->look;
    if (own.trueColor)
        look.color = trueColor(*own.trueColor);
    else if (own.color == kByBlock)
        look.color = outer.color;
    else if (own.color != kByLayer)
        look.color = paletteColor(std::labs(own.color));
    if (own.weight == kWeightByBlock)
        look.weight = outer.weight;
    else if (own.weight != kWeightByLayer)
        look.weight = weightOf(own.weight);
    if (!own.linetype.empty()) {
        const std::wstring name = platform::foldCase(platform::fromUtf8(own.linetype));
        if (name == platform::foldCase(L"BYBLOCK"))
            look.linetype = outer.linetype;
        else if (name != platform::foldCase(L"BYLAYER"))
            look.linetype = linetypeOf(source, shown.entity.drawing(), own.linetype);
    }
    look.color.alpha = layer->look.color.alpha;
    if ((own.transparency & kOpacityGiven) != 0) look.color.alpha = opacityOf(own.transparency);
    if ((own.transparency & kOpacityByBlock) != 0) look.color.alpha = outer.color.alpha;
    look.linetypeScale = own.linetypeScale;
    entered_.push_back({look, layer});
}

bool areAlike(const EntityLooks& a, const EntityLooks& b) {
    const Look& first = a.look();
    const Look& second = b.look();
    if (!(first.color == second.color) || first.weight != second.weight) return false;
    if (!first.linetype || !second.linetype) return first.linetype == second.linetype;
    return first.linetypeScale * a.globalLinetypeScale() == second.linetypeScale * b.globalLinetypeScale() &&
           first.linetype->dashes == second.linetype->dashes;
}

}  // namespace qrs::host::plot
