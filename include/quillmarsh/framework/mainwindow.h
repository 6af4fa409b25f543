// Properties and geometry of a program's main window.
#ifndef QUILLMARSH_FRAMEWORK_MAINWINDOW_H
#define QUILLMARSH_FRAMEWORK_MAINWINDOW_H

#include <quillmarsh/platform/types.h>

namespace quillmarsh
{

/// Look of the main window, which Application::PostCreateMainWindow may change. A plain record.
struct MainWindowProperties
{
    /// Number of the icon resource that the window shows; 0 is the icon of the host.
    unsigned int IconID = 0;
    /// Text of the window's title bar.
    string Title;
};

/// Place of the main window, in pixels of the desktop. A plain record.
struct MainWindowGeometry
{
    bool Maximized = false;
    int PositionX = 0;
    int PositionY = 0;
    int Width = 160;
    int Height = 160;
};

} // namespace quillmarsh

#endif
