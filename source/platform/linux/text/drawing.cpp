#include "source/platform/drawing.h"

#include <quillmarsh/basetools/texttools.h>

#include "source/platform/linux/text/fontfaces.h"
#include "source/platform/linux/text/textlibraries.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <cstring>
#include <iterator>
#include <map>
#include <memory>

namespace quillmarsh::platform::drawing
{
namespace
{

constexpr int s_pixelBytes = 4;
/// Size at which faces are measured; heights at this size are in units of the em.
constexpr int s_emHeight = 2048;
/// Above this size, coordinates of the text library overflow.
constexpr float s_largestSize = 100000;

struct Releaser
{
    void operator()(cairo_surface_t *surface) const { cairo_surface_destroy(surface); }
    void operator()(cairo_t *context) const { cairo_destroy(context); }
    void operator()(cairo_font_options_t *options) const { cairo_font_options_destroy(options); }
    void operator()(PangoContext *context) const { g_object_unref(context); }
    void operator()(PangoLayout *layout) const { g_object_unref(layout); }
    void operator()(PangoFontDescription *font) const { pango_font_description_free(font); }
    void operator()(PangoFontMetrics *metrics) const { pango_font_metrics_unref(metrics); }
};
template<typename T>
using Holder = std::unique_ptr<T, Releaser>;

double ToPixels(int units)
{
    return static_cast<double>(units) / PANGO_SCALE;
}

/// Returns the family that draws a face. The monospace family may be a font without outlines, which FindFamily() does
/// not find.
string FindFamilyOf(FontFace const &face)
{
    string const found = FindFamily(face.family);
    return found.empty() && face.family == GetMonospaceFamily() ? face.family : found;
}

Holder<PangoFontDescription> Describe(string const &family, FontFace const &face, double size)
{
    Holder<PangoFontDescription> font(pango_font_description_new());
    // Pango takes a comma as the separator between families.
    pango_font_description_set_family(font.get(), family.c_str());
    pango_font_description_set_weight(font.get(), face.bold ? PANGO_WEIGHT_BOLD : PANGO_WEIGHT_NORMAL);
    pango_font_description_set_style(font.get(), face.italic ? PANGO_STYLE_ITALIC : PANGO_STYLE_NORMAL);
    pango_font_description_set_absolute_size(font.get(), size * PANGO_SCALE);
    return font;
}

Holder<PangoContext> MakeContext(GlyphEdges edges)
{
    Holder<PangoContext> context(pango_font_map_create_context(pango_cairo_font_map_get_default()));
    Holder<cairo_font_options_t> const options(cairo_font_options_create());
    cairo_font_options_set_antialias(options.get(), edges.antiAliased ? CAIRO_ANTIALIAS_GRAY : CAIRO_ANTIALIAS_NONE);
    cairo_font_options_set_hint_style(options.get(), edges.hinted ? CAIRO_HINT_STYLE_FULL : CAIRO_HINT_STYLE_NONE);
    cairo_font_options_set_hint_metrics(options.get(), edges.hinted ? CAIRO_HINT_METRICS_ON : CAIRO_HINT_METRICS_OFF);
    pango_cairo_context_set_font_options(context.get(), options.get());
    pango_cairo_context_set_resolution(context.get(), 96);
    pango_context_set_round_glyph_positions(context.get(), edges.hinted);
    return context;
}

struct LineHeights
{
    double ascent = 0;
    double descent = 0;
    double line = 0;
};

LineHeights Measure(PangoContext *context, PangoFontDescription const *font)
{
    Holder<PangoFontMetrics> const metrics(pango_context_get_metrics(context, font, nullptr));
    if (!metrics)
        return {};
    double const ascent = ToPixels(pango_font_metrics_get_ascent(metrics.get()));
    double const descent = ToPixels(pango_font_metrics_get_descent(metrics.get()));
    return {ascent, descent, std::max(ToPixels(pango_font_metrics_get_height(metrics.get())), ascent + descent)};
}

bool IsPrintable(unsigned int code)
{
    bool const isControl = code < 0x20 || (code >= 0x7F && code < 0xA0);
    bool const isHalf = code >= 0xD800 && code < 0xE000;
    bool const isNone = code >= 0xFFFE;
    return !isControl && !isHalf && !isNone;
}

/// Returns the printable characters of a text, in UTF-8.
string KeepPrintable(wstring const &text)
{
    wstring wide;
    std::copy_if(text.begin(), text.end(), std::back_inserter(wide), &IsPrintable);
    string printable;
    UnicodeToAscii(wide, printable);
    return printable;
}

/// Returns the part that two rectangles share; its width or height is 0 when they share none.
Rect Intersect(Rect const &a, Rect const &b)
{
    int const left = std::max(a.x, b.x);
    int const top = std::max(a.y, b.y);
    // Computed in 64 bits: the sum of two 32-bit numbers can overflow.
    auto const findSize = [](std::int64_t begin, std::int64_t aSize, std::int64_t other, std::int64_t bSize, int start)
    { return static_cast<int>(std::max<std::int64_t>(std::min(begin + aSize, other + bSize) - start, 0)); };
    return {left, top, findSize(a.x, a.width, b.x, b.width, left), findSize(a.y, a.height, b.y, b.height, top)};
}

} // namespace

bool Start(std::uintptr_t &)
{
    return true;
}

void Stop(std::uintptr_t) {}

bool HasFace(FontFace const &face)
{
    // Styles that a family lacks are made from its regular one.
    return !FindFamily(face.family).empty();
}

FontFace GetMonospaceFace()
{
    return {GetMonospaceFamily()};
}

FaceHeights MeasureFace(FontFace const &face)
{
    string const family = FindFamilyOf(face);
    if (family.empty())
        return {};
    LineHeights const heights = Measure(MakeContext({true, false}).get(), Describe(family, face, s_emHeight).get());
    return {s_emHeight, static_cast<int>(std::lround(heights.ascent)), static_cast<int>(std::lround(heights.descent))};
}

/// The text library's objects for a font. One layout is used for all texts.
struct Font::State
{
    bool hinted;
    Holder<PangoContext> context;
    LineHeights heights;
    Holder<PangoLayout> layout;
    std::map<unsigned short, float> advances;

