// What a video renderer can do on this machine.
#ifndef QUILLMARSH_FRAMEWORK_VIDEOPROFILE_H
#define QUILLMARSH_FRAMEWORK_VIDEOPROFILE_H

#include <quillmarsh/basetools/windows/winutils.h>
#include <quillmarsh/framework/displaymode.h>
#include <quillmarsh/framework/framebufferconfig.h>

#include <vector>

namespace quillmarsh
{

class VideoConfig;

/// What a video renderer can do on this machine: its driver, display modes and frame-buffer configurations. A copyable
/// value without a lock.
///
/// A video subsystem fills a profile, an application takes from it what it accepts, and the closest valid configuration
/// to a wish comes from the rest:
/// \code
/// VideoRendererInfo info;
/// Kernel::Instance().GetVideoRendererInfo(0, info);
/// DisplayModeConfigFilter modeFilter;
/// FrameBufferConfigFilter frameBufferFilter;
/// VideoProfile accepted;
/// info.GetVideoProfile().Filter(accepted, modeFilter, frameBufferFilter);
/// VideoConfig config(true);
/// if (accepted.ConstructClosestValidVideoConfig(config, config))
///     Kernel::Instance().ApplyVideoReconfig(info.GetPluginInfo().GetPluginName(), config, 0);
/// \endcode
class QUILLMARSH_API VideoProfile
{
public:
    /// Empty texts and lists, and an identifier of zeros.
    VideoProfile() = default;

    /// @name Filling
    /// @{

    /// Sets description, version and identifier of the driver.
    void SetDriverInfo(string const &description, string const &version, win_utils::Guid const &guid);
    /// Adds a display mode: its refresh frequency goes to the mode of the same size and bit depth, which is appended if
    /// there is none. A frequency that is listed there is ignored.
    void Add(DisplayModeConfig const &config);
    /// Appends a frame-buffer configuration unless there is an equal one.
    void Add(FrameBufferConfig const &config);
    /// Sorts the refresh frequencies of every mode. Call it when everything has been added.
    void BuildPostProcess();
    /// Empties texts and lists, and sets an identifier of zeros.
    void Clear();
    /// @}

    /// @name Contents
    /// @{
    string const &GetDriverDescription() const { return driverDescription_; }
    string const &GetDriverVersion() const { return driverVersion_; }
    win_utils::Guid const &GetDriverGuid() const { return driverGuid_; }
    unsigned int GetNumDisplayModeProperties() const { return static_cast<unsigned int>(displayModes_.size()); }
    /// Display mode by index. Asserts "Index out of range" past the end, and gives a mode of zeros then.
    DisplayModeProperties const &GetDisplayModeProperties(unsigned int index) const;
    unsigned int GetNumFrameBufferConfigs() const { return static_cast<unsigned int>(frameBufferConfigs_.size()); }
    /// Frame-buffer configuration by index. Asserts likewise, and gives one without any buffer then.
    FrameBufferConfig const &GetFrameBufferConfig(unsigned int index) const;
    /// True without display modes, and without frame-buffer configurations: no configuration is valid then.
    bool IsEmpty() const { return displayModes_.empty() || frameBufferConfigs_.empty(); }
    /// @}

    /// @name Tests
    /// True when the profile offers exactly this.
    /// @{
    bool IsValid(DisplayModeConfig const &config) const;
    bool IsValid(FrameBufferConfig const &config) const;
    /// A windowed configuration is valid with any display mode.
    bool IsValid(VideoConfig const &config) const;
    /// Tells why a configuration is not valid: a line for each wish that is not offered, with the offers, each with a
    /// line end. Empty for a valid configuration.
    string DescribeMismatch(VideoConfig const &config) const;
    /// @}

    /// @name Choice
    /// @{

    /// Replaces `out` by a profile of the same driver with what both filters keep. A mode without refresh frequencies
    /// is not kept. `out` may be this profile.
    void Filter(VideoProfile &out, DisplayModeConfigFilter &modeFilter,
                FrameBufferConfigFilter &frameBufferFilter) const;
    /// The display mode that comes closest to the wish in bit depth, then from below in width, then in height. A mode
    /// of lower bit depth, or larger than the wish, is taken only when nothing else is left. Null when nothing fits.
    /// Good until the profile changes.
    DisplayModeProperties const *SelectClosestLowerDisplayModeProperties(DisplayModeConfig const &wish) const;
    /// The frame-buffer configuration that comes closest to the wish. Fullscreen and rasterizer weigh most, then the
    /// bits of the back buffer, of stencil and of depth; accumulation buffer and number of back buffers decide between
    /// equals. Null only when the profile has none. Good until the profile changes.
    FrameBufferConfig const *SelectClosestFrameBufferConfig(FrameBufferConfig const &wish) const;
    /// Makes the closest valid configuration to a wish, with both selections. Window and hints come through unchanged.
    /// Returns false when there is none; do not use `out` then. `out` may be `wish`.
    bool ConstructClosestValidVideoConfig(VideoConfig const &wish, VideoConfig &out) const;
    /// @}

    /// @name Dumps
    /// @{

    /// Prints the three lines of the driver behind `tabs` tabs.
    void DumpGeneralInfo(ostream &out, unsigned int tabs) const;
    /// Prints a line for each display mode with its refresh frequencies behind `tabs` tabs, and flushes.
    void DumpDisplayModeProperties(ostream &out, unsigned int tabs) const;
    /// Prints a table of the frame-buffer configurations behind `tabs` tabs, with `legend` also what its columns mean.
    void DumpFrameBufferConfigs(ostream &out, bool legend, unsigned int tabs) const;
    /// Prints the whole profile with titles.
    void Dump(ostream &out) const;
    /// @}

private:
    DisplayModeProperties *Find(DisplayModeConfig const &config);

    string driverDescription_;
    string driverVersion_;
    win_utils::Guid driverGuid_;
    std::vector<DisplayModeProperties> displayModes_;
    std::vector<FrameBufferConfig> frameBufferConfigs_;
};

} // namespace quillmarsh

#endif
