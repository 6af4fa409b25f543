// Draws the console window from a record of its state.
#ifndef QUILLMARSH_SOURCE_GUI_CONSOLEWINDOWVIEW_H
#define QUILLMARSH_SOURCE_GUI_CONSOLEWINDOWVIEW_H

#include <quillmarsh/basetools/consoleoutputbuffer.h>
#include <quillmarsh/basetools/windows/winutils.h>
#include <quillmarsh/gui/scrollgadget.h>

#include "source/gui/consolecells.h"
#include "source/gui/consolewindowcolors.h"
#include "source/gui/consolewindowlayout.h"

#include <vector>

namespace quillmarsh::console_window
{

/// Everything that the picture of a console window depends on.
struct ViewState
{
    /// The visible part of a line.
    struct Line
    {
        string text;
        unsigned int type = 0;
    };

    string title;
    string status;
    bool isActive = false;
    bool isMaximized = false;
    bool hasCloseGadget = false;
    /// Area under the mouse.
    Area hotArea = TopLevelWindow::e_area_none;
    /// In columns and lines.
    ScrollGadget horizontal;
    ScrollGadget vertical;
    std::array<Color, s_numTypes> colors = s_typeColors;
    /// The visible lines are the first `numLines`; the others keep their memory for later.
    std::vector<Line> lines;
    unsigned int numLines = 0;

    /// Copies the lines that the gadgets make visible. The caller holds the buffer's lock. Null for no text.
    void CopyLines(ConsoleOutputBuffer const *source);
};

/// Draws the window. It has no state but the fonts: the same record gives the same pixels. Only the thread that made it
/// may use it.
class ConsoleWindowView : NoCopy
{
public:
    ConsoleWindowView();
    ~ConsoleWindowView();

    /// @name Text that a window of some size shows
    /// At least 1.
    /// @{
    unsigned int GetNumVisibleLines(int width, int height) const;
    unsigned int GetNumVisibleColumns(int width, int height) const;
    /// @}
    /// Gives bars and thumbs their places in a window of this size.
    static void PlaceBars(ScrollGadget &horizontal, ScrollGadget &vertical, int width, int height);

    /// Draws all of the window.
    void Render(platform::PixelRows const &pixels, ViewState const &state);

private:
    using Canvas = platform::drawing::Canvas;
    using Font = platform::drawing::Font;

    /// Where texts of the frame go.
    struct FrameTexts
    {
        Rect title;
        Rect powered;
        Rect status;
    };

    void RenderFrameArea(Canvas &canvas, ViewState const &state, int width, int height);
    void RenderGadgets(Canvas &canvas, ViewState const &state, int width, int height);
    void RenderLabels(Canvas &canvas, ViewState const &state, int width, int height);
    void RenderTextArea(platform::PixelRows const &pixels, Canvas &canvas, ViewState const &state);
    FrameTexts PlaceTexts(ViewState const &state, int width, int height);
    /// Draws a text of one line, shortened where it has no room.
    void DrawLabel(Canvas &canvas, string const &text, Rect const &place, Color color);

    win_utils::GdiplusGuard const guard_;
    string const poweredBy_;
    /// Null when no fonts are installed.
    AutoPtr<Font> frameFont_;
    AutoPtr<Font> textFont_;
    AutoPtr<CellPainter> cells_;
};

} // namespace quillmarsh::console_window

#endif
