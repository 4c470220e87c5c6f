// SVG, PDF and PNG.
#include "host/plot/surface.h"

#include <cmath>
#include <string>

#include "host/platform/codepage.h"
#include "host/platform/language.h"
#include "host/plot/drawcalls.h"

namespace qrs::host::plot {

namespace {

using platform::translated;

constexpr double kPointsPerMillimetre = 72 / 25.4;
constexpr double kLongestSide = 30000;   // dots of an image
constexpr double kMostDots = 250000000;  // a gigabyte

enum class Kind { None, Svg, Pdf, Png };

Kind kindOf(const std::filesystem::path& file) {
    const std::wstring extension = platform::foldCase(platform::fromUtf8(file.extension().u8string()));
    if (extension == platform::foldCase(L".svg")) return Kind::Svg;
    if (extension == platform::foldCase(L".pdf")) return Kind::Pdf;
    return extension == platform::foldCase(L".png") ? Kind::Png : Kind::None;
}

cairo_status_t append(void* file, const unsigned char* bytes, unsigned length) {
    static_cast<platform::AtomicFile*>(file)->write({reinterpret_cast<const char*>(bytes), length});
    return CAIRO_STATUS_SUCCESS;
}

}  // namespace

bool isPictureName(const std::filesystem::path& file) {
    return kindOf(file) != Kind::None;
}

std::unique_ptr<Surface> Surface::make(const PlotRequest& request, const Paper& paper, platform::Error& error) {
    std::unique_ptr<Surface> result(new Surface());
    result->name_ = request.file;
    const Kind kind = kindOf(request.file);
    result->isImage_ = kind == Kind::Png;
    result->dots_ = result->isImage_ ? request.dotsPerInch / 25.4 : kPointsPerMillimetre;
    result->thinnest_ = result->isImage_ ? 1.0 : 0.2;
    const double width = paper.width * result->dots_;
    const double height = paper.height * result->dots_;
    if (result->isImage_ && (width > kLongestSide || height > kLongestSide || width * height > kMostDots)) {
        error.message =
            translated("%1: an image of %2 x %3 dots is too large; fewer dots per inch (--dpi) make it smaller",
                       request.file.u8string(), static_cast<long>(width), static_cast<long>(height));
        return nullptr;
    }
    error.message = findMissingLibrary();
    if (error || !result->file_.begin(request.file, error)) return nullptr;
    if (kind == Kind::Svg)
        result->surface_ = calls().cairo_svg_surface_create_for_stream(&append, &result->file_, width, height);
    else if (kind == Kind::Pdf)
        result->surface_ = calls().cairo_pdf_surface_create_for_stream(&append, &result->file_, width, height);
    else
        result->surface_ = calls().cairo_image_surface_create(CAIRO_FORMAT_RGB24, static_cast<int>(std::ceil(width)),
                                                              static_cast<int>(std::ceil(height)));
    result->context_ = calls().cairo_create(result->surface_);
    calls().cairo_set_source_rgb(result->context_, 1, 1, 1);
    calls().cairo_paint(result->context_);
    return result;
}

Surface::~Surface() {
    if (context_) calls().cairo_destroy(context_);
    if (surface_) {
        calls().cairo_surface_finish(surface_);
        calls().cairo_surface_destroy(surface_);
    }
}

bool Surface::finish(platform::Error& error) {
    cairo_status_t status = calls().cairo_status(context_);
    calls().cairo_show_page(context_);
    if (isImage_ && status == CAIRO_STATUS_SUCCESS)
        status = calls().cairo_surface_write_to_png_stream(surface_, &append, &file_);
    calls().cairo_surface_finish(surface_);
    if (status == CAIRO_STATUS_SUCCESS) status = calls().cairo_surface_status(surface_);
    if (status != CAIRO_STATUS_SUCCESS) {
        error.message = translated("%1: the picture cannot be made: %2", name_.u8string(),
                                   std::string(calls().cairo_status_to_string(status)));
        return false;
    }
    return file_.commit(0, error);
}

}  // namespace qrs::host::plot
