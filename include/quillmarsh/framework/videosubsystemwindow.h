// The window of a video subsystem, and its observer.
#ifndef QUILLMARSH_FRAMEWORK_VIDEOSUBSYSTEMWINDOW_H
#define QUILLMARSH_FRAMEWORK_VIDEOSUBSYSTEMWINDOW_H

#include <quillmarsh/basetools/windows/toplevelwindow.h>

namespace quillmarsh
{

/// Hears what happens to a VideoSubsystemWindow, during its messages. The desktop's thread.
class QUILLMARSH_API VideoSubsystemWindowObserver
{
public:
    /// The displays have changed.
    virtual void OnDisplaySettingsChanged() = 0;
    /// The window got the keyboard focus or lost it.
    virtual void OnActivated(bool active) = 0;
    /// The window was moved. Only after VideoSubsystemWindow::ActivateMoveHandler().
    virtual void OnMoved() = 0;
    /// The size or the state changed. Only after VideoSubsystemWindow::ActivateResizeHandler().
    virtual void OnResized(TopLevelWindow::eResizeAction action) = 0;
    /// The client area has to be painted.
    virtual void OnPaint() = 0;
    /// The menu of the window opens or closes.
    virtual void OnMenuLoop(bool entered) = 0;
    /// The user begins or ends to move or size the window.
    virtual void OnSizeMoveLoop(bool entered) = 0;

protected:
    ~VideoSubsystemWindowObserver() = default;
};

/// Main window of the program, in which a video subsystem shows its picture.
///
/// It passes on its notices to one observer. Neither screen saver nor power saving of the display begins while the window
/// exists, and no key closes it or opens its menu until EnableSystemCommands(). The desktop's thread.
class QUILLMARSH_API VideoSubsystemWindow : public TopLevelWindow
{
public:
    /// Makes an object without a window, for a full screen or for a window on the desktop.
    explicit VideoSubsystemWindow(bool fullscreen);

    /// True when it was made for a full screen.
    bool IsFullscreen() const { return fullscreen_; }

    /// @name Observer
    /// Borrowed; null, which it is at first, for none.
    /// @{
    void SetObserver(VideoSubsystemWindowObserver *observer) { observer_ = observer; }
    VideoSubsystemWindowObserver *GetObserver() const { return observer_; }
    /// @}

    /// @name Handlers that wait until the subsystem is ready for them
    /// They pass on the notice from then on, for good.
    /// @{
    void ActivateMoveHandler() { isMoveHandlerActive_ = true; }
    bool IsMoveHandlerActive() const { return isMoveHandlerActive_; }
    void ActivateResizeHandler() { isResizeHandlerActive_ = true; }
    bool IsResizeHandlerActive() const { return isResizeHandlerActive_; }
    /// @}

    /// Lets keys close the window and open its menu; at first none does.
    void EnableSystemCommands(bool closeThroughAltF4, bool menuThroughF10, bool menuThroughAltSpace);

    bool MessageHandler(long &result, HWND window, unsigned int message, unsigned int wParam, long lParam) override;
    void OnDisplaySettingsChanged() override;
    void OnActivated(bool active) override;
    void OnMoved() override;
    void OnResized(eResizeAction action) override;
    void OnPaint() override;

protected:
    /// Creates the window as TopLevelWindow does, and keeps the display on from then on.
    void CreateSystemWindow(unsigned int classStyle, unsigned long style, unsigned long exStyle);

private:
    VideoSubsystemWindowObserver *observer_ = nullptr;
    bool isMoveHandlerActive_ = false;
    bool isResizeHandlerActive_ = false;
    bool fullscreen_;
};

} // namespace quillmarsh

#endif
