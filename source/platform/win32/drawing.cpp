#include "source/platform/drawing.h"

#include <quillmarsh/basetools/texttools.h>

#include "source/platform/win32/gdiplus.h"
#include "source/platform/win32/widetext.h"

#include <algorithm>
#include <map>
#include <memory>
#include <mutex>
#include <utility>

namespace quillmarsh::platform::drawing
{
namespace
{

/// Only the clipping rectangle cuts off a text.
constexpr INT s_formatFlags =
    Gdiplus::StringFormatFlagsNoWrap | Gdiplus::StringFormatFlagsNoClip | Gdiplus::StringFormatFlagsNoFitBlackBox;

std::mutex s_startMutex;
unsigned int s_numStarts = 0;

/// Frees the wrapper that GDI+'s headers made for one of GDI+'s own objects.
template<typename Object>
void Forget(Object *&generic)
{
    Gdiplus::DllExports::GdipFree(generic);
    generic = nullptr;
}

/// Frees the wrappers of GDI+'s generic objects, which its headers cache and which become invalid when GDI+ stops.
void ForgetGenericObjects()
{
    Forget(Gdiplus::_GdipFontFamilyCachedGenericMonospace);
    Forget(Gdiplus::_GdipFontFamilyCachedGenericSansSerif);
    Forget(Gdiplus::_GdipFontFamilyCachedGenericSerif);
    Forget(Gdiplus::_GdipStringFormatCachedGenericDefault);
    Forget(Gdiplus::_GdipStringFormatCachedGenericTypographic);
}

/// Makes GDI+'s object for a family; it is not available when the family is not installed.
AutoPtr<Gdiplus::FontFamily> MakeFamily(FontFace const &face)
{
    wstring name;
    AsciiToUnicode(face.family, name);
    return std::make_unique<Gdiplus::FontFamily>(ToSystem(std::as_const(name)));
}

INT GetStyle(FontFace const &face)
{
    return (face.bold ? Gdiplus::FontStyleBold : 0) | (face.italic ? Gdiplus::FontStyleItalic : 0);
}

bool IsAvailable(Gdiplus::FontFamily const &family, INT style)
{
    return family.IsAvailable() && family.IsStyleAvailable(style);
}

Gdiplus::TextRenderingHint ToHint(GlyphEdges edges)
{
    if (edges.antiAliased)
        return edges.hinted ? Gdiplus::TextRenderingHintAntiAliasGridFit : Gdiplus::TextRenderingHintAntiAlias;
    return edges.hinted ? Gdiplus::TextRenderingHintSingleBitPerPixelGridFit
                        : Gdiplus::TextRenderingHintSingleBitPerPixel;
}

Gdiplus::Color ToSystem(Color color)
{
    return {255, color.red, color.green, color.blue};
}

} // namespace

string FindTextFailure()
{
    // GDI+ belongs to the system.
    return {};
}

bool ReadFamilyNames(std::vector<string> &names)
{
    std::uintptr_t token = 0;
    if (!Start(token))
        return false;
    struct Stopper
    {
        std::uintptr_t token;
        ~Stopper() { Stop(token); }
    } const stopper{token};
    Gdiplus::InstalledFontCollection const fonts;
    std::vector<Gdiplus::FontFamily> families(static_cast<std::size_t>(std::max(fonts.GetFamilyCount(), 0)));
    int numFound = 0;
    if (fonts.GetFamilies(static_cast<int>(families.size()), families.data(), &numFound) != Gdiplus::Ok)
        return false;
    for (int i = 0; i < numFound; ++i)
    {
        wchar_t name[LF_FACESIZE] = {};
        if (families[static_cast<std::size_t>(i)].GetFamilyName(name) == Gdiplus::Ok)
            names.push_back(FromSystem(name));
    }
    return true;
}

bool Start(std::uintptr_t &token)
{
    Gdiplus::GdiplusStartupInput const input;
    ULONG_PTR systemToken = 0;
    std::lock_guard const lock(s_startMutex);
    if (Gdiplus::GdiplusStartup(&systemToken, &input, nullptr) != Gdiplus::Ok)
        return false;
    ++s_numStarts;
    token = systemToken;
    return true;
}

void Stop(std::uintptr_t token)
{
    std::lock_guard const lock(s_startMutex);
    if (--s_numStarts == 0)
        ForgetGenericObjects();
    Gdiplus::GdiplusShutdown(token);
}

bool HasFace(FontFace const &face)
{
    return IsAvailable(*MakeFamily(face), GetStyle(face));
}

FontFace GetMonospaceFace()
{
    wchar_t name[LF_FACESIZE] = {};
    Gdiplus::FontFamily const *const family = Gdiplus::FontFamily::GenericMonospace();
    return {family->GetFamilyName(name) == Gdiplus::Ok ? FromSystem(name) : string()};
}

FaceHeights MeasureFace(FontFace const &face)
{
    AutoPtr<Gdiplus::FontFamily> const family = MakeFamily(face);
    INT const style = GetStyle(face);
    if (!IsAvailable(*family, style))
        return {};
    return {family->GetEmHeight(style), family->GetCellAscent(style), family->GetCellDescent(style)};
}

struct Font::State
{
    State(FontFace const &face, float size, GlyphEdges edges)
        : family(MakeFamily(face)),
          style(GetStyle(face)),
          emSize(size),
          hint(ToHint(edges)),
          font(family.get(), size, style, Gdiplus::UnitPixel),
          format(Gdiplus::StringFormat::GenericTypographic()),
          pixel(1, 1, PixelFormat32bppARGB),
          measuring(&pixel)
    {
        format.SetFormatFlags(s_formatFlags | Gdiplus::StringFormatFlagsMeasureTrailingSpaces);
        measuring.SetTextRenderingHint(hint);
    }

