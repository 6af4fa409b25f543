// Properties and geometry of a program's main window.
#ifndef QUILLMARSH_FRAMEWORK_MAINWINDOW_H
#define QUILLMARSH_FRAMEWORK_MAINWINDOW_H

#include <quillmarsh/platform/types.h>

namespace quillmarsh
{

/// Look of the main window, which Application::PostCreateMainWindow may change. A plain record.
struct MainWindowProperties
{
    /// Number of the icon in the program's file that the window shows, on Windows; 0 for the desktop's choice.
    unsigned int IconID = 0;
    /// Text of the window's title bar.
    string Title;
};

/// Place of the main window, in pixels of the desktop: the position of the whole window, and the size of its client area.
/// A plain record.
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