    /// Lays out a text as one line; false when none of it can be printed.
    bool LayOut(wstring const &text)
    {
        string const printable = KeepPrintable(text);
        pango_layout_set_text(layout.get(), printable.c_str(), static_cast<int>(printable.size()));
        return !printable.empty();
    }

    double GetWidth() const
    {
        int width = 0;
        pango_layout_get_size(layout.get(), &width, nullptr);
        return ToPixels(width);
    }
};

Font::Font(FontFace const &face, float size, GlyphEdges edges)
{
    string const family = FindFamilyOf(face);
    if (!(size > 0 && size <= s_largestSize) || family.empty())
        return;
    state_ = std::make_unique<State>();
    state_->hinted = edges.hinted;
    state_->context = MakeContext(edges);
    Holder<PangoFontDescription> const description = Describe(family, face, static_cast<double>(size));
    state_->heights = Measure(state_->context.get(), description.get());
    state_->layout.reset(pango_layout_new(state_->context.get()));
    pango_layout_set_single_paragraph_mode(state_->layout.get(), TRUE);
    pango_layout_set_font_description(state_->layout.get(), description.get());
}

Font::~Font() = default;

float Font::GetAscent() const
{
    return static_cast<float>(state_->heights.ascent);
}

float Font::GetDescent() const
{
    return static_cast<float>(state_->heights.descent);
}

float Font::GetLineHeight() const
{
    return static_cast<float>(state_->heights.line);
}

float Font::GetAdvance(unsigned short character)
{
    auto const [entry, isNew] = state_->advances.try_emplace(character);
    if (isNew)
        entry->second = MeasureText(wstring(1, character));
    return entry->second;
}

float Font::MeasureText(wstring const &text)
{
    return state_->LayOut(text) ? static_cast<float>(state_->GetWidth()) : 0;
}

/// The drawing library's objects for one operation.
struct Drawing
{
    Holder<cairo_surface_t> surface;
    /// Null on failure.
    Holder<cairo_t> context;
};

struct Canvas::State
{
    PixelRows pixels;
    Rect clip;

