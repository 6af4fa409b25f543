#include "consolewindow.h"

#include <quillmarsh/basetools/exception.h>
#include <quillmarsh/platform/window.h>

#include <algorithm>

namespace quillmarsh::host
{
namespace
{

/// Room for lines of 80 characters.
constexpr int s_width = 840;
constexpr int s_height = 480;
/// Distance from the edges of the desktop.
constexpr int s_margin = 16;

} // namespace

ConsoleWindow::ConsoleWindow(ConsoleOutputBuffer &buffer)
{
    SetTitleText("quillmarsh");
    SetStatusText("starting");
    SetTextSource(&buffer);
    platform::Window::Area const desktop = GetPlatformWindow()->GetWorkArea();
    int const width = std::min(s_width, desktop.size.width);
    int const height = std::min(s_height, desktop.size.height);
    SetPositionAndSize(desktop.position.x + std::max(desktop.size.width - width - s_margin, 0),
                       desktop.position.y + std::max(desktop.size.height - height - s_margin, 0),
                       static_cast<unsigned int>(width), static_cast<unsigned int>(height));
    Show();
}

ConsoleWindow::~ConsoleWindow()
{
    // Device threads may be writing.
    SetTextSource(nullptr);
}

AutoPtr<ConsoleWindow> OpenConsoleWindow(ConsoleOutputBuffer &buffer, string &reason)
{
    if (!platform::HasDisplay())
    {
        reason = "there is no display.";
        return nullptr;
    }
    try
    {
        return std::make_unique<ConsoleWindow>(buffer);
    }
    catch (SystemResourceException const &thrown)
    {
        reason = thrown.GetMessage();
        return nullptr;
    }
}

} // namespace quillmarsh::host
