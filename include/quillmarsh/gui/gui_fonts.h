// Fonts of the GUI, and the fonts that are sheets of glyphs in a texture.
#ifndef QUILLMARSH_GUI_GUI_FONTS_H
#define QUILLMARSH_GUI_GUI_FONTS_H

#include <quillmarsh/gui/gui_drawparams.h>
#include <quillmarsh/gui/gui_textures.h>

#include <array>
#include <vector>

namespace quillmarsh::gui
{

class Renderer;

/// Draws and measures lines of text. A text is `length` bytes, each the code of one glyph; it may be null when the
/// length is 0. All widths are in pixels.
class QUILLMARSH_API Font : public virtual VideoResource
{
public:
    ~Font() override;

    /// @name Face
    /// A new face changes nothing that was made from the former one.
    /// @{
    void SetFamilyName(string const &name) { familyName_ = name; }
    /// Returns the name of the family; "Arial" at first.
    string const &GetFamilyName() const { return familyName_; }
    void SetBold(bool bold) { bold_ = bold; }
    bool IsBold() const { return bold_; }
    void SetItalic(bool italic) { italic_ = italic; }
    bool IsItalic() const { return italic_; }
    /// @}

    /// @name Space between two glyphs, unless the metrics give their own
    /// As a part of the text's height; one for texts of one width ("mono"), one for others. 0 at first.
    /// @{
    void SetDefaultSpacingMono(float spacing) { defaultSpacingMono_ = spacing; }
    float GetDefaultSpacingMono() const { return defaultSpacingMono_; }
    void SetDefaultSpacing(float spacing) { defaultSpacing_ = spacing; }
    float GetDefaultSpacing() const { return defaultSpacing_; }
    float GetDefaultSpacing(bool mono) const { return mono ? defaultSpacingMono_ : defaultSpacing_; }
    /// Returns the space between two glyphs.
    float CalcSpacingWidth(TextMetrics const &metrics) const;
    /// @}

    /// @name Glyphs
    /// The font has the glyphs of the codes 0 to 127, or with `asciiSubsetOnly` false 0 to 255.
    /// @{
    void SetAsciiSubsetOnly(bool asciiSubsetOnly);
    bool IsAsciiSubsetOnly() const { return asciiSubsetOnly_; }
    unsigned int GetNumGlyphs() const { return numGlyphs_; }
    /// @}

    /// @name Drawing and measuring
    /// @{

    /// Draws a line of text.
    virtual void DrawText(Renderer &renderer, unsigned int length, char const *text,
                          DrawTextParams const &params) const = 0;
    /// Returns the width of one glyph.
    virtual float CalcGlyphWidth(TextMetrics const &metrics, char glyph) const = 0;
    /// Returns the width of a text, with spaces between its glyphs.
    virtual float CalcTextWidth(TextMetrics const &metrics, unsigned int length, char const *text) const = 0;
    /// Gives the right edge of each glyph, measured from the left edge of the text.
    virtual void CalcTextWidths(std::vector<float> &widths, TextMetrics const &metrics, unsigned int length,
                                char const *text) const = 0;
    /// Gives how many glyphs at the beginning of the text fit into a width, and the width that they take.
    virtual void CalcMaxVisibleText(unsigned int &count, float &width, float maxWidth, TextMetrics const &metrics,
                                    unsigned int length, char const *text) const = 0;

    void DrawText(Renderer &renderer, string const &text, DrawTextParams const &params) const;
    float CalcTextWidth(TextMetrics const &metrics, string const &text) const;
    void CalcTextWidths(std::vector<float> &widths, TextMetrics const &metrics, string const &text) const;
    void CalcMaxVisibleText(unsigned int &count, float &width, float maxWidth, TextMetrics const &metrics,
                            string const &text) const;
    /// @}

protected:
    Font();

private:
    string familyName_ = "Arial";
    bool bold_ = false;
    bool italic_ = false;
    float defaultSpacingMono_ = 0;
    float defaultSpacing_ = 0;
    bool asciiSubsetOnly_ = true;
    unsigned int numGlyphs_ = 128;
};

/// Font whose glyphs are the tiles of a texture, 16 in a row: glyph g stands in row g / 16 and column g % 16.
///
/// The sheet is drawn with a font of the system, or it is the source of the texture. The part of a tile that a glyph
/// takes is its box: all boxes share top and height, and each glyph has its own left edge and width, besides those that
/// all glyphs share in a text of one width ("mono"). These measures are in tiles: 0 to 1. They are set by hand, or
/// measured from the ink of the sheet:
///
/// \code
/// gui::FontTexture::CreationParams params;
/// params.Family = "Tahoma";
/// AutoPtr<gui::FontTexture> font = gui::FontTexture::CreateFontTexture(params);
/// \endcode
///
/// A text of metrics `m` has boxes of `m.Height` pixels, whose widths keep the tile's aspect, times `m.GlyphWidthScale`.
class QUILLMARSH_API FontTexture : public Font, public TileTexture
{
public:
    /// What CreateFontTexture() makes a font from. A plain record.
    struct QUILLMARSH_API CreationParams
    {
        string Family = "Arial";
        bool Bold = false;
        bool Italic = false;
        float DefaultSpacingMono = 0;
        float DefaultSpacing = 0;
        bool AsciiSubsetOnly = true;
        /// Width of the sheet in pixels: 256, 512 or 1024.
        unsigned int TextureWidth = 512;
        bool TextureMultiLevel = true;

