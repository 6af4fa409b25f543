// A window with a frame of its own, under the hands of a user on a virtual display.
#include <quillmarsh/basetools/windows/toplevelwindow.h>
#include <quillmarsh/basetools/windows/virtualkeys.h>
#include <quillmarsh/platform/desktopevents.h>

#include "tests/support/virtual_display.h"
#include "tests/support/waiting.h"

#include <gtest/gtest.h>

namespace quillmarsh
{
namespace
{

using namespace win_utils;

/// Its caption has 20 pixels, its right edge 5.
class FramedWindow : public TopLevelWindow
{
public:
    FramedWindow()
    {
        SetText("Quillmarsh frame");
        // A cursor would keep the display in use after the test.
        ShowMouseCursor(false);
        SetMaxSize(350, 400);
        SetPositionAndSize(100, 100, 300, 200);
        CreateSystemWindow(0, e_style_popup, 0);
        Show();
    }
    eWindowArea MouseHitTest(Point const &point, unsigned int &subCode) override
    {
        unsigned int width, height;
        GetClientAreaSize(width, height);
        if (point.y < 20)
            return e_area_caption;
        return point.x >= static_cast<long>(width) - 5 ? e_area_right : TopLevelWindow::MouseHitTest(point, subCode);
    }
    void OnPaint() override {}
    using TopLevelWindow::IsKeyDown;
    void OnMoved() override { ++numMoves; }
    void OnClose() override { isClosed = true; }
    void OnKeyDown(unsigned int key, long) override { isKeyDown = isKeyDown || (key == 'Q' && IsKeyDown('Q')); }
    void OnChar(char character) override { text += character; }
    void OnMouseWheel(int delta, Point const &point, unsigned int keys) override
    {
        isTurned = delta == -120 && point == Point(100, 100) && keys == e_mouseKeys_control;
    }
    string Place() const
    {
        int x, y;
        unsigned int width, height;
        GetCurrentPosition(x, y);
        GetSize(width, height);
        return std::to_string(x) + " " + std::to_string(y) + " " + std::to_string(width) + " " + std::to_string(height);
    }
    unsigned int numMoves = 0;
    bool isClosed = false;
    bool isKeyDown = false;
    bool isTurned = false;
    string text;
};

using TopLevelWindowOnADisplay = tests::OnADisplay;

TEST_F(TopLevelWindowOnADisplay, IsMovedSizedAndTypedIntoByAUser)
{
    FramedWindow window;
    auto const pumpUntil = [](auto condition)
    { return tests::WaitUntil([&] { return platform::PumpDesktop(), condition(); }); };
    ASSERT_TRUE(display_.Do("search --sync --onlyvisible --name '^Quillmarsh frame$' windowfocus --sync"));
    ASSERT_TRUE(pumpUntil([&] { return window.IsActive(); }));

    ASSERT_TRUE(display_.Do("mousemove 150 110 mousedown 1"));
    platform::PumpDesktop();
    ASSERT_TRUE(display_.Do("mousemove 170 115"));
    EXPECT_TRUE(pumpUntil([&] { return window.Place() == "120 105 300 200"; })) << window.Place();
    ASSERT_TRUE(display_.Do("mousemove 250 210"));
    EXPECT_TRUE(pumpUntil([&] { return window.Place() == "200 200 300 200"; })) << window.Place();
    ASSERT_TRUE(display_.Do("mouseup 1"));
    EXPECT_TRUE(pumpUntil([&] { return window.numMoves > 1 && !window.IsKeyDown(e_vk_leftButton); }));
    ASSERT_TRUE(display_.Do("mousemove 60 60"));
    platform::PumpDesktop();
    EXPECT_EQ("200 200 300 200", window.Place());

    ASSERT_TRUE(display_.Do("mousemove 498 300 mousedown 1 mousemove 520 300 mousemove 700 300 mouseup 1"));
    EXPECT_TRUE(pumpUntil([&] { return window.Place() == "200 200 350 200"; })) << window.Place();
    ASSERT_TRUE(display_.Do("mousemove 300 300 keydown ctrl click 5 keyup ctrl"));
    EXPECT_TRUE(pumpUntil([&] { return window.isTurned; }));

    ASSERT_TRUE(display_.Do("keydown q"));
    EXPECT_TRUE(pumpUntil([&] { return window.isKeyDown; }));
    ASSERT_TRUE(display_.Do("keyup q key Return alt+x shift+b ctrl+c"));
    EXPECT_TRUE(pumpUntil([&] { return window.text == "q\rB\x03"; })) << window.text;
    ASSERT_TRUE(display_.Do("key alt+F4"));
    EXPECT_TRUE(pumpUntil([&] { return window.isClosed; }));
}

} // namespace
} // namespace quillmarsh