    /// Converts a length in units of the em to pixels.
    float Scale(UINT16 units) const
    {
        return static_cast<float>(units) * emSize / static_cast<float>(family->GetEmHeight(style));
    }

    AutoPtr<Gdiplus::FontFamily> family;
    INT style;
    float emSize;
    Gdiplus::TextRenderingHint hint;
    Gdiplus::Font font;
    Gdiplus::StringFormat format;
    Gdiplus::Bitmap pixel;
    Gdiplus::Graphics measuring;
    std::map<unsigned short, float> advances;
};

Font::Font(FontFace const &face, float size, GlyphEdges edges)
{
    // Some versions of GDI+ do not check the size.
    if (!(size > 0))
        return;
    state_ = std::make_unique<State>(face, size, edges);
    if (!IsAvailable(*state_->family, state_->style) || state_->font.GetLastStatus() != Gdiplus::Ok)
        state_.reset();
}

Font::~Font() = default;

float Font::GetAscent() const
{
    return state_->Scale(state_->family->GetCellAscent(state_->style));
}

float Font::GetDescent() const
{
    return state_->Scale(state_->family->GetCellDescent(state_->style));
}

float Font::GetLineHeight() const
{
    return state_->Scale(state_->family->GetLineSpacing(state_->style));
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
    Gdiplus::RectF box;
    bool const isMeasured =
        state_->measuring.MeasureString(platform::ToSystem(text), static_cast<INT>(text.size()), &state_->font,
                                        Gdiplus::PointF(0, 0), &state_->format, &box) == Gdiplus::Ok;
    return isMeasured ? box.Width : 0;
}

struct Canvas::State
{
    explicit State(PixelRows const &pixels)
        : bitmap(static_cast<INT>(pixels.numColumns), static_cast<INT>(pixels.numRows), static_cast<INT>(pixels.stride),
                 pixels.hasAlpha ? PixelFormat32bppARGB : PixelFormat32bppRGB, pixels.first),
          graphics(&bitmap)
    {
    }

    Gdiplus::Bitmap bitmap;
    Gdiplus::Graphics graphics;
};

Canvas::Canvas(PixelRows const &pixels) : state_(std::make_unique<State>(pixels)) {}

Canvas::~Canvas() = default;

void Canvas::SetClip(Rect const &rect)
{
    state_->graphics.SetClip(Gdiplus::Rect(rect.x, rect.y, rect.width, rect.height));
}

void Canvas::Clear(Color color)
{
    state_->graphics.Clear(ToSystem(color));
}

void Canvas::FillRectangle(Rect const &rect, Color color)
{
    Gdiplus::SolidBrush const brush(ToSystem(color));
    state_->graphics.FillRectangle(&brush, rect.x, rect.y, rect.width, rect.height);
}

void Canvas::DrawLine(PointF const &from, PointF const &to, float width, Color color)
{
    Gdiplus::Pen const pen(ToSystem(color), width);
    Gdiplus::Graphics &graphics = state_->graphics;
    graphics.SetSmoothingMode(Gdiplus::SmoothingModeAntiAlias);
    // Otherwise whole coordinates would be the middles of pixels.
    graphics.SetPixelOffsetMode(Gdiplus::PixelOffsetModeHalf);
    graphics.DrawLine(&pen, from.x, from.y, to.x, to.y);
    graphics.SetPixelOffsetMode(Gdiplus::PixelOffsetModeDefault);
    graphics.SetSmoothingMode(Gdiplus::SmoothingModeDefault);
}

void Canvas::DrawText(wstring const &text, Font &font, RectF const &layout, bool centered, Color color)
{
    Gdiplus::StringFormat format(Gdiplus::StringFormat::GenericTypographic());
    format.SetFormatFlags(s_formatFlags);
    format.SetAlignment(centered ? Gdiplus::StringAlignmentCenter : Gdiplus::StringAlignmentNear);
    format.SetLineAlignment(Gdiplus::StringAlignmentCenter);
    Gdiplus::SolidBrush const brush(ToSystem(color));
    state_->graphics.SetTextRenderingHint(font.state_->hint);
    state_->graphics.DrawString(platform::ToSystem(text), static_cast<INT>(text.size()), &font.state_->font,
                                Gdiplus::RectF(layout.x, layout.y, layout.width, layout.height), &format, &brush);
}

} // namespace quillmarsh::platform::drawing
