// The application's way up to the frames, and down again.
#ifndef QUILLMARSH_HOST_APPLICATIONWALK_H
#define QUILLMARSH_HOST_APPLICATIONWALK_H

#include <quillmarsh/host/hostkernel.h>

#include <functional>

namespace quillmarsh::host
{

class ScreenshotSettings;

/// Walks an application through its start-up, stage by stage, and down through the same stages.
///
/// A step that fails ends the way up. The way down undoes the steps that succeeded, in reverse order, and goes on after
/// further failures. Frame thread only.
class ApplicationWalk : NoCopy
{
public:
    /// Borrows `kernel`, which must outlive this object.
    explicit ApplicationWalk(HostKernel &kernel);
    ~ApplicationWalk();

    /// Creates the application and walks it up to the frames. False when a step fails, or when the application asks not
    /// to go on. Call Down() in either case.
    bool Up(std::function<AutoPtr<Application>()> const &create, Application::StartupInfo const &info);
    /// Walks down from the stage that Up() reached, and deletes the application.
    void Down();

    /// Returns the application's answer at start-up.
    Application::StartupResult const &GetResult() const { return result_; }
    /// Is called with the answer before the start-up goes on; may be null.
    std::function<void(Application::StartupResult const &)> onStartupResult;

private:
    struct Undo
    {
        eKernelLevel level;
        std::function<void()> call;
    };

    bool Climb(eKernelLevel level, bool enabled, void (ApplicationWalk::*stage)());
    void Descend(eKernelLevel level);
    void CleanUp();

    void StartUp();
    void OpenGenericExtensions();
    void OpenDevices();
    void OpenVideo();
    void OpenSubsystems();
    void ReachFrames();

    HostKernel &kernel_;
    AutoPtr<Application> application_;
    Application::StartupInfo info_;
    Application::StartupResult result_;
    AutoPtr<ScreenshotSettings> screenshots_;
    /// Levels that were started, in order.
    std::vector<eKernelLevel> climbed_;
    std::vector<Undo> undo_;
};

} // namespace quillmarsh::host

#endif
