#include <quillmarsh/framework/commands/screenshotcmd.h>

#include <quillmarsh/basetools/exception.h>
#include <quillmarsh/dataobjects/datacodecmanager.h>
#include <quillmarsh/dataobjects/sampletransfer.h>
#include <quillmarsh/gui/gui_component.h>
#include <quillmarsh/gui/gui_manager.h>

#include "tests/support/null_video.h"
#include "tests/support/scratch_directory.h"

#include <gtest/gtest.h>

#include <cstring>
#include <filesystem>

namespace quillmarsh::framework_commands
{
namespace
{

constexpr auto s_foreignFormat = static_cast<eSampleFormat>(0x03ABCDEF);

/// Subsystem whose buffers are images of the test. The rows of a captured image are numbered from the top.
class CapturingSubsystem : public video_null::NullSubsystem
{
public:
    bool CaptureFrameBuffer(AutoPtr<ImageBase> &image, unsigned int buffer, bool topRowFirst) override
    {
        EXPECT_TRUE(topRowFirst);
        captured.push_back(buffer);
        if (fails)
            QUILLMARSH_THROW(VideoSubsystemException, "The device is gone.");
        if (!formats.contains(buffer))
            return false;
        image.reset(ManufactureImage(formats[buffer], 2, 3));
        for (unsigned int row = 0; row < 2; ++row)
        {
            for (unsigned int column = 0; column < 3; ++column)
                FillSample(image->SampleB(row, column), formats[buffer], row);
        }
        return true;
    }

    std::map<unsigned int, eSampleFormat> formats = {{e_capture_color, e_format_X8R8G8B8},
                                                     {e_capture_front_color, e_format_X8R8G8B8},
                                                     {e_capture_depth, e_format_FP32NormL},
                                                     {e_capture_stencil, e_format_L8}};
    bool fails = false;
    std::vector<unsigned int> captured;

private:
    static void FillSample(unsigned char *sample, eSampleFormat format, unsigned int row)
    {
        unsigned int const byteSize = sample_formats::ExtractByteSize(format);
        std::memset(sample, row == 0 ? 0x33 : 0x66, byteSize);
        float const depth = row == 0 ? 0.2f : 0.4f;
        if (format == e_format_FP32NormL)
            std::memcpy(sample, &depth, byteSize);
    }
};

/// Notes its calls with the number of captured buffers until then.
class NotingCallback : public ScreenShotCmd::ScreenShotCallback
{
public:
    NotingCallback(string &log, CapturingSubsystem const &subsystem) : log_(log), subsystem_(subsystem) {}
    void PreScreenShot() override { Note("pre"); }
    void PostScreenShot() override { Note("post"); }

private:
    void Note(char const *what)
    {
        log_ += what + MakeString(static_cast<unsigned int>(subsystem_.captured.size())) + " ";
    }

    string &log_;
    CapturingSubsystem const &subsystem_;
};

class ScreenShot : public testing::Test
{
protected:
    using Doors = tests::NullVideo::Doors;

    ScreenShot()
    {
        VideoConfig config(false);
        config.FrameBuffer.BackBufferCount = 2;
        subsystem.Open(config, "test");
        Doors::VideoRenderer_ConnectVideoSubsystem(renderer, subsystem);
        kernel.active = &renderer;
        command.SetBaseFilename(GetPath("shot"));
    }
    ~ScreenShot() override
    {
        Doors::VideoRenderer_DisconnectVideoSubsystem(renderer);
        subsystem.Close();
    }

    string GetPath(string const &name) const { return scratch / name; }

    void Request(string const &options = "")
    {
        CommandLineParser parser;
        parser.Parse("screenshot " + options);
        EXPECT_TRUE(command.ParseAndExecute(out, parser, ""));
    }
    /// Runs a line, and frames until the capture is over. Returns the reports without the directory.
    string Capture(string const &options)
    {
        out.str("");
        subsystem.captured.clear();
        Request(options);
        for (int i = 0; i < 5; ++i)
            kernel.RunFrame(0.01);
        EXPECT_EQ(0u, kernel.GetNumFrameObservers());
        string text = out.str();
        for (std::size_t at = 0; (at = text.find(GetPath(""), at)) != string::npos;)
            text.erase(at, GetPath("").size());
        return text;
    }

    AutoPtr<ImageBase> Load(string const &name) const { return AutoPtr<ImageBase>(LoadImageA(GetPath(name))); }

