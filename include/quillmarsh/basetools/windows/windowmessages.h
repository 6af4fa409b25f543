// Numbers in the messages of windows: the same on every system.
#ifndef QUILLMARSH_BASETOOLS_WINDOWS_WINDOWMESSAGES_H
#define QUILLMARSH_BASETOOLS_WINDOWS_WINDOWMESSAGES_H

namespace quillmarsh::win_utils
{

/// Messages that reach TopLevelWindow::MessageHandler(), with the numbers that Windows gives them. Both parameters are 0
/// where nothing else is told.
///
/// A pair (x, y) in lParam has x in the lower and y in the upper 16 bits, both signed; GetX() and GetY() read them.
enum eWindowMessage : unsigned int
{
    /// TopLevelWindow::PostNullMessage() was called.
    e_message_null = 0x0000,
    /// The window is about to close.
    e_message_destroy = 0x0002,
    /// The window was moved. lParam: position of the client area on the desktop.
    e_message_move = 0x0003,
    /// The size or the state changed. wParam: eSizeKind; lParam: width and height of the client area.
    e_message_size = 0x0005,
    /// The window got the keyboard focus or lost it. wParam: 1 or 0.
    e_message_activate = 0x0006,
    /// The client area has to be painted.
    e_message_paint = 0x000f,
    /// The user wants to close the window.
    e_message_close = 0x0010,
    /// The desktop asks the program to end.
    e_message_queryEndSession = 0x0011,
    /// The colours of the desktop have changed.
    e_message_sysColorChange = 0x0015,
    /// The window was shown or hidden. wParam: 1 or 0.
    e_message_showWindow = 0x0018,
    /// The settings of the desktop have changed.
    e_message_settingChange = 0x001a,
    /// The layout of the keyboard has changed.
    e_message_inputLangChange = 0x0051,
    /// The displays have changed. wParam: bits per pixel; lParam: width and height of the first display.
    e_message_displayChange = 0x007e,
    /// A key went down. wParam: virtual key (virtualkeys.h); lParam: bits of eKeyFlags.
    e_message_keyDown = 0x0100,
    /// A key went up. Parameters as for e_message_keyDown.
    e_message_keyUp = 0x0101,
    /// A character was typed. wParam: one byte of its UTF-8 form, or a control character of a key (escape, tab, enter,
    /// backspace, Ctrl with a letter); lParam: 1.
    e_message_char = 0x0102,
    /// A key went down together with Alt, or F10 without any. Parameters as for e_message_keyDown.
    e_message_sysKeyDown = 0x0104,
    /// A key went up, like e_message_sysKeyDown.
    e_message_sysKeyUp = 0x0105,
    /// A command for the window. wParam: eSystemCommand.
    e_message_sysCommand = 0x0112,
    /// The mouse moved. wParam: bits of eMouseKeys; lParam: position in the client area.
    e_message_mouseMove = 0x0200,
    /// @name Mouse buttons
    /// Parameters as for e_message_mouseMove. For the two extra buttons, the upper 16 bits of wParam are 1 or 2.
    /// @{
    e_message_leftButtonDown = 0x0201,
    e_message_leftButtonUp = 0x0202,
    e_message_rightButtonDown = 0x0204,
    e_message_rightButtonUp = 0x0205,
    e_message_middleButtonDown = 0x0207,
    e_message_middleButtonUp = 0x0208,
    e_message_extraButtonDown = 0x020b,
    e_message_extraButtonUp = 0x020c,
    /// @}
    /// The wheel was turned. wParam: bits of eMouseKeys, and in the upper 16 bits, signed, 120 for each notch away from
    /// the user; lParam: position on the desktop.
    e_message_mouseWheel = 0x020a,
    /// The menu of the window has opened.
    e_message_enterMenuLoop = 0x0211,
    /// The menu of the window has closed.
    e_message_exitMenuLoop = 0x0212,
    /// A piece of hardware was added or removed. Windows only.
    e_message_deviceChange = 0x0219,
    /// The user begins to move or size the window.
    e_message_enterSizeMove = 0x0231,
    /// The user has ended to move or size the window.
    e_message_exitSizeMove = 0x0232,
    /// The mouse has left the client area.
    e_message_mouseLeave = 0x02a3,
    /// The clipboard has changed.
    e_message_clipboardUpdate = 0x031d
};

/// wParam of e_message_size.
enum eSizeKind : unsigned int
{
    e_size_restored = 0,
    e_size_minimized = 1,
    e_size_maximized = 2
};

/// wParam of e_message_sysCommand.
enum eSystemCommand : unsigned int
{
    e_command_minimize = 0xf020,
    e_command_maximize = 0xf030,
    e_command_close = 0xf060,
    /// Open the window's menu, for the mouse.
    e_command_mouseMenu = 0xf090,
    /// Open the window's menu, for the keyboard. lParam: 32 after Alt with the space bar, 0 after F10.
    e_command_keyMenu = 0xf100,
    e_command_restore = 0xf120,
    /// Start the screen saver.
    e_command_screenSave = 0xf140,
    /// Save the display's power.
    e_command_monitorPower = 0xf170
};

/// Bits of the keys and buttons that are down during a mouse message.
enum eMouseKeys : unsigned int
{
    e_mouseKeys_left = 0x01,
    e_mouseKeys_right = 0x02,
    e_mouseKeys_shift = 0x04,
    e_mouseKeys_control = 0x08,
    e_mouseKeys_middle = 0x10,
    e_mouseKeys_extra1 = 0x20,
    e_mouseKeys_extra2 = 0x40
};

/// Bits of lParam in a keyboard message. The lower 16 bits are 1, and bits 16 to 23 are the scan code of the key.
enum eKeyFlags : unsigned int
{
    /// The key belongs to the extended part of the keyboard.
    e_keyFlags_extended = 1u << 24,
    /// Alt is down.
    e_keyFlags_alt = 1u << 29,
    /// The key was down before the message: it repeats, or goes up.
    e_keyFlags_wasDown = 1u << 30,
    /// The key goes up.
    e_keyFlags_up = 1u << 31
};

/// Bits of a window's style that TopLevelWindow takes into account, with the values that Windows gives them. Other bits
/// are kept and have no effect.
enum eWindowStyle : unsigned int
{
    e_style_maximizeBox = 0x00010000,
    e_style_minimizeBox = 0x00020000,
    /// The frame of the desktop lets the user size the window.
    e_style_sizeFrame = 0x00040000,
    e_style_systemMenu = 0x00080000,
    /// The desktop draws title bar and frame.
    e_style_caption = 0x00c00000,
    /// Children do not draw over one another. All windows have it.
    e_style_clipSiblings = 0x04000000,
    /// The window does not draw over its children. All windows have it.
    e_style_clipChildren = 0x02000000,
    /// A window without a frame of the desktop.
    e_style_popup = 0x80000000,

