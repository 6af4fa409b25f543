// Image files of every format: loading any bytes ends, either without an image or with one that the file can hold.
#include <quillmarsh/dataobjects/datacodecparameters.h>
#include <quillmarsh/dataobjects/imagecodecs_gdiplus.h>

#include "tests/support/wine.h"

#include <cstdint>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <random>

using namespace quillmarsh;

namespace
{

/// Returns a file name that no other process uses.
string const &GetFileName()
{
    static string const name =
        (std::filesystem::temp_directory_path() / ("quillmarsh-fuzz-" + std::to_string(std::random_device()())))
            .string();
    return name;
}

/// Loads a page as it should be shown, and at full precision.
void CheckDeep(unsigned int page, std::size_t size)
{
    using namespace signal_codec_parameters;
    NamedParameterList params;
    params.Insert(NamedParameter(Param_Page, page), true);
    params.Insert(NamedParameter(Param_ObeyOrientation, true), true);
    params.Insert(NamedParameter(Param_DeepLuminance, true), true);
    AutoPtr<ImageBase> const image(ImageDecoderGdiplus().LoadImageA(GetFileName(), params));
    if (image && (image->GetNumSamples() == 0 || image->GetNumSamples() > size << 15))
        std::abort();
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const *data, std::size_t size)
{
    // Wine's drawing library crashes on an uninitialised pointer when it does not know the kind of a BMP file.
    if (quillmarsh::tests::IsWine() && size >= 2 && data[0] == 'B' && data[1] == 'M')
        return 0;
    std::ofstream(GetFileName(), std::ios::binary)
        .write(reinterpret_cast<char const *>(data), static_cast<std::streamsize>(size));
    AutoPtr<ImageBase> const image(ImageDecoderGdiplus().LoadImageA(GetFileName(), NamedParameterList()));
    for (unsigned int page = 0; page < 2; ++page)
        CheckDeep(page, size);
    // Removes the file, because file systems are slow at overwriting.
    std::filesystem::remove(GetFileName());
    if (!image)
        return 0;
    eSampleFormat const format = image->GetSampleFormat();
    bool const isKnown = format == e_format_X8R8G8B8 || format == e_format_A8R8G8B8;
    if (!isKnown || image->GetNumSamples() == 0 || image->GetNumSamples() > size << 15)
        std::abort();
    return 0;
}
