// Saving and loading by the type of the data, and registration of the library's codecs and extensions.
#include <quillmarsh/dataobjects/datacodecmanager.h>
#include <quillmarsh/dataobjects/imagecodecs_gdiplus.h>
#include <quillmarsh/dataobjects/imageio.h>
#include <quillmarsh/dataobjects/sampletransfer.h>
#include <quillmarsh/dataobjects/signalio.h>
#include <quillmarsh/dataobjects/volumeio.h>

namespace quillmarsh
{
namespace
{

using namespace signal_codec_parameters;

struct FileExtension
{
    unsigned int category;
    char const *format;
    char const *extension;
};

constexpr FileExtension s_fileExtensions[] = {
    {DataCategory_Signal, Value_SignalFileFormat_QMDP, "qmdp.signal"},
    {DataCategory_Image, Value_ImageFileFormat_TIFF, "tiff"},
    {DataCategory_Image, Value_ImageFileFormat_JPEG, "jpeg"},
    {DataCategory_Image, Value_ImageFileFormat_PNG, "png"},
    {DataCategory_Image, Value_ImageFileFormat_BMP, "bmp"},
    {DataCategory_Image, Value_ImageFileFormat_QMDP, "qmdp.image"},
    {DataCategory_Volume, Value_VolumeFileFormat_QMDP, "qmdp.volume"},
};

void RegisterFileExtensions(unsigned int category)
{
    DataCodecManager &manager = DataCodecManager::Instance();
    for (FileExtension const &entry : s_fileExtensions)
    {
        if (entry.category == category)
            manager.SetDefaultFileFormatExtension(category, entry.format, entry.extension);
    }
}

template<typename Encoder, typename Decoder>
void RegisterCodecs(DataCodecManager &manager)
{
    // The manager throws for a codec that it refuses, and does not own it.
    auto encoder = std::make_unique<Encoder>();
    manager.RegisterEncoder(encoder.get());
    static_cast<void>(encoder.release());
    auto decoder = std::make_unique<Decoder>();
    manager.RegisterDecoder(decoder.get());
    static_cast<void>(decoder.release());
}

} // namespace

bool SaveSignal(SignalBase const &signal, string const &fileName, string const &format,
                NamedParameterList const *params)
{
    return DataCodecManager::Instance().SaveData(DataCategory_Signal, &signal, fileName, format, params);
}

SignalBase *LoadSignal(string const &fileName, NamedParameterList const *params)
{
    return static_cast<SignalBase *>(DataCodecManager::Instance().LoadData(DataCategory_Signal, fileName, params));
}

bool LoadSignalAs(SignalBase &dst, string const &fileName, NamedParameterList const *params)
{
    AutoPtr<SignalBase> const loaded(LoadSignal(fileName, params));
    return loaded && TransferSamples1D(dst, *loaded, true);
}

bool SaveImage(ImageBase const &image, string const &fileName, string const &format, NamedParameterList const *params)
{
    return DataCodecManager::Instance().SaveData(DataCategory_Image, &image, fileName, format, params);
}

ImageBase *LoadImageA(string const &fileName, NamedParameterList const *params)
{
    return static_cast<ImageBase *>(DataCodecManager::Instance().LoadData(DataCategory_Image, fileName, params));
}

bool LoadImageAs(ImageBase &dst, string const &fileName, NamedParameterList const *params)
{
    AutoPtr<ImageBase> const loaded(LoadImageA(fileName, params));
    return loaded && TransferSamples2D(dst, *loaded, true);
}

bool SaveVolume(VolumeBase const &volume, string const &fileName, string const &format,
                NamedParameterList const *params)
{
    return DataCodecManager::Instance().SaveData(DataCategory_Volume, &volume, fileName, format, params);
}

VolumeBase *LoadVolume(string const &fileName, NamedParameterList const *params)
{
    return static_cast<VolumeBase *>(DataCodecManager::Instance().LoadData(DataCategory_Volume, fileName, params));
}

bool LoadVolumeAs(VolumeBase &dst, string const &fileName, NamedParameterList const *params)
{
    AutoPtr<VolumeBase> const loaded(LoadVolume(fileName, params));
    return loaded && TransferSamples3D(dst, *loaded, true);
}

void RegisterDefaultSignalFileExtensions()
{
    RegisterFileExtensions(DataCategory_Signal);
}

void RegisterDefaultImageFileExtensions()
{
    RegisterFileExtensions(DataCategory_Image);
}

void RegisterDefaultVolumeFileExtensions()
{
    RegisterFileExtensions(DataCategory_Volume);
}

void RegisterDefaultDataCodecs()
{
    DataCodecManager &manager = DataCodecManager::Instance();
    manager.RegisterDataCategory(DataCategory_Signal);
    manager.RegisterDataCategory(DataCategory_Image);
    manager.RegisterDataCategory(DataCategory_Volume);
    RegisterCodecs<SignalEncoderQMDP, SignalDecoderQMDP>(manager);
    RegisterCodecs<ImageEncoderQMDP, ImageDecoderQMDP>(manager);
    RegisterCodecs<ImageEncoderGdiplus, ImageDecoderGdiplus>(manager);
    RegisterCodecs<VolumeEncoderQMDP, VolumeDecoderQMDP>(manager);
}

} // namespace quillmarsh