    /// The usual window with a frame of the desktop.
    e_style_overlapped =
        e_style_caption | e_style_systemMenu | e_style_sizeFrame | e_style_minimizeBox | e_style_maximizeBox
};

/// Bits of a window's extended style that TopLevelWindow takes into account.
enum eExtendedWindowStyle : unsigned int
{
    e_extendedStyle_topmost = 0x00000008,
    /// Taken off by TopLevelWindow::CreateSystemWindow().
    e_extendedStyle_transparent = 0x00000020,
    /// The task bar does not list the window.
    e_extendedStyle_toolWindow = 0x00000080,
    /// Taken off by TopLevelWindow::CreateSystemWindow().
    e_extendedStyle_layered = 0x00080000
};

/// Puts two signed numbers into an lParam.
constexpr long MakePair(int x, int y)
{
    return static_cast<int>((static_cast<unsigned int>(x) & 0xffff) | static_cast<unsigned int>(y) << 16);
}
/// Returns x of such a pair.
constexpr int GetX(long pair)
{
    return static_cast<short>(pair & 0xffff);
}
/// Returns y of such a pair.
constexpr int GetY(long pair)
{
    return static_cast<short>(static_cast<unsigned long>(pair) >> 16 & 0xffff);
}

} // namespace quillmarsh::win_utils

#endif
