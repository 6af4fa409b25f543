#include <quillmarsh/host/windowtitle.h>

#include <quillmarsh/host/hostkernel.h>

#include <iomanip>
#include <sstream>

namespace quillmarsh::host
{

namespace
{

constexpr double s_updateInterval = 0.5;

string MakeTitle(string const &plain, FrameStatisticsCollector const &statistics)
{
    std::ostringstream text;
    text << plain << " - " << std::fixed << std::setprecision(1) << statistics.GetFrameRateSmooth()
         << " frames per second";
    if (statistics.GetFrameRateSmoothMin() > 0)
        text << " (" << statistics.GetFrameRateSmoothMin() << " to " << statistics.GetFrameRateSmoothMax() << ')';
    return text.str();
}

} // namespace

WindowTitle::WindowTitle(HostKernel &kernel) : kernel_(kernel) {}

WindowTitle::~WindowTitle() = default;

void WindowTitle::Export()
{
    isExported_ = kernel_.GetVariableRegistry()->RegisterVariable(
        VariableProxyBool(&isWanted_, s_szVariable, "show the frame rate in the title of the main window"));
}

void WindowTitle::Withdraw()
{
    statistics_.reset();
    if (std::exchange(isExported_, false))
        kernel_.GetVariableRegistry()->UnregisterVariable(s_szVariable);
}

void WindowTitle::Update(platform::Window *window)
{
    if (window == nullptr || !isWanted_)
    {
        if (statistics_ != nullptr)
            End(window);
        return;
    }
    if (statistics_ == nullptr)
        Begin(*window);
    double const now = kernel_.GetFrameTime();
    if (now < nextUpdate_)
        return;
    nextUpdate_ = now + s_updateInterval;
    // A title that is not ours is a new one of the application.
    if (string const title = window->GetTitle(); title != shown_)
        plain_ = title;
    shown_ = MakeTitle(plain_, *statistics_);
    window->SetTitle(shown_);
}

void WindowTitle::Begin(platform::Window const &window)
{
    statistics_ = std::make_unique<FrameStatisticsCollector>();
    plain_ = shown_ = window.GetTitle();
    nextUpdate_ = kernel_.GetFrameTime() + s_updateInterval;
}

void WindowTitle::End(platform::Window *window)
{
    statistics_.reset();
    if (window != nullptr && window->GetTitle() == shown_)
        window->SetTitle(plain_);
}

} // namespace quillmarsh::host
