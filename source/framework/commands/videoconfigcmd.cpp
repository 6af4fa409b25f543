#include <quillmarsh/framework/commands/videoconfigcmd.h>

#include <quillmarsh/basetools/outputstream.h>
#include <quillmarsh/basetools/streameffectors.h>
#include <quillmarsh/framework/completion.h>
#include <quillmarsh/framework/kernel.h>
#include <quillmarsh/framework/videoconfig.h>
#include <quillmarsh/framework/videorenderer.h>
#include <quillmarsh/framework/videorendererinfo.h>

namespace quillmarsh::framework_commands
{
namespace
{

using Cmd = VideoConfigCmd;

constexpr char const *s_szRendererHeading = "Renderer-selection arguments:\n";
constexpr char const *s_szModeHeading = "Display mode/window arguments:\n";
constexpr char const *s_szFrameBufferHeading = "Frame-buffer arguments:\n";
constexpr char const *s_szHintsHeading = "Video hints:\n";
constexpr char const *s_szNotes = "Notes:\n\tReconfigure must be explicitly specified,\n"
                                  "\totherwise updated configuration is just printed.\n";
constexpr char const *s_szSeparators = ".,:;";

// Renderers

string MakeRendererName(VideoRendererInfo const &info)
{
    return info.GetPluginInfo().GetPluginName() + '/' + info.GetVideoRendererInterfaceName();
}

template<typename IsWanted>
bool FindInfo(IsWanted &&isWanted, VideoRendererInfo &info, VideoProfile &profile)
{
    Kernel &kernel = Kernel::Instance();
    unsigned int const count = kernel.GetNumVideoRenderers();
    for (unsigned int index = 0; index < count; ++index)
    {
        VideoRendererInfo candidate;
        kernel.GetVideoRendererInfo(index, candidate);
        if (!isWanted(index, candidate))
            continue;
        info = candidate;
        kernel.GetVideoRendererProfile(index, profile);
        return true;
    }
    return false;
}

/// True when a search finds a renderer.
template<auto Find>
bool IsRenderer(CommandArguments const &, string const &text)
{
    VideoRendererInfo info;
    VideoProfile profile;
    return Find(text, info, profile);
}

bool FindInfoByNumberText(string const &text, VideoRendererInfo &info, VideoProfile &profile)
{
    unsigned int number = 0;
    return command_values::IsUnsigned(text) && ToValue(text, number) && Cmd::FindInfoByNumber(number, info, profile);
}

/// Offers a text of each renderer, described by its names.
template<string (*MakeText)(unsigned int number, VideoRendererInfo const &info)>
void OfferRenderers(CommandArguments const &, CompletionOffers &offers)
{
    Kernel &kernel = Kernel::Instance();
    unsigned int const count = kernel.GetNumVideoRenderers();
    for (unsigned int index = 0; index < count; ++index)
    {
        VideoRendererInfo info;
        kernel.GetVideoRendererInfo(index, info);
        offers.Add(MakeText(index, info), MakeRendererName(info));
    }
}

string MakeNumberText(unsigned int number, VideoRendererInfo const &)
{
    return MakeString(number);
}

string MakePluginText(unsigned int, VideoRendererInfo const &info)
{
    return info.GetPluginInfo().GetPluginName();
}

string MakeInterfaceText(unsigned int, VideoRendererInfo const &info)
{
    return info.GetVideoRendererInterfaceName();
}

/// Assignment that selects a renderer, and its search. The first one of the table that the line has counts.
struct RendererSearch
{
    CommandWord word;
    bool (*find)(string const &text, VideoRendererInfo &info, VideoProfile &profile);
};

constexpr RendererSearch s_searches[] = {
    {CommandWord::Assignment(
         Cmd::s_szAssignRendererNumber, Cmd::s_szValueUInteger, "select renderer by number\n",
         {"the number of a video-renderer", &IsRenderer<&FindInfoByNumberText>, &OfferRenderers<&MakeNumberText>}),
     &FindInfoByNumberText},
    {CommandWord::Assignment(Cmd::s_szAssignRendererPlugin, Cmd::s_szValueString, "select renderer by plugin-name\n",
                             {"the plugin-name of a video-renderer", &IsRenderer<&Cmd::FindInfoByPluginName>,
                              &OfferRenderers<&MakePluginText>}),
     &Cmd::FindInfoByPluginName},
    {CommandWord::Assignment(Cmd::s_szAssignRendererInterface, Cmd::s_szValueString,
                             "select renderer by interface-name\n",
                             {"the interface-name of a video-renderer", &IsRenderer<&Cmd::FindInfoByVRInterfaceName>,
                              &OfferRenderers<&MakeInterfaceText>}),
     &Cmd::FindInfoByVRInterfaceName},
};

/// The renderer that a line is about.
struct Selection
{
    VideoRendererInfo info;
    /// The part of its profile that the application accepts.
    VideoProfile profile;
    bool isActive = false;
};

Selection SelectRenderer(CommandArguments const &arguments)
{
    Kernel &kernel = Kernel::Instance();
    VideoRendererInfo active;
    kernel.GetActiveVideoRendererInfo(active);
    Selection selection;
    for (RendererSearch const &search : s_searches)
    {
        string const *const text = arguments.FindAssignment(search.word.name);
        if (text == nullptr)
            continue;
        if (!search.find(*text, selection.info, selection.profile))
            break;
        selection.isActive = selection.info.GetPluginInfo() == active.GetPluginInfo();
        return selection;
    }
    selection.info = active;
    kernel.GetActiveVideoProfile(selection.profile);
    selection.isActive = true;
    return selection;
}

/// Profile for somebody who types a value. Empty without an active renderer: the command does nothing then.
VideoProfile FindProfile(CommandArguments const &line)
{
    bool const isActive = Kernel::Instance().GetActiveVideoRendererPtr() != nullptr;
    return isActive ? SelectRenderer(line).profile : VideoProfile();
}

// Numbers and flags

/// Assignment of a number or a flag, and the place of the value in a configuration.
template<typename T>
struct Field
{
    CommandWord word;
    T &(*get)(VideoConfig &config);
};

unsigned int &GetWidth(VideoConfig &config)
{
    return config.DisplayMode.Width;
}

unsigned int &GetHeight(VideoConfig &config)
{
    return config.DisplayMode.Height;
}

unsigned int &GetBitDepth(VideoConfig &config)
{
    return config.DisplayMode.BitDepth;
}

unsigned int &GetFrequency(VideoConfig &config)
{
    return config.DisplayMode.RefreshFrequency;
}

unsigned int &GetBackBufferCount(VideoConfig &config)
{
    return config.FrameBuffer.BackBufferCount;
}

/// Offers the values of one number in all display modes and frame buffers of the line's renderer.
template<unsigned int &(*Get)(VideoConfig &)>
void OfferNumbers(CommandArguments const &line, CompletionOffers &offers)
{
    VideoProfile const profile = FindProfile(line);
    if (profile.IsEmpty())
        return;
    VideoConfig config(false);
    config.FrameBuffer = profile.GetFrameBufferConfig(0);
    for (unsigned int i = 0; i < profile.GetNumDisplayModeProperties(); ++i)
    {
        DisplayModeProperties const &mode = profile.GetDisplayModeProperties(i);
        for (unsigned int j = 0; j < mode.GetNumRefreshFrequencies(); ++j)
        {
            config.DisplayMode = {mode.GetWidth(), mode.GetHeight(), mode.GetBitDepth(), mode.GetRefreshFrequency(j)};
            offers.Add(MakeString(Get(config)));
        }
    }
    // With the last mode, which brings no other numbers.
    for (unsigned int i = 1; i < profile.GetNumFrameBufferConfigs(); ++i)
    {
        config.FrameBuffer = profile.GetFrameBufferConfig(i);
        offers.Add(MakeString(Get(config)));
    }
}

template<unsigned int &(*Get)(VideoConfig &)>
constexpr Field<unsigned int> MakeNumber(char const *name, char const *description)
{
    CommandValue const accepted{command_values::s_uinteger.phrase, command_values::s_uinteger.accepts,
                                &OfferNumbers<Get>};
    return {CommandWord::Assignment(name, Cmd::s_szValueUInteger, description, accepted), Get};
}

constexpr Field<unsigned int> s_numbers[] = {
    MakeNumber<&GetWidth>(Cmd::s_szAssignWidth, "framebuffer width\n"),
    MakeNumber<&GetHeight>(Cmd::s_szAssignHeight, "framebuffer height\n"),
    MakeNumber<&GetBitDepth>(Cmd::s_szAssignBitDepth, "bits-per-pixel\n"),
    MakeNumber<&GetFrequency>(Cmd::s_szAssignFrequency, "refresh frequency\n"),
    MakeNumber<&GetBackBufferCount>(Cmd::s_szAssignBackBufferCount, "number of back-buffers\n"),
};

constexpr CommandWord MakeFlag(char const *name, char const *description)
{
    return CommandWord::Assignment(name, Cmd::s_szValueBoolean, description, command_values::s_boolean);
}

using Config = VideoConfig;

constexpr Field<bool> s_flags[] = {
    {MakeFlag(Cmd::s_szAssignResizable, "window resizable\n"),
     [](Config &config) -> bool & { return config.Resizable; }},
    {MakeFlag(Cmd::s_szAssignFullscreen, "fullscreen mode\n"),
     [](Config &config) -> bool & { return config.FrameBuffer.Fullscreen; }},
    {MakeFlag(Cmd::s_szAssignHardware, "use hardware rasterizer\n"),
     [](Config &config) -> bool & { return config.FrameBuffer.HardwareRasterizer; }},
    {MakeFlag(Cmd::s_szAssignVSync, "enable vertical-synchronization\n"),
     [](Config &config) -> bool & { return config.Hints.VSync; }},
    {MakeFlag(Cmd::s_szAssignDestinationAlpha, "enable fullscreen destination-alpha\n"),
     [](Config &config) -> bool & { return config.Hints.FullscreenDestinationAlpha; }},
    {MakeFlag(Cmd::s_szAssignPureDevice, "enable pure-device mode\n"),
     [](Config &config) -> bool & { return config.Hints.PureDeviceMode; }},
};

/// Assignment of several bit counts, and their places in a configuration.
struct Layout
{
    CommandWord word;
    std::vector<unsigned int FrameBufferConfig::*> (*getFields)();
};

template<char const *const &Name, unsigned int Count>
bool IsLayout(CommandArguments const &line, string const &)
{
    std::vector<unsigned int> values;
    return Cmd::ExtractUIntegers(line.GetParser(), Name, Count, values);
}

/// Offers the layouts of one buffer in all frame buffers of the line's renderer.
template<string (FrameBufferConfig::*MakeDesc)(string const &) const>
void OfferLayouts(CommandArguments const &line, CompletionOffers &offers)
{
    VideoProfile const profile = FindProfile(line);
    for (unsigned int i = 0; i < profile.GetNumFrameBufferConfigs(); ++i)
        offers.Add((profile.GetFrameBufferConfig(i).*MakeDesc)("."));
}

constexpr char const *s_szRGBAPhrase = "one bit-count for all, or four of the form R.G.B.A";

constexpr Layout s_layouts[] = {
    {CommandWord::Assignment(Cmd::s_szAssignBackBuffer, Cmd::s_szValueRGBA, "back-buffer layout (bit-counts)\n",
                             {s_szRGBAPhrase, &IsLayout<Cmd::s_szAssignBackBuffer, 4>,
                              &OfferLayouts<&FrameBufferConfig::MakeBackBufferDesc>}),
     []() -> std::vector<unsigned int FrameBufferConfig::*>
     {
         return {&FrameBufferConfig::RedBits, &FrameBufferConfig::GreenBits, &FrameBufferConfig::BlueBits,
                 &FrameBufferConfig::AlphaBits};
     }},
    {CommandWord::Assignment(
         Cmd::s_szAssignDepthStencil, Cmd::s_szValueDS, "depth-stencil-buffer layout (bit-counts)\n",
         {"one bit-count for both, or two of the form D.S", &IsLayout<Cmd::s_szAssignDepthStencil, 2>,
          &OfferLayouts<&FrameBufferConfig::MakeDepthStencilDesc>}),
     []() -> std::vector<unsigned int FrameBufferConfig::*> {
         return {&FrameBufferConfig::DepthBits, &FrameBufferConfig::StencilBits};
     }},
    {CommandWord::Assignment(Cmd::s_szAssignAccumulation, Cmd::s_szValueRGBA,
                             "accumulation-buffer layout (bit-counts)\n",
                             {s_szRGBAPhrase, &IsLayout<Cmd::s_szAssignAccumulation, 4>,
                              &OfferLayouts<&FrameBufferConfig::MakeAccumulationDesc>}),
     []() -> std::vector<unsigned int FrameBufferConfig::*>
     {
         return {&FrameBufferConfig::AccumulationRedBits, &FrameBufferConfig::AccumulationGreenBits,
                 &FrameBufferConfig::AccumulationBlueBits, &FrameBufferConfig::AccumulationAlphaBits};
     }},
};

struct NamedMode
{
    char const *name;
    eVertexProcessingMode mode;
};

constexpr NamedMode s_modes[] = {{"hw", e_vertex_processing_hardware},
                                 {"sw", e_vertex_processing_software},
                                 {"mix", e_vertex_processing_mixed},
                                 {"def", e_vertex_processing_default}};

NamedMode const *FindMode(string const &name)
{
    for (NamedMode const &mode : s_modes)
    {
        if (name == mode.name)
            return &mode;
    }
    return nullptr;
}

constexpr CommandValue s_mode{"one of hw, sw, mix and def",
                              [](CommandArguments const &, string const &text) { return FindMode(text) != nullptr; },
                              [](CommandArguments const &, CompletionOffers &offers)
                              {
                                  for (NamedMode const &mode : s_modes)
                                      offers.Add(mode.name, VideoHints::FormatVertexProcessingMode(mode.mode));
                              }};

constexpr CommandWord s_words[] = {
    CommandWord::Option(Cmd::s_szOptionUnfilteredProfile, "show unfiltered video-profile\n"),
    CommandWord::Option(Cmd::s_szOptionReconfigure, "reconfigure video-subsystem\n"),
    CommandWord::Option(Cmd::s_szOptionNoCheck, "do not check video-profile\n"),
    CommandWord::Option(Cmd::s_szOptionNoAuto, "do not auto-select closest frame-buffer-configuration\n"),
    CommandWord::Option(Cmd::s_szOptionListRenderers, "list renderers\n"),
    CommandWord::Option(Cmd::s_szOptionListFrameBuffers, "list frame-buffer-configurations\n"),
    CommandWord::Option(Cmd::s_szOptionListDisplayModes, "list display-modes\n"),
    CommandWord::Option(Cmd::s_szOptionLegend, "include legend in lists (where applicable)\n"),
    s_searches[0].word.Under(s_szRendererHeading),
    s_searches[1].word.Under(s_szRendererHeading),
    s_searches[2].word.Under(s_szRendererHeading),
    s_numbers[0].word.Under(s_szModeHeading),
    s_numbers[1].word.Under(s_szModeHeading),
    s_numbers[2].word.Under(s_szModeHeading),
    s_numbers[3].word.Under(s_szModeHeading),
    s_flags[0].word.Under(s_szModeHeading),
    s_flags[1].word.Under(s_szModeHeading),
    s_flags[2].word.Under(s_szFrameBufferHeading),
    s_numbers[4].word.Under(s_szFrameBufferHeading),
    s_layouts[0].word.Under(s_szFrameBufferHeading),
    s_layouts[1].word.Under(s_szFrameBufferHeading),
    s_layouts[2].word.Under(s_szFrameBufferHeading),
    s_flags[3].word.Under(s_szHintsHeading),
    s_flags[4].word.Under(s_szHintsHeading),
    s_flags[5].word.Under(s_szHintsHeading),
    CommandWord::Assignment(Cmd::s_szAssignVertexProcessing, Cmd::s_szValueVertexProcessing,
                            "vertex-processing-mode (hardware/software/mixed/default)\n", s_mode)
        .Under(s_szHintsHeading),
};

// Steps of the command

void DumpVRHeader(ostream &out, VideoRendererInfo const &info)
{
    out << "Video-renderer: " << MakeRendererName(info) << nl;
}

void ListRenderers(ostream &out)
{
    Kernel &kernel = Kernel::Instance();
    VideoRendererInfo active;
    kernel.GetActiveVideoRendererInfo(active);
    out << "Available video-renderers:\n";
    out << "(Number/PluginName/VideoRendererInterfaceName)\n";
    unsigned int const count = kernel.GetNumVideoRenderers();
    for (unsigned int index = 0; index < count; ++index)
    {
        VideoRendererInfo info;
        kernel.GetVideoRendererInfo(index, info);
        bool const isActive = info.GetPluginInfo() == active.GetPluginInfo();
        out << MakeString(index) << '/' << MakeRendererName(info) << (isActive ? " (active)" : "") << nl;
    }
}

/// Prints the lists that the line asks for. Returns false when it asks for none.
bool ListProfile(ostream &out, CommandArguments const &arguments, Selection const &selection)
{
    bool const listsFrameBuffers = arguments.HasOption(Cmd::s_szOptionListFrameBuffers);
    bool const listsDisplayModes = arguments.HasOption(Cmd::s_szOptionListDisplayModes);
    if (!listsFrameBuffers && !listsDisplayModes)
        return false;
    bool const isUnfiltered = arguments.HasOption(Cmd::s_szOptionUnfilteredProfile);
    VideoProfile const &profile = isUnfiltered ? selection.info.GetVideoProfile() : selection.profile;
    out << (isUnfiltered ? "Unfiltered profile:\n" : "Application-filtered profile:\n");
    DumpVRHeader(out, selection.info);
    if (listsFrameBuffers)
    {
        out << "FrameBufferConfigurations:\n";
        profile.DumpFrameBufferConfigs(out, arguments.HasOption(Cmd::s_szOptionLegend), 0);
    }
    if (listsDisplayModes)
    {
        out << "DisplayModes:\n";
        profile.DumpDisplayModeProperties(out, 0);
    }
    return true;
}

void UpdateConfig(CommandArguments const &arguments, VideoConfig &config)
{
    for (Field<unsigned int> const &number : s_numbers)
    {
        string const *const text = arguments.FindAssignment(number.word.name);
        if (text != nullptr && command_values::IsUnsigned(*text))
            ToValue(*text, number.get(config));
    }
    for (Field<bool> const &flag : s_flags)
        arguments.ReadAssignment(flag.word.name, flag.get(config));
    for (Layout const &layout : s_layouts)
    {
        auto const fields = layout.getFields();
        std::vector<unsigned int> values;
        if (!Cmd::ExtractUIntegers(arguments.GetParser(), layout.word.name, static_cast<unsigned int>(fields.size()),
                                   values))
            continue;
        for (std::size_t i = 0; i < fields.size(); ++i)
            config.FrameBuffer.*fields[i] = values[i];
    }
    string const *const modeName = arguments.FindAssignment(Cmd::s_szAssignVertexProcessing);
    if (NamedMode const *const mode = modeName != nullptr ? FindMode(*modeName) : nullptr)
        config.Hints.VertexProcessingMode = mode->mode;
}

/// Completes a changed configuration. Returns false, and tells why, when the renderer does not offer it.
bool Check(ostream &out, CommandArguments const &arguments, Selection const &selection, VideoConfig &config)
{
    if (!arguments.HasOption(Cmd::s_szOptionNoAuto))
    {
        FrameBufferConfig const *const closest = selection.profile.SelectClosestFrameBufferConfig(config.FrameBuffer);
        if (closest != nullptr)
            config.FrameBuffer = *closest;
    }
    if (arguments.HasOption(Cmd::s_szOptionNoCheck) || selection.profile.IsValid(config))
        return true;
    DumpVRHeader(out, selection.info);
    config.Dump(out, 1);
    out << e_error << "Updated video-configuration is invalid." << nl << selection.profile.DescribeMismatch(config)
        << e_info;
    return false;
}

} // namespace

VideoConfigCmd::VideoConfigCmd(unsigned int videoReconfigCode) : videoReconfigCode_(videoReconfigCode)
{
    SetDefaultName(s_szDefaultName);
    SetShortDesc("Configure video-subsystem");
}

VideoConfigCmd::~VideoConfigCmd() = default;

bool VideoConfigCmd::ParseAndExecute(ostream &out, CommandLineParser const &parser, string const &)
{
    CommandArguments const arguments(*this, parser, s_words);
    VideoRenderer const *const active = Kernel::Instance().GetActiveVideoRendererPtr();
    if (active == nullptr)
    {
        out << e_error << "Cannot find active renderer.\n" << e_info;
        return false;
    }
    if (arguments.HasOption(s_szOptionListRenderers))
        ListRenderers(out);
    Selection const selection = SelectRenderer(arguments);
    if (ListProfile(out, arguments, selection))
        return true;

    VideoConfig config = active->GetVideoConfig();
    UpdateConfig(arguments, config);
    bool const isChanged = !selection.isActive || !(config == active->GetVideoConfig());
    if (isChanged && !Check(out, arguments, selection, config))
        return false;
    if (arguments.HasOption(s_szOptionReconfigure))
    {
        Kernel::Instance().ApplyVideoReconfig(selection.info.GetPluginInfo().GetPluginName(), config,
                                              videoReconfigCode_);
        return true;
    }
    DumpVRHeader(out, selection.info);
    config.Dump(out, 1);
    return true;
}

bool VideoConfigCmd::FindInfoByNumber(unsigned int number, VideoRendererInfo &info, VideoProfile &profile)
{
    return FindInfo([number](unsigned int index, VideoRendererInfo const &) { return index == number; }, info, profile);
}

bool VideoConfigCmd::FindInfoByPluginName(string const &name, VideoRendererInfo &info, VideoProfile &profile)
{
    return FindInfo([&name](unsigned int, VideoRendererInfo const &candidate)
                    { return candidate.GetPluginInfo().GetPluginName() == name; },
                    info, profile);
}

bool VideoConfigCmd::FindInfoByVRInterfaceName(string const &name, VideoRendererInfo &info, VideoProfile &profile)
{
    return FindInfo([&name](unsigned int, VideoRendererInfo const &candidate)
                    { return candidate.GetVideoRendererInterfaceName() == name; },
                    info, profile);
}

bool VideoConfigCmd::ExtractUIntegers(CommandLineParser const &parser, string const &name, unsigned int count,
                                      std::vector<unsigned int> &values)
{
    string text;
    std::vector<unsigned int> numbers;
    // A minus would wrap around to a large number.
    if (!parser.GetAssignment(name, text) || text.find('-') != string::npos ||
        !parser.ExtractPackedUIntegers(name, numbers, s_szSeparators))
        return false;
    if (numbers.size() == 1)
        numbers.resize(count, numbers.front());
    if (numbers.size() != count)
        return false;
    values = std::move(numbers);
    return true;
}

bool VideoConfigCmd::ExtractRGBA(CommandLineParser const &parser, string const &name, std::vector<unsigned int> &values)
{
    return ExtractUIntegers(parser, name, 4, values);
}

void VideoConfigCmd::DumpHelp(ostream &out, CommandLineParser const &parser)
{
    DumpCommandWords(out, parser, s_words, "print parameters");
    out << s_szNotes;
}

std::span<CommandWord const> VideoConfigCmd::GetWords() const
{
    return s_words;
}

} // namespace quillmarsh::framework_commands
