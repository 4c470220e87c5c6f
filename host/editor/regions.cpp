// Asking for windows, polygons and fences.
#include "host/editor/regions.h"

#include <utility>
#include <vector>

#include "host/editor/points.h"
#include "host/editor/session.h"
#include "host/platform/codepage.h"
#include "host/platform/language.h"

namespace qrs::host::ed {

using platform::translated;

namespace {

using pick::HitProbe;
using pick::Region;
using pick::Vec;

enum class Point { Given, Empty, Undo, Cancelled };

// One point; "@x,y" counts from base.
Point askPoint(Session& session, const std::wstring& prompt, const Vec* base, bool mayUndo, Vec& point) {
    const double from[3] = {base ? base->x : 0.0, base ? base->y : 0.0, base ? base->z : 0.0};
    for (;;) {
        const Answer answer = session.ask(prompt, Extent::Word);
        if (answer.reply != Reply::Line) return Point::Cancelled;
        if (answer.text.empty()) return Point::Empty;
        double read[3];
        if (parsePoint(answer.text, from, read)) {
            point = {read[0], read[1], read[2]};
            return Point::Given;
        }
        const std::wstring word = platform::foldCase(answer.text);
        if (mayUndo && (word == L"U" || word == L"_U" || word == L"UNDO" || word == L"_UNDO")) return Point::Undo;
        session.refuse(mayUndo ? translated(L"\nPoint or option keyword required.\n")
                               : translated(L"\nInvalid point.\n"));
    }
}

std::optional<Drawn> askCorners(Session& session, RegionKind what, const Vec* first, bool& cancelled) {
    Vec corner = first ? *first : Vec{};
    Vec opposite;
    if (!first) {
        const Point answered = askPoint(session, translated(L"\nSpecify first corner: "), nullptr, false, corner);
        cancelled = answered == Point::Cancelled;
        if (answered != Point::Given) return std::nullopt;
    }
    const Point answered = askPoint(session, translated(L"\nSpecify opposite corner: "), &corner, false, opposite);
    cancelled = answered == Point::Cancelled;
    if (answered != Point::Given) return std::nullopt;
    return drawnWindow(what, corner, opposite);
}

std::optional<Drawn> askLine(Session& session, RegionKind what, bool& cancelled) {
    const bool isFence = what == RegionKind::Fence;
    std::vector<Vec> points;
    for (;;) {
        const std::wstring prompt = points.empty() ? (isFence ? translated(L"\nSpecify first fence point: ")
                                                              : translated(L"\nFirst polygon point: "))
                                    : isFence      ? translated(L"\nSpecify next fence point or [Undo]: ")
                                                   : translated(L"\nSpecify endpoint of line or [Undo]: ");
        Vec point;
        const Vec* base = points.empty() ? nullptr : &points.back();
        const Point answered = askPoint(session, prompt, base, !points.empty(), point);
        cancelled = answered == Point::Cancelled;
        if (cancelled) return std::nullopt;
        if (answered == Point::Empty) return drawnLine(what, std::move(points));
        if (answered == Point::Undo)
            points.pop_back();
        else
            points.push_back(point);
    }
}

}  // namespace

Drawn drawnWindow(RegionKind what, const Vec& first, const Vec& second) {
    const bool holds = what == RegionKind::Window || (what == RegionKind::Box && second.x >= first.x);
    return {Region::window(first, second), holds ? HitProbe::Mode::Hold : HitProbe::Mode::Touch};
}

std::optional<Drawn> drawnLine(RegionKind what, std::vector<Vec> points) {
    if (points.size() < (what == RegionKind::Fence ? 2u : 3u)) return std::nullopt;
    if (what == RegionKind::Fence) return Drawn{Region::fence(std::move(points)), HitProbe::Mode::Touch};
    return Drawn{Region::polygon(std::move(points)),
                 what == RegionKind::InPolygon ? HitProbe::Mode::Hold : HitProbe::Mode::Touch};
}

std::optional<Drawn> askRegion(Session& session, RegionKind what, bool& cancelled) {
    const bool isLine =
        what == RegionKind::InPolygon || what == RegionKind::CrossingPolygon || what == RegionKind::Fence;
    return isLine ? askLine(session, what, cancelled) : askCorners(session, what, nullptr, cancelled);
}

std::optional<Drawn> askBox(Session& session, const Vec& first, bool& cancelled) {
    return askCorners(session, RegionKind::Box, &first, cancelled);
}

}  // namespace qrs::host::ed
