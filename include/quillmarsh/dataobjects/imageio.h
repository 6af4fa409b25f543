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
    DataPackageImage();
    ~DataPackageImage() override;

    /// @name Order of rows
    /// Set, the package is written, or the memory filled, last row first. A package tells its own order, so that rows
    /// are turned over only when the two differ. Not set at first.
    /// @{
    void SetRowOrderOnWrite(bool lastFirst) { rowOrderOnWrite_ = lastFirst; }
    void SetRowOrderOnRead(bool lastFirst) { rowOrderOnRead_ = lastFirst; }
    /// @}

    /// Sets the largest number of pixels that is read; no limit at first. A package with more throws a
    /// DeserializationException "Too many pixels." behind the class name.
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
    ImageEncoderQMDP();

    bool SaveImage(ImageBase const &image, string const &fileName, string const &format,
                   NamedParameterList const &params) override;
};

/// Loads images of up to image_limits::GetMaxPixels() pixels from packages. Reads the parameter "OriginBottom".
class QUILLMARSH_API ImageDecoderQMDP : public ImageDecoder, public OpenFileDecoder
{
public:
    ImageDecoderQMDP();

    ImageBase *LoadImageA(string const &fileName, NamedParameterList const &params) override;
    bool QueryOpened(sampled_data::InputFile &file, DataFileHead &head) override;
    void *LoadOpened(sampled_data::InputFile &file, NamedParameterList const &params) override;
};

} // namespace quillmarsh

#endif
