// The group codes of pipes, their nodes and attachments.
#pragma once

#include "adesk.h"

namespace qrs::suite::pipecodes {

constexpr Adesk::Int16 kSystemName = 1;
constexpr Adesk::Int16 kSystemType = 90;
constexpr Adesk::Int16 kAttachment = 330;

// Of an attachment; of a node the size.
constexpr Adesk::Int16 kText = 1;
constexpr Adesk::Int16 kSize = 40;
constexpr Adesk::Int16 kRotation = 50;

constexpr Adesk::Int16 kKind = 70;  // of the path, the node, the attachment
constexpr Adesk::Int16 kStart = 10;
constexpr Adesk::Int16 kPosition = kStart;  // of a node or an attachment
constexpr Adesk::Int16 kEnd = 11;
constexpr Adesk::Int16 kBulge = 42;
constexpr Adesk::Int16 kLineWidth = 43;
constexpr Adesk::Int16 kDimLayer = 340;
constexpr Adesk::Int16 kArrowLayer = 341;
constexpr Adesk::Int16 kStartNode = 331;
constexpr Adesk::Int16 kEndNode = 332;

}  // namespace qrs::suite::pipecodes
