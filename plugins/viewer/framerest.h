// Draws only the frames that somebody asks for, and lets the program sleep between them.
#ifndef QUILLMARSH_PLUGINS_VIEWER_FRAMEREST_H
#define QUILLMARSH_PLUGINS_VIEWER_FRAMEREST_H

#include "workspace.h"

#include <quillmarsh/basetools/consoleoutputbuffer.h>
#include <quillmarsh/gui/gui_watch.h>
#include <quillmarsh/platform/desktopevents.h>
#include <quillmarsh/widgets/textfield.h>

namespace viewer
{

/// Decides for each frame whether it is drawn and shown. It is after Workspace::Invalidate(), for a moment after each
/// input, event of a window and output of the console, and when a caret blinks. When nothing has happened for that moment, the program runs only a
/// few frames a second: whatever wakes the kernel, and every event of a window, begins a frame at once.
/// Frame thread only.
class FrameRest : quillmarsh::NoCopy, quillmarsh::platform::DesktopListener, quillmarsh::ConsoleOutputBuffer::Observer
{
public:
    /// Borrows the workspace. The kernel must have its console.
    explicit FrameRest(Workspace &workspace);
    /// Gives the kernel its switches and its frame rate back.
    ~FrameRest() override;

    /// Decides about the frame that is going on, after the GUI got its input and everything was updated.
    void Update(double seconds);
    bool IsDrawing() const { return isDrawing_; }
    /// Number of frames that were drawn.
    unsigned int GetNumDrawn() const { return numDrawn_; }

private:
    void OnDesktopEvent(quillmarsh::platform::DesktopEvent const &event) override;
    void OnChanged(quillmarsh::ConsoleOutputBuffer const &buffer) override;
    bool HasInput();
    bool HasCaretBlinked();
    bool CanSleep() const;
    void SetDrawing(bool draws);
    void SetResting(bool rests);

    Workspace &workspace_;
    quillmarsh::platform::DesktopSubscription subscription_;
    /// Seconds for which frames are drawn and run at the full rate.
    double stir_;
    /// The console has changed; any thread sets it.
    std::atomic<bool> hasOutput_ = false;
    bool isDrawing_ = true;
    bool isResting_ = false;
    /// Limit of the frame rate while the program does not rest.
    double fullRate_ = 0;
    quillmarsh::gui::Watch<quillmarsh::gui::Component> lastFocus_;
    bool wasCaretShown_ = false;
    quillmarsh::vec2 lastMouse_ = {0, 0};
    unsigned int numDrawn_ = 0;
};

} // namespace viewer

#endif