    Rect GetAll() const { return {0, 0, static_cast<int>(pixels.numColumns), static_cast<int>(pixels.numRows)}; }
    unsigned char *GetPixel(int row, int column) const
    {
        return pixels.GetRow(static_cast<std::size_t>(row)) + std::ptrdiff_t{column} * s_pixelBytes;
    }
    /// Begins to draw in a colour, with the coordinates of the canvas.
    Drawing Begin(Color color) const
    {
        if (!LoadTextLibraries())
            return {};
        // The drawing library gets the clipping rectangle only, because it limits the size of images.
        Drawing drawing;
        drawing.surface.reset(cairo_image_surface_create_for_data(
            GetPixel(clip.y, clip.x), CAIRO_FORMAT_ARGB32, clip.width, clip.height, static_cast<int>(pixels.stride)));
        drawing.context.reset(cairo_create(drawing.surface.get()));
        if (cairo_status(drawing.context.get()) != CAIRO_STATUS_SUCCESS)
            return {};
        cairo_translate(drawing.context.get(), -clip.x, -clip.y);
        cairo_set_source_rgba(drawing.context.get(), color.red / 255.0, color.green / 255.0, color.blue / 255.0, 1);
        return drawing;
    }
};

Canvas::Canvas(PixelRows const &pixels) : state_(std::make_unique<State>(State{pixels, {}}))
{
    state_->clip = state_->GetAll();
}

Canvas::~Canvas() = default;

void Canvas::SetClip(Rect const &rect)
{
    state_->clip = Intersect(rect, state_->GetAll());
}

void Canvas::Clear(Color color)
{
    FillRectangle(state_->clip, color);
}

void Canvas::FillRectangle(Rect const &rect, Color color)
{
    unsigned char const pixel[s_pixelBytes] = {color.blue, color.green, color.red, 255};
    Rect const visible = Intersect(rect, state_->clip);
    for (int y = 0; y < visible.height; ++y)
    {
        unsigned char *at = state_->GetPixel(visible.y + y, visible.x);
        for (int x = 0; x < visible.width; ++x, at += s_pixelBytes)
            std::memcpy(at, pixel, s_pixelBytes);
    }
}

void Canvas::DrawLine(PointF const &from, PointF const &to, float width, Color color)
{
    if (state_->clip.width == 0 || state_->clip.height == 0)
        return;
    Drawing const drawing = state_->Begin(color);
    if (!drawing.context)
        return;
    cairo_set_line_width(drawing.context.get(), static_cast<double>(width));
    cairo_move_to(drawing.context.get(), static_cast<double>(from.x), static_cast<double>(from.y));
    cairo_line_to(drawing.context.get(), static_cast<double>(to.x), static_cast<double>(to.y));
    cairo_stroke(drawing.context.get());
    cairo_surface_flush(drawing.surface.get());
}

void Canvas::DrawText(wstring const &text, Font &font, RectF const &layout, bool centered, Color color)
{
    Rect const &clip = state_->clip;
    Font::State &state = *font.state_;
    if (clip.width == 0 || clip.height == 0 || !state.LayOut(text))
        return;

    Drawing const drawing = state_->Begin(color);
    if (!drawing.context)
        return;

    double x = static_cast<double>(layout.x);
    if (centered)
        x += (static_cast<double>(layout.width) - state.GetWidth()) / 2;
    // The baseline depends on the font only, not on the text.
    LineHeights const &heights = state.heights;
    double y = static_cast<double>(layout.y) +
               (static_cast<double>(layout.height) - (heights.ascent + heights.descent)) / 2 + heights.ascent;
    if (state.hinted)
    {
        x = std::round(x);
        y = std::round(y);
    }
    cairo_move_to(drawing.context.get(), x, y - ToPixels(pango_layout_get_baseline(state.layout.get())));
    pango_cairo_show_layout(drawing.context.get(), state.layout.get());
    cairo_surface_flush(drawing.surface.get());
}

} // namespace quillmarsh::platform::drawing
