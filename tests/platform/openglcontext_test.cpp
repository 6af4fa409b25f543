// OpenGL contexts of windows that show nothing.
#include <quillmarsh/platform/openglcontext.h>

#include "tests/support/environment_variable.h"
#include "tests/support/leaks.h"

#include <gtest/gtest.h>

namespace quillmarsh::platform
{
namespace
{

using GetString = unsigned char const *(QUILLMARSH_OPENGL_CALL *)(unsigned int);
constexpr unsigned int s_versionName = 0x1F02;

class OpenGLContexts : public testing::Test
{
protected:
    void SetUp() override
    {
        string reason;
        window_ = Window::Open({.width = 64, .height = 48, .openGL = OpenGLPixels()}, reason);
        if (window_ == nullptr || OpenGLContext::Create(*window_, {}, reason) == nullptr)
            GTEST_SKIP() << reason;
    }

    AutoPtr<OpenGLContext> Create(OpenGLContextDesc const &desc = {})
    {
        string reason;
        AutoPtr<OpenGLContext> context = OpenGLContext::Create(*window_, desc, reason);
        EXPECT_NE(nullptr, context) << reason;
        return context;
    }

private:
    // On other systems there is always a display.
    tests::EnvironmentVariable const driver_{"SDL_VIDEODRIVER", "offscreen"};
    tests::NoLeakCheck const noLeakCheck_;

protected:
    AutoPtr<Window> window_;
};

TEST_F(OpenGLContexts, HaveTheWishedVersionAndItsFunctions)
{
    for (bool const isDebug : {false, true})
    {
        AutoPtr<OpenGLContext> const context = Create({.isDebug = isDebug});
        ASSERT_NE(nullptr, context);
        EXPECT_TRUE(context->IsCurrent());
        auto const getString = reinterpret_cast<GetString>(context->FindFunction("glGetString"));
        ASSERT_NE(nullptr, getString);
        EXPECT_GE(std::stod(reinterpret_cast<char const *>(getString(s_versionName))), 3.3);
        EXPECT_NE(nullptr, context->FindFunction("glGenVertexArrays"));
        for (int const interval : {1, 0, -1})
        {
            int const present = context->SetSwapInterval(interval);
            EXPECT_TRUE(present == -1 || present == 0 || present == 1) << present;
        }
        context->SwapBuffers();
    }
}

TEST_F(OpenGLContexts, TakeTurns)
{
    AutoPtr<OpenGLContext> first = Create();
    AutoPtr<OpenGLContext> second = Create();
    ASSERT_TRUE(first && second);
    EXPECT_FALSE(first->IsCurrent());
    string reason;
    EXPECT_TRUE(first->MakeCurrent(reason)) << reason;
    EXPECT_TRUE(first->IsCurrent());
    EXPECT_FALSE(second->IsCurrent());
    // The end of another context changes nothing.
    second.reset();
    EXPECT_TRUE(first->IsCurrent());
    EXPECT_NE(nullptr, OpenGLContext::FindCurrentFunction("glGetString"));
    first.reset();
    EXPECT_EQ(nullptr, OpenGLContext::FindCurrentFunction("glGetString"));
}

TEST_F(OpenGLContexts, SayWhyTheyAreRefused)
{
    string reason;
    EXPECT_EQ(nullptr, OpenGLContext::Create(*window_, {.majorVersion = 9, .minorVersion = 9}, reason));
    EXPECT_NE(string::npos, reason.find("OpenGL 9.9 is needed, and the driver (")) << reason;
    EXPECT_NE(string::npos, reason.find(") offers OpenGL ")) << reason;
    // A wish that failed leaves nothing behind.
    EXPECT_NE(nullptr, Create());
}

} // namespace
} // namespace quillmarsh::platform
