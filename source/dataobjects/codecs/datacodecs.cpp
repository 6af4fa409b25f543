#include <quillmarsh/dataobjects/datacodecs.h>

namespace quillmarsh
{

DataCodecBase::DataCodecBase(unsigned int dataCategory, string const &codecName, string const &formatList)
    : dataCategory_(dataCategory),
      codecName_(codecName),
      formatList_(formatList)
{
}

DataCodecBase::~DataCodecBase() = default;

DataEncoder::DataEncoder(unsigned int dataCategory, string const &codecName, string const &formatList)
    : DataCodecBase(dataCategory, codecName, formatList)
{
}

DataEncoder::~DataEncoder() = default;

DataDecoder::DataDecoder(unsigned int dataCategory, string const &codecName, string const &formatList)
    : DataCodecBase(dataCategory, codecName, formatList)
{
}

DataDecoder::~DataDecoder() = default;

OpenFileDecoder::~OpenFileDecoder() = default;

bool OpenFileDecoder::QueryOpenedWith(sampled_data::InputFile &file, NamedParameterList const &, DataFileHead &head)
{
    return QueryOpened(file, head);
}

SignalEncoder::SignalEncoder(string const &name, string const &formatList)
    : DataEncoder(DataCategory_Signal, "SignalEncoder/" + name, formatList)
{
}

SignalEncoder::~SignalEncoder() = default;

bool SignalEncoder::SaveData(void const *data, string const &fileName, string const &format,
                             NamedParameterList const &params)
{
    return SaveSignal(*static_cast<SignalBase const *>(data), fileName, format, params);
}

SignalDecoder::SignalDecoder(string const &name, string const &formatList)
    : DataDecoder(DataCategory_Signal, "SignalDecoder/" + name, formatList)
{
}

SignalDecoder::~SignalDecoder() = default;

void *SignalDecoder::LoadData(string const &fileName, NamedParameterList const &params)
{
    return LoadSignal(fileName, params);
}

ImageEncoder::ImageEncoder(string const &name, string const &formatList)
    : DataEncoder(DataCategory_Image, "ImageEncoder/" + name, formatList)
{
}

ImageEncoder::~ImageEncoder() = default;

bool ImageEncoder::SaveData(void const *data, string const &fileName, string const &format,
                            NamedParameterList const &params)
{
    return SaveImage(*static_cast<ImageBase const *>(data), fileName, format, params);
}

ImageDecoder::ImageDecoder(string const &name, string const &formatList)
    : DataDecoder(DataCategory_Image, "ImageDecoder/" + name, formatList)
{
}

ImageDecoder::~ImageDecoder() = default;

void *ImageDecoder::LoadData(string const &fileName, NamedParameterList const &params)
{
    return LoadImageA(fileName, params);
}

VolumeEncoder::VolumeEncoder(string const &name, string const &formatList)
    : DataEncoder(DataCategory_Volume, "VolumeEncoder/" + name, formatList)
{
}

VolumeEncoder::~VolumeEncoder() = default;

bool VolumeEncoder::SaveData(void const *data, string const &fileName, string const &format,
                             NamedParameterList const &params)
{
    return SaveVolume(*static_cast<VolumeBase const *>(data), fileName, format, params);
}

VolumeDecoder::VolumeDecoder(string const &name, string const &formatList)
    : DataDecoder(DataCategory_Volume, "VolumeDecoder/" + name, formatList)
{
}

VolumeDecoder::~VolumeDecoder() = default;

void *VolumeDecoder::LoadData(string const &fileName, NamedParameterList const &params)
{
    return LoadVolume(fileName, params);
}

} // namespace quillmarsh
