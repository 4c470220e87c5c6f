// Settings of layers as dialogs show and take them.
#pragma once

#include <string>
#include <vector>

#include "dbid.h"
#include "dbsymtb.h"
#include "PipeNodes.h"

namespace qrs::layers {

// "red" colours and their like are shown as standard files write them, but "随层" and "随块" by name.
std::wstring colorText(const AcCmColor& color);
// An index from 1 to 255, "red,green,blue", "随层" or "随块"; false, color untouched, for any other text.
bool parseColorText(const std::wstring& text, AcCmColor& color);

std::wstring lineWeightText(Adesk::Int32 code);
// False, code untouched, for a text that is no lineweight of the editor.
bool parseLineWeightText(const std::wstring& text, Adesk::Int32& code);
// All of them, for a list to choose from.
std::vector<std::wstring> lineWeightTexts();

// Why no layer can have the name, one sentence; empty when one can.
std::wstring refuseLayerName(const std::wstring& name);
// Why the text is no colour.
std::wstring refuseColor(const std::wstring& text);

// Names of linetypes that a layer may be given.
std::vector<std::wstring> linetypeNames();

// What a drawing says of one of its layers.
struct DrawnLayer {
    AcDbObjectId id;
    std::wstring name;
    AcCmColor color;
    std::wstring linetype;
    Adesk::Int32 lineWeight = AcDb::kLnWtByLwDefault;
    bool isOff = false;
    bool isFrozen = false;
    bool isLocked = false;
};

// False when the layer cannot be opened.
bool readLayer(AcDbObjectId layer, DrawnLayer& out);

// Name, colour, linetype and state in words: the cells of lists of layers.
std::vector<std::wstring> layerCells(const DrawnLayer& layer);
const std::vector<std::wstring>& layerColumns();

}  // namespace qrs::layers