    tests::ScratchDirectory scratch;
    std::ostringstream out;
    tests::VideoKernel kernel;
    CapturingSubsystem subsystem;
    video_null::NullRenderer renderer;
    ScreenShotCmd command{nullptr};
};

TEST_F(ScreenShot, WaitsForAFrameWithoutTheConsole)
{
    string log;
    command.SetCallback(new NotingCallback(log, subsystem));
    // The second request before the capture only moves the frame.
    for (unsigned int request = 0; request < 2; ++request)
    {
        Request();
        kernel.RunFrame(0.01);
        kernel.RunFrame(0.01);
        EXPECT_TRUE(subsystem.captured.empty());
    }
    kernel.RunFrame(0.01);
    EXPECT_EQ(std::vector<unsigned int>{e_capture_color}, subsystem.captured);
    EXPECT_EQ("pre0 pre0 post1 ", log);
    EXPECT_EQ("Saved color-buffer to: " + GetPath("shot.0000.color.image") + "\n", out.str());
    EXPECT_EQ(0u, kernel.GetNumFrameObservers());

    AutoPtr<ImageBase> const image = Load("shot.0000.color.image");
    ASSERT_NE(nullptr, image);
    EXPECT_EQ(e_format_X8R8G8B8, image->GetSampleFormat());
    EXPECT_EQ(0x33, *image->SampleB(0, 0));
    EXPECT_EQ(0x66, *image->SampleB(1, 2));

    log.clear();
    Request("-imm");
    EXPECT_EQ("post2 ", log);
    EXPECT_TRUE(std::filesystem::exists(GetPath("shot.0001.color.image")));
}

TEST_F(ScreenShot, HidesAComponent)
{
    gui::Manager manager;
    auto *const console = new gui::Component;
    auto *const callback = new ScreenShotCmd::ScreenShotCallback_AutoHideComponent(console);
    command.SetCallback(callback);
    for (bool const isShown : {true, false})
    {
        console->SetVisible(isShown);
        // The second request finds the component hidden by the first one.
        for (unsigned int request = 0; request < 2; ++request)
        {
            Request();
            EXPECT_FALSE(console->IsVisible());
        }
        Capture("");
        EXPECT_EQ(console->IsVisible(), isShown);
    }
    Capture("-imm");
    EXPECT_FALSE(console->IsVisible());
    console->SetVisible(true);
    Request();
    delete console;
    EXPECT_NE("", Capture(""));
}

TEST_F(ScreenShot, CapturesTheBuffersOfTheLine)
{
    using Codes = std::vector<unsigned int>;
    std::pair<char const *, Codes> const rows[] = {
        {"-front", {e_capture_front_color}},
        {"-depth -front", {e_capture_depth}},
        {"-stencil -color", {e_capture_color, e_capture_stencil}},
        {"-all", {e_capture_color, e_capture_depth, e_capture_stencil}},
        // Nothing of an earlier request is left.
        {"", {e_capture_color}},
    };
    for (auto const &[options, codes] : rows)
    {
        Capture(options);
        EXPECT_EQ(codes, subsystem.captured) << options;
    }
    EXPECT_EQ(5u, command.GetSerialNumber());
    EXPECT_FALSE(std::filesystem::exists(GetPath("shot.0001.color.image")));

    kernel.active = nullptr;
    EXPECT_EQ("", Capture(""));
    EXPECT_EQ("", Capture("-imm"));
    EXPECT_EQ(5u, command.GetSerialNumber());
}

TEST_F(ScreenShot, NamesFiles)
{
    command.SetSerialNumberWidth(9);
    EXPECT_EQ(8u, command.GetSerialNumberWidth());
    command.SetSerialNumberWidth(2);
    command.SetSerialNumber(99);
    command.SetBufferTypeSuffixes("", "z", "s");
    EXPECT_EQ("Saved color-buffer to: shot.99.image\nSaved depth-buffer to: shot.99.z.image\n",
              Capture("-color -depth"));
    EXPECT_EQ("Saved stencil-buffer to: shot.100.s.image\n", Capture("-stencil"));
    command.SetSerialNumberWidth(0);
    command.SetFileExtension("");
    EXPECT_EQ("Saved color-buffer to: shot.qmdp.image\n", Capture(""));
    command.SetFileFormat("PNG");
    EXPECT_EQ("Saved color-buffer to: shot.png\n", Capture(""));
    EXPECT_NE(nullptr, Load("shot.png"));
}

TEST_F(ScreenShot, ConvertsWhatAPictureDoesNotTake)
{
    command.SetFileExtension("");
    EXPECT_EQ("Saved depth-buffer to: shot.0000.depth.qmdp.image\n", Capture("-depth"));
    EXPECT_EQ(e_format_FP32NormL, Load("shot.0000.depth.qmdp.image")->GetSampleFormat());

    command.SetFileFormat("PNG");
    EXPECT_EQ("Saved color-buffer to: shot.0001.color.png\nSaved depth-buffer to: shot.0001.depth.png\n"
              "Saved stencil-buffer to: shot.0001.stencil.png\n",
              Capture("-all"));
    for (char const *name : {"shot.0001.color.png", "shot.0001.depth.png", "shot.0001.stencil.png"})
    {
        AutoPtr<ImageBase> const image = Load(name);
        ASSERT_NE(nullptr, image) << name;
        // 0.2 and 0.4 of 255 are the bytes of the other buffers.
        EXPECT_EQ(0x33, *image->SampleB(0, 1)) << name;
        EXPECT_EQ(0x66, *image->SampleB(1, 1)) << name;
    }

    // No transfer leads out of this format, and the other buffers are still saved.
    subsystem.formats[e_capture_color] = s_foreignFormat;
    EXPECT_EQ("Failed to save color-buffer.\n\tshot.0002.color.png: PNG takes no samples of the format unknown\n"
              "Saved stencil-buffer to: shot.0002.stencil.png\n",
              Capture("-color -stencil"));

    // With a transfer of the program, a component that it leaves alone is opaque.
    struct ToColor : SignalOperationsManager::TransferSamplesHandler
    {
        void Handle(SignalBase &dst, SignalBase const &src) override
        {
            for (unsigned int i = 0; i < src.GetNumSamples(); ++i)
                std::memcpy(dst.SampleB(i), src.SampleB(i), 3);
        }
    } toColor;
    SignalOperationsManager &operations = SignalOperationsManager::Instance();
    operations.RegisterTransferHandler(e_format_A8R8G8B8, s_foreignFormat, toColor);
    EXPECT_EQ("Saved color-buffer to: shot.0003.color.png\n", Capture(""));
    operations.UnregisterTransferHandler(e_format_A8R8G8B8, s_foreignFormat);
    AutoPtr<ImageBase> const image = Load("shot.0003.color.png");
    ASSERT_NE(nullptr, image);
    EXPECT_EQ(0x66, image->SampleB(1, 0)[2]);
    EXPECT_TRUE(image->GetSampleFormat() != e_format_A8R8G8B8 || image->SampleB(1, 0)[3] == 0xFF);
}

TEST_F(ScreenShot, TellsWhyAFileIsNotSaved)
{
    command.SetSerialNumberWidth(0);
    Capture("");
    string const exists = Capture("-color -depth -ow");
    EXPECT_EQ(0u, exists.find("Failed to save color-buffer.\n\tshot.color.image: ")) << exists;
    EXPECT_NE(string::npos, exists.find("\nSaved depth-buffer to: shot.depth.image\n")) << exists;
    command.SetAllowFileOverwrite(true);
    EXPECT_EQ("Saved color-buffer to: shot.color.image\n", Capture(""));

    subsystem.formats.erase(e_capture_stencil);
    EXPECT_EQ("Failed to save stencil-buffer.\n\tThe video-renderer does not capture this buffer.\n",
              Capture("-stencil"));
    command.SetFileFormat("GIF");
    string const unknown = Capture("");
    EXPECT_NE(string::npos, unknown.find("GIF")) << unknown;
    command.SetFileFormat("PNG");
    command.SetBaseFilename(GetPath("missing/shot"));
    string const missing = Capture("");
    EXPECT_EQ(0u,
              missing.find("Failed to save color-buffer.\n\t" + tests::Preferred("missing/shot.color.image") + ": "))
        << missing;
    EXPECT_EQ(6u, command.GetSerialNumber());
}

TEST_F(ScreenShot, ShowsTheConsoleAgainAfterAFailure)
{
    string log;
    command.SetCallback(new NotingCallback(log, subsystem));
    subsystem.fails = true;
    Request();
    bool remove = false;
    EXPECT_THROW(command.OnFrame(remove, kernel.GetFrameNumber() + 3, 0), VideoSubsystemException);
    EXPECT_EQ("pre0 post1 ", log);
}

} // namespace
} // namespace quillmarsh::framework_commands
