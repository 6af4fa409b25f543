// Libraries that are loaded with their first use, and what a program does without them.
#include "source/platform/linux/ondemand.h"

#include <quillmarsh/basetools/exception.h>
#include <quillmarsh/basetools/windows/winutils.h>
#include <quillmarsh/dataobjects/fontimages.h>
#include <quillmarsh/dataobjects/imagebase.h>
#include <quillmarsh/platform/clipboard.h>
#include <quillmarsh/platform/desktopevents.h>
#include <quillmarsh/platform/displaymodes.h>
#include <quillmarsh/platform/window.h>

#include "source/platform/drawing.h"
#include "source/platform/linux/sdl/sdlevents.h"
#include "tests/support/environment_variable.h"
#include "tests/support/failures.h"
#include "tests/support/process.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstdlib>

namespace quillmarsh::platform
{
namespace
{

using tests::Contains;

TEST(OnDemandLoader, FindsFunctions)
{
    OnDemandLoader loader;
    double (*cosine)(double) = nullptr;
    loader.Open("libm.so.6");
    loader.Find("cos", cosine);
    ASSERT_EQ(loader.GetFailure(), "");
    EXPECT_EQ(cosine(0), 1);
}

TEST(OnDemandLoader, ReportsTheFirstFailureAndStops)
{
    OnDemandLoader loader;
    double (*found)(double) = &std::cbrt;
    loader.Open("libm.so.6");
    loader.Find("no_such_function", found);
    EXPECT_EQ(found, nullptr);
    string const failure = loader.GetFailure();
    EXPECT_TRUE(Contains(failure, "libm.so.6") && Contains(failure, "no_such_function")) << failure;
    loader.Open("libno-such-library.so.1");
    loader.Find("cos", found);
    EXPECT_EQ(found, nullptr);
    EXPECT_EQ(loader.GetFailure(), failure);

    OnDemandLoader other;
    other.Open("libno-such-library.so.1");
    other.Find("cos", found);
    EXPECT_EQ(found, nullptr);
    EXPECT_TRUE(Contains(other.GetFailure(), "libno-such-library.so.1") &&
                Contains(other.GetFailure(), "No such file or directory"))
        << other.GetFailure();
}

void UseADesktopWithoutSdl()
{
    string reason;
    EXPECT_EQ(Window::Open({.title = "None", .width = 10, .height = 10}, reason), nullptr);
    EXPECT_TRUE(Contains(reason, "libSDL2-2.0.so.0")) << reason;
    reason.clear();
    EXPECT_FALSE(UseHeadlessDesktop(640, 480, reason));
    EXPECT_TRUE(Contains(reason, "libSDL2-2.0.so.0")) << reason;

    DisplayMode mode;
    std::vector<DisplayMode> modes;
    EXPECT_FALSE(ReadDesktopMode(mode));
    EXPECT_FALSE(ReadDisplayModes(modes));
    EXPECT_EQ(win_utils::LoadStockCursor(win_utils::eStockCursor::e_arrow), nullptr);
    unsigned char pixel[4] = {};
    HICON const icon = Window::MakeIcon({pixel, sizeof(pixel), 1, 1, true});
    EXPECT_EQ(icon, nullptr);
    Window::FreeIcon(icon);
    EXPECT_EQ(ReadClipboardText(), "");
    EXPECT_FALSE(IsKeyDown(e_key_a));
    EXPECT_FALSE(WriteClipboardText("none"));
    PumpDesktop();
    WakeDesktop();
}

void DrawWithoutPango()
{
    win_utils::GdiplusGuard const guard;
    string const reason = drawing::FindTextFailure();
    EXPECT_TRUE(Contains(reason, "libpango-1.0.so.0")) << reason;
    EXPECT_FALSE(drawing::HasFace({"DejaVu Sans"}));
    EXPECT_EQ(drawing::GetMonospaceFace().family, "");
    EXPECT_EQ(drawing::MeasureFace({"DejaVu Sans"}).em, 0);
    EXPECT_FALSE(drawing::Font({"DejaVu Sans"}, 16).IsValid());
    std::vector<string> names;
    EXPECT_FALSE(drawing::ReadFamilyNames(names));
    unsigned char pixels[4 * 4] = {};
    drawing::Canvas canvas({pixels, 8, 2, 2, true});
    canvas.Clear({1, 2, 3});
    canvas.DrawLine({0, 0}, {2, 2}, 1, {255, 255, 255});
    EXPECT_EQ(pixels[0], 3);

    Image<Sample32> sheet(e_format_A8R8G8B8, 16, 16);
    auto const draw = [&sheet]
    { GenerateFontGlyphsAscii(sheet, 'a', 'd', "DejaVu Sans", false, false, 2, 8, 1, 0, 0, 0, 0, true, true, true); };
    EXPECT_TRUE(Contains(tests::MessageOf<SystemResourceException>(draw), reason));
}

// The test runs itself as a process that finds other files in place of the libraries.
TEST(OnDemandLibraries, BrokenOnesAreReported)
{
    constexpr char const *asProcess = "QUILLMARSH_TEST_BROKEN_LIBRARIES";
    if (std::getenv(asProcess))
    {
        UseADesktopWithoutSdl();
        DrawWithoutPango();
        return;
    }
    tests::ScratchDirectory const directory;
    for (char const *const name : {"libSDL2-2.0.so.0", "libpango-1.0.so.0"})
        directory.Write(name, "This is not a library.");
    tests::EnvironmentVariable const path("LD_LIBRARY_PATH", directory.GetPath().c_str());
    // The process never gets as far as to connect to it.
    tests::EnvironmentVariable const display("DISPLAY", ":1");
    tests::EnvironmentVariable const role(asProcess, "1");
    tests::ProcessResult const result =
        tests::RunProcess("/proc/self/exe", {"--gtest_filter=OnDemandLibraries.BrokenOnesAreReported"});
    EXPECT_EQ(result.status, 0) << result.out << result.err;
}

} // namespace
} // namespace quillmarsh::platform
