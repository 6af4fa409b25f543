// Display modes: one that is wanted or in force, one that a display offers, and the choice among them.
#ifndef QUILLMARSH_FRAMEWORK_DISPLAYMODE_H
#define QUILLMARSH_FRAMEWORK_DISPLAYMODE_H

#include <quillmarsh/platform/types.h>

#include <vector>

namespace quillmarsh
{

/// Display mode that is wanted or in force. A plain record.
struct QUILLMARSH_API DisplayModeConfig
{
    /// Size in pixels.
    unsigned int Width;
    unsigned int Height;
    /// Bits per pixel.
    unsigned int BitDepth;
    /// In hertz; 0 is the display's default.
    unsigned int RefreshFrequency;

    /// Takes the desktop's mode with `useDesktop`, which is all zeros without a display
    /// (platform_info::GetDesktopDisplayMode). Otherwise takes 640 x 480 x 32 with the default frequency.
    explicit DisplayModeConfig(bool useDesktop);
    /// Takes the four members in their order.
    DisplayModeConfig(unsigned int width, unsigned int height, unsigned int bitDepth, unsigned int refreshFrequency);

    /// Compares all members.
    bool operator==(DisplayModeConfig const &other) const = default;

    /// Text of the mode: width, height and bit depth with `sizeSeparator` between them, `refreshSeparator`, frequency.
    string MakeDesc(string const &sizeSeparator, string const &refreshSeparator) const;
};

/// Display mode that a display offers: size and bit depth, with every refresh frequency in which it exists.
class QUILLMARSH_API DisplayModeProperties
{
public:
    /// Takes size in pixels and bits per pixel. There are no frequencies yet.
    DisplayModeProperties(unsigned int width, unsigned int height, unsigned int bitDepth);

    /// @name Key of the mode
    /// @{
    unsigned int GetWidth() const { return width_; }
    unsigned int GetHeight() const { return height_; }
    unsigned int GetBitDepth() const { return bitDepth_; }
    /// @}

    /// @name Refresh frequencies
    /// In hertz.
    /// @{
    unsigned int GetNumRefreshFrequencies() const { return static_cast<unsigned int>(refreshFrequencies_.size()); }
    /// Frequency by index. Asserts "Index out of range" past the end, and gives 0 then.
    unsigned int GetRefreshFrequency(unsigned int index) const;
    /// Lowest frequency; 0 when there is none.
    unsigned int GetLowestRefreshFrequency() const;
    /// Highest frequency; 0 when there is none.
    unsigned int GetHighestRefreshFrequency() const;
    /// The wanted frequency if it exists, otherwise the closest one above it; 0, the default, when all are below.
    unsigned int GetClosestLowerRefreshFrequency(unsigned int wanted) const;
    /// True for a frequency of the list, and for 0.
    bool IsValidRefreshFrequency(unsigned int frequency) const;
    /// Appends a frequency unless it is listed.
    void AddRefreshFrequency(unsigned int frequency);
    /// Sorts the frequencies in ascending order and removes duplicates.
    void SortRefreshFrequencies();
    /// @}

    /// True when this mode offers the wanted one: size and bit depth are equal, and the frequency is valid.
    bool IsValid(DisplayModeConfig const &config) const;

    /// Text of the mode: width, height and bit depth with `separator` between them.
    string MakeDesc(string const &separator) const;

private:
    unsigned int width_;
    unsigned int height_;
    unsigned int bitDepth_;
    std::vector<unsigned int> refreshFrequencies_;
};

/// Chooses the display modes that an application accepts (VideoProfile::Filter). An application derives its own.
class QUILLMARSH_API DisplayModeConfigFilter
{
public:
    virtual ~DisplayModeConfigFilter();

    /// True when the mode is to be kept. The default keeps standard resolutions that fit on the desktop, with any bit
    /// depth and frequency.
    virtual bool Filter(DisplayModeConfig const &config);

    /// @name Tests for filters
    /// @{
    /// True for at least 640 x 480 x 32 at 60 hertz.
    static bool IsSafeDisplayModeConfig(DisplayModeConfig const &config);
    /// True for 640 x 480, 800 x 600, 1024 x 768, 1280 x 1024 and 1600 x 1200.
    static bool IsStandardResolution(unsigned int width, unsigned int height);
    /// True when neither width nor height is above the desktop's. False without a display.
    static bool IsSubDesktopResolution(unsigned int width, unsigned int height);
    /// @}
};

} // namespace quillmarsh

#endif
