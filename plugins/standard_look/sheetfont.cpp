#include "sheetfont.h"

#include "look_shapes/marks.h"

#include <quillmarsh/dataobjects/fontimages.h>
#include <quillmarsh/dataobjects/imagebase.h>
#include <quillmarsh/widgets/textencoding.h>

#include <algorithm>
#include <cmath>

namespace standard_look
{
namespace
{

using namespace quillmarsh;
using look_shapes::eMark;
using look_shapes::Sheet;

constexpr unsigned int s_numLookGlyphs = 256;
constexpr unsigned int s_numColumns = 16;
constexpr unsigned int s_largestTile = 64;

/// Families in the order in which they are tried: those of Windows, and those that Linux has.
constexpr char const *s_families[] = {"Segoe UI", "Liberation Sans", "DejaVu Sans", "Tahoma", "Arial"};
constexpr char const *s_monoFamilies[] = {"Consolas", "DejaVu Sans Mono", "Liberation Mono", "Lucida Console"};

template<std::size_t size>
string FindFamily(char const *const (&families)[size], bool bold)
{
    auto const *const found = std::find_if(std::begin(families), std::end(families),
                                           [=](char const *family) { return CanGenerateFont(family, bold, false); });
    return found != std::end(families) ? *found : families[0];
}

unsigned int RoundToPixels(float units, float scale)
{
    return static_cast<unsigned int>(std::max(std::round(units * scale), 1.0f));
}

/// True for codes of control characters, whose tiles have room for parts.
constexpr bool IsControl(unsigned int code)
{
    return code < 0x20 || (code >= 0x7F && code < 0xA0);
}

/// A faint edge of a glyph may be cut.
bool IsInk(ImageBase const &image, unsigned int row, unsigned int column)
{
    return image.SampleB(row, column)[3] >= 64;
}

struct CornerRow
{
    ePart part;
    float radius;
    float line;
};
constexpr CornerRow s_corners[] = {
    {e_part_corner2, 2, 0}, {e_part_corner3, 3, 0}, {e_part_corner4, 4, 0}, {e_part_corner6, 6, 0},
    {e_part_corner8, 8, 0}, {e_part_ring3, 3, 1},   {e_part_ring4, 4, 1},   {e_part_ring6, 6, 1},
    {e_part_ring8, 8, 1},   {e_part_focus6, 6, 2},  {e_part_focus7, 7, 2},  {e_part_focus11, 11, 2},
};
constexpr float s_shadowSize = 20;

struct MarkRow
{
    ePart part;
    eMark mark;
    float size;
};
constexpr MarkRow s_marks[] = {
    {e_part_signInformation, eMark::e_information, 32},
    {e_part_signQuestion, eMark::e_question, 32},
    {e_part_signWarning, eMark::e_warning, 32},
    {e_part_signError, eMark::e_error, 32},
    {e_part_grip, eMark::e_grip, 16},
    {ToPart(widgets::e_mark_check), eMark::e_check, 16},
    {ToPart(widgets::e_mark_dot), eMark::e_dot, 16},
    {ToPart(widgets::e_mark_cross), eMark::e_close, 16},
    {ToPart(widgets::e_mark_plus), eMark::e_plus, 16},
    {ToPart(widgets::e_mark_minus), eMark::e_minus, 16},
    {ToPart(widgets::e_mark_arrow_left), eMark::e_arrowLeft, 16},
    {ToPart(widgets::e_mark_arrow_right), eMark::e_arrowRight, 16},
    {ToPart(widgets::e_mark_arrow_up), eMark::e_arrowUp, 16},
    {ToPart(widgets::e_mark_arrow_down), eMark::e_arrowDown, 16},
    {ToPart(widgets::e_mark_folder), eMark::e_folder, 16},
    {ToPart(widgets::e_mark_parent_folder), eMark::e_folderUp, 16},
    {ToPart(widgets::e_mark_file), eMark::e_file, 16},
    {ToPart(widgets::e_mark_picture), eMark::e_picture, 16},
    {ToPart(widgets::e_mark_volume), eMark::e_volume, 16},
    {ToPart(widgets::e_mark_signal), eMark::e_signal, 16},
    {ToPart(widgets::e_mark_drive), eMark::e_drive, 16},
    {ToPart(widgets::e_mark_search), eMark::e_magnifier, 16},
    {ToPart(widgets::e_mark_settings), eMark::e_settings, 16},
    {ToPart(widgets::e_mark_information), eMark::e_information, 16},
    {ToPart(widgets::e_mark_question), eMark::e_question, 16},
    {ToPart(widgets::e_mark_warning), eMark::e_warning, 16},
    {ToPart(widgets::e_mark_error), eMark::e_error, 16},
};

/// Puts parts into the tiles of control characters, one in each, with a free column and row at the left and top.
class PartPlaces
{
public:
    explicit PartPlaces(unsigned int tileSize) : tileSize_(tileSize) {}

    /// Returns the size that a part of a wanted size has on the sheet, in pixels.
    unsigned int Limit(unsigned int size) const { return std::min(size, tileSize_ - 1); }

