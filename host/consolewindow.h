// The host's window for its console.
#ifndef QUILLMARSH_HOST_CONSOLEWINDOW_H
#define QUILLMARSH_HOST_CONSOLEWINDOW_H

#include <quillmarsh/gui/consoleoutputwindow.h>

namespace quillmarsh::host
{

/// Shows the console's text in the lower right corner of the desktop. Its buttons only hide it, and no key ends the
/// program. Main thread only.
class ConsoleWindow : public ConsoleOutputWindow
{
public:
    /// Opens the window and shows it. The buffer is borrowed. Throws SystemResourceException.
    explicit ConsoleWindow(ConsoleOutputBuffer &buffer);
    ~ConsoleWindow() override;
};

/// Opens the console's window; returns null and sets `reason` when the desktop refuses it.
AutoPtr<ConsoleWindow> OpenConsoleWindow(ConsoleOutputBuffer &buffer, string &reason);

} // namespace quillmarsh::host

#endif
