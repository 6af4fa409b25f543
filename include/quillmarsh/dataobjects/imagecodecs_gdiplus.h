// Codecs of the common image files.
#ifndef QUILLMARSH_DATAOBJECTS_IMAGECODECS_GDIPLUS_H
#define QUILLMARSH_DATAOBJECTS_IMAGECODECS_GDIPLUS_H

#include <quillmarsh/dataobjects/datacodecs.h>

namespace quillmarsh
{

/// Saves images in the formats "TIFF", "JPEG", "PNG" and "BMP".
///
/// Pixels are converted to 32 bits: alpha is kept if the file format has alpha, and luminance becomes equal blue, green
/// and red. L8 and A8L8 are saved as grey where the format has it: PNG, TIFF, JPEG. On Windows, they are saved as colours.
/// Sample formats without any of these fail. A file is written completely or not at all, and an existing file
/// stays until the new one is complete. Symbolic links are followed.
///
/// Reads the parameters "FileOverwrite"; "UseCompression", without which PNG and TIFF are stored uncompressed;
/// "CompressionLevel" for these two; "Quality" for JPEG; and "OriginBottom".
///
/// On Windows the system's image service does the work; it has its own levels of compression, and none for PNG. Several
/// threads may save at the same time. The reason of a failure contains the text of the image library (see
/// CodecFailureSentry).
class QUILLMARSH_API ImageEncoderGdiplus : public ImageEncoder
{
public:
    /// Creates the codec "ImageEncoder/GDI+".
    ImageEncoderGdiplus();

    /// Saves an image. False, without a new or changed file, for an empty image or name, another format, a file that
    /// must not be replaced, and when writing fails.
    bool SaveImage(ImageBase const &image, string const &fileName, string const &format,
                   NamedParameterList const &params) override;
};

/// Loads images from TIFF, JPEG, PNG and BMP files with any extension: as "A8R8G8B8" if the picture has alpha, else as
/// "X8R8G8B8" with unused bytes of 255. Rows keep the order of the file.
///
/// Reads the parameter "Page", of a TIFF with several; "ObeyOrientation", with which the picture is turned as its file
/// asks for it; and "DeepLuminance", with which a PNG or TIFF of more than eight bits for a component gives "FP32NormL"
/// at the file's precision, as the luminance of colours and without alpha. Floats keep values outside of 0..1. On
/// Windows, "DeepLuminance" has no effect.
///
/// Refuses pictures with more pixels than image_limits::GetMaxPixels(). Reads the parameter "OriginBottom". Several
/// threads may load at the same time. The reason of a failure contains the text of the image library (see
/// CodecFailureSentry).
class QUILLMARSH_API ImageDecoderGdiplus : public ImageDecoder, public OpenFileDecoder
{
public:
    /// Creates the codec "ImageDecoder/GDI+".
    ImageDecoderGdiplus();

    /// Loads a picture. Null also for a picture that is cut short, damaged, of an unsupported kind, larger than its
    /// file can contain, or larger than the limit.
    ImageBase *LoadImageA(string const &fileName, NamedParameterList const &params) override;
    bool QueryOpened(sampled_data::InputFile &file, DataFileHead &head) override;
    bool QueryOpenedWith(sampled_data::InputFile &file, NamedParameterList const &params, DataFileHead &head) override;
    void *LoadOpened(sampled_data::InputFile &file, NamedParameterList const &params) override;

    /// Describes the image that LoadImageA would return, without decoding the picture, which may still be damaged.
    /// False if the file contains no picture, or one that is larger than the file can contain.
    static bool QueryImage(string const &fileName, eSampleFormat &format, unsigned int &numRows,
                           unsigned int &numColumns);
};

} // namespace quillmarsh

#endif
