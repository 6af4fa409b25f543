// Fonts, and text that is drawn with them.
#include <quillmarsh/basetools/texttools.h>

#include "source/platform/linux/gdiplus.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <fontconfig/fontconfig.h>
#include <memory>
#include <pango/pangocairo.h>

namespace Gdiplus
{
namespace
{

using quillmarsh::string;
using quillmarsh::wstring;

/// Size at which a font is measured, so that its heights come out in units of the em.
constexpr int s_emHeight = 2048;
/// Beyond it, coordinates of the text library overflow.
constexpr REAL s_largestSize = 100000;

struct Releaser
{
    void operator()(FcPattern *pattern) const { FcPatternDestroy(pattern); }
    void operator()(FcObjectSet *objects) const { FcObjectSetDestroy(objects); }
    void operator()(FcFontSet *fonts) const { FcFontSetDestroy(fonts); }
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

/// Families that programs ask for by their names elsewhere, and fonts that look alike and are free to install.
struct StandIn
{
    char const *family;
    std::array<char const *, 2> standIns;
};

constexpr StandIn s_standIns[] = {
    {"Tahoma", {"DejaVu Sans", "Liberation Sans"}},
    {"Arial", {"Liberation Sans", "DejaVu Sans"}},
    {"Courier New", {"Liberation Mono", "DejaVu Sans Mono"}},
    {"Lucida Console", {"DejaVu Sans Mono", "Liberation Mono"}},
};

constexpr std::array<char const *, 2> s_monospace = {"DejaVu Sans Mono", "Liberation Mono"};

FcChar8 const *ToFontText(string const &text)
{
    return reinterpret_cast<FcChar8 const *>(text.c_str());
}

/// Whether there is a font with outlines of that very family, in upper or lower case.
bool IsInstalled(string const &family)
{
    if (family.empty())
        return false;
    Holder<FcPattern> const pattern(FcPatternCreate());
    Holder<FcObjectSet> const objects(FcObjectSetBuild(FC_FAMILY, static_cast<char *>(nullptr)));
    if (!pattern || !objects)
        return false;
    FcPatternAddString(pattern.get(), FC_FAMILY, ToFontText(family));
    FcPatternAddBool(pattern.get(), FC_OUTLINE, FcTrue);
    Holder<FcFontSet> const fonts(FcFontList(nullptr, pattern.get(), objects.get()));
    return fonts && fonts->nfont > 0;
}

/// Family that the system takes for another one; empty if it has no fonts at all.
string MatchFamily(char const *family)
{
    Holder<FcPattern> const wanted(FcNameParse(ToFontText(family)));
    if (!wanted)
        return {};
    FcConfigSubstitute(nullptr, wanted.get(), FcMatchPattern);
    FcDefaultSubstitute(wanted.get());
    FcResult result = FcResultNoMatch;
    Holder<FcPattern> const found(FcFontMatch(nullptr, wanted.get(), &result));
    FcChar8 *name = nullptr;
    if (!found || FcPatternGetString(found.get(), FC_FAMILY, 0, &name) != FcResultMatch)
        return {};
    return reinterpret_cast<char const *>(name);
}

string FindInstalled(std::array<char const *, 2> const &families)
{
    auto const found = std::find_if(families.begin(), families.end(), &IsInstalled);
    return found == families.end() ? string() : *found;
}

/// The family itself, or what stands in for it; empty if there is neither.
string FindFamily(string const &family)
{
    if (IsInstalled(family))
        return family;
    for (StandIn const &row : s_standIns)
    {
        if (FcStrCmpIgnoreCase(ToFontText(row.family), ToFontText(family)) == 0)
            return FindInstalled(row.standIns);
    }
    return {};
}

string ToText(WCHAR const *name)
{
    string text;
    quillmarsh::UnicodeToAscii(name, text);
    return text;
}

Holder<PangoFontDescription> Describe(string const &family, INT style, double size)
{
    Holder<PangoFontDescription> font(pango_font_description_new());
    // A comma parts families from each other.
    pango_font_description_set_family(font.get(), family.c_str());
    pango_font_description_set_weight(font.get(), style & FontStyleBold ? PANGO_WEIGHT_BOLD : PANGO_WEIGHT_NORMAL);
    pango_font_description_set_style(font.get(), style & FontStyleItalic ? PANGO_STYLE_ITALIC : PANGO_STYLE_NORMAL);
    pango_font_description_set_absolute_size(font.get(), size * PANGO_SCALE);
    return font;
}

Holder<PangoContext> MakeContext(bool isSmooth, bool isHinted)
{
    Holder<PangoContext> context(pango_font_map_create_context(pango_cairo_font_map_get_default()));
    Holder<cairo_font_options_t> const options(cairo_font_options_create());
    cairo_font_options_set_antialias(options.get(), isSmooth ? CAIRO_ANTIALIAS_GRAY : CAIRO_ANTIALIAS_NONE);
    cairo_font_options_set_hint_style(options.get(), isHinted ? CAIRO_HINT_STYLE_FULL : CAIRO_HINT_STYLE_NONE);
    cairo_font_options_set_hint_metrics(options.get(), isHinted ? CAIRO_HINT_METRICS_ON : CAIRO_HINT_METRICS_OFF);
    pango_cairo_context_set_font_options(context.get(), options.get());
    pango_cairo_context_set_resolution(context.get(), 96);
    pango_context_set_round_glyph_positions(context.get(), isHinted);
    return context;
}

struct LineHeights
{
    double ascent = 0;
    double descent = 0;
};

LineHeights Measure(PangoContext *context, PangoFontDescription const *font)
{
    Holder<PangoFontMetrics> const metrics(pango_context_get_metrics(context, font, nullptr));
    if (!metrics)
        return {};
    return {static_cast<double>(pango_font_metrics_get_ascent(metrics.get())) / PANGO_SCALE,
            static_cast<double>(pango_font_metrics_get_descent(metrics.get())) / PANGO_SCALE};
}

LineHeights MeasureFamily(string const &family, INT style)
{
    if (family.empty())
        return {};
    return Measure(MakeContext(true, false).get(), Describe(family, style, s_emHeight).get());
}

bool IsPrintable(unsigned int code)
{
    bool const isControl = code < 0x20 || (code >= 0x7F && code < 0xA0);
    bool const isHalf = code >= 0xD800 && code < 0xE000;
    bool const isNone = code >= 0xFFFE;
    return !isControl && !isHalf && !isNone;
}

/// What can be drawn of a text, in UTF-8.
string MakePrintable(WCHAR const *text, INT length)
{
    wstring wide;
    std::copy_if(text, text + std::max(length, 0), std::back_inserter(wide), &IsPrintable);
    return ToText(wide.c_str());
}

/// Where a line begins, on the axis that it is aligned on.
double Align(StringAlignment alignment, double start, double size, double textSize)
{
    return alignment == StringAlignmentCenter ? start + (size - textSize) / 2 : start;
}

} // namespace

FontFamily::FontFamily(WCHAR const *name) : name_(FindFamily(ToText(name))) {}

FontFamily const *FontFamily::GenericMonospace()
{
    auto const find = []
    {
        string const usual = FindInstalled(s_monospace);
        return usual.empty() ? MatchFamily("monospace") : usual;
    };
    static FontFamily const family(find());
    return &family;
}

bool FontFamily::IsStyleAvailable(INT) const
{
    return IsAvailable();
}

std::uint16_t FontFamily::GetEmHeight(INT) const
{
    return s_emHeight;
}

std::uint16_t FontFamily::GetCellAscent(INT style) const
{
    return static_cast<std::uint16_t>(std::lround(MeasureFamily(name_, style).ascent));
}

std::uint16_t FontFamily::GetCellDescent(INT style) const
{
    return static_cast<std::uint16_t>(std::lround(MeasureFamily(name_, style).descent));
}

Font::Font(FontFamily const *family, REAL emSize, INT style, Unit unit)
    : familyName_(family->GetName()),
      size_(emSize),
      style_(style)
{
    bool const isSize = emSize > 0 && emSize <= s_largestSize;
    if (!isSize || unit != UnitPixel)
        status_ = InvalidParameter;
    else if (!family->IsAvailable())
        status_ = FontFamilyNotFound;
}

StringFormat const *StringFormat::GenericTypographic()
{
    static StringFormat const format;
    return &format;
}

Status StringFormat::SetAlignment(StringAlignment alignment)
{
    alignment_ = alignment;
    return Ok;
}

Status StringFormat::SetLineAlignment(StringAlignment alignment)
{
    lineAlignment_ = alignment;
    return Ok;
}

Status StringFormat::SetFormatFlags(INT flags)
{
    return (flags & (StringFormatFlagsNoWrap | StringFormatFlagsNoClip)) != 0 ? Ok : NotImplemented;
}

Status Graphics::DrawString(WCHAR const *text, INT length, Font const *font, RectF const &layout,
                            StringFormat const *format, SolidBrush const *brush)
{
    if (status_ != Ok || font->GetLastStatus() != Ok)
        return InvalidParameter;
    string const printable = MakePrintable(text, length);
    if (printable.empty() || clip_.Width == 0 || clip_.Height == 0)
        return Ok;

    // The drawing library sees the clipping region only: it has a limit for the size of a whole bitmap.
    BYTE *const pixels = bitmap_.GetRow(static_cast<UINT>(clip_.Y)) + std::ptrdiff_t{clip_.X} * 4;
    Holder<cairo_surface_t> const surface(cairo_image_surface_create_for_data(pixels, CAIRO_FORMAT_ARGB32, clip_.Width,
                                                                              clip_.Height, bitmap_.GetStride()));
    Holder<cairo_t> const context(cairo_create(surface.get()));
    if (cairo_status(context.get()) != CAIRO_STATUS_SUCCESS)
        return GenericError;

    bool const isSmooth = hint_ == TextRenderingHintAntiAlias || hint_ == TextRenderingHintAntiAliasGridFit;
    bool const isHinted =
        hint_ == TextRenderingHintSingleBitPerPixelGridFit || hint_ == TextRenderingHintAntiAliasGridFit;
    Holder<PangoContext> const textContext = MakeContext(isSmooth, isHinted);
    Holder<PangoFontDescription> const description =
        Describe(font->GetFamilyName(), font->GetStyle(), static_cast<double>(font->GetSize()));
    Holder<PangoLayout> const line(pango_layout_new(textContext.get()));
    pango_layout_set_single_paragraph_mode(line.get(), TRUE);
    pango_layout_set_font_description(line.get(), description.get());
    pango_layout_set_text(line.get(), printable.c_str(), static_cast<int>(printable.size()));

    int width = 0;
    pango_layout_get_size(line.get(), &width, nullptr);
    LineHeights const heights = Measure(textContext.get(), description.get());
    double x = Align(format->GetAlignment(), static_cast<double>(layout.X), static_cast<double>(layout.Width),
                     static_cast<double>(width) / PANGO_SCALE);
    // All lines of a font stand at one height, whatever is in them.
    double y = Align(format->GetLineAlignment(), static_cast<double>(layout.Y), static_cast<double>(layout.Height),
                     heights.ascent + heights.descent) +
               heights.ascent;
    if (isHinted)
    {
        x = std::round(x);
        y = std::round(y);
    }
    Color const color = brush->GetColor();
    cairo_set_source_rgba(context.get(), color.r / 255.0, color.g / 255.0, color.b / 255.0, color.a / 255.0);
    cairo_move_to(context.get(), x - clip_.X,
                  y - clip_.Y - static_cast<double>(pango_layout_get_baseline(line.get())) / PANGO_SCALE);
    pango_cairo_show_layout(context.get(), line.get());
    cairo_surface_flush(surface.get());
    return cairo_status(context.get()) == CAIRO_STATUS_SUCCESS ? Ok : GenericError;
}

} // namespace Gdiplus
