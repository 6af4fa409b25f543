// Names of formats, and parameters of codecs: converting a name to a format and back gives the name, and a saved image
// can be loaded with any parameters. Each line is a name, or with "=" a parameter: a digit for its type, and a value.
#include <quillmarsh/dataobjects/datacodecmanager.h>
#include <quillmarsh/dataobjects/datacodecparameters.h>
#include <quillmarsh/dataobjects/sampletransfer.h>

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <random>
#include <sstream>

using namespace quillmarsh;

namespace
{

constexpr char const *s_parameters[] = {
    data_codec_parameters::Param_FileOverwrite,     data_codec_parameters::Param_ByteOrderBigEndian,
    data_codec_parameters::Param_UseCompression,    data_codec_parameters::Param_CompressionLevel,
    data_codec_parameters::Param_Quality,           signal_codec_parameters::Param_OriginBottom,
    signal_codec_parameters::Param_ImageFileFormat,
};

NamedParameter MakeParameter(string const &name, string const &text)
{
    string const value = text.empty() ? text : text.substr(1);
    auto const number = static_cast<unsigned int>(std::strtoul(value.c_str(), nullptr, 10));
    switch (text.empty() ? 0 : text[0] % 5)
    {
    case 0:
        return {name, number % 2 != 0};
    case 1:
        return {name, static_cast<int>(number)};
    case 2:
        return {name, number};
    case 3:
        return {name, static_cast<double>(number)};
    default:
        return {name, value};
    }
}

void CheckFormatName(string const &name)
{
    eSampleFormat const format = sample_formats::MapNameToSampleFormat(name);
    if (format == e_format_none)
        return;
    string const found = sample_formats::MapSampleFormatToName(format);
    if (found.size() != name.size() || sample_formats::MapNameToSampleFormat(found) != format)
        std::abort();
}

void SaveAndLoad(string const &format, NamedParameterList const &parameters)
{
    static string const file =
        (std::filesystem::temp_directory_path() / ("quillmarsh-fuzz-" + std::to_string(std::random_device()())))
            .string();
    Image<Sample32> image(e_format_A8R8G8B8, 3, 2);
    std::fill_n(image.GetSamplesB(), image.GetTotalByteSize(), static_cast<unsigned char>(99));
    if (!SaveImage(image, file, format, &parameters))
        return;
    AutoPtr<ImageBase> const loaded(LoadImageA(file, &parameters));
    std::filesystem::remove(file);
    bool const isSame = loaded && loaded->CheckDimensionMatch(image);
    if (!isSame || (format != "JPEG" && std::memcmp(loaded->GetSamplesB(), image.GetSamplesB(), 3) != 0))
        std::abort();
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const *data, std::size_t size)
{
    SignalOperationsManager const operations;
    DataCodecManager const manager;
    RegisterDefaultDataCodecs();
    std::istringstream in(string(reinterpret_cast<char const *>(data), size));
    NamedParameterList parameters;
    string format;
    for (string line; std::getline(in, line);)
    {
        std::size_t const mark = line.find('=');
        if (mark == string::npos)
            format = line;
        else if (mark == 1)
            parameters.Insert(MakeParameter(s_parameters[static_cast<unsigned char>(line[0]) % std::size(s_parameters)],
                                            line.substr(2)),
                              true);
        else
            parameters.Insert(MakeParameter(line.substr(0, mark), line.substr(mark + 1)), true);
        CheckFormatName(line.substr(0, mark));
    }
    SaveAndLoad(format, parameters);
    return 0;
}