    /// Goes on to the next tile. Returns the place of a part of this limited size.
    look_shapes::Area Next(unsigned int size)
    {
        // The box of characters without a glyph is among the codes.
        while (!IsControl(code_) || code_ == static_cast<unsigned char>(widgets::s_boxGlyph))
            ++code_;
        look_shapes::Area const area = {code_ % s_numColumns * tileSize_ + 1, code_ / s_numColumns * tileSize_ + 1,
                                        size, size};
        ++code_;
        return area;
    }

private:
    unsigned int tileSize_;
    unsigned int code_ = 0;
};

} // namespace

/// What the glyphs are drawn by, in pixels.
struct SheetFont::Drawing
{
    string family;
    bool bold;
    unsigned int tileSize;
    unsigned int lineHeight;
    /// Place of the left end of each glyph in its tile.
    unsigned int left;
    std::vector<unsigned short> codes;
    std::vector<float> advances;
    bool mono;
    /// Rows of a tile in which there is ink of any glyph.
    unsigned int top;
    unsigned int numRows;
};

void SheetFont::FindInkRows(ImageBase const &image, Drawing &drawing)
{
    unsigned int first = drawing.tileSize, end = 0;
    for (unsigned int row = 0; row < image.GetNumRows(); ++row)
    {
        for (unsigned int column = 0; column < image.GetNumColumns(); ++column)
        {
            if (!IsInk(image, row, column))
                continue;
            first = std::min(first, row % drawing.tileSize);
            end = std::max(end, row % drawing.tileSize + 1);
        }
    }
    bool const hasInk = first < end;
    drawing.top = hasInk ? first : 0;
    drawing.numRows = hasInk ? end - first : drawing.lineHeight;
}

void SheetFont::DrawBoxGlyph(ImageBase &image, Drawing const &drawing)
{
    constexpr unsigned int code = static_cast<unsigned char>(widgets::s_boxGlyph);
    unsigned int const line = std::max(drawing.lineHeight / 16, 1u);
    unsigned int const width = std::max(drawing.lineHeight / 2, 3u), height = std::max(drawing.lineHeight * 5 / 8, 3u);
    unsigned int const left = code % s_numColumns * drawing.tileSize + drawing.left + line;
    unsigned int const top = code / s_numColumns * drawing.tileSize + (drawing.tileSize - height) / 2;
    for (unsigned int y = 0; y < height; ++y)
    {
        for (unsigned int x = 0; x < width; ++x)
        {
            bool const isEdge = x < line || y < line || x + line >= width || y + line >= height;
            image.SampleB(top + y, left + x)[3] = isEdge ? 255 : 0;
        }
    }
}

CornerSize SheetFont::GetCornerSize(ePart part) const
{
    for (CornerRow const &row : s_corners)
    {
        if (row.part == part)
            return {static_cast<float>(RoundToPixels(row.radius, scale_)),
                    row.line > 0 ? static_cast<float>(RoundToPixels(row.line, scale_)) : 0};
    }
    return {static_cast<float>(RoundToPixels(s_shadowSize, scale_)), 0};
}

AutoPtr<SheetFont> SheetFont::Make(FontRow const &row, float scale, bool withParts)
{
    Drawing drawing;
    drawing.family = row.mono ? FindFamily(s_monoFamilies, row.bold) : FindFamily(s_families, row.bold);
    drawing.bold = row.bold;
    drawing.mono = row.mono;

    // How high a line is for an em depends on the family.
    constexpr float probe = 1024;
    float const em = MeasureFontGlyphs(0, nullptr, drawing.family, row.bold, false, probe, true, true).emHeight;
    float const height = std::max(std::round(row.emHeight * scale * probe / em), 1.0f);
    float const wanted = std::max(height * 1.2f, withParts ? 32 * scale : 0);
    drawing.tileSize = 16;
    while (drawing.tileSize < s_largestTile && static_cast<float>(drawing.tileSize) < wanted)
        drawing.tileSize *= 2;
    // Larger text is drawn from a smaller one.
    drawing.lineHeight = std::min(static_cast<unsigned int>(height), drawing.tileSize);
    drawing.left = drawing.tileSize / 8;

    for (unsigned int code = 0; code < s_numLookGlyphs; ++code)
        drawing.codes.push_back(static_cast<unsigned short>(IsControl(code) ? ' ' : code));
    auto const lineHeight = static_cast<float>(drawing.lineHeight);
    drawing.advances = MeasureFontGlyphs(s_numLookGlyphs, drawing.codes.data(), drawing.family, row.bold, false,
                                         lineHeight, true, true)
                           .advances;

    drawing.advances[static_cast<unsigned char>(widgets::s_boxGlyph)] = std::round(lineHeight * 0.6f);

    AutoPtr<ImageBase> const image(ManufactureImage(e_format_A8R8G8B8, 0, 0));
    auto const tile = static_cast<float>(drawing.tileSize);
    GenerateFontGlyphs(*image, s_numLookGlyphs, drawing.codes.data(), drawing.family, row.bold, false, s_numColumns,
                       drawing.tileSize, lineHeight / tile, static_cast<float>(drawing.left), 0, 0, 0, true, true,
                       false);
    // White everywhere: a texel without coverage leaves no dark fringe where a part is stretched.
    for (unsigned int i = 0; i < image->GetNumSamples(); ++i)
        std::fill_n(static_cast<SignalBase &>(*image).SampleB(i), 3, static_cast<unsigned char>(255));

    FindInkRows(*image, drawing);
    DrawBoxGlyph(*image, drawing);
    // As high as all ink together, and enlarged with the line.
    float const textHeight = std::ceil(static_cast<float>(drawing.numRows) * height / lineHeight);

    AutoPtr<SheetFont> font(new SheetFont(drawing.tileSize * s_numColumns, scale));
    font->SetFamilyName(drawing.family);
    font->SetBold(row.bold);
    font->SetMipFilter(e_filter_none);
    font->metrics_.Height = textHeight;
    font->metrics_.Mono = row.mono;
    font->metrics_.LineSpacing = (textHeight + static_cast<float>(RoundToPixels(3, scale))) / textHeight;
    font->SetBoxes(drawing, *image);
    if (withParts)
        font->DrawParts(*image);
    font->SetGenerateImageFromSystemFont(false);
    font->SetSourceImage(image.get(), false);
    return font;
}

/// Gives each glyph a box from where it begins to where the next one does; wider where its ink is.
void SheetFont::SetBoxes(Drawing const &drawing, ImageBase const &image)
{
    auto const tile = static_cast<float>(drawing.tileSize);
    float widths[s_numLookGlyphs], offsets[s_numLookGlyphs];
    for (unsigned int code = 0; code < s_numLookGlyphs; ++code)
    {
        unsigned int begin = drawing.left;
        unsigned int end = begin + static_cast<unsigned int>(std::lround(drawing.advances[code]));
        unsigned int const row = code / s_numColumns * drawing.tileSize,
                           column = code % s_numColumns * drawing.tileSize;
        for (unsigned int y = 0; y < drawing.tileSize && !drawing.mono; ++y)
        {
            for (unsigned int x = 0; x < drawing.tileSize; ++x)
            {
                if (!IsInk(image, row + y, column + x))
                    continue;
                begin = std::min(begin, x);
                end = std::max(end, x + 1);
            }
        }
        bool const hasGlyph = !IsControl(code) || code == static_cast<unsigned char>(widgets::s_boxGlyph);
        offsets[code] = hasGlyph ? static_cast<float>(begin) / tile : 0;
        widths[code] = hasGlyph ? static_cast<float>(std::min(end, drawing.tileSize) - begin) / tile : 0;
    }
    SetGlyphHeight(static_cast<float>(drawing.numRows) / tile);
    SetGlyphVOffset(static_cast<float>(drawing.top) / tile);
    SetGlyphWidths(widths);
    SetGlyphHOffsets(offsets);
    SetGlyphWidthMono(widths[static_cast<unsigned char>('0')]);
    SetGlyphHOffsetMono(offsets[static_cast<unsigned char>('0')]);
}

void SheetFont::DrawParts(ImageBase &image)
{
    Sheet sheet(image.GetNumColumns(), image.GetNumRows());
    PartPlaces places(static_cast<unsigned int>(GetTilePixelSizeU()));
    auto const store = [&](unsigned int part, look_shapes::Area const &area)
    {
        auto const width = static_cast<float>(sheet.GetWidth()), height = static_cast<float>(sheet.GetHeight());
        parts_[part] = {static_cast<float>(area.x) / width, static_cast<float>(area.x + area.width) / width,
                        static_cast<float>(area.y) / height, static_cast<float>(area.y + area.height) / height};
    };
    for (CornerRow const &row : s_corners)
    {
        CornerSize const size = GetCornerSize(row.part);
        auto const radius = static_cast<unsigned int>(size.radius), line = static_cast<unsigned int>(size.line);
        look_shapes::Area const area = places.Next(places.Limit(radius));
        if (line > 0)
            DrawRingCorner(sheet, area.x, area.y, area.width, std::min(line, area.width));
        else
            DrawCorner(sheet, area.x, area.y, area.width);
        store(row.part, area);
    }
    look_shapes::Area const shadow = places.Next(places.Limit(RoundToPixels(s_shadowSize, scale_)));
    DrawShadowCorner(sheet, shadow.x, shadow.y, shadow.width);
    store(e_part_shadow, shadow);
    for (MarkRow const &row : s_marks)
    {
        look_shapes::Area const area = places.Next(places.Limit(RoundToPixels(row.size, scale_)));
        DrawMark(sheet, area.x, area.y, row.mark, area.width);
        store(row.part, area);
    }
    for (unsigned int y = 0; y < sheet.GetHeight(); ++y)
    {
        for (unsigned int x = 0; x < sheet.GetWidth(); ++x)
        {
            if (unsigned char const coverage = sheet.Get(x, y); coverage != 0)
                image.SampleB(y, x)[3] = coverage;
        }
    }
}

} // namespace standard_look
