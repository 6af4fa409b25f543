// Frame statistics in the title of the main window.
#ifndef QUILLMARSH_HOST_WINDOWTITLE_H
#define QUILLMARSH_HOST_WINDOWTITLE_H

#include <quillmarsh/framework/framestatisticscollector.h>
#include <quillmarsh/platform/window.h>

namespace quillmarsh::host
{

class HostKernel;

/// Shows the frame rate in the title of the main window while the exported variable `window.show-statistics` is true.
/// Frame thread only.
class WindowTitle : NoCopy
{
public:
    /// Name of the variable.
    static constexpr char s_szVariable[] = "window.show-statistics";

    /// Borrows `kernel`, which must outlive this object.
    explicit WindowTitle(HostKernel &kernel);
    ~WindowTitle();

    /// Exports the variable.
    void Export();
    /// Ends the statistics, and withdraws the variable.
    void Withdraw();
    /// Updates the title twice a second. Call it in each frame; null for no window.
    void Update(platform::Window *window);

private:
    void Begin(platform::Window const &window);
    void End(platform::Window *window);

    HostKernel &kernel_;
    bool isWanted_ = false;
    bool isExported_ = false;
    /// Null while no statistics are shown.
    AutoPtr<FrameStatisticsCollector> statistics_;
    /// Title without statistics, and with them.
    string plain_;
    string shown_;
    double nextUpdate_ = 0;
};

} // namespace quillmarsh::host

#endif
