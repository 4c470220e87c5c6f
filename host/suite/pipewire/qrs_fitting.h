// The suite's specification of the fittings of double-line pipes: their outlines by name and diameters.
#pragma once

#include <string>
#include <vector>

#include "gepnt3d.h"
#include "host/platform/port.h"

// One fitting: diameters in millimetres, outline in drawing units.
struct TDoublePipeFitting {
    std::wstring name;
    double diameter1 = 0;
    double diameter2 = 0;
    std::vector<AcGePoint3d> points;
};

class QRS_HOST_PORT TDoublePipeFittingSpec {
  public:
    // The fittings of this process; empty until a file is read.
    static TDoublePipeFittingSpec& Current();

    void Clear();
    // Points closer to their predecessor than the tolerance (drawing units) are the same point and kept once. A fitting
    // of the same name and diameters replaces the earlier one.
    void Add(TDoublePipeFitting fitting, double tolerance);
    // Null when there is none of that name and diameters.
    const TDoublePipeFitting* Find(const std::wstring& name, double diameter1, double diameter2) const;
    bool IsEmpty() const { return fittings_.empty(); }
    std::size_t Count() const { return fittings_.size(); }

  private:
    std::vector<TDoublePipeFitting> fittings_;
};
