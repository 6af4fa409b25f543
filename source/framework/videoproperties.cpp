// What a display and a profile hold: access by index, filling, and tests for what is there.
#include <quillmarsh/framework/videoprofile.h>

#include <quillmarsh/basetools/diagnostics.h>
#include <quillmarsh/basetools/texttools.h>
#include <quillmarsh/framework/videoconfig.h>

#include <algorithm>

namespace quillmarsh
{

DisplayModeProperties::DisplayModeProperties(unsigned int width, unsigned int height, unsigned int bitDepth)
    : width_(width),
      height_(height),
      bitDepth_(bitDepth)
{
}

unsigned int DisplayModeProperties::GetRefreshFrequency(unsigned int index) const
{
    QUILLMARSH_ASSERT(index < refreshFrequencies_.size(), "Index out of range");
    return index < refreshFrequencies_.size() ? refreshFrequencies_[index] : 0;
}

unsigned int DisplayModeProperties::GetLowestRefreshFrequency() const
{
    return refreshFrequencies_.empty() ? 0 : std::ranges::min(refreshFrequencies_);
}

unsigned int DisplayModeProperties::GetHighestRefreshFrequency() const
{
    return refreshFrequencies_.empty() ? 0 : std::ranges::max(refreshFrequencies_);
}

unsigned int DisplayModeProperties::GetClosestLowerRefreshFrequency(unsigned int wanted) const
{
    // In spite of the name, the choice goes upward.
    unsigned int closest = 0;
    for (unsigned int const frequency : refreshFrequencies_)
    {
        if (frequency == wanted)
            return frequency;
        if (frequency > wanted && (closest == 0 || frequency < closest))
            closest = frequency;
    }
    return closest;
}

bool DisplayModeProperties::IsValidRefreshFrequency(unsigned int frequency) const
{
    return frequency == 0 || std::ranges::find(refreshFrequencies_, frequency) != refreshFrequencies_.end();
}

void DisplayModeProperties::AddRefreshFrequency(unsigned int frequency)
{
    if (std::ranges::find(refreshFrequencies_, frequency) == refreshFrequencies_.end())
        refreshFrequencies_.push_back(frequency);
}

void DisplayModeProperties::SortRefreshFrequencies()
{
    std::ranges::sort(refreshFrequencies_);
    refreshFrequencies_.erase(std::unique(refreshFrequencies_.begin(), refreshFrequencies_.end()),
                              refreshFrequencies_.end());
}

bool DisplayModeProperties::IsValid(DisplayModeConfig const &config) const
{
    return width_ == config.Width && height_ == config.Height && bitDepth_ == config.BitDepth &&
           IsValidRefreshFrequency(config.RefreshFrequency);
}

string DisplayModeProperties::MakeDesc(string const &separator) const
{
    return MakeString(width_) + separator + MakeString(height_) + separator + MakeString(bitDepth_);
}

void VideoProfile::SetDriverInfo(string const &description, string const &version, win_utils::Guid const &guid)
{
    driverDescription_ = description;
    driverVersion_ = version;
    driverGuid_ = guid;
}

DisplayModeProperties *VideoProfile::Find(DisplayModeConfig const &config)
{
    auto const found = std::ranges::find_if(displayModes_,
                                            [&](DisplayModeProperties const &mode)
                                            {
                                                return mode.GetWidth() == config.Width &&
                                                       mode.GetHeight() == config.Height &&
                                                       mode.GetBitDepth() == config.BitDepth;
                                            });
    return found != displayModes_.end() ? &*found : nullptr;
}

void VideoProfile::Add(DisplayModeConfig const &config)
{
    DisplayModeProperties *mode = Find(config);
    if (mode == nullptr)
        mode = &displayModes_.emplace_back(config.Width, config.Height, config.BitDepth);
    mode->AddRefreshFrequency(config.RefreshFrequency);
}

void VideoProfile::Add(FrameBufferConfig const &config)
{
    if (!IsValid(config))
        frameBufferConfigs_.push_back(config);
}

void VideoProfile::BuildPostProcess()
{
    for (DisplayModeProperties &mode : displayModes_)
        mode.SortRefreshFrequencies();
}

void VideoProfile::Clear()
{
    *this = VideoProfile();
}

DisplayModeProperties const &VideoProfile::GetDisplayModeProperties(unsigned int index) const
{
    QUILLMARSH_ASSERT(index < displayModes_.size(), "Index out of range");
    static DisplayModeProperties const s_none(0, 0, 0);
    return index < displayModes_.size() ? displayModes_[index] : s_none;
}

FrameBufferConfig const &VideoProfile::GetFrameBufferConfig(unsigned int index) const
{
    QUILLMARSH_ASSERT(index < frameBufferConfigs_.size(), "Index out of range");
    static FrameBufferConfig const s_none(false, false, 0, 0, 0, 0);
    return index < frameBufferConfigs_.size() ? frameBufferConfigs_[index] : s_none;
}

bool VideoProfile::IsValid(DisplayModeConfig const &config) const
{
    return std::ranges::any_of(displayModes_, [&](DisplayModeProperties const &mode) { return mode.IsValid(config); });
}

bool VideoProfile::IsValid(FrameBufferConfig const &config) const
{
    return std::ranges::find(frameBufferConfigs_, config) != frameBufferConfigs_.end();
}

bool VideoProfile::IsValid(VideoConfig const &config) const
{
    return IsValid(config.FrameBuffer) && (!config.FrameBuffer.Fullscreen || IsValid(config.DisplayMode));
}

} // namespace quillmarsh
