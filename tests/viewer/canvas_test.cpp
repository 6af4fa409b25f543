// The canvas and its textures.
#include "tests/support/gui_screen.h"

#include "viewer/canvas.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstring>

namespace quillmarsh
{
namespace
{

using Doors = tests::GuiDesk::DeskKernel;

/// A canvas of two tiles, of which the second is the texture that was made last.
class ViewerCanvas : public testing::Test
{
protected:
    static constexpr unsigned int s_width = 300;
    static constexpr unsigned int s_height = 20;

    ViewerCanvas() { canvas_.Resize(s_width, s_height); }

    /// Sets all pixels, and one of them to something else.
    void Fill(unsigned char value, unsigned int x, unsigned int y, unsigned char other)
    {
        ImageBase &picture = canvas_.GetPicture();
        std::memset(picture.SampleB(0), value, picture.GetTotalByteSize());
        *picture.SampleB(y, x) = other;
        canvas_.Update();
    }
    std::size_t DrawAndCountLoads()
    {
        canvas_.Draw(screen_.gui, vec2::ZERO);
        return screen_.gui.texture->loads.size();
    }

    tests::GuiDesk desk_;
    tests::GuiScreen screen_;
    viewer::Canvas canvas_;
};

TEST_F(ViewerCanvas, LoadsTilesThatHaveChanged)
{
    Fill(1, 299, 19, 2);
    EXPECT_EQ(DrawAndCountLoads(), 1u);
    EXPECT_EQ(screen_.gui.GetNumTextures(), 2);
    Fill(1, 299, 19, 2);
    EXPECT_EQ(DrawAndCountLoads(), 1u) << "nothing has changed";
    Fill(1, 299, 19, 3);
    ASSERT_EQ(DrawAndCountLoads(), 2u);
    tests::LoadedBlock const &load = screen_.gui.texture->loads.back();
    // Level, height, width, destination, source, order of rows.
    EXPECT_EQ(load.arguments, (std::vector<unsigned int>{0, 20, 44, 0, 0, 0, 256, 0}));
    Fill(1, 299, 19, 3);
    *canvas_.GetPicture().SampleB(0, 0) = 9;
    canvas_.Update();
    EXPECT_EQ(DrawAndCountLoads(), 2u) << "the other tile has changed";
    // Two changes without a drawing between them, of which the second takes the first back in part.
    Fill(1, 256, 0, 7);
    Fill(2, 256, 0, 7);
    EXPECT_EQ(DrawAndCountLoads(), 3u);
}

TEST_F(ViewerCanvas, FollowsTheRenderer)
{
    Fill(1, 0, 0, 1);
    desk_.manager.SyncObjectStates();
    EXPECT_EQ(DrawAndCountLoads(), 1u);
    Doors::GUIManager_ReleaseVideoResources(true);
    EXPECT_EQ(screen_.gui.GetNumTextures(), 0) << "as for a lost device";
    Doors::GUIManager_CreateVideoResources(true);
    desk_.manager.SyncObjectStates();
    EXPECT_EQ(DrawAndCountLoads(), 1u);
    EXPECT_EQ(screen_.gui.GetNumTextures(), 2);
    canvas_.Resize(100, 100);
    EXPECT_EQ(screen_.gui.GetNumTextures(), 0);
    {
        viewer::Canvas other;
        other.Resize(1, 1);
        other.Update();
        other.Draw(screen_.gui, vec2::ZERO);
        EXPECT_EQ(screen_.gui.GetNumTextures(), 1);
    }
    EXPECT_EQ(screen_.gui.GetNumTextures(), 0);
    // What the manager kept for the other canvas does not reach it any more.
    Doors::GUIManager_ReleaseVideoResources(true);
}

TEST_F(ViewerCanvas, StandsAtWholePixels)
{
    Fill(1, 0, 0, 1);
    mat4 transform = mat4::IDENTITY;
    transform[3][0] = 10.5f;
    transform[3][1] = 7.25f;
    screen_.gui.SetTransform(transform);
    canvas_.Draw(screen_.gui, vec2::ZERO);
    float left = 1e9f;
    for (unsigned int index = 0; index < screen_.gui.textured.GetCount(); ++index)
    {
        gui::VertexCT const &vertex = screen_.gui.textured[index];
        EXPECT_EQ(vertex.position.x + 10.5f, std::round(vertex.position.x + 10.5f));
        EXPECT_EQ(vertex.position.y + 7.25f, std::round(vertex.position.y + 7.25f));
        left = std::min(left, vertex.position.x);
    }
    EXPECT_EQ(left, 11.0f - 10.5f + 256);
}

} // namespace
} // namespace quillmarsh
