#include <quillmarsh/basetools/outputstream.h>
#include <quillmarsh/framework/commands/frameworkcommands.h>
#include <quillmarsh/framework/commands/videoconfigcmd.h>
#include <quillmarsh/framework/completion.h>
#include <quillmarsh/framework/stdcommandinterpreter.h>

#include "tests/support/null_video.h"

#include <gtest/gtest.h>

namespace quillmarsh::framework_commands
{
namespace
{

class VideoCommands : public testing::Test
{
protected:
    VideoCommands()
    {
        interpreter = std::make_unique<std_command_interpreter::Interpreter>();
        CreateAndRegisterAllCommands(*interpreter, nullptr, 21, 22);

        VideoProfile profile;
        profile.Add(DisplayModeConfig(640, 480, 32, 60));
        profile.Add(DisplayModeConfig(800, 600, 32, 75));
        profile.Add(FrameBufferConfig(false, true, 1, 24, 8, 0));
        // The application does not want the small one.
        VideoProfile const filtered = profile;
        FrameBufferConfig small(true, true, 2, 16, 0, 0);
        small.RedBits = small.BlueBits = 5;
        small.GreenBits = 6;
        small.AlphaBits = 0;
        profile.Add(small);
        kernel.Add("one", "first", profile);
        VideoProfile other;
        other.Add(DisplayModeConfig(320, 200, 32, 60));
        other.Add(FrameBufferConfig(false, false, 1, 24, 8, 0));
        kernel.Add("two", "second", other);
        kernel.renderers[0].filtered = filtered;

        pluginInfo = kernel.renderers[0].info.GetPluginInfo();
        video.renderer.SetPluginInfo(&pluginInfo);
        kernel.active = &video.renderer;
    }
    ~VideoCommands() override { VideoRenderer::EnableDynamicVSyncUpdate(false); }

    string Run(string const &line) { return tests::RunLine(*interpreter, line); }

    /// Runs the line with "-r", and returns the configuration that was asked for.
    VideoConfig Reconfigure(string const &line)
    {
        kernel.requests.clear();
        EXPECT_EQ("true", Run(line + " -r")) << line;
        if (kernel.requests.size() != 1)
        {
            ADD_FAILURE() << kernel.requests.size() << " requests by: " << line;
            return VideoConfig(false);
        }
        EXPECT_EQ(22u, kernel.requests[0].code);
        return kernel.requests[0].config;
    }

