// Keys of the console window.
#include "source/gui/consoleoutputwindowstate.h"

#include <quillmarsh/basetools/windows/virtualkeys.h>

#include <algorithm>
#include <iterator>
#include <limits>

namespace quillmarsh
{

using namespace win_utils;

namespace
{

/// Pixels by which a key moves the window or an edge of it.
constexpr int s_stride = 16;
/// More than all lines and columns.
constexpr int s_all = std::numeric_limits<int>::max();

} // namespace

ConsoleOutputWindow::KeyRow const *ConsoleOutputWindow::FindKey(unsigned int key, unsigned int modifiers)
{
    using Action = KeyRow::eAction;
    constexpr unsigned int shift = KeyRow::e_shift, control = KeyRow::e_control, alt = KeyRow::e_alt;
    static constexpr KeyRow rows[] = {
        {e_vk_escape, 0, Action::e_quit},
        {e_vk_up, 0, Action::e_scrollLines, -1},
        {e_vk_down, 0, Action::e_scrollLines, 1},
        {e_vk_home, 0, Action::e_scrollLines, -s_all},
        {e_vk_end, 0, Action::e_scrollLines, s_all},
        {e_vk_pageUp, 0, Action::e_pageLines, -1},
        {e_vk_pageDown, 0, Action::e_pageLines, 1},
        {e_vk_left, 0, Action::e_scrollColumns, -1},
        {e_vk_right, 0, Action::e_scrollColumns, 1},
        {e_vk_home, control, Action::e_scrollColumns, -s_all},
        {e_vk_end, control, Action::e_scrollColumns, s_all},
        {e_vk_pageUp, control, Action::e_pageColumns, -1},
        {e_vk_pageDown, control, Action::e_pageColumns, 1},
        {e_vk_left, control, Action::e_move, -s_stride, 0},
        {e_vk_right, control, Action::e_move, s_stride, 0},
        {e_vk_up, control, Action::e_move, 0, -s_stride},
        {e_vk_down, control, Action::e_move, 0, s_stride},
        {e_vk_left, control | shift, Action::e_move, -1, 0},
        {e_vk_right, control | shift, Action::e_move, 1, 0},
        {e_vk_up, control | shift, Action::e_move, 0, -1},
        {e_vk_down, control | shift, Action::e_move, 0, 1},
        {e_vk_left, shift, Action::e_size, -s_stride, 0},
        {e_vk_right, shift, Action::e_size, s_stride, 0},
        {e_vk_up, shift, Action::e_size, 0, -s_stride},
        {e_vk_down, shift, Action::e_size, 0, s_stride},
        {e_vk_enter, alt, Action::e_toggleMaximized},
        {e_vk_f1 + 1, 0, Action::e_splash},
    };
    auto const found = std::find_if(std::begin(rows), std::end(rows),
                                    [=](KeyRow const &row) { return row.key == key && row.modifiers == modifiers; });
    return found != std::end(rows) ? found : nullptr;
}

void ConsoleOutputWindow::NoteModifiers(unsigned int message, unsigned int key)
{
    unsigned int const modifier = key == e_vk_shift     ? unsigned(KeyRow::e_shift)
                                  : key == e_vk_control ? unsigned(KeyRow::e_control)
                                                        : 0;
    switch (message)
    {
    case e_message_activate:
        // Keys may have gone down or up in other windows.
        state_->heldModifiers = (IsKeyDown(e_vk_shift) ? unsigned(KeyRow::e_shift) : 0) |
                                (IsKeyDown(e_vk_control) ? unsigned(KeyRow::e_control) : 0);
        return;
    case e_message_keyDown:
    case e_message_sysKeyDown:
        state_->heldModifiers |= modifier;
        return;
    case e_message_keyUp:
    case e_message_sysKeyUp:
        state_->heldModifiers &= ~modifier;
        return;
    default:
        return;
    }
}

void ConsoleOutputWindow::OnKeyDown(unsigned int key, long flags)
{
    bool const hasAlt = (flags & static_cast<long>(e_keyFlags_alt)) != 0;
    unsigned int const modifiers = state_->heldModifiers | (hasAlt ? unsigned(KeyRow::e_alt) : 0);
    if (KeyRow const *const row = FindKey(key, modifiers))
        ActOnKey(*row);
    Repaint();
}

void ConsoleOutputWindow::ActOnKey(KeyRow const &row)
{
    using Action = KeyRow::eAction;
    int const visibleLines = static_cast<int>(state_->vertical.GetVisibleSize());
    int const visibleColumns = static_cast<int>(state_->horizontal.GetVisibleSize());
    bool const isPlain = !IsMaximized() && !IsMinimized();
    int x, y;
    unsigned int width, height;
    GetCurrentPosition(x, y);
    GetSize(width, height);
    switch (row.action)
    {
    case Action::e_quit:
        if (state_->shown.hasCloseGadget)
            PostQuit();
        return;
    case Action::e_scrollLines:
        return ScrollBy(false, row.x);
    case Action::e_scrollColumns:
        return ScrollBy(true, row.x);
    case Action::e_pageLines:
        return ScrollBy(false, row.x * visibleLines);
    case Action::e_pageColumns:
        return ScrollBy(true, row.x * visibleColumns);
    case Action::e_move:
        return isPlain ? SetPosition(x + row.x, y + row.y) : void();
    case Action::e_size:
        return isPlain ? SetSize(static_cast<unsigned int>(std::max(static_cast<int>(width) + row.x, 1)),
                                 static_cast<unsigned int>(std::max(static_cast<int>(height) + row.y, 1)))
                       : void();
    case Action::e_toggleMaximized:
        return IsMaximized() ? Restore() : Maximize();
    case Action::e_splash:
        return GoToSplashSize();
    }
}

void ConsoleOutputWindow::GoToSplashSize()
{
    if (IsMaximized())
        Restore();
    SetSize(console_window::s_splashWidth, console_window::s_splashHeight);
    CenterOnDesktop();
}

} // namespace quillmarsh
