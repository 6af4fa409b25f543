// A window of the desktop that shows the console's text.
#ifndef QUILLMARSH_GUI_CONSOLEOUTPUTWINDOW_H
#define QUILLMARSH_GUI_CONSOLEOUTPUTWINDOW_H

#include <quillmarsh/basetools/consoleoutputbuffer.h>
#include <quillmarsh/basetools/outputstream.h>
#include <quillmarsh/basetools/windows/toplevelwindow.h>

namespace quillmarsh
{

/// Shows the text of a ConsoleOutputBuffer, in a window with a frame of its own and scroll bars. It needs no renderer.
///
/// While its last line is visible, the window follows the buffer; once the user has scrolled back, it stays where it is.
/// Any thread may write to the buffer meanwhile, as fast as it can: a change only requests a repaint, and a repaint copies
/// only the visible lines. Everything else belongs to the desktop's thread. The destructor of a derived class calls
/// SetTextSource(nullptr) if others may still write then: they must not be in a call while the object changes its class.
/// \code
/// ConsoleBuffers console;
/// ConsoleOutputWindow window;
/// window.SetTitleText("Simulation");
/// window.SetTextSource(&console.GetOutputBuffer());
/// window.SetSize(800, 600);
/// window.CenterOnDesktop();
/// window.Show();
/// \endcode
/// A new window is hidden and has the splash size, at which it shows only title and status.
///
/// Keys:
/// | Key | Action |
/// |---|---|
/// | Up, Down | scrolls by a line |
/// | Page Up, Page Down | scrolls by the visible lines |
/// | Home, End | goes to the first or the last line |
/// | Left, Right | scrolls by a column |
/// | Ctrl+Page Up, Ctrl+Page Down | scrolls by the visible columns |
/// | Ctrl+Home, Ctrl+End | goes to the first or the last column |
/// | Ctrl+arrow | moves the window by 16 pixels |
/// | Ctrl+Shift+arrow | moves the window by one pixel |
/// | Shift+arrow | moves the right or the lower edge by 16 pixels |
/// | Alt+Enter | maximizes the window, or restores it |
/// | F2 | gives the window the splash size, in the middle of the desktop |
/// | Escape | ends the message loop, while the close gadget is enabled |
///
/// The wheel scrolls lines, with Ctrl columns.
class QUILLMARSH_API ConsoleOutputWindow : public TopLevelWindow, public ConsoleOutputBuffer::Observer
{
public:
    /// Creates the window, hidden. The icon is borrowed; null for the default. Throws SystemResourceException, for example
    /// without a display.
    explicit ConsoleOutputWindow(HICON icon = nullptr);
    ~ConsoleOutputWindow() override;

    /// @name What it shows
    /// Texts are one line, in UTF-8. A text without room is shortened.
    /// @{

    /// Text in the upper band of the frame; also the name of the window for the desktop.
    void SetTitleText(string const &text);
    /// Text in the lower band of the frame.
    void SetStatusText(string const &text);
    /// The buffer is borrowed until another one is set; null for none. The window shows its last lines.
    void SetTextSource(ConsoleOutputBuffer *source);
    /// Asserts "Invalid enumeration value." for a value that is no type. Alpha has no effect.
    void SetOutputTypeColor(OutputStream::eOutputType type, color4b color);
    /// @}

    /// Lines or columns that the window scrolls for one notch of the wheel; 3 at first. It scrolls by one where fewer
    /// are visible.
    void SetMouseWheelStep(unsigned int step);
    /// Lets escape end the message loop, and shows a gadget for the window's menu; off at first. The box that closes the
    /// window is there in any case.
    void EnableCloseGadget(bool enable);
    /// Scrolls to the last line, and follows the buffer from there.
    void FocusOnLastLine();
    /// @name First line and column of the buffer that are visible, from 0
    /// @{
    unsigned int GetFirstVisibleLine() const;
    unsigned int GetFirstVisibleColumn() const;
    /// @}
    /// True at the splash size, 432 by 96 pixels.
    bool IsSplashSized() const;

    /// @name Messages
    /// @{

    /// Notes the keys that are held, and stops to follow the buffer when the window is about to close.
    bool MessageHandler(long &result, HWND window, unsigned int message, unsigned int wParam, long lParam) override;
    /// The bands above and below the text, 48 pixels each, are caption. The lower one has boxes of 16 by 16 pixels, 32
    /// pixels above the bottom: the left edges of close, maximize and minimize are 32, 64 and 96 pixels from the right
    /// edge of the window, and with the close gadget the one of system 16 pixels from the left edge.
    eWindowArea MouseHitTest(win_utils::Point const &point, unsigned int &subCode) override;
    void OnSystemColorsChanged() override;
    void OnSystemSettingsChanged() override;
    void OnDisplaySettingsChanged() override;
    void OnActivated(bool active) override;
    /// Hides the window; Show() brings it back.
    void OnClose() override;
    void OnResized(eResizeAction action) override;
    void OnPaint() override;
    void OnMouseEnter(eWindowArea area, unsigned int subCode) override;
    void OnMouseWheel(int delta, win_utils::Point const &point, unsigned int keys) override;
    void OnKeyDown(unsigned int key, long flags) override;
    /// The buffer calls it, on any thread. It takes the buffer's lock, no other one.
    void OnChanged(ConsoleOutputBuffer const &buffer) override;
    /// @}

private:
    struct State;
    class SourceLock;
    struct KeyRow;

    void NoteModifiers(unsigned int message, unsigned int key);
    static KeyRow const *FindKey(unsigned int key, unsigned int modifiers);
    void ActOnKey(KeyRow const &row);
    void HookToTextSource(ConsoleOutputBuffer *source);
    void UnhookFromTextSource();
    /// Gives the gadgets the sizes of the buffer; the caller holds its lock.
    void TakeSizes(ConsoleOutputBuffer const &buffer);
    void UpdateVisibleSizes();
    void UpdateMaximizedPlacement();
    void UpdateSizeAfterDisplayChange();
    void ScrollBy(bool isHorizontal, int offset);
    void GoToSplashSize();
    void SetupBackBuffer(unsigned int width, unsigned int height);
    void Repaint();

    AutoPtr<State> state_;
};

} // namespace quillmarsh

#endif
