// The layer commands as they are typed, on a drawing with something of everything on its layers.
#pragma once

#include <memory>
#include <sstream>

#include "../frame/support.h"
#include "acutads.h"
#include "qrs_kernal.h"
#include "rxregsvc.h"

extern "C" AcRx::AppRetCode acrxEntryPoint(AcRx::AppMsgCode message, void* application);

namespace qrs::test {

class LayerFrame : public Frame {
  protected:
    LayerFrame() {
        InitAol(L"_QRS");
        acrxEntryPoint(AcRx::kInitAppMsg, nullptr);
    }
    ~LayerFrame() override { acrxEntryPoint(AcRx::kUnloadAppMsg, nullptr); }

    // The names of the layers that are in the state, in table order, with a blank between them.
    std::string layersThatAre(bool (AcDbLayerTableRecord::*state)() const) const {
        std::string names;
        forEachLayer([&](const AcDbLayerTableRecord& layer, const std::string& name) {
            if ((layer.*state)()) names += (names.empty() ? "" : " ") + name;
        });
        return names;
    }
    std::string offLayers() const { return layersThatAre(&AcDbLayerTableRecord::isOff); }
    std::string lockedLayers() const { return layersThatAre(&AcDbLayerTableRecord::isLocked); }
    std::string frozenLayers() const { return layersThatAre(&AcDbLayerTableRecord::isFrozen); }
    // "name:index" of every layer, true colours by their nearest index, those that are off with a minus.
    std::string colors() const {
        std::string text;
        forEachLayer([&](const AcDbLayerTableRecord& layer, const std::string& name) {
            text += (text.empty() ? "" : " ") + name + (layer.isOff() ? ":-" : ":") +
                    std::to_string(layer.color().colorIndex());
        });
        return text;
    }
    // The layer of the object with a handle; "-" when it is gone.
    std::string layerOf(const wchar_t* handle) const {
        AcDbObjectId id;
        if (database()->getAcDbObjectId(id, false, AcDbHandle(handle)) != Acad::eOk) return "-";
        const AcDbEntityPointer entity(id, AcDb::kForRead);
        if (entity.openStatus() != Acad::eOk) return "-";
        ACHAR* name = entity->layer();
        const std::string layer = platform::toUtf8(name);
        acutDelString(name);
        return layer;
    }
    std::string layersOf(std::initializer_list<const wchar_t*> handles) const {
        std::string layers;
        for (const wchar_t* handle : handles)
            layers += (layers.empty() ? "" : " ") + layerOf(handle);
        return layers;
    }

    // The drawing as it was opened.
    std::string content() const { return folder.read("drawing.dxf"); }
    // What the command showed itself: the lines after its name, up to what was sent or the next prompt for a command.
    static std::string own(const std::wstring& transcript) {
        const std::string text = platform::toUtf8(transcript);
        const std::size_t begin = text.find('\n') + 1;
        return text.substr(begin, std::min(text.find("Current layer:"), text.find("Command:", begin)) - begin);
    }
    // An answer that names the entity with the handle.
    static std::wstring ent(const wchar_t* handle) { return L"(handent \"" + std::wstring(handle) + L"\")"; }

