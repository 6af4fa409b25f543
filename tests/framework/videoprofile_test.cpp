#include "tests/support/null_video.h"
#include "tests/support/scripted_dialogs.h"

#include <quillmarsh/basetools/platforminfo.h>
#include <quillmarsh/framework/videoconfig.h>

#include <gtest/gtest.h>

#include <functional>

namespace quillmarsh
{
namespace
{

using tests::DumpText;
using tests::ScriptedDialogs;

/// Profile with these modes, and one usual frame buffer.
VideoProfile MakeProfile(std::initializer_list<DisplayModeConfig> modes)
{
    VideoProfile profile;
    for (DisplayModeConfig const &mode : modes)
        profile.Add(mode);
    profile.Add(FrameBufferConfig(false, true, 1, 24, 8, 0));
    return profile;
}

/// Profile with frame buffers that differ from 8.8.8.8 / 24.8 / 0.0.0.0 by these changes.
using Change = std::function<void(FrameBufferConfig &)>;
VideoProfile MakeFrameBuffers(std::initializer_list<Change> changes)
{
    VideoProfile profile;
    for (Change const &change : changes)
    {
        FrameBufferConfig config(false, true, 1, 24, 8, 0);
        change(config);
        profile.Add(config);
    }
    return profile;
}

string DescribeChoice(VideoProfile const &profile, DisplayModeConfig const &wish)
{
    DisplayModeProperties const *const mode = profile.SelectClosestLowerDisplayModeProperties(wish);
    return mode != nullptr ? mode->MakeDesc("x") : "none";
}

TEST(DisplayModeProperties, ChoosesRefreshFrequenciesUpward)
{
    using Row = std::tuple<std::vector<unsigned int>, unsigned int, unsigned int>;
    for (auto const &[frequencies, wanted, chosen] :
         {Row{{60, 70, 85}, 75, 85}, Row{{60, 75}, 75, 75}, Row{{60, 70}, 75, 0}, Row{{85, 60, 70}, 0, 60},
          Row{{100, 85}, 75, 85}, Row{{}, 60, 0}, Row{{0, 60}, 0, 0}})
    {
        DisplayModeProperties mode(640, 480, 32);
        for (unsigned int const frequency : frequencies)
            mode.AddRefreshFrequency(frequency);
        EXPECT_EQ(chosen, mode.GetClosestLowerRefreshFrequency(wanted)) << wanted;
    }
}

TEST(DisplayModeProperties, HoldsFrequencies)
{
    DisplayModeProperties mode(640, 480, 32);
    auto const ends = [&mode]
    { return std::pair(mode.GetLowestRefreshFrequency(), mode.GetHighestRefreshFrequency()); };
    EXPECT_EQ(std::pair(0u, 0u), ends());
    for (unsigned int const frequency : {75u, 60u, 75u, 100u, 60u})
        mode.AddRefreshFrequency(frequency);
    ASSERT_EQ(3u, mode.GetNumRefreshFrequencies());
    EXPECT_EQ(std::pair(60u, 100u), ends());
    mode.SortRefreshFrequencies();
    EXPECT_EQ(std::pair(60u, 100u), std::pair(mode.GetRefreshFrequency(0), mode.GetRefreshFrequency(2)));

    EXPECT_TRUE(mode.IsValid({640, 480, 32, 75}) && mode.IsValid({640, 480, 32, 0}));
    EXPECT_FALSE(mode.IsValid({640, 480, 32, 70}) || mode.IsValid({640, 480, 16, 75}));
}

TEST(VideoProfile, AssertsOnBadIndices)
{
    VideoProfile const profile = MakeProfile({{640, 480, 32, 60}});
    DisplayModeProperties const &mode = profile.GetDisplayModeProperties(0);
    for (std::function<void()> const &action :
         std::initializer_list<std::function<void()>>{
             [&] { EXPECT_EQ(0u, mode.GetRefreshFrequency(1)); },
             [&] { EXPECT_EQ(0u, profile.GetDisplayModeProperties(1).GetWidth()); },
             [&] { EXPECT_EQ(0u, profile.GetFrameBufferConfig(1).BackBufferCount); }})
    {
        ScriptedDialogs dialogs(platform::eDialogAnswer::e_retry);
        action();
        std::vector<platform::DialogRequest> const requests = dialogs.TakeRequests();
        ASSERT_EQ(1u, requests.size());
        EXPECT_NE(string::npos, requests[0].text.find("Index out of range"));
        EXPECT_NE(string::npos, requests[0].text.find("source/framework/videoproperties.cpp")) << requests[0].text;
    }
}

TEST(VideoProfile, KeepsEachModeAndFrameBufferOnce)
{
    VideoProfile profile = MakeProfile(
        {{800, 600, 32, 75}, {640, 480, 32, 60}, {800, 600, 32, 60}, {800, 600, 32, 75}, {800, 600, 16, 75}});
    profile.Add(profile.GetFrameBufferConfig(0));
    EXPECT_EQ(1u, profile.GetNumFrameBufferConfigs());
    ASSERT_EQ(3u, profile.GetNumDisplayModeProperties());
    EXPECT_EQ(75u, profile.GetDisplayModeProperties(0).GetRefreshFrequency(0));
    profile.BuildPostProcess();
    EXPECT_EQ(2u, profile.GetDisplayModeProperties(0).GetNumRefreshFrequencies());
    EXPECT_EQ(60u, profile.GetDisplayModeProperties(0).GetRefreshFrequency(0));
    EXPECT_EQ(16u, profile.GetDisplayModeProperties(2).GetBitDepth());

    EXPECT_FALSE(profile.IsEmpty());
    profile.SetDriverInfo("driver", "1.0", win_utils::Guid(UID(1, 2, 3, 4)));
    profile.Clear();
    EXPECT_TRUE(profile.IsEmpty());
    EXPECT_EQ("", profile.GetDriverDescription() + profile.GetDriverVersion());
    EXPECT_EQ(win_utils::Guid(), profile.GetDriverGuid());
    // Modes alone are not enough.
    profile.Add(DisplayModeConfig(640, 480, 32, 60));
    EXPECT_TRUE(profile.IsEmpty());
}

TEST(VideoProfile, TestsConfigurations)
{
    VideoProfile profile = MakeProfile({{640, 480, 32, 60}});
    profile.Add(FrameBufferConfig(true, true, 1, 24, 8, 0));
    VideoConfig config(false);
    config.DisplayMode = {123, 45, 7, 89};
    EXPECT_TRUE(profile.IsValid(config));
    config.FrameBuffer.Fullscreen = true;
    EXPECT_FALSE(profile.IsValid(config));
    config.DisplayMode = {640, 480, 32, 0};
    EXPECT_TRUE(profile.IsValid(config));
    config.FrameBuffer.StencilBits = 0;
    EXPECT_FALSE(profile.IsValid(config));
}

TEST(VideoProfile, SelectsModesWithWrappedDistances)
{
    DisplayModeConfig const wish(800, 600, 32, 0);
    std::tuple<VideoProfile, DisplayModeConfig, char const *> const rows[] = {
        {MakeProfile({}), wish, "none"},
        {MakeProfile({{1024, 768, 32, 60}, {640, 480, 32, 60}}), wish, "640x480x32"},
        {MakeProfile({{1024, 768, 32, 60}}), wish, "1024x768x32"},
        // The first loses 16,000,000 of the range, the second 224,168.
        {MakeProfile({{1024, 768, 32, 60}, {800, 600, 16, 60}}), wish, "800x600x16"},
        // Fewer bits and larger at once is no choice at all.
        {MakeProfile({{1024, 600, 16, 60}}), wish, "none"},
        {MakeProfile({{640, 768, 16, 60}}), wish, "none"},
        // Width decides before height, and a wider mode of equal height is far.
        {MakeProfile({{640, 600, 32, 60}, {720, 400, 32, 60}, {801, 600, 32, 60}}), wish, "720x400x32"},
        {MakeProfile({{640, 480, 32, 60}, {800, 600, 32, 60}}), wish, "800x600x32"},
        // More bits than wished weigh more than any size below.
        {MakeProfile({{800, 600, 32, 60}, {320, 200, 16, 60}}), {800, 600, 16, 0}, "320x200x16"},
        // One line too many has the largest distance that there is, which is not below the start of the search.
        {MakeProfile({{800, 601, 32, 60}}), wish, "none"},
        {MakeProfile({{800, 602, 32, 60}}), wish, "800x602x32"},
        // A difference of one in width equals one of a thousand in height: the earlier mode stays.
        {MakeProfile({{799, 2000, 32, 0}, {800, 1000, 32, 0}}), {800, 2000, 32, 0}, "799x2000x32"},
        {MakeProfile({{800, 1000, 32, 0}, {799, 2000, 32, 0}}), {800, 2000, 32, 0}, "800x1000x32"},
    };
    for (auto const &[offers, wished, chosen] : rows)
        EXPECT_EQ(chosen, DescribeChoice(offers, wished));
}

TEST(VideoProfile, SelectsFrameBuffersByWeight)
{
    FrameBufferConfig const wish(false, true, 1, 24, 8, 0);
    EXPECT_EQ(nullptr, VideoProfile().SelectClosestFrameBufferConfig(wish));

    // In each row, the second offer costs less by one step of the lightest unit; it wins wherever it stands.
    std::pair<Change, Change> const rows[] = {
        {[](auto &c) { c.StencilBits = 0; }, [](auto &c) { c.DepthBits = 24 + 799; }},
        {[](auto &c) { c.RedBits = 7; }, [](auto &c) { c.StencilBits = 8 + 99; }},
        {[](auto &c) { c.Fullscreen = true; }, [](auto &c) { c.GreenBits = 8 + 99; }},
        {[](auto &c) { c.HardwareRasterizer = false; }, [](auto &c) { c.BlueBits = 8 + 99; }},
        {[](auto &c) { c.Fullscreen = true; }, [](auto &c) { c.AlphaBits = 107; }},
        // Accumulation and back buffers count only among equals.
        {[](auto &c) { c.DepthBits = 25; },
         [](auto &c)
         {
             c.AccumulationRedBits = 0xffffffff;
             c.BackBufferCount = 9;
         }},
        {[](auto &c) { c.AccumulationAlphaBits = 1; }, [](auto &c) { c.BackBufferCount = 10; }},
        {[](auto &c) { c.AccumulationGreenBits = c.AccumulationBlueBits = 1; },
         [](auto &c) { c.AccumulationBlueBits = 1; }},
        // Scores of absurd layouts do not wrap around.
        {[](auto &c) { c.RedBits = c.GreenBits = 0xffffffff; }, [](auto &c) { c.RedBits = 0xffffffff; }},
    };
    for (auto const &[far, near] : rows)
    {
        FrameBufferConfig wanted = wish;
        near(wanted);
        SCOPED_TRACE(DumpText(wanted, 0));
        EXPECT_EQ(wanted, *MakeFrameBuffers({far, near}).SelectClosestFrameBufferConfig(wish));
        EXPECT_EQ(wanted, *MakeFrameBuffers({near, far}).SelectClosestFrameBufferConfig(wish));
    }

    // Between equals the first one wins: 100 bits of depth are as heavy as one of stencil.
    Change const depth = [](auto &c) { c.DepthBits = 124; };
    Change const stencil = [](auto &c) { c.StencilBits = 9; };
    EXPECT_EQ(124u, MakeFrameBuffers({depth, stencil}).SelectClosestFrameBufferConfig(wish)->DepthBits);
    EXPECT_EQ(9u, MakeFrameBuffers({stencil, depth}).SelectClosestFrameBufferConfig(wish)->StencilBits);
}

TEST(VideoProfile, ConstructsTheClosestConfiguration)
{
    VideoConfig wish(true);
    wish.DisplayMode = {800, 600, 32, 75};
    wish.FrameBuffer = FrameBufferConfig(true, true, 2, 32, 8, 8);
    wish.Hints = VideoHints(false, true, false, e_vertex_processing_mixed);

    VideoConfig out(false);
    EXPECT_FALSE(VideoProfile().ConstructClosestValidVideoConfig(wish, out));
    EXPECT_EQ(wish, out);

    VideoProfile const profile = MakeProfile({{640, 480, 32, 60}, {640, 480, 32, 85}});
    VideoConfig expected = wish;
    expected.DisplayMode = {640, 480, 32, 85};
    expected.FrameBuffer = FrameBufferConfig(false, true, 1, 24, 8, 0);
    EXPECT_TRUE(profile.ConstructClosestValidVideoConfig(wish, out));
    EXPECT_EQ(expected, out);
    // Wish and result may be the same object.
    out = wish;
    EXPECT_TRUE(profile.ConstructClosestValidVideoConfig(out, out));
    EXPECT_EQ(expected, out);
}

TEST(VideoProfile, FiltersModesByFrequency)
{
    struct From70Hertz : DisplayModeConfigFilter
    {
        bool Filter(DisplayModeConfig const &config) override { return config.RefreshFrequency >= 70; }
    } modes;
    struct WithStencil : FrameBufferConfigFilter
    {
        bool Filter(FrameBufferConfig const &config) override { return config.StencilBits > 0; }
    } frameBuffers;

    VideoProfile profile =
        MakeProfile({{640, 480, 32, 60}, {800, 600, 32, 60}, {800, 600, 32, 75}, {800, 600, 32, 70}});
    profile.Add(FrameBufferConfig(false, true, 1, 24, 0, 0));
    profile.SetDriverInfo("driver", "1.0", win_utils::Guid(UID(1, 2, 3, 4)));
    VideoProfile filtered = MakeProfile({{1, 2, 3, 4}});
    profile.Filter(filtered, modes, frameBuffers);
    // In the same object as well.
    profile.Filter(profile, modes, frameBuffers);
    for (VideoProfile const *const kept : {&filtered, &profile})
    {
        EXPECT_EQ("driver1.0", kept->GetDriverDescription() + kept->GetDriverVersion());
        EXPECT_EQ(win_utils::Guid(UID(1, 2, 3, 4)), kept->GetDriverGuid());
        EXPECT_EQ(1u, kept->GetNumFrameBufferConfigs());
        ASSERT_EQ(1u, kept->GetNumDisplayModeProperties());
        std::ostringstream out;
        kept->DumpDisplayModeProperties(out, 1);
        EXPECT_EQ("\t 800 x  600 x 32  @  75 70\n", out.str());
    }
}

TEST(DisplayModeConfigFilter, KeepsStandardResolutionsOfTheDesktop)
{
    using Filter = DisplayModeConfigFilter;
    EXPECT_TRUE(Filter::IsSafeDisplayModeConfig({640, 480, 32, 60}));
    for (DisplayModeConfig const &unsafe :
         {DisplayModeConfig(639, 480, 32, 60), {640, 479, 32, 60}, {640, 480, 24, 60}, {640, 480, 32, 0}})
        EXPECT_FALSE(Filter::IsSafeDisplayModeConfig(unsafe)) << unsafe.MakeDesc("x", "@");

    DisplayModeConfig const desktop(true);
    EXPECT_EQ(platform_info::GetDesktopDisplayModeDescription(), desktop.MakeDesc(" x ", " @ "));
    EXPECT_TRUE(Filter::IsSubDesktopResolution(desktop.Width, desktop.Height));
    EXPECT_FALSE(Filter::IsSubDesktopResolution(desktop.Width + 1, desktop.Height));
    EXPECT_FALSE(Filter::IsSubDesktopResolution(desktop.Width, desktop.Height + 1));
    // Neither bit depth nor frequency counts.
    bool const isOnDesktop = Filter::IsSubDesktopResolution(1280, 1024);
    EXPECT_EQ(isOnDesktop, Filter().Filter({1280, 1024, 1, 1}));
    EXPECT_FALSE(Filter().Filter({640, 400, 32, 60}) || Filter::IsStandardResolution(1280, 960));
}

TEST(VideoConfig, IgnoresWhatDoesNotCount)
{
    VideoConfig const windowed(false);
    VideoConfig other = windowed;
    other.Hints.VSync = false;
    other.DisplayMode.BitDepth = 16;
    other.DisplayMode.RefreshFrequency = 75;
    EXPECT_TRUE(windowed.IsEqualIgnoreVSync(other));
    EXPECT_FALSE(windowed == other);
    other.Resizable = true;
    EXPECT_FALSE(windowed.IsEqualIgnoreVSync(other));

    VideoConfig fullscreen = windowed;
    fullscreen.FrameBuffer.Fullscreen = true;
    other = fullscreen;
    other.Resizable = true;
    EXPECT_TRUE(fullscreen.IsEqualIgnoreVSync(other));
    other.DisplayMode.RefreshFrequency = 75;
    EXPECT_FALSE(fullscreen.IsEqualIgnoreVSync(other));
    other = fullscreen;
    other.Hints.PureDeviceMode = false;
    EXPECT_FALSE(fullscreen.IsEqualIgnoreVSync(other));
}

TEST(VideoConfig, NamesItsParts)
{
    VideoConfig config(true);
    config.FrameBuffer.RedBits = 5;
    config.FrameBuffer.AccumulationAlphaBits = 16;
    config.Hints.VertexProcessingMode = static_cast<eVertexProcessingMode>(4);
    EXPECT_EQ("Unknown", config.Hints.FormatVertexProcessingMode(config.Hints.VertexProcessingMode));
    EXPECT_EQ("5-8-8-8/24-8/0-0-0-16", config.FrameBuffer.MakeLayoutDesc("-", "/"));
    EXPECT_EQ("Hardware", VideoHints::FormatVertexProcessingMode(e_vertex_processing_hardware));
}

TEST(VideoProfile, Dumps)
{
    VideoProfile profile = MakeProfile({{640, 480, 8, 60}, {1600, 1200, 32, 60}, {1600, 1200, 32, 75}});
    FrameBufferConfig fullscreen(true, false, 2, 16, 0, 16);
    fullscreen.RedBits = 10;
    profile.Add(fullscreen);
    profile.SetDriverInfo("Driver of tests", "1.2", win_utils::Guid(UID(0x10, 2, 3, 4)));
    std::ostringstream out;
    // What an earlier print left on the stream changes nothing.
    out << std::hex;
    out.width(20);
    profile.Dump(out);
    string const line(70, '=');
    EXPECT_EQ(line + "\nGeneral information\n" + line + "\n" +
                  "DriverDescription: Driver of tests\n"
                  "DriverVersion....: 1.2\n"
                  "DriverGUID.......: [00000010-00000002-00000003-00000004]\n" +
                  line + "\nDisplay modes: 2 found.\n" + line + "\n" +
                  " 640 x  480 x  8  @  60\n"
                  "1600 x 1200 x 32  @  60 75\n" +
                  line + "\nFrame-buffer-configurations: 2 found.\n" + line + "\n" +
                  " FS    HWR    BBC        BBL        DSBL        ACCBL\n"
                  "        x      1       8.8.8.8      24.8      0.0.0.0\n"
                  " x             2       10.8.8.8      16.0      16.16.16.16\n"
                  "\n"
                  "Legend:\n"
                  "FS    = fullscreen\n"
                  "HWR   = hardware-rasterizer\n"
                  "BBC   = back-buffer-count\n"
                  "BBL   = back-buffer-layout (r.g.b.a)\n"
                  "DSBL  = depth-stencil-buffer-layout (d.s)\n"
                  "ACCBL = accumulation-buffer-layout (r.g.b.a)\n"
                  "\n",
              out.str());
}

TEST(Kernel, ConstructsTheFirstSafeConfiguration)
{
    tests::VideoKernel kernel;
    VideoProfile modesOnly;
    modesOnly.Add(DisplayModeConfig(320, 200, 32, 60));
    kernel.Add("modes", "A", modesOnly);
    kernel.Add("first", "A", MakeProfile({{640, 480, 32, 60}}));
    kernel.Add("better", "B", MakeProfile({{800, 600, 32, 60}}));

    VideoConfig wish(true);
    wish.DisplayMode = {800, 600, 32, 0};
    using Row = std::tuple<string, string, DisplayModeConfig>;
    for (auto const &[interfaceName, pluginName, mode] :
         {Row{"", "first", {640, 480, 32, 60}}, Row{"B", "better", {800, 600, 32, 60}}, Row{"C", "", wish.DisplayMode}})
    {
        VideoConfig out(false);
        string name = interfaceName;
        EXPECT_EQ(!pluginName.empty(), kernel.ConstructClosestSafeVideoConfig(name, wish, name, out));
        EXPECT_EQ(std::pair(pluginName, mode), std::pair(name, out.DisplayMode));
    }
    // A profile that fits in part leaves no trace.
    kernel.renderers.resize(1);
    VideoConfig out = wish;
    string name;
    EXPECT_FALSE(kernel.ConstructClosestSafeVideoConfig("", out, name, out));
    EXPECT_EQ(wish, out);
}

} // namespace
} // namespace quillmarsh
