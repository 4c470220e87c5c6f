// The file that a picture is written to.
#pragma once

#include <cairo.h>

#include <memory>

#include "host/platform/files.h"
#include "host/plot/hostplot.h"
#include "host/plot/page.h"

namespace qrs::host::plot {

// Appears whole or not at all: without finish() the file stays as it was.
class Surface {
  public:
    // Null, with the reason in error, when the file cannot be made or the picture would be too large.
    static std::unique_ptr<Surface> make(const PlotRequest& request, const Paper& paper, platform::Error& error);
    ~Surface();
    Surface(const Surface&) = delete;
    Surface& operator=(const Surface&) = delete;

    cairo_t* context() const { return context_; }
    double dotsPerMillimetre() const { return dots_; }
    double thinnest() const { return thinnest_; }  // line, dots
    bool finish(platform::Error& error);

  private:
    Surface() = default;

    platform::AtomicFile file_;
    std::filesystem::path name_;
    cairo_surface_t* surface_ = nullptr;
    cairo_t* context_ = nullptr;
    bool isImage_ = false;
    double dots_ = 1.0;
    double thinnest_ = 1.0;
};

// The kinds of pictures, by the ends of files' names. False for another one.
bool isPictureName(const std::filesystem::path& file);

}  // namespace qrs::host::plot
