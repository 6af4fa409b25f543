#include <quillmarsh/dataobjects/datafiles.h>

#include <quillmarsh/basetools/texttools.h>
#include <quillmarsh/dataobjects/samplestatistics.h>

namespace quillmarsh::sampled_data
{
namespace
{

/// True if some sample is not opaque.
bool HasTransparency(SampledData const &data)
{
    for (ChannelStatistics const &channel : ComputeStatistics(data))
    {
        if (channel.name == "alpha" && channel.minimum < channel.largest)
            return true;
    }
    return false;
}

} // namespace

std::vector<string> ListLoadingLosses(DataFileDesc const &desc)
{
    if (!desc.picture)
        return {};
    PictureDesc const &picture = *desc.picture;
    std::vector<string> losses;
    bool const isDeep = desc.format == e_format_FP32NormL;
    if (picture.bits > 8 && !isDeep && picture.colours != ePictureColours::e_palette)
        losses.push_back(MakeString(picture.bits) + " bits become 8");
    if (isDeep && picture.colours != ePictureColours::e_grey)
        losses.push_back("colours become luminance");
    if (isDeep && picture.hasAlpha)
        losses.push_back("no alpha");
    if (picture.numPages > 1)
        losses.push_back("page " + MakeString(picture.page) + " alone of " + MakeString(picture.numPages));
    if (picture.profileByteSize > 0)
        losses.push_back("no colour profile");
    return losses;
}

std::vector<string> ListSavingLosses(SampledData const &data, FileType const &type)
{
    std::vector<string> losses;
    if (type.container == signal_codec_parameters::Value_ImageFileFormat_JPEG && HasTransparency(data))
        losses.push_back("no alpha");
    return losses;
}

} // namespace quillmarsh::sampled_data