    tests::VideoKernel kernel;
    tests::NullVideo video;
    PluginInfo pluginInfo;
    AutoPtr<std_command_interpreter::Interpreter> interpreter;
};

TEST_F(VideoCommands, VSyncSwitchesAtOnceOrByReconfiguration)
{
    EXPECT_EQ("VSync........: true\nDynamicUpdate: false\ntrue", Run("vsync"));
    // A reconfiguration has not happened yet.
    EXPECT_EQ("VSync........: true\nDynamicUpdate: false\ntrue", Run("vsync -off"));
    ASSERT_EQ(1u, kernel.requests.size());
    EXPECT_EQ("one", kernel.requests[0].pluginName);
    EXPECT_FALSE(kernel.requests[0].config.Hints.VSync);
    EXPECT_EQ("VSync........: true\nDynamicUpdate: false\ntrue", Run("vsync -off -on -dynamic=maybe"));
    EXPECT_EQ(1u, kernel.requests.size());
    EXPECT_EQ("VSync........: false\nDynamicUpdate: true\ntrue", Run("vsync -off -dynamic=on"));
    EXPECT_EQ(1u, kernel.requests.size());
    kernel.active = nullptr;
    EXPECT_EQ("true", Run("vsync -on -dynamic=off"));
    EXPECT_TRUE(VideoRenderer::IsEnabledDynamicVSyncUpdate());
}

TEST_F(VideoCommands, VideoConfigPrintsOrReconfigures)
{
    string const begin = "Video-renderer: one/first\n\tFullscreen: false\n\tHardwareRasterizer: true\n"
                         "\tBackBufferCount: 1\n\tBackBufferLayout: 8.8.8.8\n\tDepthStencilBufferLayout: 24.8\n"
                         "\tAccumulationBufferLayout: 0.0.0.0\n\t";
    string const end = " x 480 x 32 @ 0\n\tResizable: true\n\tVSync: true\n\tFullscreenDestinationAlpha: false\n"
                       "\tPureDeviceMode: true\n\tVertexProcessingMode: Default\ntrue";
    EXPECT_EQ(begin + "640" + end, Run("video-config -rn=9 -w=-1"));
    EXPECT_EQ(begin + "700" + end, Run("video-config -w=700"));
    EXPECT_TRUE(kernel.requests.empty());
    EXPECT_EQ(700u, Reconfigure("video-config -w=700").DisplayMode.Width);
    EXPECT_EQ("one", kernel.requests[0].pluginName);
    EXPECT_EQ(video.subsystem.GetVideoConfig(), Reconfigure("video-config"));

    kernel.active = nullptr;
    EXPECT_EQ("Cannot find active renderer.\nfalse", Run("video-config -r"));
}

TEST_F(VideoCommands, VideoConfigTakesEveryValue)
{
    VideoConfig expected(false);
    expected.DisplayMode = {1, 2, 3, 4};
    expected.FrameBuffer = FrameBufferConfig(true, false, 5, 6, 7, 8);
    expected.FrameBuffer.RedBits = 9;
    expected.FrameBuffer.GreenBits = 10;
    expected.FrameBuffer.BlueBits = 11;
    expected.FrameBuffer.AlphaBits = 12;
    expected.Hints = VideoHints(false, true, false, e_vertex_processing_mixed);
    EXPECT_EQ(expected, Reconfigure("video-config -nocheck -noauto -w=1 -h=2 -bpp=3 -freq=4 -rsz=off -fs=on -hwr=off "
                                    "-bbc=5 -bb=9.10,11;12 -ds=6:7 -acc=8 -vsync=off -fsda=on "
                                    "-pure=off -vpm=mix"));
    // The profile's frame buffer replaces the wished one, even where no mode is checked.
    expected.FrameBuffer = FrameBufferConfig(false, true, 1, 24, 8, 0);
    expected.DisplayMode.BitDepth = 32;
    expected.Resizable = true;
    expected.Hints = video.subsystem.GetVideoConfig().Hints;
    EXPECT_EQ(expected, Reconfigure("video-config -w=1 -h=2 -freq=4 -ds=32 -bbc=3"));
}

TEST_F(VideoCommands, VideoConfigLeavesLayoutsThatItCannotRead)
{
    for (char const *value : {"8.8", "8.8.8.x", "8.8.8.8.8", ".", "-5"})
    {
        VideoConfig const config = Reconfigure("video-config -noauto -nocheck -acc=4 -bb=" + string(value));
        EXPECT_EQ("8.8.8.8", config.FrameBuffer.MakeBackBufferDesc(".")) << value;
    }
    CommandLineParser parser;
    parser.Parse("c -a=5 -b=1.2.3");
    std::vector<unsigned int> values{7};
    EXPECT_FALSE(VideoConfigCmd::ExtractRGBA(parser, "b", values) || VideoConfigCmd::ExtractRGBA(parser, "c", values));
    EXPECT_EQ(std::vector<unsigned int>{7}, values);
    EXPECT_TRUE(VideoConfigCmd::ExtractRGBA(parser, "a", values));
    EXPECT_EQ((std::vector<unsigned int>{5, 5, 5, 5}), values);
    EXPECT_TRUE(VideoConfigCmd::ExtractUIntegers(parser, "b", 3, values));
    EXPECT_EQ((std::vector<unsigned int>{1, 2, 3}), values);
}

TEST_F(VideoCommands, VideoConfigFindsRenderers)
{
    EXPECT_EQ("Available video-renderers:\n(Number/PluginName/VideoRendererInterfaceName)\n0/one/first (active)\n"
              "1/two/second\nApplication-filtered profile:\nVideo-renderer: one/first\nDisplayModes:\n"
              " 640 x  480 x 32  @  60\n 800 x  600 x 32  @  75\ntrue",
              Run("video-config -lrend -ldm"));
    string const table = " FS    HWR    BBC        BBL        DSBL        ACCBL\n"
                         "        x      1       8.8.8.8      24.8      0.0.0.0\n";
    EXPECT_EQ("Application-filtered profile:\nVideo-renderer: one/first\nFrameBufferConfigurations:\n" + table + "true",
              Run("video-config -lfbc -r"));
    EXPECT_EQ("Unfiltered profile:\nVideo-renderer: one/first\nFrameBufferConfigurations:\n" + table +
                  " x      x      2       5.6.5.0      16.0      0.0.0.0\ntrue",
              Run("video-config -lfbc -uprofile"));
    EXPECT_NE(string::npos, Run("video-config -lfbc -legend").find("\nLegend:\n"));
    EXPECT_TRUE(kernel.requests.empty());

    for (char const *search : {"-rn=1", "-rp=two", "-ri=second", "-rn=1 -rp=one"})
    {
        // Another renderer alone is a change: its frame buffer is chosen.
        EXPECT_FALSE(Reconfigure("video-config " + string(search)).FrameBuffer.HardwareRasterizer) << search;
        EXPECT_EQ("two", kernel.requests[0].pluginName);
    }
    for (char const *search : {"-rn=2", "-rp=first", "-ri=one", "-rn=2 -rp=two"})
    {
        Reconfigure("video-config " + string(search));
        EXPECT_EQ("one", kernel.requests[0].pluginName) << search;
    }
}

TEST_F(VideoCommands, VideoConfigTellsWhatFails)
{
    auto const runFailing = [this](string const &line)
    {
        string const text = Run(line + " -r");
        EXPECT_TRUE(kernel.requests.empty()) << line;
        string const mark = "Updated video-configuration is invalid.\n";
        EXPECT_EQ(0u, text.find("Video-renderer: ")) << text;
        return text.substr(std::min(text.find(mark) + mark.size(), text.size()));
    };
    EXPECT_EQ("BackBufferCount: wished 3, offered 1.\n"
              "DepthStencilBufferLayout: wished 32.8, offered 24.8.\nfalse",
              runFailing("video-config -noauto -ds=32.8 -bbc=3"));

    kernel.renderers[0].filtered.Add(FrameBufferConfig(true, true, 1, 16, 0, 0));
    EXPECT_EQ("FrameBufferConfiguration: the wishes are not offered together; the closest offer has "
              "DepthStencilBufferLayout 24.8 instead of 16.0.\nfalse",
              runFailing("video-config -noauto -ds=16.0"));
    EXPECT_EQ("DisplayMode: wished 640 x 200 x 32, offered 640 x 480 x 32, 800 x 600 x 32.\nfalse",
              runFailing("video-config -fs=on -h=200"));
    EXPECT_EQ("RefreshFrequency of 640 x 480 x 32: wished 75, offered 60.\nfalse",
              runFailing("video-config -fs=on -freq=75"));
    EXPECT_TRUE(Reconfigure("video-config -fs=on -freq=60").FrameBuffer.Fullscreen);
    kernel.requests.clear();

    for (unsigned int width = 1; width <= 10; ++width)
        kernel.renderers[0].filtered.Add(DisplayModeConfig(width, 1, 8, 0));
    EXPECT_NE(string::npos, runFailing("video-config -fs=on -h=200").find("6 x 1 x 8 and 4 more.\n"));
    kernel.renderers[0].filtered.Clear();
    EXPECT_NE(string::npos, runFailing("video-config -fs=on").find("Fullscreen: wished true, offered nothing.\n"));
}

TEST_F(VideoCommands, VideoConfigOffersWhatTheRendererHas)
{
    auto const complete = [this](string const &line)
    {
        string texts;
        for (CompletionCandidate const &candidate : interpreter->FindCompletions(line).candidates)
            texts += candidate.text + (candidate.description.empty() ? "" : "(" + candidate.description + ")") + ' ';
        return texts;
    };
    kernel.renderers[0].filtered.Add(FrameBufferConfig(false, true, 2, 16, 0, 0));
    std::pair<char const *, char const *> const rows[] = {
        {"-rn=", "0(one/first) 1(two/second) "},
        {"-rp=t", "two(two/second) "},
        {"-ri=", "first(one/first) second(two/second) "},
        {"-w=", "640 800 "},
        {"-rn=1 -w=", "320 "},
        {"-freq=", "60 75 "},
        {"-bbc=", "1 2 "},
        {"-ds=", "24.8 16.0 "},
        {"-vpm=", "hw(Hardware) sw(Software) mix(Mixed) def(Default) "},
    };
    for (auto const &[words, offered] : rows)
        EXPECT_EQ(offered, complete("video-config " + string(words))) << words;
    kernel.active = nullptr;
    EXPECT_EQ("", complete("video-config -w="));
}

TEST_F(VideoCommands, VideoConfigFindsMistakes)
{
    Command &command = *interpreter->GetExternalCommand("video-config");
    auto const findMistake = [&](string const &arguments)
    {
        CommandLineParser parser;
        parser.Parse("video-config " + arguments);
        string const mistake =
            CommandArguments(command, parser, dynamic_cast<CommandVocabulary &>(command).GetWords()).FindMistake();
        return mistake.substr(0, mistake.find(" (see"));
    };
    EXPECT_EQ("", findMistake("-rn=1 -rp=two -ri=second -bb=8 -ds=24.8 -acc=1,2,3,4 -vpm=def -legend"));
    std::pair<char const *, char const *> const rows[] = {
        {"-rn=2", "'2' is not the number of a video-renderer"},
        {"-rp=first", "'first' is not the plugin-name of a video-renderer"},
        {"-ri=one", "'one' is not the interface-name of a video-renderer"},
        {"-bb=8.8", "'8.8' is not one bit-count for all, or four of the form R.G.B.A"},
        {"-ds=1.2.3", "'1.2.3' is not one bit-count for both, or two of the form D.S"},
        {"-vpm=gpu", "'gpu' is not one of hw, sw, mix and def"},
    };
    for (auto const &[line, mistake] : rows)
        EXPECT_EQ("video-config: " + string(line) + ": " + mistake, findMistake(line));

    std::ostringstream help;
    command.DumpHelp(help, CommandLineParser());
    string const text = help.str();
    EXPECT_NE(string::npos, text.find("Display mode/window arguments:\n\t-w=uinteger, framebuffer width\n"));
    EXPECT_NE(string::npos, text.find("\t-fs=boolean, fullscreen mode\nFrame-buffer arguments:\n\t-hwr=boolean, use "
                                      "hardware rasterizer\n\t-bbc=uinteger, number of back-buffers\n\t-bb=R.G.B.A"));
    EXPECT_NE(string::npos, text.find("Default behavior:\n\tprint parameters\nNotes:\n\tReconfigure must be explicitly "
                                      "specified,\n\totherwise updated configuration is just printed.\n"));
}

} // namespace
} // namespace quillmarsh::framework_commands
