// Extension that registers a codec of images: "DOT", a byte each for rows and columns, and the samples of L8.
#include <quillmarsh/dataobjects/datacodecmanager.h>
#include <quillmarsh/framework/genericextension.h>
#include <quillmarsh/framework/plugindescriptors.h>
#include <quillmarsh/framework/pluginlibrary.h>

#include <fstream>

namespace
{

using namespace quillmarsh;

class DotEncoder : public ImageEncoder
{
public:
    DotEncoder() : ImageEncoder("DOT", "DOT") {}
    bool SaveImage(ImageBase const &image, string const &fileName, string const &format,
                   NamedParameterList const &) override
    {
        if (format != "DOT")
            return false;
        if (image.GetSampleFormat() != e_format_L8)
        {
            TellCodecFailure(eCodecFailure::e_unsupported, "dots are luminance");
            return false;
        }
        std::ofstream file(fileName, std::ios::binary);
        file << "DOT" << static_cast<char>(image.GetNumRows()) << static_cast<char>(image.GetNumColumns());
        file.write(reinterpret_cast<char const *>(image.GetSamplesB()), image.GetTotalByteSize());
        return file.good();
    }
};

class DotDecoder : public ImageDecoder
{
public:
    DotDecoder() : ImageDecoder("DOT", "DOT") {}
    ImageBase *LoadImageA(string const &fileName, NamedParameterList const &) override
    {
        std::ifstream file(fileName, std::ios::binary);
        char head[5] = {};
        if (!file.read(head, sizeof(head)) || string(head, 3) != "DOT")
            return nullptr;
        AutoPtr<ImageBase> image(
            ManufactureImage(e_format_L8, static_cast<unsigned int>(head[3]), static_cast<unsigned int>(head[4])));
        file.read(reinterpret_cast<char *>(image->GetSamplesB()), image->GetTotalByteSize());
        return image.release();
    }
};

class DotExtension : public GenericExtension
{
public:
    DotExtension()
    {
        DataCodecManager &manager = DataCodecManager::Instance();
        manager.RegisterEncoder(new DotEncoder);
        manager.RegisterDecoder(new DotDecoder);
        manager.SetDefaultFileFormatExtension(DataCategory_Image, "DOT", "dot");
    }
    string GetGenericExtensionInterfaceName() override { return "dots"; }
};

class DotDescriptor : public GenericExtensionPluginDescriptor
{
public:
    DotDescriptor()
        : GenericExtensionPluginDescriptor(PluginInfo(library_info::GetHeaderVersion(), e_plugin_generic_extension,
                                                      "dots", PluginVersion(1, 0, 0, 0), "now", "Images of dots", ""))
    {
    }
    GenericExtension *CreateGenericExtension() override { return new DotExtension; }
};

} // namespace

QUILLMARSH_PLUGIN_LIBRARY(DotDescriptor)
