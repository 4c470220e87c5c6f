// Asking for objects, and the layers they lie on.
#pragma once

#include <string>
#include <vector>

#include "dbsymtb.h"
#include "qrs_select.h"

namespace qrs::tools {

// One object; asks again as long as nothing lies where the user picks. RTNORM; RTNONE after Enter, RTCAN after Esc.
int pickObject(const std::wstring& prompt, TEntitySet& picked);

// The layer of one object; an object whose layer the drawing does not define is told, and asked again. As pickObject.
int pickLayer(const std::wstring& prompt, AcDbObjectId& layer);

// The layer of a picked object; null, with a message, when the drawing does not define it.
AcDbObjectId layerOfPick(const TEntitySet& picked);

// Whether the last pick ended because nothing lies at the point.
bool pickMissed();

// The object's id; null when the name means nothing.
AcDbObjectId idOf(const TEntitySet& picked);

// The objects that follow a pipe: what is attached to it and the nodes at its ends (null where there is none). None for
// what is no pipe drawn as one line.
AcDbObjectIdArray companionsOf(AcDbObjectId object);

// The layer of an object; null when it cannot be opened or the drawing does not define the layer.
AcDbObjectId layerOf(AcDbObjectId object);

// The layers of objects, each once, in the order they are met. Those that the drawing does not define are told.
AcDbObjectIdArray layersOf(const AcDbObjectIdArray& objects);

// Their names, also of layers that the drawing does not define.
std::vector<std::wstring> layerNamesOf(const AcDbObjectIdArray& objects);

// The layers of the working drawing that are none of those given.
AcDbObjectIdArray layersBut(const AcDbObjectIdArray& layers);

// Empty when the layer cannot be opened.
std::wstring nameOf(AcDbObjectId layer);

// Layer names compare so.
bool sameName(const std::wstring& a, const std::wstring& b);

bool isLocked(AcDbObjectId layer);

// Whether it came with an external reference: such layers have the name of the reference, "|" and their own name.
bool isOfReference(const std::wstring& layerName);

}  // namespace qrs::tools
