#include "source/platform/imagefiles.h"

#include "source/platform/linux/imagefile.h"
#include "source/platform/plainfiles.h"

#include <cerrno>
#include <cstring>
#include <iterator>
#include <string_view>
#include <system_error>

namespace quillmarsh::platform
{
namespace
{

using namespace std::literals;

struct ImageFormat
{
    char const *mimeType;
    bool (*write)(std::FILE *file, PixelRows const &rows, ImageFileOptions const &options, ImageFailure &failure);
};

constexpr ImageFormat s_formats[] = {
    {"image/tiff", &WriteTiffFile},
    {"image/jpeg", &WriteJpegFile},
    {"image/png", &WritePngFile},
    {"image/bmp", &WriteBmpFile},
};

struct Magic
{
    std::string_view bytes;
    AutoPtr<ImageFileReader> (*open)(std::FILE *file, std::uint64_t fileSize, ImageReadOptions const &options,
                                     ImageFailure &failure);
};

constexpr Magic s_magics[] = {
    {"\x89PNG\r\n\x1A\n"sv, &OpenPngFile},
    {"\xFF\xD8\xFF"sv, &OpenJpegFile},
    {"BM"sv, &OpenBmpFile},
    {"II*\0"sv, &OpenTiffFile},
    {"MM\0*"sv, &OpenTiffFile},
    {"II+\0"sv, &OpenTiffFile},
    {"MM\0+"sv, &OpenTiffFile},
};

/// Sets the failure of a file that could not be opened, written or closed.
bool FailBySystem(ImageFailure &failure)
{
    failure = {eImageFailure::e_system, errno != 0 ? std::generic_category().message(errno) : "writing failed"};
    return false;
}

} // namespace

int ToDeflateLevel(unsigned int level)
{
    return static_cast<int>((std::min(level, 100u) * 9 + 50) / 100);
}

AutoPtr<ImageFileReader> OpenImageFile(std::FILE *file, std::uint64_t fileSize, ImageReadOptions const &options,
                                       ImageFailure &failure)
{
    char start[8] = {};
    std::string_view const found(start, std::fread(start, 1, std::size(start), file));
    std::rewind(file);
    for (Magic const &magic : s_magics)
    {
        if (found.starts_with(magic.bytes))
            return magic.open(file, fileSize, options, failure);
    }
    failure = {eImageFailure::e_otherFormat, "neither TIFF nor JPEG nor PNG nor BMP"};
    return nullptr;
}

bool SaveImageFile(PixelRows const &rows, std::filesystem::path const &name, char const *mimeType,
                   ImageFileOptions const &options, ImageFailure &failure)
{
    for (ImageFormat const &format : s_formats)
    {
        if (std::strcmp(format.mimeType, mimeType) != 0)
            continue;
        errno = 0;
        FilePtr file(std::fopen(name.c_str(), "w+be"));
        if (!file)
            return FailBySystem(failure);
        bool const written = format.write(file.get(), rows, options, failure);
        // The system's reason is more exact than the library's, so it comes first.
        if (std::ferror(file.get()) != 0)
            return FailBySystem(failure);
        // Closing the file writes the last bytes, and can fail as well.
        return written && (std::fclose(file.release()) == 0 || FailBySystem(failure));
    }
    failure = {eImageFailure::e_otherFormat, string("no picture is written as ") + mimeType};
    return false;
}

} // namespace quillmarsh::platform
