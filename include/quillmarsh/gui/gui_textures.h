// Textures of the GUI, and textures that are grids of tiles.
#ifndef QUILLMARSH_GUI_GUI_TEXTURES_H
#define QUILLMARSH_GUI_GUI_TEXTURES_H

#include <quillmarsh/dataobjects/imagebase.h>
#include <quillmarsh/gui/gui_rectangle.h>
#include <quillmarsh/gui/gui_videoresource.h>

namespace quillmarsh
{

namespace video_renderer_objects
{
class Texture2D;
}

namespace gui
{

/// Describes a picture that the GUI draws with. It exists without a renderer; its part in a renderer is made from its
/// source, which is an image or the name of an image file. Without a source, all bytes of the texture are 255: white.
///
/// \code
/// gui::Texture texture(e_format_A8R8G8B8, true, 128, 256);
/// texture.SetSourceImage("icons.png", false);
/// \endcode
class QUILLMARSH_API Texture : public virtual VideoResource
{
public:
    /// How a renderer mixes the levels of a texture. It is only stored here.
    enum eFilter : unsigned int
    {
        e_filter_none = 0,    ///< draws from level 0 alone
        e_filter_nearest = 1, ///< draws from the level that fits best
        e_filter_linear = 2   ///< mixes the two levels that fit best
    };

    /// @name Construction
    /// Both throw a GUIException: "Texture dimensions are not power-of-2." when height or width is no power of 2, and
    /// "Texture sample-format not supported by gui." for other formats than "X8R8G8B8" and "A8R8G8B8". With
    /// `multiLevel`, the texture in the renderer has smaller levels, too.
    /// @{

    /// Takes format and size from an image, and the image as the source, with its first row at the top.
    Texture(ImageBase const &image, bool multiLevel);
    /// Creates a texture without a source.
    Texture(eSampleFormat sampleFormat, bool multiLevel, unsigned int height, unsigned int width);
    /// @}
    ~Texture() override;

    /// @name Properties
    /// @{
    eSampleFormat GetSampleFormat() const { return sampleFormat_; }
    bool IsMultiLevel() const { return multiLevel_; }
    unsigned int GetHeight() const { return height_; }
    unsigned int GetWidth() const { return width_; }
    void SetMipFilter(eFilter filter) { mipFilter_ = filter; }
    /// Returns the filter; e_filter_linear at first.
    eFilter GetMipFilter() const { return mipFilter_; }
    /// @}

    /// @name Source
    /// Each form replaces the source, and leaves the part in the renderer alone until UpdateVideoRendererResource().
    /// `originBottom` is true when the first row of the image is its bottom.
    /// @{

    /// Copies an image into the format of the texture; bytes that the image does not set become 255. Returns false,
    /// without a source, when no conversion of the samples exists, and for null. Asserts "GUI-texture / source-image
    /// dimension mismatch.".
    bool SetSourceImage(ImageBase const *image, bool originBottom);
    /// Keeps the name of an image file, which is loaded each time that the source is needed.
    void SetSourceImage(string const &fileName, bool originBottom);
    /// @}

    /// @name Part in the renderer
    /// @{

    /// Throws a GUIException, "Failed to create gui-texture resource.", when the renderer refuses the texture.
    void CreateVideoRendererResource(VideoRenderer &renderer) override;
    void ReleaseVideoRendererResource() override;
    /// Loads the source into the part in the renderer, if there is one. A source that cannot be loaded gives white.
    void UpdateVideoRendererResource();
    /// Returns why the last update could not load the source: one line with the name of the file; empty if it could,
    /// or if there is no source.
    string const &GetSourceFailure() const { return sourceFailure_; }
    /// Returns the part in the renderer; null if there is none. Valid until it is released or created anew.
    video_renderer_objects::Texture2D *GetVideoRendererResource() const { return resource_.get(); }
    /// @}

    /// @name Image of the source
    /// @{

    /// Returns the image of the source, and whether its first row is its bottom. Null if there is no source, or if its
    /// file cannot be loaded; a CodecFailureSentry gets the reason. End the use of the image by ReleaseSourceImage().
    virtual ImageBase *GenerateSourceImage(bool &originBottom);
    /// Ends the use of an image of GenerateSourceImage(). Null does nothing.
    virtual void ReleaseSourceImage(ImageBase *image);
    /// @}

private:
    /// Throws the exceptions of the constructors.
    void CheckParameters() const;

    eSampleFormat sampleFormat_;
    bool multiLevel_;
    unsigned int height_;
    unsigned int width_;
    eFilter mipFilter_ = e_filter_linear;
    bool originBottom_ = false;
    string sourceFileName_;
    AutoPtr<ImageBase> sourceImage_;
    string sourceFailure_;
    AutoPtr<video_renderer_objects::Texture2D> resource_;
};

/// Texture that is a grid of tiles of one size. Row 0 is at the top, column 0 at the left.
class QUILLMARSH_API TileTexture : public Texture
{
public:
    /// @name Construction
    /// They construct the texture, and divide it into rows and columns, each at least 1.
    /// @{
    TileTexture(ImageBase const &image, bool multiLevel, unsigned int numTileRows, unsigned int numTileColumns);
    TileTexture(eSampleFormat sampleFormat, bool multiLevel, unsigned int height, unsigned int width,
                unsigned int numTileRows, unsigned int numTileColumns);
    /// @}

    /// @name Size of the grid, and of a tile
    /// A tile's size is in texture coordinates, where 1 is the whole texture, and in pixels.
    /// @{
    unsigned int GetNumTileRows() const { return numTileRows_; }
    unsigned int GetNumTileColumns() const { return numTileColumns_; }
    float GetTileSizeU() const { return tileSizeU_; }
    float GetTileSizeV() const { return tileSizeV_; }
    float GetTilePixelSizeU() const { return tilePixelSizeU_; }
    float GetTilePixelSizeV() const { return tilePixelSizeV_; }
    /// @}

    /// @name Texture coordinates of a tile
    /// Rows and columns may be fractions, for parts of tiles.
    /// @{
    float GetTileCoordU(float column) const { return column * tileSizeU_; }
    float GetTileCoordV(float row) const { return row * tileSizeV_; }
    void GetTileCoords(float row, float column, float &uLeft, float &uRight, float &vTop, float &vBottom) const;
    /// Sets only the texture coordinates of the rectangle.
    void GetTileCoords(float row, float column, RectangleCT &rectangle) const;
    /// @}

private:
    unsigned int numTileRows_;
    unsigned int numTileColumns_;
    float tileSizeU_;
    float tileSizeV_;
    float tilePixelSizeU_;
    float tilePixelSizeV_;
};

} // namespace gui
} // namespace quillmarsh

#endif
