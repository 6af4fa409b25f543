// Seam: image files, as bitmaps of the drawing service.
#ifndef QUILLMARSH_SOURCE_PLATFORM_IMAGEFILES_H
#define QUILLMARSH_SOURCE_PLATFORM_IMAGEFILES_H

#include "source/platform/drawing.h"

#include <filesystem>

namespace quillmarsh::platform
{

/// How a file is written. Levels and qualities go from 0 to 100; a format leaves alone what it has no use for.
struct ImageFileOptions
{
    bool useCompression = true;
    unsigned int compressionLevel = 100;
    unsigned int quality = 100;
};

/// Bitmap of a TIFF, JPEG, PNG or BMP file that is a plain file, in the rows of the file; null if it is none, or claims
/// to be larger than its file can hold. Pixels are decoded when they are first locked for reading, into the memory of
/// whoever locks them; a picture that proves to be damaged fails then.
///
/// On Linux they can be locked once.
AutoPtr<Gdiplus::Bitmap> OpenImageFile(std::filesystem::path const &name);

/// Writes a bitmap over memory as a file of one of the types "image/tiff", "image/jpeg", "image/png" and "image/bmp".
/// False for another type, and when writing fails; what is in the file then is of no use.
bool SaveImageFile(Gdiplus::Bitmap &bitmap, std::filesystem::path const &name, char const *mimeType,
                   ImageFileOptions const &options);

} // namespace quillmarsh::platform

#endif
