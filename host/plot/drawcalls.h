// What is called of the libraries that pictures are drawn with. They take half of the program's start and most of its
// memory, so they hang on a library of their own, which is loaded when the first picture is drawn.
#pragma once

#include <cairo-pdf.h>
#include <cairo-svg.h>
#include <pango/pangocairo.h>

#include <string>

namespace qrs::host::plot {

// clang-format off
#define QRS_DRAW_CALLS(call) \
    call(cairo_clip) call(cairo_close_path) call(cairo_create) call(cairo_curve_to) call(cairo_destroy) \
    call(cairo_fill) call(cairo_font_options_create) call(cairo_font_options_destroy) \
    call(cairo_font_options_set_antialias) call(cairo_font_options_set_hint_metrics) \
    call(cairo_font_options_set_hint_style) call(cairo_get_target) call(cairo_image_surface_create) \
    call(cairo_image_surface_get_data) call(cairo_image_surface_get_format) call(cairo_image_surface_get_height) \
    call(cairo_image_surface_get_stride) call(cairo_image_surface_get_width) call(cairo_line_to) \
    call(cairo_matrix_init) call(cairo_move_to) call(cairo_new_path) call(cairo_paint) \
    call(cairo_pdf_surface_create_for_stream) call(cairo_restore) call(cairo_save) call(cairo_set_fill_rule) \
    call(cairo_set_line_cap) call(cairo_set_line_join) call(cairo_set_line_width) call(cairo_set_source_rgb) \
    call(cairo_set_source_rgba) call(cairo_show_page) call(cairo_status) call(cairo_status_to_string) \
    call(cairo_stroke) call(cairo_surface_destroy) call(cairo_surface_finish) call(cairo_surface_flush) \
    call(cairo_surface_get_type) call(cairo_surface_status) call(cairo_surface_write_to_png_stream) \
    call(cairo_svg_surface_create_for_stream) call(cairo_transform) call(g_object_unref) call(pango_attr_family_new) \
    call(pango_attr_foreground_new) call(pango_attr_list_insert) call(pango_attr_list_new) \
    call(pango_attr_list_unref) call(pango_attr_overline_new) call(pango_attr_rise_new) call(pango_attr_scale_new) \
    call(pango_attr_strikethrough_new) call(pango_attr_style_new) call(pango_attr_underline_new) \
    call(pango_attr_weight_new) call(pango_cairo_context_set_font_options) call(pango_cairo_create_context) \
    call(pango_cairo_layout_line_path) call(pango_cairo_show_layout_line) call(pango_context_set_language) \
    call(pango_context_set_round_glyph_positions) call(pango_font_description_free) call(pango_font_description_new) \
    call(pango_font_description_set_absolute_size) call(pango_font_description_set_family) \
    call(pango_font_description_set_style) call(pango_font_description_set_weight) call(pango_language_from_string) \
    call(pango_layout_get_extents) call(pango_layout_get_line_count) call(pango_layout_get_line_readonly) \
    call(pango_layout_get_lines_readonly) call(pango_layout_get_unknown_glyphs_count) \
    call(pango_layout_line_get_extents) call(pango_layout_new) call(pango_layout_set_attributes) \
    call(pango_layout_set_font_description) call(pango_layout_set_text) call(pango_layout_set_width) \
    call(pango_layout_set_wrap)
// clang-format on

struct DrawCalls {
#define QRS_DRAW_CALL(name) decltype(&::name) name;
    QRS_DRAW_CALLS(QRS_DRAW_CALL)
#undef QRS_DRAW_CALL
};

// Why nothing can be drawn, in one line; empty when the library is there.
std::string findMissingLibrary();

// Of the library, which has been found to be there.
const DrawCalls& calls();

}  // namespace qrs::host::plot
