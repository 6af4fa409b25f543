// A codec of images as in a plug-in: "DOT", a byte each for rows and columns, and the samples of L8.
#ifndef QUILLMARSH_TESTS_SUPPORT_DOT_CODEC_H
#define QUILLMARSH_TESTS_SUPPORT_DOT_CODEC_H

#include <quillmarsh/dataobjects/datacodecmanager.h>

#include <fstream>

namespace quillmarsh::tests
{

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
        file.read(head, sizeof(head));
        if (string(head, 3) != "DOT")
            return nullptr;
        if (!file)
        {
            TellCodecFailure(eCodecFailure::e_damaged, "the dots are missing");
            return nullptr;
        }
        AutoPtr<ImageBase> image(
            ManufactureImage(e_format_L8, static_cast<unsigned int>(head[3]), static_cast<unsigned int>(head[4])));
        file.read(reinterpret_cast<char *>(image->GetSamplesB()), image->GetTotalByteSize());
        return image.release();
    }
};

inline void RegisterDotCodec()
{
    DataCodecManager &manager = DataCodecManager::Instance();
    manager.RegisterEncoder(new DotEncoder);
    manager.RegisterDecoder(new DotDecoder);
    manager.SetDefaultFileFormatExtension(DataCategory_Image, "DOT", "dot");
}

} // namespace quillmarsh::tests

#endif