  private:
    template <typename Use>
    void forEachLayer(Use&& use) const {
        const AcDbLayerTablePointer table(database());
        AcDbLayerTableIterator* made = nullptr;
        ASSERT_EQ(table->newIterator(made), Acad::eOk);
        const std::unique_ptr<AcDbLayerTableIterator> iterator(made);
        for (; !iterator->done(); iterator->step()) {
            AcDbObjectId id;
            iterator->getRecordId(id);
            const AcDbLayerTableRecordPointer layer(id);
            const ACHAR* name = nullptr;
            layer->getName(name);
            use(*layer.object(), platform::toUtf8(name));
        }
    }
};

// Tags of a drawing file from "code value" parts with a '/' between them.
inline std::string tags(const std::string& parts) {
    std::istringstream in(parts);
    std::string text;
    for (std::string part; std::getline(in, part, '/');) {
        const std::size_t blank = part.find(' ');
        text += part.substr(0, blank) + "\n" + part.substr(blank + 1) + "\n";
    }
    return text;
}

inline std::string entity(const std::string& type, const std::string& handle, const std::string& layer,
                          const std::string& more) {
    return tags("0 " + type + "/5 " + handle + "/100 AcDbEntity/8 " + layer + "/" + more);
}

// Layers: 0, A (current), B, L (locked), D (used by the block "BLK" too), "A*", "x|R" (of an external reference), T
// (off, with a true colour). Objects by handle: 100 a line on A; 110 a block reference on A with attributes on A (111)
// and D (112) and its end 113 on A; 120 a polyline on A with vertices on A (121) and D (122) and its end 123 on A; 130
// a line on B, 140 on L, 150 on D, 160 on "A*", 170 on "x|R"; in the layout 180 the paper on A, 181 a viewport on B,
// 190 a line on A. more: further entities.
inline std::string planText(const std::string& version = "AC1018", bool modelSpace = true,
                            const std::string& more = {}) {
    const bool isOld = version == "AC1009";
    const std::string names[] = {"0", "A", "B", "L", "D", "A*", "x|R", "T"};
    const std::string states[] = {"70 0/62 7", "70 0/62 1", "70 0/62 2",  "70 4/62 3",
                                  "70 0/62 4", "70 0/62 5", "70 16/62 6", "70 0/62 -30/420 16744192"};
    std::string text =
        tags("0 SECTION/2 HEADER/9 $ACADVER/1 " + version + "/9 $HANDSEED/5 1000/9 $CLAYER/8 A/9 $TILEMODE/70 " +
             (modelSpace ? "1" : "0") + "/9 $LTSCALE/40 1.0/0 ENDSEC/0 SECTION/2 TABLES/0 TABLE/2 LAYER/5 2/70 8");
    for (int i = 0; i < 8; ++i)
        text += tags("0 LAYER/5 4" + std::to_string(i) + "/100 AcDbSymbolTableRecord/100 AcDbLayerTableRecord/2 " +
                     names[i] + "/" + states[i] + "/6 Continuous");
    text += tags("0 ENDTAB/0 TABLE/2 BLOCK_RECORD/5 1/70 3");
    const std::string blocks[][2] = {{"1F", "*Model_Space"}, {"1B", "*Paper_Space"}, {"1C", "BLK"}};
    for (const auto& [handle, name] : blocks)
        text += tags("0 BLOCK_RECORD/5 " + handle + "/100 AcDbSymbolTableRecord/100 AcDbBlockTableRecord/2 " + name);
    text += tags("0 ENDTAB/0 ENDSEC/0 SECTION/2 BLOCKS");
    const std::string line = "100 AcDbLine/10 0/20 0/30 0/11 9/21 9/31 0";
    for (const auto& [handle, name] : blocks) {
        text += tags("0 BLOCK/5 3" + handle + "/330 " + handle + "/100 AcDbEntity/8 0/100 AcDbBlockBegin/2 " + name +
                     "/70 0");
        if (name == "BLK") text += entity("LINE", "25", "D", line);
        text += tags("0 ENDBLK/5 2" + handle + "/330 " + handle + "/100 AcDbEntity/8 0/100 AcDbBlockEnd");
    }
    // R12 has the list of frozen layers at the end of a viewport's extended data.
    const std::string frozenList = isOld ? "/1001 ACAD/1000 MVIEW/1002 {/1070 16/1002 {/1002 }/1002 }" : "";
    const std::string attribute = "100 AcDbText/10 20/20 0/40 1/1 one/100 AcDbAttribute/2 ONE/70 0";
    const std::string vertex = "100 AcDbVertex/100 AcDb2dVertex/10 30/20 0/30 0";
    text += tags("0 ENDSEC/0 SECTION/2 ENTITIES") + entity("LINE", "100", "A", line) +
            entity("INSERT", "110", "A", "100 AcDbBlockReference/66 1/2 BLK/10 20/20 0/30 0") +
            entity("ATTRIB", "111", "A", attribute) + entity("ATTRIB", "112", "D", attribute) +
            entity("SEQEND", "113", "A", "") +
            entity("POLYLINE", "120", "A", "100 AcDb2dPolyline/66 1/10 0/20 0/30 0") +
            entity("VERTEX", "121", "A", vertex) + entity("VERTEX", "122", "D", vertex) +
            entity("SEQEND", "123", "A", "") + entity("LINE", "130", "B", line) + entity("LINE", "140", "L", line) +
            entity("LINE", "150", "D", line) + entity("LINE", "160", "A*", line) + entity("LINE", "170", "x|R", line) +
            more + entity("VIEWPORT", "180", "A", "67 1/100 AcDbViewport/10 5/20 5/30 0/40 20/41 20/68 1/69 1") +
            entity("VIEWPORT", "181", "B",
                   "67 1/100 AcDbViewport/10 5/20 5/30 0/40 10/41 10/68 2/69 2/12 5/22 5/45 10" + frozenList) +
            entity("LINE", "190", "A", "67 1/" + line) + tags("0 ENDSEC");
    if (!isOld) text += tags("0 SECTION/2 OBJECTS/0 DICTIONARY/5 C/330 0/100 AcDbDictionary/281 1/0 ENDSEC");
    text += tags("0 EOF");
    if (!isOld) return text;
    // R12 knows no subclasses, no owners and no true colours.
    std::istringstream in(text);
    std::string old;
    for (std::string code, value; std::getline(in, code) && std::getline(in, value);)
        if (code != "100" && code != "330" && code != "420") old += code + "\n" + value + "\n";
    return old;
}

}  // namespace qrs::test
