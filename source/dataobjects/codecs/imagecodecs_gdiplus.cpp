#include <quillmarsh/dataobjects/imagecodecs_gdiplus.h>

#include <quillmarsh/basetools/exception.h>
#include <quillmarsh/basetools/filesystem.h>
#include <quillmarsh/basetools/winutils.h>
#include <quillmarsh/dataobjects/datacodecparameters.h>
#include <quillmarsh/dataobjects/datafiles.h>
#include <quillmarsh/dataobjects/imageoperations.h>

#include "source/dataobjects/codecs/filereplacement.h"
#include "source/dataobjects/codecs/openfailures.h"
#include "source/platform/imagefiles.h"

#include <algorithm>
#include <new>
#include <optional>

namespace quillmarsh
{
namespace
{

using namespace data_codec_parameters;
using namespace signal_codec_parameters;

constexpr char s_szNoPicture[] = "no picture that can be read, or one that is cut short or damaged";
constexpr char s_szCodec[] = "GDI+";
constexpr char s_szFormatList[] = "tiff jpeg png bmp";

struct FileFormat
{
    char const *name;
    char const *mimeType;
};

constexpr FileFormat s_fileFormats[] = {
    {Value_ImageFileFormat_TIFF, "image/tiff"},
    {Value_ImageFileFormat_JPEG, "image/jpeg"},
    {Value_ImageFileFormat_PNG, "image/png"},
    {Value_ImageFileFormat_BMP, "image/bmp"},
};

char const *FindMimeType(string const &format)
{
    for (FileFormat const &row : s_fileFormats)
    {
        if (row.name == format)
            return row.mimeType;
    }
    return nullptr;
}

struct PixelForm
{
    eSampleFormat source;
    eSampleFormat form;
};

constexpr PixelForm s_pixelForms[] = {
    {e_format_L8, e_format_X8R8G8B8},       {e_format_X8R8G8B8, e_format_X8R8G8B8},
    {e_format_A8, e_format_A8R8G8B8},       {e_format_A8L8, e_format_A8R8G8B8},
    {e_format_A4R4G4B4, e_format_A8R8G8B8}, {e_format_A1R5G5B5, e_format_A8R8G8B8},
    {e_format_A8R8G8B8, e_format_A8R8G8B8},
};

/// Form of 32 bits that a format is saved in; none for a format that is not saved.
eSampleFormat FindPixelForm(eSampleFormat source)
{
    for (PixelForm const &row : s_pixelForms)
    {
        if (row.source == source)
            return row.form;
    }
    return e_format_none;
}

bool IsOriginBottom(NamedParameterList const &params)
{
    return params.GetValueBool(Param_OriginBottom, Value_OriginBottom_Default);
}

/// The pixels to be saved: the image itself where it has them in the right form and order, else a copy.
class PixelSource : NoCopy
{
public:
    /// False if the format of the image cannot be brought to the form.
    bool Prepare(ImageBase const &image, eSampleFormat form, bool turnedOver)
    {
        pixels_ = &image;
        if (image.GetSampleFormat() == form && !turnedOver)
            return true;
        copy_.emplace(form, image.GetNumRows(), image.GetNumColumns());
        pixels_ = &*copy_;
        // Alpha alone gets a colour to go with it.
        if (image.GetSampleFormat() == e_format_A8)
            std::fill_n(copy_->GetSamplesB(), copy_->GetTotalByteSize(), static_cast<unsigned char>(255));
        if (!TransferSamples2D(*copy_, image, true))
            return false;
        if (turnedOver)
            FlipRows(*copy_);
        return true;
    }
    ImageBase const &Get() const { return *pixels_; }

private:
    ImageBase const *pixels_ = nullptr;
    std::optional<Image<Sample32>> copy_;
};

platform::ImageFileOptions ReadOptions(NamedParameterList const &params)
{
    return {params.GetValueBool(Param_UseCompression, Value_UseCompression_Default),
            params.GetValueUInteger(Param_CompressionLevel, Value_CompressionLevel_Default),
            params.GetValueUInteger(Param_Quality, Value_Quality_Default)};
}

platform::PixelRows ToPixelRows(ImageBase &image)
{
    return {image.GetSamplesB(), static_cast<std::ptrdiff_t>(image.GetRowByteSize()), image.GetNumRows(),
            image.GetNumColumns(), image.GetSampleFormat() == e_format_A8R8G8B8};
}

bool SavePixels(ImageBase const &pixels, string const &path, bool overwrite, char const *mimeType,
                platform::ImageFileOptions const &options)
{
    FileReplacement replacement(path, overwrite);
    // Writers only read what they are given.
    return !replacement.GetPath().empty() &&
           platform::SaveImageFile(ToPixelRows(const_cast<ImageBase &>(pixels)), replacement.GetPath(), mimeType,
                                   options) &&
           replacement.Commit();
}

eSampleFormat FormatOf(platform::ImageFileReader const &reader)
{
    return reader.HasAlpha() ? e_format_A8R8G8B8 : e_format_X8R8G8B8;
}

AutoPtr<ImageBase> LoadPixels(std::filesystem::path const &path, bool turnedOver)
{
    AutoPtr<platform::ImageFileReader> const reader = platform::OpenImageFile(path);
    if (!reader)
        return nullptr;
    auto image = std::make_unique<Image<Sample32>>(FormatOf(*reader), reader->GetNumRows(), reader->GetNumColumns());
    if (!reader->Read(ToPixelRows(*image)))
        return nullptr;
    if (turnedOver)
        FlipRows(*image);
    return image;
}

/// What the call gives; false or null when it finds no memory. A picture that cannot be held fails as a damaged one.
template<typename Call>
auto CallWithMemory(Call const &call) -> decltype(call())
{
    try
    {
        return call();
    }
    catch (NoMemoryException const &)
    {
    }
    catch (std::bad_alloc const &)
    {
    }
    return {};
}

} // namespace

ImageEncoderGdiplus::ImageEncoderGdiplus() : ImageEncoder(s_szCodec, s_szFormatList) {}

bool ImageEncoderGdiplus::SaveImage(ImageBase const &image, string const &fileName, string const &format,
                                    NamedParameterList const &params)
{
    char const *const mimeType = FindMimeType(format);
    if (mimeType && FindPixelForm(image.GetSampleFormat()) == e_format_none)
        TellCodecFailure(eCodecFailure::e_unsupported, format + " takes no samples of the format " +
                                                           sampled_data::GetFormatName(image.GetSampleFormat()));
    if (!mimeType || fileName.empty() || image.GetNumSamples() == 0)
        return false;
    eSampleFormat const form = FindPixelForm(image.GetSampleFormat());
    PixelSource source;
    if (form == e_format_none || !CallWithMemory([&] { return source.Prepare(image, form, IsOriginBottom(params)); }))
        return false;
    win_utils::GdiplusGuard const guard;
    string const path = file_system::GetFullPathNameA(fileName, false);
    bool const overwrite = params.GetValueBool(Param_FileOverwrite, Value_FileOverwrite_Default);
    return CallWithMemory([&] { return SavePixels(source.Get(), path, overwrite, mimeType, ReadOptions(params)); });
}

/// Path of a plain file that can be read from; empty, with the failure told, when there is none of that name.
static std::filesystem::path FindDataFile(string const &fileName)
{
    bool const isFile = OpenInputFile(fileName) != nullptr;
    return isFile ? file_system::GetStreamPath(fileName) : std::filesystem::path();
}

ImageDecoderGdiplus::ImageDecoderGdiplus() : ImageDecoder(s_szCodec, s_szFormatList) {}

ImageBase *ImageDecoderGdiplus::LoadImageA(string const &fileName, NamedParameterList const &params)
{
    std::filesystem::path const path = FindDataFile(file_system::GetFullPathNameA(fileName, false));
    if (path.empty())
        return nullptr;
    win_utils::GdiplusGuard const guard;
    return CallWithMemory([&] { return LoadPixels(path, IsOriginBottom(params)); }).release();
}

bool ImageDecoderGdiplus::QueryImage(string const &fileName, eSampleFormat &format, unsigned int &numRows,
                                     unsigned int &numColumns)
{
    std::filesystem::path const path = FindDataFile(file_system::GetFullPathNameA(fileName, false));
    if (path.empty())
        return false;
    win_utils::GdiplusGuard const guard;
    AutoPtr<platform::ImageFileReader> const reader = CallWithMemory([&] { return platform::OpenImageFile(path); });
    if (!reader)
        return false;
    format = FormatOf(*reader);
    numRows = reader->GetNumRows();
    numColumns = reader->GetNumColumns();
    return true;
}

bool ImageDecoderGdiplus::QueryOpened(sampled_data::InputFile &file, DataFileHead &head)
{
    char const *const container = sampled_data::RecogniseContainer(file.GetStream());
    head.container = container ? container : "";
    head.dimensions.resize(2);
    if (container && QueryImage(file.GetName(), head.format, head.dimensions[0], head.dimensions[1]))
        return true;
    TellCodecFailure(container ? eCodecFailure::e_damaged : eCodecFailure::e_otherFormat, s_szNoPicture);
    return false;
}

void *ImageDecoderGdiplus::LoadOpened(sampled_data::InputFile &file, NamedParameterList const &params)
{
    void *const image = LoadImageA(file.GetName(), params);
    if (!image)
        TellCodecFailure(eCodecFailure::e_damaged, s_szNoPicture);
    return image;
}

} // namespace quillmarsh
