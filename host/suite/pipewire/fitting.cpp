// The fittings of double pipes.
#include "qrs_fitting.h"

#include <algorithm>
#include <utility>

TDoublePipeFittingSpec& TDoublePipeFittingSpec::Current() {
    static TDoublePipeFittingSpec specification;
    return specification;
}

void TDoublePipeFittingSpec::Clear() {
    fittings_.clear();
}

void TDoublePipeFittingSpec::Add(TDoublePipeFitting fitting, double tolerance) {
    std::vector<AcGePoint3d> outline;
    for (const AcGePoint3d& point : fitting.points)
        if (outline.empty() || point.distanceTo(outline.back()) > tolerance) outline.push_back(point);
    fitting.points = std::move(outline);
    const TDoublePipeFitting* known = Find(fitting.name, fitting.diameter1, fitting.diameter2);
    if (known)
        fittings_[static_cast<std::size_t>(known - fittings_.data())] = std::move(fitting);
    else
        fittings_.push_back(std::move(fitting));
}

const TDoublePipeFitting* TDoublePipeFittingSpec::Find(const std::wstring& name, double diameter1,
                                                       double diameter2) const {
    const auto found = std::find_if(fittings_.begin(), fittings_.end(), [&](const TDoublePipeFitting& fitting) {
        return fitting.name == name && fitting.diameter1 == diameter1 && fitting.diameter2 == diameter2;
    });
    return found == fittings_.end() ? nullptr : &*found;
}
