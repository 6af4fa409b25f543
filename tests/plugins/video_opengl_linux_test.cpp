// The video stack on OpenGL without a driver.
#include "tests/support/environment_variable.h"
#include "tests/support/opengl_video.h"

#include <quillmarsh/framework/videoprofile.h>

#include <gtest/gtest.h>

#include <sstream>

namespace quillmarsh
{
namespace
{

TEST(VideoOpenGL, SaysWhyThereIsNoOpenGL)
{
    tests::EnvironmentVariable const noDriver("SDL_VIDEO_EGL_DRIVER", "/no/such/library.so");
    tests::OpenGLVideo video(QUILLMARSH_TEST_video_opengl);
    EXPECT_FALSE(video.Open(64, 48));
    EXPECT_NE(video.GetReason().find("EGL"), string::npos) << video.GetReason();
    EXPECT_EQ(video.subsystem->GetOperationalState(), e_video_closed);
    // The profile keeps what does not depend on the driver.
    std::ostringstream log;
    VideoProfile profile;
    EXPECT_FALSE(video.subsystem->CollectVideoProfile(log, profile));
    EXPECT_NE(log.str().find("EGL"), string::npos) << log.str();
    EXPECT_GT(profile.GetNumDisplayModeProperties(), 0u);
    EXPECT_EQ(profile.GetNumFrameBufferConfigs(), 0u);
}

} // namespace
} // namespace quillmarsh