        /// @name How the sheet is drawn
        /// See SetImageGenerationParameters().
        /// @{
        float IGScaleEmHeight = 1;
        float IGGlyphOffsetH = 0;
        float IGGlyphOffsetV = 0;
        float IGGlyphSizeModifyH = 0;
        float IGGlyphSizeModifyV = 0;
        /// @}

        /// @name How the glyphs are measured
        /// See CalcGlyphPropertiesFromImage().
        /// @{
        float ACWidthEmptyGlyph = 0.5f;
        float ACAddPixelsLeft = 1;
        float ACAddPixelsRight = 1;
        float ACAddPixelsTop = 1;
        float ACAddPixelsBottom = 1;
        /// @}

        /// Prints one line for each field, behind `tabs` tabs.
        void Dump(ostream &out, unsigned int tabs) const;
    };

    /// Creates a font whose sheet has one of three widths, with square tiles, and whose glyphs take their whole tiles.
    /// The sheet is drawn with a font of the system when it is needed.
    FontTexture(bool asciiSubsetOnly, unsigned int textureWidth, bool multiLevel);
    /// Creates a font, and measures its glyphs on a sheet that it draws once. Throws like GenerateFontGlyphsAscii().
    static AutoPtr<FontTexture> CreateFontTexture(CreationParams const &params);
    /// Reads back what the font was made from, or has been set to since then.
    void GetCreationParameters(CreationParams &params) const;
    /// Returns the width of a sheet for a wanted width: 256, 512 or 1024, the largest that is not above it; at least
    /// 256.
    static unsigned int FixTextureWidth(unsigned int textureWidth);

    /// @name The sheet
    /// @{

    /// True draws the sheet with a font of the system; false takes the source of the texture. True at first.
    void SetGenerateImageFromSystemFont(bool generate) { generateImageFromSystemFont_ = generate; }
    bool GetGenerateImageFromSystemFont() const { return generateImageFromSystemFont_; }
    /// Draws the sheet: white glyphs with their coverage as alpha. Family and style become those of the substitute if
    /// the system does not have them.
    AutoPtr<ImageBase> GenerateImageFromSystemFont();
    /// Sets the height of a line of the font, in tiles, and what is added to the left, top, right and bottom edge of
    /// the rectangles into which the glyphs are drawn, in pixels.
    void SetImageGenerationParameters(float scaleEmHeight, float offsetH, float offsetV, float sizeModifyH,
                                      float sizeModifyV);
    void GetImageGenerationParameters(float &scaleEmHeight, float &offsetH, float &offsetV, float &sizeModifyH,
                                      float &sizeModifyV) const;

    ImageBase *GenerateSourceImage(bool &originBottom) override;
    /// @}

    /// @name Boxes of the glyphs
    /// Setters clamp: heights and widths to 0.01 and more, everything to at most 1.
    /// @{

