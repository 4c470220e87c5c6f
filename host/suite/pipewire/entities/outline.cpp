// The shapes of pipes and what belongs to them, for picking. They are told from the tags alone: opening an entity for
// each of a drawing's many pipes would take too long.
#include "host/pick/outline.h"

#include "entities/pipecodes.h"
#include "qrs_pipeentity.h"

using qrs::host::pick::EntityTags;
using qrs::host::pick::Outline;
using qrs::host::pick::Vec;
namespace pipecodes = qrs::suite::pipecodes;

namespace {

// A path of a kind that is not known is shown by its ends.
void tracePipe(const EntityTags& tags, Outline& outline) {
    const std::optional<Vec> start = tags.point(pipecodes::kStart);
    if (!start) return;
    const Vec end = tags.point(pipecodes::kEnd).value_or(*start);
    const long kind = tags.integer(pipecodes::kKind, TPipeCurve::kLine);
    const double bulge = tags.real(pipecodes::kBulge, 0.0);
    if (kind == TPipeCurve::kArc && bulge != 0.0) {
        outline.arc(*start, end, bulge);
    } else if (kind == TPipeCurve::kLine || kind == TPipeCurve::kArc) {
        outline.segment(*start, end);
    } else {
        outline.point(*start);
        outline.point(end);
    }
}

void tracePosition(const EntityTags& tags, Outline& outline) {
    if (const std::optional<Vec> position = tags.point(pipecodes::kPosition)) outline.point(*position);
}

const bool kRegistered = qrs::host::pick::registerOutline("QRS_PIPE", &tracePipe) &&
                         qrs::host::pick::registerOutline("QRS_PIPENODE", &tracePosition) &&
                         qrs::host::pick::registerOutline("QRS_PIPEATTACHMENT", &tracePosition);

}  // namespace
