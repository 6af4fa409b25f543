// Console command that shows and changes the configuration of the video stack.
#ifndef QUILLMARSH_FRAMEWORK_COMMANDS_VIDEOCONFIGCMD_H
#define QUILLMARSH_FRAMEWORK_COMMANDS_VIDEOCONFIGCMD_H

#include <quillmarsh/framework/commandtable.h>

#include <vector>

namespace quillmarsh
{
class VideoProfile;
class VideoRendererInfo;
} // namespace quillmarsh

namespace quillmarsh::framework_commands
{

/// "video-config": prints the configuration in force with the changes that the line asks for, or has the video stack
/// built again with it. Lists renderers and what they offer.
///
/// A renderer is printed as "PluginName/InterfaceName", in the list with its number ahead, and " (active)" behind the
/// one in use. A changed configuration gets the closest frame buffer that the renderer offers. If the renderer does not
/// offer the configuration after that, the command tells which wishes failed against which offers, and returns false.
/// Console's thread.
class QUILLMARSH_API VideoConfigCmd : public Command, public CommandVocabulary
{
public:
    /// @name Words
    /// @{
    static constexpr char const *s_szDefaultName = "video-config";
    static constexpr char const *s_szOptionUnfilteredProfile = "uprofile";
    static constexpr char const *s_szOptionReconfigure = "r";
    static constexpr char const *s_szOptionNoCheck = "nocheck";
    static constexpr char const *s_szOptionNoAuto = "noauto";
    static constexpr char const *s_szOptionListRenderers = "lrend";
    static constexpr char const *s_szOptionListFrameBuffers = "lfbc";
    static constexpr char const *s_szOptionListDisplayModes = "ldm";
    static constexpr char const *s_szOptionLegend = "legend";
    static constexpr char const *s_szAssignRendererNumber = "rn";
    static constexpr char const *s_szAssignRendererPlugin = "rp";
    static constexpr char const *s_szAssignRendererInterface = "ri";
    static constexpr char const *s_szAssignWidth = "w";
    static constexpr char const *s_szAssignHeight = "h";
    static constexpr char const *s_szAssignBitDepth = "bpp";
    static constexpr char const *s_szAssignFrequency = "freq";
    static constexpr char const *s_szAssignResizable = "rsz";
    static constexpr char const *s_szAssignFullscreen = "fs";
    static constexpr char const *s_szAssignHardware = "hwr";
    static constexpr char const *s_szAssignBackBufferCount = "bbc";
    static constexpr char const *s_szAssignBackBuffer = "bb";
    static constexpr char const *s_szAssignDepthStencil = "ds";
    static constexpr char const *s_szAssignAccumulation = "acc";
    static constexpr char const *s_szAssignVSync = "vsync";
    static constexpr char const *s_szAssignDestinationAlpha = "fsda";
    static constexpr char const *s_szAssignPureDevice = "pure";
    static constexpr char const *s_szAssignVertexProcessing = "vpm";
    static constexpr char const *s_szValueUInteger = "uinteger";
    static constexpr char const *s_szValueBoolean = "boolean";
    static constexpr char const *s_szValueString = "string";
    static constexpr char const *s_szValueRGBA = "R.G.B.A";
    static constexpr char const *s_szValueDS = "D.S";
    static constexpr char const *s_szValueVertexProcessing = "hw/sw/mix/def";
    /// @}

    /// The code goes along with each reconfiguration that the command requests; see Kernel::ApplyVideoReconfig().
    explicit VideoConfigCmd(unsigned int videoReconfigCode);
    ~VideoConfigCmd() override;

    /// Replaces the code of the constructor.
    void SetVideoReconfigCode(unsigned int code) { videoReconfigCode_ = code; }

    bool ParseAndExecute(ostream &out, CommandLineParser const &parser, string const &commandLine) override;
    void DumpHelp(ostream &out, CommandLineParser const &parser) override;
    std::span<CommandWord const> GetWords() const override;

    /// @name Search for a renderer
    /// Each gives the kernel's first renderer of that kind, with the part of its profile that the application accepts.
    /// Returns false, and leaves the outputs alone, when there is none.
    /// @{
    static bool FindInfoByNumber(unsigned int number, VideoRendererInfo &info, VideoProfile &profile);
    static bool FindInfoByPluginName(string const &name, VideoRendererInfo &info, VideoProfile &profile);
    static bool FindInfoByVRInterfaceName(string const &name, VideoRendererInfo &info, VideoProfile &profile);
    /// @}

    /// @name Bit counts
    /// Reads an assignment of `count` numbers, or of four, with ".,:;" between them; one number stands for all. Returns
    /// false, and leaves `values` alone, when there is none, or its text is anything else.
    /// @{
    static bool ExtractUIntegers(CommandLineParser const &parser, string const &name, unsigned int count,
                                 std::vector<unsigned int> &values);
    static bool ExtractRGBA(CommandLineParser const &parser, string const &name, std::vector<unsigned int> &values);
    /// @}

private:
    unsigned int videoReconfigCode_;
};

} // namespace quillmarsh::framework_commands

#endif