    /// Measures the ink of each tile, where the first byte of a texel is not 0, and adds pixels on each side. A glyph
    /// without ink gets a box of this width and half that height, in tiles, in the middle of its tile. Without a sheet,
    /// ClearGlyphProperties() is called; also after an ignored assertion "Sample-format mismatch." or "Font-texture /
    /// source-image dimension mismatch.".
    void CalcGlyphPropertiesFromImage(float emptyWidth, float addLeft, float addRight, float addTop, float addBottom);
    /// Lets each glyph take its whole tile.
    void ClearGlyphProperties();
    void SetGlyphHeight(float height);
    void SetGlyphVOffset(float offset);
    void SetGlyphWidthMono(float width);
    void SetGlyphHOffsetMono(float offset);
    /// Takes 256 values. Null asserts "Invalid argument.".
    void SetGlyphWidths(float const *widths);
    void SetGlyphWidths(float width);
    /// Takes 256 values, likewise.
    void SetGlyphHOffsets(float const *offsets);
    void SetGlyphHOffsets(float offset);

    unsigned int GetNumGlyphRows() const { return GetNumTileRows(); }
    unsigned int GetNumGlyphColumns() const { return GetNumTileColumns(); }
    float GetGlyphPixelSizeU() const { return GetTilePixelSizeU(); }
    float GetGlyphPixelSizeV() const { return GetTilePixelSizeV(); }
    float GetGlyphHeight() const { return glyphHeight_; }
    float GetGlyphVOffset() const { return glyphVOffset_; }
    float GetGlyphWidthMono() const { return glyphWidthMono_; }
    float GetGlyphHOffsetMono() const { return glyphHOffsetMono_; }
    float GetGlyphWidth(unsigned char glyph) const { return glyphWidth_[glyph]; }
    float GetGlyphHOffset(unsigned char glyph) const { return glyphHOffset_[glyph]; }
    /// @}

    /// @name Texture coordinates of a glyph
    /// Of its tile, of its box in a text of one width, and of its own box. For a glyph that the sheet does not have,
    /// they lie below the texture.
    /// @{
    void GetGlyphTileCoords(unsigned char glyph, float &uLeft, float &uRight, float &vTop, float &vBottom) const;
    void GetGlyphTileCoords(unsigned char glyph, RectangleCT &rectangle) const;
    void GetGlyphCoordsMono(unsigned char glyph, float &uLeft, float &uRight, float &vTop, float &vBottom) const;
    void GetGlyphCoordsMono(unsigned char glyph, RectangleCT &rectangle) const;
    void GetGlyphCoords(unsigned char glyph, float &uLeft, float &uRight, float &vTop, float &vBottom) const;
    void GetGlyphCoords(unsigned char glyph, RectangleCT &rectangle) const;
    /// @}

    /// @name Drawing and measuring
    /// @{

    /// Draws by Renderer::DrawText().
    void DrawText(Renderer &renderer, unsigned int length, char const *text,
                  DrawTextParams const &params) const override;
    /// Returns the pixels that the width of one tile becomes.
    float CalcGlyphWidthMultiplier(TextMetrics const &metrics) const;
    float CalcGlyphWidth(TextMetrics const &metrics, char glyph) const override;
    float CalcTextWidth(TextMetrics const &metrics, unsigned int length, char const *text) const override;
    void CalcTextWidths(std::vector<float> &widths, TextMetrics const &metrics, unsigned int length,
                        char const *text) const override;
    void CalcMaxVisibleText(unsigned int &count, float &width, float maxWidth, TextMetrics const &metrics,
                            unsigned int length, char const *text) const override;

    using Font::CalcMaxVisibleText;
    using Font::CalcTextWidth;
    using Font::CalcTextWidths;
    using Font::DrawText;
    /// @}

private:
    static constexpr unsigned int s_numCodes = 256;
    using Table = std::array<float, s_numCodes>;

    void CalcVerticalGlyphCoords();
    void CalcHorizontalGlyphCoords();

    bool generateImageFromSystemFont_ = true;

    float scaleEmHeight_ = 1;
    float offsetH_ = 0;
    float offsetV_ = 0;
    float sizeModifyH_ = 0;
    float sizeModifyV_ = 0;

    float emptyWidth_ = 0.5f;
    float addLeft_ = 0;
    float addRight_ = 0;
    float addTop_ = 0;
    float addBottom_ = 0;

    float glyphHeight_ = 1;
    float inverseGlyphHeight_ = 1;
    float glyphVOffset_ = 0;
    float glyphWidthMono_ = 1;
    float glyphHOffsetMono_ = 0;
    Table glyphWidth_ = {};
    Table glyphHOffset_ = {};

    Table uLeftMono_ = {};
    Table uRightMono_ = {};
    Table uLeft_ = {};
    Table uRight_ = {};
    Table vTop_ = {};
    Table vBottom_ = {};
};

} // namespace quillmarsh::gui

#endif
