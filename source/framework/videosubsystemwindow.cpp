#include <quillmarsh/framework/videosubsystemwindow.h>

namespace quillmarsh
{

using namespace win_utils;

VideoSubsystemWindow::VideoSubsystemWindow(bool fullscreen) : TopLevelWindow(nullptr), fullscreen_(fullscreen)
{
    SetRole(platform::eWindowRole::e_main);
    EnableSystemCommands(false, false, false);
}

void VideoSubsystemWindow::EnableSystemCommands(bool closeThroughAltF4, bool menuThroughF10, bool menuThroughAltSpace)
{
    EnableCloseThroughAltF4(closeThroughAltF4);
    EnableMenuThroughF10(menuThroughF10);
    EnableMenuThroughAltSpace(menuThroughAltSpace);
}

void VideoSubsystemWindow::CreateSystemWindow(unsigned int classStyle, unsigned long style, unsigned long exStyle)
{
    TopLevelWindow::CreateSystemWindow(classStyle, style, exStyle);
    GetPlatformWindow()->KeepDisplayOn(true);
}

bool VideoSubsystemWindow::MessageHandler(long &result, HWND window, unsigned int message, unsigned int wParam,
                                          long lParam)
{
    switch (message)
    {
    case e_message_sysCommand:
        if (wParam != e_command_screenSave && wParam != e_command_monitorPower)
            break;
        result = true;
        return true;
    case e_message_enterMenuLoop:
    case e_message_exitMenuLoop:
        result = true;
        if (observer_)
            observer_->OnMenuLoop(message == e_message_enterMenuLoop);
        return true;
    case e_message_enterSizeMove:
    case e_message_exitSizeMove:
        result = true;
        if (observer_)
            observer_->OnSizeMoveLoop(message == e_message_enterSizeMove);
        return true;
    default:
        break;
    }
    return TopLevelWindow::MessageHandler(result, window, message, wParam, lParam);
}

void VideoSubsystemWindow::OnDisplaySettingsChanged()
{
    if (observer_)
        observer_->OnDisplaySettingsChanged();
}

void VideoSubsystemWindow::OnActivated(bool active)
{
    if (observer_)
        observer_->OnActivated(active);
}

void VideoSubsystemWindow::OnMoved()
{
    if (observer_ && isMoveHandlerActive_)
        observer_->OnMoved();
}

void VideoSubsystemWindow::OnResized(eResizeAction action)
{
    if (observer_ && isResizeHandlerActive_)
        observer_->OnResized(action);
}

void VideoSubsystemWindow::OnPaint()
{
    if (observer_)
        observer_->OnPaint();
}

} // namespace quillmarsh
