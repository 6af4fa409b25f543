#include "tests/support/gui_screen.h"

#include <quillmarsh/platform/window.h>

#include <gtest/gtest.h>

namespace quillmarsh
{
namespace
{

using gui::Cursor;
using gui::ImageCursor;
using tests::GuiDesk;
using tests::GuiScreen;
using Lines = std::vector<string>;

constexpr color4b s_white = {255, 255, 255, 255};
constexpr color4b s_red = {255, 0, 0, 255};

class GuiCursors : public testing::Test
{
protected:
    ~GuiCursors() override
    {
        Cursor::SetGlobalSize({16, 16});
        Cursor::SetGlobalColor(s_white);
    }

    GuiDesk desk_;
    gui::Manager &manager_ = desk_.manager;
    GuiScreen screen_;
};

TEST_F(GuiCursors, LimitTheirValues)
{
    auto *const cursor = new Cursor("c", {2, -1}, {0, 40}, s_red);
    EXPECT_EQ(cursor->GetHotSpot(), vec2(1, 0));
    EXPECT_EQ(cursor->GetPrivateSize(), vec2(1, 40));
    EXPECT_FALSE(cursor->IsUsingPrivateSize());
    EXPECT_EQ(cursor->GetActiveSize(), vec2(16, 16));
    EXPECT_EQ(cursor->GetActiveColor(), s_white);
    cursor->SetPrivateSize(false, {8, 0});
    EXPECT_EQ(cursor->GetPrivateSize(), vec2(8, 1));
    EXPECT_EQ(cursor->GetActiveSize(), vec2(16, 16));
    cursor->SetPrivateSize(true, {8, 9});
    cursor->SetPrivateColor(true, s_red);
    Cursor::SetGlobalSize({0, 0});
    EXPECT_EQ(Cursor::GetGlobalSize(), vec2(1, 1));
    EXPECT_EQ(cursor->GetActiveSize(), vec2(8, 9));
    EXPECT_EQ(cursor->GetActiveColor(), s_red);
}

TEST_F(GuiCursors, AreDrawnAtTheMouseOnlyInsideTheWindow)
{
    auto *const cursor = new Cursor("std/void", {0.5f, 0.25f}, {20, 40}, s_red);
    cursor->SetPrivateSize(true, {20, 40});
    cursor->SetPrivateColor(true, s_red);
    desk_.mouse.SetCanDisplaySystemCursor(true);
    desk_.MoveTo(100, 200);
    EXPECT_EQ(manager_.GetActiveCursor(), cursor);
    manager_.Draw();
    EXPECT_EQ(screen_.gui.calls, (Lines{"begin", "end"}));

    manager_.ShowGUICursor(true);
    manager_.Draw();
    EXPECT_EQ(screen_.gui.calls, (Lines{"begin", "end", "begin", "colored @90,190", "end"}));
    ASSERT_EQ(screen_.gui.colored.GetCount(), 3u);
    EXPECT_EQ(screen_.gui.colored[0].position, vec3(0, 0, 0));
    EXPECT_EQ(screen_.gui.colored[1].position, vec3(14, 40, 0));
    EXPECT_EQ(screen_.gui.colored[2].position, vec3(20, 28, 0));
    EXPECT_EQ(screen_.gui.colored[2].color, s_red);

    // A mouse that cannot show the system's cursor is always drawn.
    manager_.ShowGUICursor(false);
    desk_.mouse.SetCanDisplaySystemCursor(false);
    screen_.gui.calls.clear();
    manager_.Draw();
    EXPECT_EQ(screen_.gui.calls.size(), 3u);
    desk_.mouse.isInside = false;
    desk_.Frame();
    screen_.gui.calls.clear();
    manager_.Draw();
    EXPECT_EQ(screen_.gui.calls, (Lines{"begin", "end"}));
}

TEST_F(GuiCursors, ShowTheirTile)
{
    manager_.RegisterTileTexture("tiles", new gui::TileTexture(e_format_A8R8G8B8, false, 16, 32, 2, 4));
    gui::TileParams tile;
    tile.tileTextureName = "tiles";
    tile.tileRow = 1;
    tile.tileColumn = 2;
    auto *const cursor = new ImageCursor("std/void", tile, {1, 1}, vec2::ONE, s_red);
    manager_.ShowGUICursor(true);
    desk_.MoveTo(50, 60);
    manager_.Draw();
    EXPECT_EQ(screen_.gui.calls.at(1), "textured @34,44");
    gui::VertexBufferCT &vertices = screen_.gui.textured;
    EXPECT_EQ(vertices[0].texCoord, vec2(0.5f, 0.5f));
    EXPECT_EQ(vertices[0].color, s_white);

    // Global values reach it when all synchronise; a new tile does, too.
    Cursor::SetGlobalSize({32, 8});
    Cursor::SetGlobalColor(s_red);
    tile.tileColumn = 3;
    tile.texTransform = gui::RectangleCT::e_tex_rotate_b;
    cursor->SetTileParams(tile);
    manager_.Draw();
    EXPECT_EQ(screen_.gui.calls.at(4), "textured @18,52");
    EXPECT_EQ(vertices[0].texCoord, vec2(1, 1));
    EXPECT_EQ(vertices[0].color, s_red);

    screen_.gui.calls.clear();
    cursor->InvalidateTileTextureHandles();
    manager_.Draw();
    EXPECT_EQ(screen_.gui.calls, (Lines{"begin", "end"}));
}

TEST_F(GuiCursors, GiveWayWhenTheyAreDeleted)
{
    new Cursor("std/client", vec2::ZERO, vec2::ONE, s_white);
    new Cursor("hand", vec2::ZERO, vec2::ONE, s_white);
    gui::Component &component = desk_.Add("a", {0, 0}, {100, 100});
    desk_.MoveTo(10, 10);
    EXPECT_EQ(manager_.GetActiveCursor(), manager_.GetCursor("std/client"));
    component.SetClientAreaCursorName("hand");
    desk_.Frame();
    EXPECT_EQ(manager_.GetActiveCursor(), manager_.GetCursor("hand"));

    // Drawn before the next dispatch, it is the substitute; then the component's name has to be mended.
    manager_.ShowGUICursor(true);
    component.SetClientAreaCursorName("");
    manager_.DeleteCursor("hand");
    ASSERT_NE(manager_.GetActiveCursor(), nullptr);
    EXPECT_EQ(manager_.GetActiveCursor()->GetName(), "");
    manager_.Draw();
    EXPECT_EQ(screen_.gui.calls.size(), 3u);
    desk_.Frame();
    EXPECT_EQ(manager_.GetActiveCursor(), manager_.GetCursor("std/client"));

    manager_.DeleteAllCursors();
    desk_.Frame();
    EXPECT_EQ(manager_.GetActiveCursor()->GetName(), "");
    // An alias dresses up an area.
    auto *const other = new Cursor("other", vec2::ZERO, vec2::ONE, s_white);
    manager_.AddCursorAlias("std/client", "other");
    desk_.Frame();
    EXPECT_EQ(manager_.GetActiveCursor(), other);
    manager_.AddCursorAlias("std/client", "");
    EXPECT_EQ(manager_.GetCursor("std/client"), other);
}

TEST(GuiSystemCursor, IsHiddenWhileTheMouseIsInside)
{
    using platform::IsMouseCursorShown;
    {
        GuiDesk desk;
        desk.mouse.isInside = false;
        desk.Frame();
        desk.manager.ShowSystemCursor(false);
        EXPECT_TRUE(IsMouseCursorShown());
        desk.mouse.isInside = true;
        desk.Frame();
        EXPECT_FALSE(IsMouseCursorShown());
        desk.mouse.isInside = false;
        desk.Frame();
        EXPECT_TRUE(IsMouseCursorShown());
        desk.mouse.isInside = true;
        desk.Frame();
        desk.manager.ShowSystemCursor(true);
        EXPECT_TRUE(IsMouseCursorShown());
        desk.manager.ShowSystemCursor(false);
        EXPECT_FALSE(IsMouseCursorShown());
    }
    EXPECT_TRUE(IsMouseCursorShown());
}

} // namespace
} // namespace quillmarsh
