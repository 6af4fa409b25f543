#include "source/platform/imagefiles.h"

#include "source/platform/linux/imagefile.h"

#include <cerrno>
#include <cstring>
#include <iterator>
#include <limits>
#include <string_view>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace quillmarsh::platform
{
namespace
{

using namespace std::literals;

struct ImageFormat
{
    char const *mimeType;
    bool (*write)(std::FILE *file, PixelRows const &rows, ImageFileOptions const &options);
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
    AutoPtr<ImageFileReader> (*open)(FilePtr file, std::uint64_t fileSize);
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

/// Null for what is no plain file: a pipe would keep its reader waiting.
FilePtr OpenPlainFile(std::filesystem::path const &name, std::uint64_t &size)
{
    int const descriptor = open(name.c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC);
    if (descriptor < 0)
        return nullptr;
    struct stat info = {};
    FilePtr file;
    if (fstat(descriptor, &info) == 0 && S_ISREG(info.st_mode))
        file.reset(fdopen(descriptor, "rb"));
    if (!file)
        close(descriptor);
    size = static_cast<std::uint64_t>(info.st_size);
    return file;
}

} // namespace

int ToDeflateLevel(unsigned int level)
{
    return static_cast<int>((std::min(level, 100u) * 9 + 50) / 100);
}

AutoPtr<ImageFileReader> OpenImageFile(std::filesystem::path const &name)
{
    std::uint64_t size = 0;
    FilePtr file = OpenPlainFile(name, size);
    if (!file)
        return nullptr;
    char start[8] = {};
    std::string_view const found(start, std::fread(start, 1, std::size(start), file.get()));
    std::rewind(file.get());
    for (Magic const &magic : s_magics)
    {
        if (found.starts_with(magic.bytes))
            return magic.open(std::move(file), size);
    }
    return nullptr;
}

bool SaveImageFile(PixelRows const &rows, std::filesystem::path const &name, char const *mimeType,
                   ImageFileOptions const &options)
{
    for (ImageFormat const &format : s_formats)
    {
        if (std::strcmp(format.mimeType, mimeType) != 0)
            continue;
        FilePtr file(std::fopen(name.c_str(), "w+be"));
        bool const written = file && format.write(file.get(), rows, options) && std::ferror(file.get()) == 0;
        // The last bytes are written when the file is closed, and can fail as well.
        return written && std::fclose(file.release()) == 0;
    }
    return false;
}

} // namespace quillmarsh::platform
