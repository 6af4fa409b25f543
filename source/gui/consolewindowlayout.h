// Where the parts of the console window are.
#ifndef QUILLMARSH_SOURCE_GUI_CONSOLEWINDOWLAYOUT_H
#define QUILLMARSH_SOURCE_GUI_CONSOLEWINDOWLAYOUT_H

#include <quillmarsh/basetools/windows/toplevelwindow.h>

#include "source/platform/drawing.h"

namespace quillmarsh::console_window
{

using Area = TopLevelWindow::eWindowArea;
using platform::drawing::Rect;

/// @name Metrics in pixels
/// @{
constexpr int s_bandHeight = 48;
constexpr int s_margin = 16;
constexpr int s_gadgetSize = 16;
/// Distance from the bottom of the window to the top of the gadgets.
constexpr int s_gadgetBottom = 32;
constexpr int s_textMargin = 8;
constexpr int s_barWidth = 8;
constexpr int s_minThumbLength = 24;
constexpr int s_splashWidth = 432;
constexpr int s_splashHeight = 96;
/// @}

/// A gadget in the lower band of the frame.
struct GadgetRow
{
    Area area;
    /// Distance from the right edge of the window, or, with `fromLeft`, from the left one.
    int distance;
    bool fromLeft;
    /// Only there while the close gadget is enabled.
    bool isOptional;
};

constexpr GadgetRow s_gadgets[] = {
    {TopLevelWindow::e_area_close, 32, false, false},
    {TopLevelWindow::e_area_maximize, 64, false, false},
    {TopLevelWindow::e_area_minimize, 96, false, false},
    {TopLevelWindow::e_area_system, 16, true, true},
};

constexpr bool IsSplashSize(int width, int height)
{
    return width == s_splashWidth && height == s_splashHeight;
}

constexpr Rect GetGadget(GadgetRow const &row, int width, int height)
{
    return {row.fromLeft ? row.distance : width - row.distance, height - s_gadgetBottom, s_gadgetSize, s_gadgetSize};
}

/// Returns the part between the bands; its height is 0 in a low window.
constexpr Rect GetClient(int width, int height)
{
    return {0, s_bandHeight, width, height > 2 * s_bandHeight ? height - 2 * s_bandHeight : 0};
}

/// Returns where the text is; its width and height are 0 when it has no room.
constexpr Rect GetTextArea(int width, int height)
{
    Rect const client = GetClient(width, height);
    Rect const text = {s_margin, client.y + s_textMargin, width - 2 * s_margin - s_barWidth,
                       client.height - 2 * s_textMargin - s_barWidth};
    return text.width > 0 && text.height > 0 ? text : Rect{text.x, text.y, 0, 0};
}

constexpr Rect GetVerticalBar(int width, int height)
{
    Rect const text = GetTextArea(width, height);
    return {width - s_barWidth - s_textMargin / 2, text.y, s_barWidth, text.height};
}

constexpr Rect GetHorizontalBar(int width, int height)
{
    Rect const text = GetTextArea(width, height);
    return {text.x, text.y + text.height + s_textMargin - s_textMargin / 2, text.width, s_barWidth};
}

} // namespace quillmarsh::console_window

#endif
