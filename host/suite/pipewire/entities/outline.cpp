// The shapes of pipes and what belongs to them, for picking. They are told from the tags alone: opening an entity for
// each of a drawing's many pipes would take too long.
#include "host/pick/outline.h"

#include <algorithm>

#include "entities/pipecodes.h"
#include "entities/shapes.h"
#include "qrs_pipeentity.h"

using qrs::host::pick::EntityTags;
using qrs::host::pick::Outline;
using qrs::host::pick::Vec;
namespace pipecodes = qrs::suite::pipecodes;

namespace {

int kindOf(const EntityTags& tags) {
    return static_cast<int>(tags.integer(pipecodes::kKind, 0));
}

double sizeOf(const EntityTags& tags) {
    return std::max(tags.real(pipecodes::kSize, 0.0), 0.0);
}

void tracePipe(const EntityTags& tags, Outline& outline) {
    const std::optional<Vec> start = tags.point(pipecodes::kStart);
    if (!start) return;
    const Vec end = tags.point(pipecodes::kEnd).value_or(*start);
    qrs::suite::drawPipe({kindOf(tags), *start, end, tags.real(pipecodes::kBulge, 0.0), tags.paperScale()}, outline);
}

void traceNode(const EntityTags& tags, Outline& outline) {
    if (const std::optional<Vec> position = tags.point(pipecodes::kPosition))
        qrs::suite::drawNode({*position, kindOf(tags), sizeOf(tags), tags.paperScale()}, outline);
}

void traceAttachment(const EntityTags& tags, Outline& outline) {
    if (const std::optional<Vec> position = tags.point(pipecodes::kPosition))
        qrs::suite::drawAttachment({*position, kindOf(tags), tags.text(pipecodes::kText), sizeOf(tags),
                                    tags.real(pipecodes::kRotation, 0.0), tags.paperScale()},
                                   outline);
}

const bool kRegistered = qrs::host::pick::registerOutline("QRS_PIPE", &tracePipe) &&
                         qrs::host::pick::registerOutline("QRS_PIPENODE", &traceNode) &&
                         qrs::host::pick::registerOutline("QRS_PIPEATTACHMENT", &traceAttachment);

}  // namespace
