#include <quillmarsh/gui/gui_textures.h>

#include <quillmarsh/basetools/diagnostics.h>
#include <quillmarsh/basetools/exception.h>
#include <quillmarsh/dataobjects/codecfailure.h>
#include <quillmarsh/dataobjects/datacodecmanager.h>
#include <quillmarsh/dataobjects/datacodecparameters.h>
#include <quillmarsh/dataobjects/sampleddata.h>
#include <quillmarsh/dataobjects/sampletransfer.h>
#include <quillmarsh/dataobjects/signaloperations.h>
#include <quillmarsh/framework/videorenderer.h>
#include <quillmarsh/gui/gui_renderer.h>
#include <quillmarsh/mathtools/powersof2.h>
#include <quillmarsh/videorendererobjects/vro_textures.h>

#include "source/gui/sourceimage.h"

#include <algorithm>
#include <utility>

namespace quillmarsh::gui
{
namespace
{

using video_renderer_objects::Texture2D;

/// Sets the order of rows in the sources of textures while it lives.
class RowOrderSentry : NoCopy
{
public:
    explicit RowOrderSentry(bool bottomToTop) { Texture2D::SetSourceRowOrderBottomToTop(bottomToTop); }
    ~RowOrderSentry() { Texture2D::SetSourceRowOrderBottomToTop(saved_); }

private:
    bool saved_ = Texture2D::IsSourceRowOrderBottomToTop();
};

string Describe(eSampleFormat format, unsigned int height, unsigned int width)
{
    return sampled_data::Describe({height, width}) + " in " + sampled_data::GetFormatName(format);
}

} // namespace

Texture::Texture(ImageBase const &image, bool multiLevel)
    : Texture(image.GetSampleFormat(), multiLevel, image.GetNumRows(), image.GetNumColumns())
{
    SetSourceImage(&image, false);
}

Texture::Texture(eSampleFormat sampleFormat, bool multiLevel, unsigned int height, unsigned int width)
    : sampleFormat_(sampleFormat),
      multiLevel_(multiLevel),
      height_(height),
      width_(width)
{
    CheckParameters();
}

Texture::~Texture() = default;

void Texture::CheckParameters() const
{
    if (!IsPowerOf2(height_) || !IsPowerOf2(width_))
        QUILLMARSH_THROW(GUIException, "Texture dimensions are not power-of-2.");
    if (sampleFormat_ != e_format_X8R8G8B8 && sampleFormat_ != e_format_A8R8G8B8)
        QUILLMARSH_THROW(GUIException, "Texture sample-format not supported by gui.");
}

bool Texture::SetSourceImage(ImageBase const *image, bool originBottom)
{
    bool const fits = !image || (image->GetNumRows() == height_ && image->GetNumColumns() == width_);
    QUILLMARSH_ASSERT(fits, "GUI-texture / source-image dimension mismatch.");

    AutoPtr<ImageBase> copy;
    if (image && fits)
    {
        copy.reset(ManufactureImage(sampleFormat_, height_, width_));
        // Not every transfer sets alpha. Such an image is opaque.
        ProcessSamples_FillNBytes(*copy, 255);
        if (!TransferSamples2D(*copy, *image, false))
            copy.reset();
    }
    originBottom_ = originBottom;
    sourceFileName_.clear();
    sourceImage_ = std::move(copy);
    return sourceImage_ != nullptr;
}

void Texture::SetSourceImage(string const &fileName, bool originBottom)
{
    originBottom_ = originBottom;
    sourceFileName_ = fileName;
    sourceImage_.reset();
}

void Texture::CreateVideoRendererResource(VideoRenderer &renderer)
{
    ReleaseVideoRendererResource();
    resource_ = renderer.GetGUIRenderer().CreateTexture(sampleFormat_, multiLevel_, height_, width_, true);
    if (!resource_)
        QUILLMARSH_THROW(GUIException, "Failed to create gui-texture resource.");
    UpdateVideoRendererResource();
}

void Texture::ReleaseVideoRendererResource()
{
    resource_.reset();
}

void Texture::UpdateVideoRendererResource()
{
    if (!resource_)
        return;
    sourceFailure_.clear();
    CodecFailureSentry const reason;
    SourceImageSentry const source(*this);
    if (ImageBase const *const image = source.Get())
    {
        RowOrderSentry const rowOrder(source.IsOriginBottom());
        if (resource_->LoadLevels(*image))
            return;
        sourceFailure_ = (sourceFileName_.empty() ? "source image" : sourceFileName_) + ": " +
                         Describe(image->GetSampleFormat(), image->GetNumRows(), image->GetNumColumns()) +
                         " cannot be loaded into a texture of " + Describe(sampleFormat_, height_, width_);
    }
    else if (!sourceFileName_.empty())
        sourceFailure_ = sourceFileName_ + ": " + reason.GetText();
    // White makes a missing image visible.
    resource_->LoadLevels(255);
}

ImageBase *Texture::GenerateSourceImage(bool &originBottom)
{
    originBottom = originBottom_;
    if (sourceImage_ || sourceFileName_.empty())
        return sourceImage_.get();
    NamedParameterList params;
    params.Insert(NamedParameter(signal_codec_parameters::Param_OriginBottom, originBottom_), true);
    return LoadImageA(sourceFileName_, &params);
}

void Texture::ReleaseSourceImage(ImageBase *image)
{
    if (image != sourceImage_.get())
        delete image;
}

TileTexture::TileTexture(ImageBase const &image, bool multiLevel, unsigned int numTileRows, unsigned int numTileColumns)
    : TileTexture(image.GetSampleFormat(), multiLevel, image.GetNumRows(), image.GetNumColumns(), numTileRows,
                  numTileColumns)
{
    SetSourceImage(&image, false);
}

TileTexture::TileTexture(eSampleFormat sampleFormat, bool multiLevel, unsigned int height, unsigned int width,
                         unsigned int numTileRows, unsigned int numTileColumns)
    : Texture(sampleFormat, multiLevel, height, width),
      numTileRows_(std::max(numTileRows, 1u)),
      numTileColumns_(std::max(numTileColumns, 1u)),
      tileSizeU_(1.0f / static_cast<float>(numTileColumns_)),
      tileSizeV_(1.0f / static_cast<float>(numTileRows_)),
      tilePixelSizeU_(static_cast<float>(width) / static_cast<float>(numTileColumns_)),
      tilePixelSizeV_(static_cast<float>(height) / static_cast<float>(numTileRows_))
{
}

void TileTexture::GetTileCoords(float row, float column, float &uLeft, float &uRight, float &vTop, float &vBottom) const
{
    uLeft = GetTileCoordU(column);
    uRight = uLeft + tileSizeU_;
    vTop = GetTileCoordV(row);
    vBottom = vTop + tileSizeV_;
}

void TileTexture::GetTileCoords(float row, float column, RectangleCT &rectangle) const
{
    GetTileCoords(row, column, rectangle.uMin, rectangle.uMax, rectangle.vMin, rectangle.vMax);
}

} // namespace quillmarsh::gui
