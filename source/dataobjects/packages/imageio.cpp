#include <quillmarsh/dataobjects/imageio.h>

#include <quillmarsh/dataobjects/imagelimits.h>

#include "source/dataobjects/packages/packagecodecs.h"
#include "source/dataobjects/packages/packagepayload.h"

namespace quillmarsh
{
namespace
{

constexpr char s_szFormatList[] = "qmdp.image";

} // namespace

template class DataPackageOf<ImageBase>;

DataPackageImage::DataPackageImage() : DataPackageOf(e_payload_image) {}

DataPackageImage::~DataPackageImage() = default;

void DataPackageImage::QueryPayloadByteSize(unsigned int &byteSize) const
{
    byteSize = QueryPayload(*this, GetPayload(), 2);
}

void DataPackageImage::SerializePayload(ostream &out) const
{
    ImageBase const &image = RequirePayload(*this, GetPayload());
    WritePayload(*this, out, image,
                 {2,
                  {image.GetNumRows(), image.GetNumColumns()},
                  image.GetSampleFormat(),
                  rowOrderOnWrite_ ? s_rowsLastFirst : 0});
}

void DataPackageImage::DeserializePayload(istream &in, unsigned int payloadByteSize)
{
    SetPayload(nullptr);
    PayloadDesc const desc = ReadPayloadDesc(*this, in, 2, s_rowsLastFirst, payloadByteSize);
    if (std::uint64_t{desc.dimensions[0]} * desc.dimensions[1] > maxPixelsOnRead_)
    {
        TellCodecFailure(eCodecFailure::e_tooLarge,
                         image_limits::DescribeExcess(desc.dimensions[0], desc.dimensions[1]));
        QUILLMARSH_THROW(DeserializationException, PackageMessage(*this, "Too many pixels."));
    }
    SampleSource source(*this, in, desc);
    AutoPtr<ImageBase> image(
        ManufactureImage(static_cast<eSampleFormat>(desc.format), desc.dimensions[0], desc.dimensions[1]));
    ReadSamples(*this, source.GetStream(), *image, desc, desc.flags ^ (rowOrderOnRead_ ? s_rowsLastFirst : 0));
    AdoptPayload(std::move(image));
}

ImageEncoderQMDP::ImageEncoderQMDP() : ImageEncoder(s_szPackageCodec, s_szFormatList) {}

bool ImageEncoderQMDP::SaveImage(ImageBase const &image, string const &fileName, string const &format,
                                 NamedParameterList const &params)
{
    DataPackageImage package;
    package.SetRowOrderOnWrite(IsOriginBottom(params));
    return SavePackage(package, image, fileName, format, params);
}

ImageDecoderQMDP::ImageDecoderQMDP() : ImageDecoder(s_szPackageCodec, s_szFormatList) {}

ImageBase *ImageDecoderQMDP::LoadImageA(string const &fileName, NamedParameterList const &params)
{
    DataPackageImage package;
    package.SetRowOrderOnRead(IsOriginBottom(params));
    package.SetMaxPixelsOnRead(image_limits::GetMaxPixels());
    return LoadPackage(package, fileName);
}

bool ImageDecoderQMDP::QueryOpened(sampled_data::InputFile &file, DataFileHead &head)
{
    return QueryPackage(file, 2, head);
}

void *ImageDecoderQMDP::LoadOpened(sampled_data::InputFile &file, NamedParameterList const &params)
{
    DataPackageImage package;
    package.SetRowOrderOnRead(IsOriginBottom(params));
    package.SetMaxPixelsOnRead(image_limits::GetMaxPixels());
    return LoadPackage(package, file);
}

} // namespace quillmarsh
