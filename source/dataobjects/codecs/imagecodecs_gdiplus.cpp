#include <quillmarsh/dataobjects/imagecodecs_gdiplus.h>

#include <quillmarsh/basetools/exception.h>
#include <quillmarsh/basetools/filesystem.h>
#include <quillmarsh/basetools/windows/winutils.h>
#include <quillmarsh/dataobjects/datacodecparameters.h>
#include <quillmarsh/dataobjects/datafiles.h>
#include <quillmarsh/dataobjects/imagelimits.h>
#include <quillmarsh/dataobjects/imageoperations.h>

#include "source/dataobjects/codecs/filereplacement.h"
#include "source/dataobjects/codecs/openfailures.h"
#include "source/dataobjects/codecs/orientation.h"
#include "source/platform/imagefiles.h"

#include <algorithm>
#include <new>
#include <optional>
#include <utility>

namespace quillmarsh
{
namespace
{

using namespace data_codec_parameters;
using namespace signal_codec_parameters;

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

/// Returns the 32-bit format in which a sample format is saved; e_format_none for one that is not saved.
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

/// The pixels to save: the image itself if it has the right format and order, else a copy.
class PixelSource : NoCopy
{
public:
    /// Prepares the pixels. False if the image cannot be transferred into the format.
    bool Prepare(ImageBase const &image, eSampleFormat form, bool turnedOver)
    {
        pixels_ = &image;
        if (image.GetSampleFormat() == form && !turnedOver)
            return true;
        copy_.emplace(form, image.GetNumRows(), image.GetNumColumns());
        pixels_ = &*copy_;
        // An image with only alpha gets a colour.
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

platform::ImageFileOptions ReadOptions(NamedParameterList const &params, bool isGrey)
{
    return {params.GetValueBool(Param_UseCompression, Value_UseCompression_Default),
            params.GetValueUInteger(Param_CompressionLevel, Value_CompressionLevel_Default),
            params.GetValueUInteger(Param_Quality, Value_Quality_Default), isGrey};
}

platform::PixelRows ToPixelRows(ImageBase &image)
{
    return {image.GetSamplesB(), static_cast<std::ptrdiff_t>(image.GetRowByteSize()), image.GetNumRows(),
            image.GetNumColumns(), image.GetSampleFormat() == e_format_A8R8G8B8};
}

eCodecFailure ToCodecFailure(platform::eImageFailure kind)
{
    switch (kind)
    {
    case platform::eImageFailure::e_otherFormat:
        return eCodecFailure::e_otherFormat;
    case platform::eImageFailure::e_unsupported:
        return eCodecFailure::e_unsupported;
    case platform::eImageFailure::e_system:
        return eCodecFailure::e_system;
    default:
        return eCodecFailure::e_damaged;
    }
}

/// Tells the failure and returns false.
bool Fail(platform::ImageFailure const &failure)
{
    TellCodecFailure(ToCodecFailure(failure.kind), failure.text);
    return false;
}

bool SavePixels(ImageBase const &pixels, string const &path, bool overwrite, char const *mimeType,
                platform::ImageFileOptions const &options)
{
    FileReplacement replacement(path, overwrite);
    if (replacement.GetPath().empty())
        return false;
    platform::ImageFailure failure;
    // SaveImageFile() only reads the pixels.
    if (!platform::SaveImageFile(ToPixelRows(const_cast<ImageBase &>(pixels)), replacement.GetPath(), mimeType, options,
                                 failure))
        return Fail(failure.kind != platform::eImageFailure::e_none
                        ? failure
                        : platform::ImageFailure{platform::eImageFailure::e_system, "writing failed"});
    return replacement.Commit();
}

/// What parameters ask for of a picture.
struct PictureRequest
{
    platform::ImageReadOptions options;
    bool obeysOrientation;
    bool turnsOver;
};

PictureRequest ReadRequest(NamedParameterList const &params)
{
    return {{params.GetValueUInteger(Param_Page, Value_Page_Default),
             params.GetValueBool(Param_DeepLuminance, Value_DeepLuminance_Default)},
            params.GetValueBool(Param_ObeyOrientation, Value_ObeyOrientation_Default),
            IsOriginBottom(params)};
}

bool IsDeep(platform::ImageFileReader const &reader, PictureRequest const &request)
{
    return request.options.wantsLuminance && reader.HasDeepLuminance();
}

eSampleFormat FormatOf(platform::ImageFileReader const &reader, PictureRequest const &request)
{
    if (IsDeep(reader, request))
        return e_format_FP32NormL;
    return reader.HasAlpha() ? e_format_A8R8G8B8 : e_format_X8R8G8B8;
}

ePictureColours ToColours(platform::eImageColours colours)
{
    switch (colours)
    {
    case platform::eImageColours::e_grey:
        return ePictureColours::e_grey;
    case platform::eImageColours::e_palette:
        return ePictureColours::e_palette;
    case platform::eImageColours::e_inks:
        return ePictureColours::e_inks;
    default:
        return ePictureColours::e_colours;
    }
}

PictureDesc DescribePicture(platform::ImageFileReader const &reader, PictureRequest const &request)
{
    platform::ImageFileFacts const &facts = reader.GetFacts();
    PictureDesc desc;
    desc.colours = ToColours(facts.colours);
    desc.hasAlpha = reader.HasAlpha();
    desc.bits = facts.bits;
    desc.areFloats = facts.areFloats;
    desc.paletteSize = facts.paletteSize;
    desc.numPages = facts.numPages;
    desc.page = request.options.page;
    desc.resolutionX = facts.resolutionX;
    desc.resolutionY = facts.resolutionY;
    desc.orientation = facts.orientation;
    desc.isOriented = request.obeysOrientation && facts.orientation != 1;
    desc.profileByteSize = facts.profileByteSize;
    return desc;
}

/// Opens a picture. On failure, and for a picture with more pixels than the limit, tells the failure and returns null.
AutoPtr<platform::ImageFileReader> OpenPicture(sampled_data::InputFile &file, PictureRequest const &request)
{
    platform::ImageFailure failure;
    AutoPtr<platform::ImageFileReader> reader =
        platform::OpenImageFile(file.GetFile(), file.GetByteSize(), request.options, failure);
    if (!reader)
        Fail(failure);
    else if (std::uint64_t{reader->GetNumRows()} * reader->GetNumColumns() <= image_limits::GetMaxPixels())
        return reader;
    else
        TellCodecFailure(eCodecFailure::e_tooLarge,
                         image_limits::DescribeExcess(reader->GetNumRows(), reader->GetNumColumns()));
    return nullptr;
}

AutoPtr<ImageBase> LoadPixels(sampled_data::InputFile &file, PictureRequest const &request)
{
    AutoPtr<platform::ImageFileReader> const reader = OpenPicture(file, request);
    if (!reader)
        return nullptr;
    auto pixels =
        std::make_unique<Image<Sample32>>(FormatOf(*reader, request), reader->GetNumRows(), reader->GetNumColumns());
    bool const isRead = IsDeep(*reader, request)
                            ? reader->ReadLuminance(reinterpret_cast<float *>(pixels->GetSamplesB()))
                            : reader->Read(ToPixelRows(*pixels));
    if (!isRead)
    {
        Fail(reader->GetFailure());
        return nullptr;
    }
    AutoPtr<ImageBase> image = std::move(pixels);
    if (request.obeysOrientation)
        image = Orient(std::move(image), reader->GetFacts().orientation);
    if (request.turnsOver)
        FlipRows(*image);
    return image;
}

/// Returns the result of the call. When memory is short, tells the failure and returns false or null.
template<typename Call>
auto CallWithMemory(Call const &call) -> decltype(call())
{
    try
    {
        return call();
    }
    catch (NoMemoryException const &thrown)
    {
        Tell(DescribeNoMemory(thrown.GetMessage()));
    }
    catch (std::bad_alloc const &)
    {
        Tell(DescribeNoMemory(""));
    }
    return {};
}

/// True when the image can be saved in the format. Otherwise tells the failure and returns false.
bool CanSave(ImageBase const &image, string const &fileName, string const &format)
{
    if (!FindMimeType(format))
        TellCodecFailure(eCodecFailure::e_otherFormat, "not a format of pictures: " + format);
    else if (fileName.empty() || image.GetNumSamples() == 0)
        TellCodecFailure(eCodecFailure::e_unsupported,
                         fileName.empty() ? "the name of the file is missing" : "there are no pixels to save");
    else if (FindPixelForm(image.GetSampleFormat()) == e_format_none)
        TellCodecFailure(eCodecFailure::e_unsupported, format + " takes no samples of the format " +
                                                           sampled_data::GetFormatName(image.GetSampleFormat()));
    else
        return true;
    return false;
}

} // namespace

ImageEncoderGdiplus::ImageEncoderGdiplus() : ImageEncoder(s_szCodec, s_szFormatList) {}

bool ImageEncoderGdiplus::SaveImage(ImageBase const &image, string const &fileName, string const &format,
                                    NamedParameterList const &params)
{
    if (!CanSave(image, fileName, format))
        return false;
    eSampleFormat const form = FindPixelForm(image.GetSampleFormat());
    bool const isGrey = image.GetSampleFormat() == e_format_L8 || image.GetSampleFormat() == e_format_A8L8;
    PixelSource source;
    if (!CallWithMemory([&] { return source.Prepare(image, form, IsOriginBottom(params)); }))
        return false;
    win_utils::GdiplusGuard const guard;
    string const path = file_system::GetFullPathNameA(fileName, false);
    bool const overwrite = params.GetValueBool(Param_FileOverwrite, Value_FileOverwrite_Default);
    return CallWithMemory(
        [&] { return SavePixels(source.Get(), path, overwrite, FindMimeType(format), ReadOptions(params, isGrey)); });
}

ImageDecoderGdiplus::ImageDecoderGdiplus() : ImageDecoder(s_szCodec, s_szFormatList) {}

ImageBase *ImageDecoderGdiplus::LoadImageA(string const &fileName, NamedParameterList const &params)
{
    AutoPtr<sampled_data::InputFile> const file = OpenInputFile(file_system::GetFullPathNameA(fileName, false));
    return file ? static_cast<ImageBase *>(LoadOpened(*file, params)) : nullptr;
}

bool ImageDecoderGdiplus::QueryImage(string const &fileName, eSampleFormat &format, unsigned int &numRows,
                                     unsigned int &numColumns)
{
    AutoPtr<sampled_data::InputFile> const file = OpenInputFile(file_system::GetFullPathNameA(fileName, false));
    DataFileHead head;
    if (!file || !ImageDecoderGdiplus().QueryOpened(*file, head))
        return false;
    format = head.format;
    numRows = head.dimensions[0];
    numColumns = head.dimensions[1];
    return true;
}

bool ImageDecoderGdiplus::QueryOpened(sampled_data::InputFile &file, DataFileHead &head)
{
    return QueryOpenedWith(file, NamedParameterList(), head);
}

bool ImageDecoderGdiplus::QueryOpenedWith(sampled_data::InputFile &file, NamedParameterList const &params,
                                          DataFileHead &head)
{
    win_utils::GdiplusGuard const guard;
    PictureRequest const request = ReadRequest(params);
    AutoPtr<platform::ImageFileReader> const reader = CallWithMemory([&] { return OpenPicture(file, request); });
    if (!reader)
        return false;
    PictureDesc const picture = DescribePicture(*reader, request);
    head = {"", FormatOf(*reader, request), {reader->GetNumRows(), reader->GetNumColumns()}, picture};
    if (picture.isOriented && SwapsAxes(picture.orientation))
        std::swap(head.dimensions[0], head.dimensions[1]);
    if (char const *const container = sampled_data::RecogniseContainer(file.GetStream()))
        head.container = container;
    return true;
}

void *ImageDecoderGdiplus::LoadOpened(sampled_data::InputFile &file, NamedParameterList const &params)
{
    win_utils::GdiplusGuard const guard;
    return CallWithMemory([&] { return LoadPixels(file, ReadRequest(params)); }).release();
}

} // namespace quillmarsh
