#include "textures.h"

#include <algorithm>
#include <cstring>
#include <utility>

namespace video_opengl
{
namespace
{

// Rows of A1R5G5B5, for example, are words whose lowest bits are blue: OpenGL calls this order "reversed BGRA".
constexpr TextureFormat s_formats[] = {
    {e_format_L8, GL_R8, GL_RED, GL_UNSIGNED_BYTE, {GL_RED, GL_RED, GL_RED, GL_ONE}},
    {e_format_A8, GL_R8, GL_RED, GL_UNSIGNED_BYTE, {GL_ONE, GL_ONE, GL_ONE, GL_RED}},
    {e_format_A8L8, GL_RG8, GL_RG, GL_UNSIGNED_BYTE, {GL_RED, GL_RED, GL_RED, GL_GREEN}},
    {e_format_A4R4G4B4, GL_RGBA4, GL_BGRA, GL_UNSIGNED_SHORT_4_4_4_4_REV, {GL_RED, GL_GREEN, GL_BLUE, GL_ALPHA}},
    {e_format_A1R5G5B5, GL_RGB5_A1, GL_BGRA, GL_UNSIGNED_SHORT_1_5_5_5_REV, {GL_RED, GL_GREEN, GL_BLUE, GL_ALPHA}},
    // With alpha in store, samples are copied as they are.
    {e_format_X8R8G8B8, GL_RGBA8, GL_BGRA, GL_UNSIGNED_BYTE, {GL_RED, GL_GREEN, GL_BLUE, GL_ONE}},
    {e_format_A8R8G8B8, GL_RGBA8, GL_BGRA, GL_UNSIGNED_BYTE, {GL_RED, GL_GREEN, GL_BLUE, GL_ALPHA}},
    {e_format_FP32NormL, GL_R32F, GL_RED, GL_FLOAT, {GL_RED, GL_RED, GL_RED, GL_ONE}},
    {e_format_FP32NormA, GL_R32F, GL_RED, GL_FLOAT, {GL_ONE, GL_ONE, GL_ONE, GL_RED}},
};

GLint ToInt(unsigned int value)
{
    return static_cast<GLint>(value);
}

/// A block of rows in layers, in samples.
struct Block
{
    unsigned int numLayers;
    unsigned int numRows;
    unsigned int rowLength;
    std::size_t layerStride;
    std::size_t rowStride;
};

/// Copies a block with rows and layers in the other order, without gaps.
void CopyReversed(unsigned char *to, unsigned char const *from, Block const &block, std::size_t sampleSize,
                  bool reversesRows, bool reversesLayers)
{
    std::size_t const rowSize = block.rowLength * sampleSize;
    for (unsigned int layer = 0; layer < block.numLayers; ++layer)
    {
        unsigned int const fromLayer = reversesLayers ? block.numLayers - 1 - layer : layer;
        for (unsigned int row = 0; row < block.numRows; ++row)
        {
            unsigned int const fromRow = reversesRows ? block.numRows - 1 - row : row;
            std::memcpy(to, from + (fromLayer * block.layerStride + fromRow * block.rowStride) * sampleSize, rowSize);
            to += rowSize;
        }
    }
}

/// Returns a texture if OpenGL could make it.
template<typename Texture, typename... Dimensions>
AutoPtr<Texture> Create(std::shared_ptr<Device> const &device, unsigned int sampleFormat, bool mipmapped,
                        unsigned int limit, Dimensions... dimensions)
{
    TextureFormat const *const format = FindTextureFormat(sampleFormat);
    bool const isPossible = format != nullptr && ((dimensions >= 1 && dimensions <= limit) && ...);
    if (!isPossible)
        return nullptr;
    auto texture = std::make_unique<Texture>(device, *format, mipmapped, dimensions...);
    if (!texture->IsValid())
        return nullptr;
    return texture;
}

} // namespace

TextureFormat const *FindTextureFormat(unsigned int sampleFormat)
{
    auto const *const found = std::find_if(std::begin(s_formats), std::end(s_formats),
                                           [=](TextureFormat const &row) { return row.sampleFormat == sampleFormat; });
    return found != std::end(s_formats) ? found : nullptr;
}

TextureObject::TextureObject(std::shared_ptr<Device> device, GLenum target, TextureFormat const &format,
                             unsigned int numLevels)
    : object_(std::move(device), eObject::e_texture),
      target_(target),
      format_(&format),
      numLevels_(numLevels)
{
    BeginChange();
    OpenGLFunctions const &gl = GetGL();
    gl.TexParameteri(target_, GL_TEXTURE_MAX_LEVEL, ToInt(numLevels_) - 1);
    gl.TexParameteri(target_, GL_TEXTURE_MAG_FILTER, GL_LINEAR);
    gl.TexParameteri(target_, GL_TEXTURE_MIN_FILTER, minFilter_);
    for (GLenum const direction : {GL_TEXTURE_WRAP_S, GL_TEXTURE_WRAP_T, GL_TEXTURE_WRAP_R})
        gl.TexParameteri(target_, direction, GL_CLAMP_TO_EDGE);
    gl.TexParameteriv(target_, GL_TEXTURE_SWIZZLE_RGBA, format_->swizzle);
}

TextureObject::~TextureObject()
{
    GetDevice().DrawGathered();
}

void TextureObject::BeginChange() const
{
    GetDevice().DrawGathered();
    GetDevice().ClearErrors();
    GetGL().ActiveTexture(GL_TEXTURE0);
    GetGL().BindTexture(target_, GetName());
    GetGL().BindBuffer(GL_PIXEL_UNPACK_BUFFER, 0);
    GetGL().PixelStorei(GL_UNPACK_ALIGNMENT, 1);
}

void TextureObject::SetSourceLayout(unsigned int rowLength, unsigned int numRows) const
{
    GetGL().PixelStorei(GL_UNPACK_ROW_LENGTH, ToInt(rowLength));
    GetGL().PixelStorei(GL_UNPACK_IMAGE_HEIGHT, ToInt(numRows));
}

bool TextureObject::EndChange() const
{
    SetSourceLayout(0, 0);
    GetGL().PixelStorei(GL_UNPACK_ALIGNMENT, 4);
    GetGL().BindTexture(target_, 0);
    return !GetDevice().HasError();
}

bool TextureObject::SetBaseLevel(unsigned int level) const
{
    if (!GetDevice().IsOpen())
        return false;
    BeginChange();
    // The number of levels itself is no level: then the smallest one is drawn.
    GetGL().TexParameteri(target_, GL_TEXTURE_BASE_LEVEL, ToInt(std::min(level, numLevels_ - 1)));
    return EndChange();
}

void TextureObject::SetMinFilter(GLint filter)
{
    if (minFilter_ == filter)
        return;
    minFilter_ = filter;
    GetGL().TexParameteri(target_, GL_TEXTURE_MIN_FILTER, filter);
}

OpenGLTexture1D::OpenGLTexture1D(std::shared_ptr<Device> device, TextureFormat const &format, bool mipmapped,
                                 unsigned int width)
    : Texture1D(format.sampleFormat, mipmapped, width),
      object_(std::move(device), GL_TEXTURE_1D, format, GetNumLevels())
{
    for (unsigned int level = 0; level < GetNumLevels(); ++level)
    {
        object_.GetGL().TexImage1D(GL_TEXTURE_1D, ToInt(level), static_cast<GLint>(format.storage),
                                   ToInt(GetWidth(level)), 0, format.format, format.type, nullptr);
    }
    isValid_ = object_.EndChange();
}

bool OpenGLTexture1D::DoLoadLevel(unsigned int level, SignalBase const &source, unsigned int dataWidth,
                                  unsigned int destOffsetX, unsigned int sourceOffsetX)
{
    if (!object_.GetDevice().IsOpen())
        return false;
    object_.BeginChange();
    TextureFormat const &format = object_.GetFormat();
    object_.GetGL().TexSubImage1D(GL_TEXTURE_1D, ToInt(level), ToInt(destOffsetX), ToInt(dataWidth), format.format,
                                  format.type, source.SampleB(sourceOffsetX));
    return object_.EndChange();
}

OpenGLTexture2D::OpenGLTexture2D(std::shared_ptr<Device> device, TextureFormat const &format, bool mipmapped,
                                 unsigned int height, unsigned int width)
    : Texture2D(format.sampleFormat, mipmapped, width, height),
      object_(std::move(device), GL_TEXTURE_2D, format, GetNumLevels())
{
    for (unsigned int level = 0; level < GetNumLevels(); ++level)
    {
        object_.GetGL().TexImage2D(GL_TEXTURE_2D, ToInt(level), static_cast<GLint>(format.storage),
                                   ToInt(GetWidth(level)), ToInt(GetHeight(level)), 0, format.format, format.type,
                                   nullptr);
    }
    isValid_ = object_.EndChange();
}

bool OpenGLTexture2D::DoLoadLevel(unsigned int level, ImageBase const &source, unsigned int dataHeight,
                                  unsigned int dataWidth, unsigned int destOffsetY, unsigned int destOffsetX,
                                  unsigned int sourceOffsetY, unsigned int sourceOffsetX, bool rowOrderBottomToTop)
{
    Device &device = object_.GetDevice();
    if (!device.IsOpen())
        return false;
    object_.BeginChange();
    unsigned char const *samples = source.SampleB(sourceOffsetY, sourceOffsetX);
    unsigned int rowLength = source.GetNumColumns();
    if (rowOrderBottomToTop)
    {
        std::size_t const sampleSize = source.GetSampleByteSize();
        unsigned char *const turned = device.GetScratch(std::size_t{dataHeight} * dataWidth * sampleSize);
        CopyReversed(turned, samples, {1, dataHeight, dataWidth, 0, rowLength}, sampleSize, true, false);
        samples = turned;
        rowLength = dataWidth;
    }
    object_.SetSourceLayout(rowLength, 0);
    TextureFormat const &format = object_.GetFormat();
    object_.GetGL().TexSubImage2D(GL_TEXTURE_2D, ToInt(level), ToInt(destOffsetX), ToInt(destOffsetY), ToInt(dataWidth),
                                  ToInt(dataHeight), format.format, format.type, samples);
    return object_.EndChange();
}

OpenGLTexture3D::OpenGLTexture3D(std::shared_ptr<Device> device, TextureFormat const &format, bool mipmapped,
                                 unsigned int depth, unsigned int height, unsigned int width)
    : Texture3D(format.sampleFormat, mipmapped, width, height, depth),
      object_(std::move(device), GL_TEXTURE_3D, format, GetNumLevels())
{
    for (unsigned int level = 0; level < GetNumLevels(); ++level)
    {
        object_.GetGL().TexImage3D(GL_TEXTURE_3D, ToInt(level), static_cast<GLint>(format.storage),
                                   ToInt(GetWidth(level)), ToInt(GetHeight(level)), ToInt(GetDepth(level)), 0,
                                   format.format, format.type, nullptr);
    }
    isValid_ = object_.EndChange();
}

bool OpenGLTexture3D::DoLoadLevel(unsigned int level, VolumeBase const &source, unsigned int dataDepth,
                                  unsigned int dataHeight, unsigned int dataWidth, unsigned int destOffsetZ,
                                  unsigned int destOffsetY, unsigned int destOffsetX, unsigned int sourceOffsetZ,
                                  unsigned int sourceOffsetY, unsigned int sourceOffsetX, bool rowOrderBottomToTop,
                                  bool layerOrderBackToFront)
{
    Device &device = object_.GetDevice();
    if (!device.IsOpen())
        return false;
    object_.BeginChange();
    unsigned char const *samples = source.SampleB(sourceOffsetZ, sourceOffsetY, sourceOffsetX);
    unsigned int rowLength = source.GetNumColumns();
    unsigned int numRows = source.GetNumRows();
    if (rowOrderBottomToTop || layerOrderBackToFront)
    {
        std::size_t const sampleSize = source.GetSampleByteSize();
        unsigned char *const turned = device.GetScratch(std::size_t{dataDepth} * dataHeight * dataWidth * sampleSize);
        CopyReversed(turned, samples, {dataDepth, dataHeight, dataWidth, source.GetNumSamplesPerLayer(), rowLength},
                     sampleSize, rowOrderBottomToTop, layerOrderBackToFront);
        samples = turned;
        rowLength = dataWidth;
        numRows = dataHeight;
    }
    object_.SetSourceLayout(rowLength, numRows);
    TextureFormat const &format = object_.GetFormat();
    object_.GetGL().TexSubImage3D(GL_TEXTURE_3D, ToInt(level), ToInt(destOffsetX), ToInt(destOffsetY),
                                  ToInt(destOffsetZ), ToInt(dataWidth), ToInt(dataHeight), ToInt(dataDepth),
                                  format.format, format.type, samples);
    return object_.EndChange();
}

AutoPtr<OpenGLTexture1D> CreateTexture1D(std::shared_ptr<Device> const &device, unsigned int sampleFormat,
                                         bool mipmapped, unsigned int width)
{
    return Create<OpenGLTexture1D>(device, sampleFormat, mipmapped, device->GetDriverInfo().maxTextureSize, width);
}

AutoPtr<OpenGLTexture2D> CreateTexture2D(std::shared_ptr<Device> const &device, unsigned int sampleFormat,
                                         bool mipmapped, unsigned int height, unsigned int width)
{
    return Create<OpenGLTexture2D>(device, sampleFormat, mipmapped, device->GetDriverInfo().maxTextureSize, height,
                                   width);
}

AutoPtr<OpenGLTexture3D> CreateTexture3D(std::shared_ptr<Device> const &device, unsigned int sampleFormat,
                                         bool mipmapped, unsigned int depth, unsigned int height, unsigned int width)
{
    return Create<OpenGLTexture3D>(device, sampleFormat, mipmapped, device->GetDriverInfo().maxVolumeSize, depth,
                                   height, width);
}

} // namespace video_opengl
