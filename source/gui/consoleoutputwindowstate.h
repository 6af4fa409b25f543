// What a console window knows; shared by its source files.
#ifndef QUILLMARSH_SOURCE_GUI_CONSOLEOUTPUTWINDOWSTATE_H
#define QUILLMARSH_SOURCE_GUI_CONSOLEOUTPUTWINDOWSTATE_H

#include <quillmarsh/gui/consoleoutputwindow.h>

#include "source/gui/consolewindowview.h"

#include <atomic>

namespace quillmarsh
{

struct ConsoleOutputWindow::State
{
    /// Desktop's thread only.
    ConsoleOutputBuffer *source = nullptr;
    console_window::ConsoleWindowView view;
    /// What is painted. Its gadgets and lines are copies of the last painting.
    console_window::ViewState shown;

    /// @name Under the lock of the source, since OnChanged() uses them on any thread
    /// @{
    ScrollGadget horizontal;
    ScrollGadget vertical;
    bool isOpen = false;
    bool isMinimized = false;
    /// @}

    /// A repaint has been requested that has not begun. Any thread.
    std::atomic<bool> isRepaintPosted{false};

    /// Bits of KeyRow::eModifier for shift and Ctrl, as the messages up to now have told them: by the time of a message,
    /// the user may have released them.
    unsigned int heldModifiers = 0;
    unsigned int mouseWheelStep = 3;
    /// Part of a notch of the wheel that has not scrolled yet.
    int wheelRest = 0;
    /// Pixels of the client area, in rows without gaps.
    std::vector<unsigned char> backBuffer;
    platform::PixelRows pixels = {};
};

/// Holds the lock of the text source, if there is one. Desktop's thread only.
class ConsoleOutputWindow::SourceLock : quillmarsh::NoCopy
{
public:
    explicit SourceLock(ConsoleOutputWindow const &window) : source_(window.state_->source)
    {
        if (source_)
            source_->Lock();
    }
    ~SourceLock()
    {
        if (source_)
            source_->Unlock();
    }

private:
    ConsoleOutputBuffer const *source_;
};

/// A key, the modifier keys that are held with it, and what it does.
struct ConsoleOutputWindow::KeyRow
{
    enum eModifier : unsigned int
    {
        e_shift = 1,
        e_control = 2,
        e_alt = 4
    };
    enum class eAction
    {
        e_quit,
        e_scrollLines,
        e_scrollColumns,
        e_pageLines,
        e_pageColumns,
        e_move,
        e_size,
        e_toggleMaximized,
        e_splash
    };

    unsigned int key;
    unsigned int modifiers;
    eAction action;
    /// Steps or pixels; `x` alone for one direction.
    int x = 0;
    int y = 0;
};

} // namespace quillmarsh

#endif
