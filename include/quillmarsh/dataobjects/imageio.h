// Images in data packages: the package, its encoder and its decoder.
#ifndef QUILLMARSH_DATAOBJECTS_IMAGEIO_H
#define QUILLMARSH_DATAOBJECTS_IMAGEIO_H

#include <quillmarsh/dataobjects/datacodecs.h>
#include <quillmarsh/dataobjects/datapackage.h>
#include <quillmarsh/dataobjects/imagebase.h>

#include <cstdint>
#include <limits>

namespace quillmarsh
{

extern template class QUILLMARSH_API DataPackageOf<ImageBase>;

/// Package of an image.
class QUILLMARSH_API DataPackageImage : public DataPackageOf<ImageBase>
{
public:
    /// Creates a package without a payload.
    DataPackageImage();
    ~DataPackageImage() override;

    /// @name Order of rows
    /// True writes the package, or fills the memory, with the last row first. The package stores its order, so rows are
    /// reversed only when the two orders differ. False at first.
    /// @{
    void SetRowOrderOnWrite(bool lastFirst) { rowOrderOnWrite_ = lastFirst; }
    void SetRowOrderOnRead(bool lastFirst) { rowOrderOnRead_ = lastFirst; }
    /// @}

    /// Sets the largest number of pixels to read; there is no limit at first. A package with more throws a
    /// DeserializationException "Too many pixels." after the class name.
    void SetMaxPixelsOnRead(std::uint64_t maxPixels) { maxPixelsOnRead_ = maxPixels; }

protected:
    void QueryPayloadByteSize(unsigned int &byteSize) const override;
    void SerializePayload(ostream &out) const override;
    void DeserializePayload(istream &in, unsigned int payloadByteSize) override;

private:
    bool rowOrderOnWrite_ = false;
    bool rowOrderOnRead_ = false;
    std::uint64_t maxPixelsOnRead_ = std::numeric_limits<std::uint64_t>::max();
};

/// Saves images as packages, in the format "QMDP". Reads the parameters "FileOverwrite", "ByteOrderBigEndian",
/// "PackageID" and "OriginBottom".
class QUILLMARSH_API ImageEncoderQMDP : public ImageEncoder
{
public:
    /// Creates the codec "ImageEncoder/QMDP".
    ImageEncoderQMDP();

    bool SaveImage(ImageBase const &image, string const &fileName, string const &format,
                   NamedParameterList const &params) override;
};

/// Loads images of up to image_limits::GetMaxPixels() pixels from packages. Reads the parameter "OriginBottom".
class QUILLMARSH_API ImageDecoderQMDP : public ImageDecoder, public OpenFileDecoder
{
public:
    /// Creates the codec "ImageDecoder/QMDP".
    ImageDecoderQMDP();

    ImageBase *LoadImageA(string const &fileName, NamedParameterList const &params) override;
    bool QueryOpened(sampled_data::InputFile &file, DataFileHead &head) override;
    void *LoadOpened(sampled_data::InputFile &file, NamedParameterList const &params) override;
};

} // namespace quillmarsh

#endif
