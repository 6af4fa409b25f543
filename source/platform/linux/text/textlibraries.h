// The functions of Pango, Cairo and fontconfig that the library uses. They are loaded with the first text.
#ifndef QUILLMARSH_SOURCE_PLATFORM_LINUX_TEXT_TEXTLIBRARIES_H
#define QUILLMARSH_SOURCE_PLATFORM_LINUX_TEXT_TEXTLIBRARIES_H

#include <quillmarsh/platform/types.h>

#include <fontconfig/fontconfig.h>
#include <pango/pangocairo.h>

namespace quillmarsh::platform::drawing
{

#define QUILLMARSH_GOBJECT_FUNCTIONS(X) X(g_object_unref)

#define QUILLMARSH_PANGO_FUNCTIONS(X)                                                                                  \
    X(pango_context_get_metrics)                                                                                       \
    X(pango_context_set_round_glyph_positions)                                                                         \
    X(pango_font_description_free)                                                                                     \
    X(pango_font_description_new)                                                                                      \
    X(pango_font_description_set_absolute_size)                                                                        \
    X(pango_font_description_set_family)                                                                               \
    X(pango_font_description_set_style)                                                                                \
    X(pango_font_description_set_weight)                                                                               \
    X(pango_font_map_create_context)                                                                                   \
    X(pango_font_metrics_get_ascent)                                                                                   \
    X(pango_font_metrics_get_descent)                                                                                  \
    X(pango_font_metrics_get_height)                                                                                   \
    X(pango_font_metrics_unref)                                                                                        \
    X(pango_layout_get_baseline)                                                                                       \
    X(pango_layout_get_size)                                                                                           \
    X(pango_layout_new)                                                                                                \
    X(pango_layout_set_font_description)                                                                               \
    X(pango_layout_set_single_paragraph_mode)                                                                          \
    X(pango_layout_set_text)

#define QUILLMARSH_PANGOCAIRO_FUNCTIONS(X)                                                                             \
    X(pango_cairo_context_set_font_options)                                                                            \
    X(pango_cairo_context_set_resolution)                                                                              \
    X(pango_cairo_font_map_get_default)                                                                                \
    X(pango_cairo_show_layout)

#define QUILLMARSH_CAIRO_FUNCTIONS(X)                                                                                  \
    X(cairo_create)                                                                                                    \
    X(cairo_destroy)                                                                                                   \
    X(cairo_font_options_create)                                                                                       \
    X(cairo_font_options_destroy)                                                                                      \
    X(cairo_font_options_set_antialias)                                                                                \
    X(cairo_font_options_set_hint_metrics)                                                                             \
    X(cairo_font_options_set_hint_style)                                                                               \
    X(cairo_image_surface_create_for_data)                                                                             \
    X(cairo_line_to)                                                                                                   \
    X(cairo_move_to)                                                                                                   \
    X(cairo_set_line_width)                                                                                            \
    X(cairo_set_source_rgba)                                                                                           \
    X(cairo_status)                                                                                                    \
    X(cairo_stroke)                                                                                                    \
    X(cairo_surface_destroy)                                                                                           \
    X(cairo_surface_flush)                                                                                             \
    X(cairo_translate)

#define QUILLMARSH_FONTCONFIG_FUNCTIONS(X)                                                                             \
    X(FcConfigDestroy)                                                                                                 \
    X(FcConfigSubstitute)                                                                                              \
    X(FcDefaultSubstitute)                                                                                             \
    X(FcFontList)                                                                                                      \
    X(FcFontMatch)                                                                                                     \
    X(FcFontSetDestroy)                                                                                                \
    X(FcInitLoadConfigAndFonts)                                                                                        \
    X(FcNameParse)                                                                                                     \
    X(FcObjectSetBuild)                                                                                                \
    X(FcObjectSetDestroy)                                                                                              \
    X(FcPatternAddBool)                                                                                                \
    X(FcPatternAddString)                                                                                              \
    X(FcPatternCreate)                                                                                                 \
    X(FcPatternDestroy)                                                                                                \
    X(FcPatternGetString)                                                                                              \
    X(FcStrCmpIgnoreCase)

#define QUILLMARSH_TEXT_FUNCTIONS(X)                                                                                   \
    QUILLMARSH_FONTCONFIG_FUNCTIONS(X)                                                                                 \
    QUILLMARSH_GOBJECT_FUNCTIONS(X)                                                                                    \
    QUILLMARSH_CAIRO_FUNCTIONS(X)                                                                                      \
    QUILLMARSH_PANGO_FUNCTIONS(X)                                                                                      \
    QUILLMARSH_PANGOCAIRO_FUNCTIONS(X)

/// @name The functions, under their own names
/// To be called once LoadTextLibraries() has succeeded.
/// @{
#define QUILLMARSH_DECLARE_FUNCTION(name) extern decltype(&::name) name;
QUILLMARSH_TEXT_FUNCTIONS(QUILLMARSH_DECLARE_FUNCTION)
#undef QUILLMARSH_DECLARE_FUNCTION
/// @}

/// Loads the libraries at the first call. Returns false when one of them cannot be used; FindTextFailure() tells why. Any
/// thread.
bool LoadTextLibraries();

} // namespace quillmarsh::platform::drawing

#endif
