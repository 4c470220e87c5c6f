// Layers of the current drawing for the command -LAYER: found by lists of names, and listed.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "dbcolor.h"
#include "dbid.h"

class AcDbDatabase;

namespace qrs::host::commands {

struct NamedLayer {
    AcDbObjectId id;
    std::wstring name;
};

// All layers in table order.
std::vector<NamedLayer> allLayers(AcDbDatabase* database);

// The layer's name; empty when it cannot be opened.
std::wstring layerName(AcDbObjectId id);

// The parts of a list of names separated by commas, without blanks around them and without empty ones.
std::vector<std::wstring> splitNames(const std::wstring& list);

// The layers a typed list of names and wildcards means, each once, in table order. A name that a layer has means that
// layer even when it holds wildcard characters. What cannot be found is told on the command line.
std::vector<NamedLayer> findLayers(AcDbDatabase* database, const std::wstring& list);

// "1 (red)", "8", "255,128,0".
std::wstring colorText(const AcCmColor& color);
// The palette colour of a name ("red") or number ("1" to "255").
std::optional<AcCmColor> paletteColor(const std::wstring& text);
// The colour of "255,128,0".
std::optional<AcCmColor> trueColor(const std::wstring& text);

// Prints name, state, colour and linetype in columns.
void printLayers(const std::vector<NamedLayer>& layers);

}  // namespace qrs::host::commands
