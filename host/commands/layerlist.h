// Layers of the current drawing for the command -LAYER: found by lists of names, and listed.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "dbcolor.h"
#include "host/commands/tablelist.h"

namespace qrs::host::commands {

using NamedLayer = NamedRecord;

// All layers in table order.
std::vector<NamedLayer> allLayers(AcDbDatabase* database);

// The layer's name; empty when it cannot be opened.
std::wstring layerName(AcDbObjectId id);

// findRecords among all layers.
std::vector<NamedLayer> findLayers(AcDbDatabase* database, const std::wstring& list);

// The layers of the entities the user selects, each once.
std::vector<NamedLayer> layersOfSelection();

bool hasLayer(AcDbDatabase* database, const std::wstring& name);
// Adds a layer; null, with a message, when it cannot have the name.
AcDbObjectId makeLayer(AcDbDatabase* database, const std::wstring& name);
// Makes a layer the current one, through the system variable, so that everybody who listens to it is told. A message
// when it cannot be.
void makeLayerCurrent(AcDbDatabase* database, const std::wstring& name);

// "1 (red)", "8", "255,128,0".
std::wstring colorText(const AcCmColor& color);
// Asks for a colour: a name ("red") or number (1 to 255), or "T" and then red, green and blue. The answer; color is
// empty when it is none. Nothing when the user cancelled.
std::optional<std::wstring> askColor(const std::wstring& prompt, std::optional<AcCmColor>& color);

// Prints name, state, colour and linetype in columns.
void printLayers(const std::vector<NamedLayer>& layers);

}  // namespace qrs::host::commands
