// The video stack on OpenGL for tests that look into it, and what they draw and read.
#ifndef QUILLMARSH_TESTS_SUPPORT_OPENGL_STACK_H
#define QUILLMARSH_TESTS_SUPPORT_OPENGL_STACK_H

#include "tests/support/opengl_video.h"

#include "video_opengl/openglrenderer.h"
#include "video_opengl/openglsubsystem.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace quillmarsh::tests
{

using gui::Renderer;
using video_opengl::OpenGLRenderer;
using video_opengl::OpenGLSubsystem;

constexpr color4b s_red(255, 0, 0, 255);
constexpr color4b s_green(0, 255, 0, 255);
constexpr color4b s_blue(0, 0, 255, 255);
constexpr color4b s_white(255, 255, 255, 255);

inline color4b GetColor(ImageBase const &image, unsigned int row, unsigned int column)
{
    unsigned char const *const sample = image.SampleB(row, column);
    return {sample[2], sample[1], sample[0], 255};
}

/// Returns the pixels of a row of a captured image as letters: the channels that are bright.
inline string GetLetters(ImageBase const &image, unsigned int row, unsigned int numColumns)
{
    string letters;
    for (unsigned int column = 0; column < numColumns; ++column)
    {
        color4b const color = GetColor(image, row, column);
        unsigned int const number = (color.r > 127 ? 1u : 0u) + (color.g > 127 ? 2u : 0u) + (color.b > 127 ? 4u : 0u);
        letters += ".rgybmcw"[number];
    }
    return letters;
}

/// Returns an image whose samples have these blue, green, red and alpha bytes, a letter of "rgbw" for each.
inline AutoPtr<ImageBase> MakeImage(std::initializer_list<string> rows)
{
    AutoPtr<ImageBase> image(ManufactureImage(e_format_A8R8G8B8, static_cast<unsigned int>(rows.size()),
                                              static_cast<unsigned int>(rows.begin()->size())));
    unsigned int index = 0;
    for (string const &row : rows)
    {
        for (char const letter : row)
        {
            color4b const color = letter == 'r' ? s_red : letter == 'g' ? s_green : letter == 'b' ? s_blue : s_white;
            std::copy_n(color.ToPtr(), 4, static_cast<SignalBase &>(*image).SampleB(index++));
        }
    }
    return image;
}

class OpenGLStack : public testing::Test
{
protected:
    void SetUp() override
    {
        if (!video_.Open(64, 48))
            GTEST_SKIP() << video_.GetReason();
    }

    Renderer &GetGUI() { return video_.GetGUI(); }
    OpenGLSubsystem &GetSubsystem() { return static_cast<OpenGLSubsystem &>(*video_.subsystem); }
    video_opengl::OpenGLFunctions const &GetGL() { return GetSubsystem().GetDevice()->gl; }
    unsigned int GetNumDrawCalls() const
    {
        NamedParameter parameter;
        EXPECT_TRUE(video_.renderer->GetPluginParameter("draw-calls", parameter));
        return parameter.GetValueUInteger();
    }

    void Clear(color4b color = {0, 0, 0, 255})
    {
        Renderer::ClearParams clear;
        clear.Color = color;
        GetGUI().ClearBuffers(clear);
    }
    void Fill(float x, float y, float width, float height, color4b color)
    {
        GetGUI().DrawRectangle(gui::RectangleC({x, y, width, height}, color));
    }
    OpenGLVideo video_{std::make_unique<OpenGLSubsystem>(), std::make_unique<OpenGLRenderer>()};
};

} // namespace quillmarsh::tests

#endif
