// Codecs of the common image files, on the system's image service.
#ifndef QUILLMARSH_DATAOBJECTS_IMAGECODECS_GDIPLUS_H
#define QUILLMARSH_DATAOBJECTS_IMAGECODECS_GDIPLUS_H

#include <quillmarsh/dataobjects/datacodecs.h>

namespace quillmarsh
{

/// Saves images in the formats "TIFF", "JPEG", "PNG" and "BMP".
///
/// Pixels pass through a form of 32 bits: images with alpha keep it where the format has alpha, luminance becomes equal
/// blue, green and red. A sample format that is neither fails. A file appears whole or not at all, and one that was
/// there stays until the new one is complete. A symbolic link is followed.
///
/// Reads the parameters "FileOverwrite"; "UseCompression", without which PNG and TIFF are stored plain;
/// "CompressionLevel" for these two; "Quality" for JPEG; and "OriginBottom".
///
/// On Windows the system's image service does the work; it compresses by levels of its own, and knows none for PNG.
/// Any number of threads may save at a time. A failure is told with the words of the library that found it (see
/// CodecFailureSentry).
class QUILLMARSH_API ImageEncoderGdiplus : public ImageEncoder
{
public:
    ImageEncoderGdiplus();

    /// False, with no file made or changed, for an empty image or name, another format, a file that must not be
    /// replaced, and when writing fails.
    bool SaveImage(ImageBase const &image, string const &fileName, string const &format,
                   NamedParameterList const &params) override;
};

/// Loads images from TIFF, JPEG, PNG and BMP files, whatever their names end in: as "A8R8G8B8" if the picture has
/// alpha, else as "X8R8G8B8" with unused bytes of 255. Rows stay as the file has them; orientations that it asks for
/// are not carried out.
///
/// Pictures of more pixels than image_limits::GetMaxPixels() are refused. Reads the parameter "OriginBottom". Any number
/// of threads may load at a time. A failure is told with the words of the library that found it (see CodecFailureSentry).
class QUILLMARSH_API ImageDecoderGdiplus : public ImageDecoder, public OpenFileDecoder
{
public:
    ImageDecoderGdiplus();

    /// Null also for a picture that is cut short, damaged, of a kind that is not supported, or larger than its file can
    /// hold or the limit allows.
    ImageBase *LoadImageA(string const &fileName, NamedParameterList const &params) override;
    bool QueryOpened(sampled_data::InputFile &file, DataFileHead &head) override;
    void *LoadOpened(sampled_data::InputFile &file, NamedParameterList const &params) override;

    /// Tells what LoadImageA gives without decoding the picture, which may prove to be damaged. False if there is none,
    /// or one that is larger than its file can hold.
    static bool QueryImage(string const &fileName, eSampleFormat &format, unsigned int &numRows,
                           unsigned int &numColumns);
};

} // namespace quillmarsh

#endif
