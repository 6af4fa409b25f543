// Hooks that see the messages of windows.
#ifndef QUILLMARSH_BASETOOLS_WINDOWS_MESSAGEHOOK_H
#define QUILLMARSH_BASETOOLS_WINDOWS_MESSAGEHOOK_H

#include <quillmarsh/platform/types.h>

namespace quillmarsh
{

/// Sees each message of a TopLevelWindow before and after the window handles it.
///
/// TopLevelWindow::SetMessageHook() sets the one hook of the process, which sees all messages of all these windows. A
/// window has two hooks of its own besides, one for each kind of input. Hooks belong to their program, which must unset
/// them before it destroys them. The desktop's thread.
class QUILLMARSH_API MessageHook
{
public:
    /// One message. windowmessages.h has the numbers of the messages and tells what the parameters mean.
    struct WinMsg
    {
        HWND window = nullptr;
        unsigned int message = 0;
        unsigned int wParam = 0;
        long lParam = 0;
    };

    virtual ~MessageHook();

    /// Called before the window handles the message.
    virtual void OnBeginMessage(WinMsg const &message) = 0;
    /// Called after the window has handled the message, unless handling it failed by an exception. The window may be
    /// gone by then.
    virtual void OnEndMessage(WinMsg const &message) = 0;
};

/// Sees the keyboard messages of one window: keys and characters.
class QUILLMARSH_API KeyboardMessageHook : public MessageHook
{
};

/// Sees the mouse messages of one window: movements, buttons, wheel, and that the mouse has left.
class QUILLMARSH_API MouseMessageHook : public MessageHook
{
};

} // namespace quillmarsh

#endif
