#include <quillmarsh/basetools/platforminfo.h>
#include <quillmarsh/basetools/windows/winutils.h>

#include "tests/support/environment_variable.h"

#include <gtest/gtest.h>

#include <csignal>

namespace quillmarsh::platform_info
{
namespace
{

using tests::EnvironmentVariable;

TEST(PlatformInfo, WithoutADisplayTheDesktopIsEmpty)
{
    EnvironmentVariable const noX("DISPLAY", nullptr);
    EnvironmentVariable const noWayland("WAYLAND_DISPLAY", nullptr);
    EnvironmentVariable const noDriver("SDL_VIDEODRIVER", nullptr);
    unsigned int left = 1, top = 1, right = 1, bottom = 1;
    EXPECT_FALSE(GetWorkArea(&left, &top, &right, &bottom));
    EXPECT_EQ(left + top + right + bottom, 0u);
    EXPECT_FALSE(GetDesktopDisplayMode(nullptr, nullptr, nullptr, nullptr));
    EXPECT_EQ(win_utils::LoadStockCursor(win_utils::eStockCursor::e_arrow), nullptr);
    EXPECT_EQ(GetDesktopDisplayModeDescription(), "0 x 0 x 0 @ 0");
}

TEST(PlatformInfo, DesktopIsReadAndTheProgramNotDisturbed)
{
    EnvironmentVariable const driver("SDL_VIDEODRIVER", "dummy");
    auto const handler = std::signal(SIGINT, SIG_IGN);
    unsigned int width = 0, height = 0, bits = 0, frequency = 0;
    ASSERT_TRUE(GetDesktopDisplayMode(&width, &height, &bits, &frequency));
    EXPECT_GT(width * height, 0u);
    EXPECT_EQ(bits, 32u);
    EXPECT_EQ(GetDesktopDisplayModeDescription(),
              std::to_string(width) + " x " + std::to_string(height) + " x 32 @ " + std::to_string(frequency));
    unsigned int right = 0;
    EXPECT_TRUE(GetWorkArea(nullptr, nullptr, &right, nullptr));
    EXPECT_EQ(right, width);
    EXPECT_EQ(std::signal(SIGINT, handler), SIG_IGN);
}

} // namespace
} // namespace quillmarsh::platform_info
