#include <quillmarsh/gui/gui_fonts.h>

#include <quillmarsh/basetools/diagnostics.h>
#include <quillmarsh/basetools/streameffectors.h>
#include <quillmarsh/basetools/texttools.h>
#include <quillmarsh/dataobjects/fontimages.h>
#include <quillmarsh/gui/gui_renderer.h>

#include "source/basetools/clamping.h"

#include <algorithm>
#include <ostream>

namespace quillmarsh::gui
{
namespace
{

constexpr unsigned int s_numGlyphColumns = 16;

float ClampSize(float size)
{
    return ClampSetting(size, 0.01f, 1.0f, 1.0f);
}

float ClampOffset(float offset)
{
    return ClampSetting(offset, 0.0f, 1.0f, 0.0f);
}

/// Returns the row of the tiles in which a glyph stands, counted in whole rows.
float ToTileRow(unsigned int glyph)
{
    unsigned int const row = glyph / s_numGlyphColumns;
    return static_cast<float>(row);
}

float ToTileColumn(unsigned int glyph)
{
    return static_cast<float>(glyph % s_numGlyphColumns);
}

unsigned char ToCode(char glyph)
{
    return static_cast<unsigned char>(glyph);
}

} // namespace

void FontTexture::CreationParams::Dump(ostream &out, unsigned int tabs) const
{
    IndentEffector const indent(tabs);
    out << indent << "Family............: " << Family << std::endl;
    out << indent << "Bold..............: " << MakeString(Bold) << std::endl;
    out << indent << "Italic............: " << MakeString(Italic) << std::endl;
    out << indent << "DefaultSpacingMono: " << MakeString(DefaultSpacingMono) << std::endl;
    out << indent << "DefaultSpacing....: " << MakeString(DefaultSpacing) << std::endl;
    out << indent << "AsciiSubsetOnly...: " << MakeString(AsciiSubsetOnly) << std::endl;
    out << indent << "TextureWidth......: " << MakeString(TextureWidth) << std::endl;
    out << indent << "TextureMultiLevel.: " << MakeString(TextureMultiLevel) << std::endl;
    out << indent << "IGScaleEmHeight...: " << MakeString(IGScaleEmHeight) << std::endl;
    out << indent << "IGGlyphOffsetH....: " << MakeString(IGGlyphOffsetH) << std::endl;
    out << indent << "IGGlyphOffsetV....: " << MakeString(IGGlyphOffsetV) << std::endl;
    out << indent << "IGGlyphSizeModifyH: " << MakeString(IGGlyphSizeModifyH) << std::endl;
    out << indent << "IGGlyphSizeModifyV: " << MakeString(IGGlyphSizeModifyV) << std::endl;
    out << indent << "ACWidthEmptyGlyph.: " << MakeString(ACWidthEmptyGlyph) << std::endl;
    out << indent << "ACAddPixelsLeft...: " << MakeString(ACAddPixelsLeft) << std::endl;
    out << indent << "ACAddPixelsRight..: " << MakeString(ACAddPixelsRight) << std::endl;
    out << indent << "ACAddPixelsTop....: " << MakeString(ACAddPixelsTop) << std::endl;
    out << indent << "ACAddPixelsBottom.: " << MakeString(ACAddPixelsBottom) << std::endl;
}

FontTexture::FontTexture(bool asciiSubsetOnly, unsigned int textureWidth, bool multiLevel)
    : TileTexture(e_format_A8R8G8B8, multiLevel, FixTextureWidth(textureWidth) / (asciiSubsetOnly ? 2 : 1),
                  FixTextureWidth(textureWidth), s_numGlyphColumns / (asciiSubsetOnly ? 2 : 1), s_numGlyphColumns)
{
    SetAsciiSubsetOnly(asciiSubsetOnly);
    ClearGlyphProperties();
}

AutoPtr<FontTexture> FontTexture::CreateFontTexture(CreationParams const &params)
{
    auto font = std::make_unique<FontTexture>(params.AsciiSubsetOnly, params.TextureWidth, params.TextureMultiLevel);
    font->SetFamilyName(params.Family);
    font->SetBold(params.Bold);
    font->SetItalic(params.Italic);
    font->SetDefaultSpacingMono(params.DefaultSpacingMono);
    font->SetDefaultSpacing(params.DefaultSpacing);
    font->SetImageGenerationParameters(params.IGScaleEmHeight, params.IGGlyphOffsetH, params.IGGlyphOffsetV,
                                       params.IGGlyphSizeModifyH, params.IGGlyphSizeModifyV);
    font->CalcGlyphPropertiesFromImage(params.ACWidthEmptyGlyph, params.ACAddPixelsLeft, params.ACAddPixelsRight,
                                       params.ACAddPixelsTop, params.ACAddPixelsBottom);
    return font;
}

void FontTexture::GetCreationParameters(CreationParams &params) const
{
    params.Family = GetFamilyName();
    params.Bold = IsBold();
    params.Italic = IsItalic();
    params.DefaultSpacingMono = GetDefaultSpacingMono();
    params.DefaultSpacing = GetDefaultSpacing();
    params.AsciiSubsetOnly = IsAsciiSubsetOnly();
    params.TextureWidth = GetWidth();
    params.TextureMultiLevel = IsMultiLevel();
    GetImageGenerationParameters(params.IGScaleEmHeight, params.IGGlyphOffsetH, params.IGGlyphOffsetV,
                                 params.IGGlyphSizeModifyH, params.IGGlyphSizeModifyV);
    params.ACWidthEmptyGlyph = emptyWidth_;
    params.ACAddPixelsLeft = addLeft_;
    params.ACAddPixelsRight = addRight_;
    params.ACAddPixelsTop = addTop_;
    params.ACAddPixelsBottom = addBottom_;
}

unsigned int FontTexture::FixTextureWidth(unsigned int textureWidth)
{
    if (textureWidth < 512)
        return 256;
    return textureWidth < 1024 ? 512 : 1024;
}

AutoPtr<ImageBase> FontTexture::GenerateImageFromSystemFont()
{
    AutoPtr<ImageBase> image(ManufactureImage(e_format_A8R8G8B8, 0, 0));
    GenerateFontGlyphsAscii(*image, 0, GetNumGlyphs() - 1, GetFamilyName(), IsBold(), IsItalic(), GetNumGlyphColumns(),
                            static_cast<unsigned int>(GetGlyphPixelSizeU()), scaleEmHeight_, offsetH_, offsetV_,
                            sizeModifyH_, sizeModifyV_, true, false, false);
    if (!CanGenerateFont(GetFamilyName(), IsBold(), IsItalic()))
    {
        SetFamilyName("GenericMonospace");
        SetBold(false);
        SetItalic(false);
    }
    return image;
}

void FontTexture::SetImageGenerationParameters(float scaleEmHeight, float offsetH, float offsetV, float sizeModifyH,
                                               float sizeModifyV)
{
    scaleEmHeight_ = scaleEmHeight;
    offsetH_ = offsetH;
    offsetV_ = offsetV;
    sizeModifyH_ = sizeModifyH;
    sizeModifyV_ = sizeModifyV;
}

void FontTexture::GetImageGenerationParameters(float &scaleEmHeight, float &offsetH, float &offsetV, float &sizeModifyH,
                                               float &sizeModifyV) const
{
    scaleEmHeight = scaleEmHeight_;
    offsetH = offsetH_;
    offsetV = offsetV_;
    sizeModifyH = sizeModifyH_;
    sizeModifyV = sizeModifyV_;
}

ImageBase *FontTexture::GenerateSourceImage(bool &originBottom)
{
    if (!generateImageFromSystemFont_)
        return TileTexture::GenerateSourceImage(originBottom);
    originBottom = false;
    return GenerateImageFromSystemFont().release();
}

void FontTexture::ClearGlyphProperties()
{
    SetGlyphHeight(1);
    SetGlyphVOffset(0);
    SetGlyphWidthMono(1);
    SetGlyphHOffsetMono(0);
    SetGlyphWidths(1.0f);
    SetGlyphHOffsets(0.0f);
    emptyWidth_ = 0.5f;
    addBottom_ = 0;
}

void FontTexture::SetGlyphHeight(float height)
{
    glyphHeight_ = ClampSize(height);
    inverseGlyphHeight_ = 1.0f / glyphHeight_;
    CalcVerticalGlyphCoords();
}

void FontTexture::SetGlyphVOffset(float offset)
{
    glyphVOffset_ = ClampOffset(offset);
    CalcVerticalGlyphCoords();
}

void FontTexture::SetGlyphWidthMono(float width)
{
    glyphWidthMono_ = ClampSize(width);
    CalcHorizontalGlyphCoords();
}

void FontTexture::SetGlyphHOffsetMono(float offset)
{
    glyphHOffsetMono_ = ClampOffset(offset);
    CalcHorizontalGlyphCoords();
}

void FontTexture::SetGlyphWidths(float const *widths)
{
    QUILLMARSH_ASSERT(widths != nullptr, "Invalid argument.");
    if (!widths)
        return;
    std::transform(widths, widths + s_numCodes, glyphWidth_.begin(), ClampSize);
    CalcHorizontalGlyphCoords();
}

void FontTexture::SetGlyphWidths(float width)
{
    glyphWidth_.fill(ClampSize(width));
    CalcHorizontalGlyphCoords();
}

void FontTexture::SetGlyphHOffsets(float const *offsets)
{
    QUILLMARSH_ASSERT(offsets != nullptr, "Invalid argument.");
    if (!offsets)
        return;
    std::transform(offsets, offsets + s_numCodes, glyphHOffset_.begin(), ClampOffset);
    CalcHorizontalGlyphCoords();
}

void FontTexture::SetGlyphHOffsets(float offset)
{
    glyphHOffset_.fill(ClampOffset(offset));
    CalcHorizontalGlyphCoords();
}

void FontTexture::CalcVerticalGlyphCoords()
{
    for (unsigned int glyph = 0; glyph < s_numCodes; ++glyph)
    {
        vTop_[glyph] = GetTileCoordV(ToTileRow(glyph)) + GetTileSizeV() * glyphVOffset_;
        vBottom_[glyph] = vTop_[glyph] + GetTileSizeV() * glyphHeight_;
    }
}

void FontTexture::CalcHorizontalGlyphCoords()
{
    for (unsigned int glyph = 0; glyph < s_numCodes; ++glyph)
    {
        float const uTile = GetTileCoordU(ToTileColumn(glyph));
        uLeft_[glyph] = uTile + GetTileSizeU() * glyphHOffset_[glyph];
        uRight_[glyph] = uLeft_[glyph] + GetTileSizeU() * glyphWidth_[glyph];
        uLeftMono_[glyph] = uTile + GetTileSizeU() * glyphHOffsetMono_;
        uRightMono_[glyph] = uLeftMono_[glyph] + GetTileSizeU() * glyphWidthMono_;
    }
}

void FontTexture::GetGlyphTileCoords(unsigned char glyph, float &uLeft, float &uRight, float &vTop,
                                     float &vBottom) const
{
    GetTileCoords(ToTileRow(glyph), ToTileColumn(glyph), uLeft, uRight, vTop, vBottom);
}

void FontTexture::GetGlyphTileCoords(unsigned char glyph, RectangleCT &rectangle) const
{
    GetGlyphTileCoords(glyph, rectangle.uMin, rectangle.uMax, rectangle.vMin, rectangle.vMax);
}

void FontTexture::GetGlyphCoordsMono(unsigned char glyph, float &uLeft, float &uRight, float &vTop,
                                     float &vBottom) const
{
    uLeft = uLeftMono_[glyph];
    uRight = uRightMono_[glyph];
    vTop = vTop_[glyph];
    vBottom = vBottom_[glyph];
}

void FontTexture::GetGlyphCoordsMono(unsigned char glyph, RectangleCT &rectangle) const
{
    GetGlyphCoordsMono(glyph, rectangle.uMin, rectangle.uMax, rectangle.vMin, rectangle.vMax);
}

void FontTexture::GetGlyphCoords(unsigned char glyph, float &uLeft, float &uRight, float &vTop, float &vBottom) const
{
    uLeft = uLeft_[glyph];
    uRight = uRight_[glyph];
    vTop = vTop_[glyph];
    vBottom = vBottom_[glyph];
}

void FontTexture::GetGlyphCoords(unsigned char glyph, RectangleCT &rectangle) const
{
    GetGlyphCoords(glyph, rectangle.uMin, rectangle.uMax, rectangle.vMin, rectangle.vMax);
}

void FontTexture::DrawText(Renderer &renderer, unsigned int length, char const *text,
                           DrawTextParams const &params) const
{
    renderer.DrawText(*this, length, text, params);
}

float FontTexture::CalcGlyphWidthMultiplier(TextMetrics const &metrics) const
{
    return inverseGlyphHeight_ * metrics.Height * metrics.GlyphWidthScale;
}

float FontTexture::CalcGlyphWidth(TextMetrics const &metrics, char glyph) const
{
    return CalcGlyphWidthMultiplier(metrics) * (metrics.Mono ? glyphWidthMono_ : glyphWidth_[ToCode(glyph)]);
}

float FontTexture::CalcTextWidth(TextMetrics const &metrics, unsigned int length, char const *text) const
{
    if (length == 0)
        return 0;
    float width = 0;
    if (metrics.Mono)
        width = static_cast<float>(length) * CalcGlyphWidth(metrics, 0);
    else
    {
        for (unsigned int i = 0; i < length; ++i)
            width += glyphWidth_[ToCode(text[i])];
        width *= CalcGlyphWidthMultiplier(metrics);
    }
    return width + static_cast<float>(length - 1) * CalcSpacingWidth(metrics);
}

void FontTexture::CalcTextWidths(std::vector<float> &widths, TextMetrics const &metrics, unsigned int length,
                                 char const *text) const
{
    widths.clear();
    widths.reserve(length);
    float const spacing = CalcSpacingWidth(metrics);
    float sum = 0;
    for (unsigned int i = 0; i < length; ++i)
    {
        sum += FontTexture::CalcGlyphWidth(metrics, text[i]);
        widths.push_back(sum);
        sum += spacing;
    }
}

void FontTexture::CalcMaxVisibleText(unsigned int &count, float &width, float maxWidth, TextMetrics const &metrics,
                                     unsigned int length, char const *text) const
{
    count = 0;
    width = 0;
    float const spacing = CalcSpacingWidth(metrics);
    float sum = 0;
    for (unsigned int i = 0; i < length; ++i)
    {
        sum += FontTexture::CalcGlyphWidth(metrics, text[i]);
        if (sum > maxWidth)
            return;
        width = sum;
        ++count;
        sum += spacing;
    }
}

} // namespace quillmarsh::gui
