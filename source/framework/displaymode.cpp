#include <quillmarsh/framework/displaymode.h>

#include <quillmarsh/basetools/platforminfo.h>
#include <quillmarsh/basetools/texttools.h>

#include <algorithm>
#include <utility>

namespace quillmarsh
{

DisplayModeConfig::DisplayModeConfig(bool useDesktop) : DisplayModeConfig(640, 480, 32, 0)
{
    if (useDesktop)
        platform_info::GetDesktopDisplayMode(&Width, &Height, &BitDepth, &RefreshFrequency);
}

DisplayModeConfig::DisplayModeConfig(unsigned int width, unsigned int height, unsigned int bitDepth,
                                     unsigned int refreshFrequency)
    : Width(width),
      Height(height),
      BitDepth(bitDepth),
      RefreshFrequency(refreshFrequency)
{
}

string DisplayModeConfig::MakeDesc(string const &sizeSeparator, string const &refreshSeparator) const
{
    return DisplayModeProperties(Width, Height, BitDepth).MakeDesc(sizeSeparator) + refreshSeparator +
           MakeString(RefreshFrequency);
}

DisplayModeConfigFilter::~DisplayModeConfigFilter() = default;

bool DisplayModeConfigFilter::Filter(DisplayModeConfig const &config)
{
    return IsStandardResolution(config.Width, config.Height) && IsSubDesktopResolution(config.Width, config.Height);
}

bool DisplayModeConfigFilter::IsSafeDisplayModeConfig(DisplayModeConfig const &config)
{
    return config.Width >= 640 && config.Height >= 480 && config.BitDepth >= 32 && config.RefreshFrequency >= 60;
}

bool DisplayModeConfigFilter::IsStandardResolution(unsigned int width, unsigned int height)
{
    static constexpr std::pair<unsigned int, unsigned int> s_resolutions[] = {
        {640, 480}, {800, 600}, {1024, 768}, {1280, 1024}, {1600, 1200}};
    return std::ranges::find(s_resolutions, std::pair(width, height)) != std::end(s_resolutions);
}

bool DisplayModeConfigFilter::IsSubDesktopResolution(unsigned int width, unsigned int height)
{
    DisplayModeConfig const desktop(true);
    return width <= desktop.Width && height <= desktop.Height;
}

} // namespace quillmarsh
