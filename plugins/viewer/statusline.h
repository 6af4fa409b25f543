// The line at the bottom: what was said, what is under the mouse, and the work that goes on.
#ifndef QUILLMARSH_PLUGINS_VIEWER_STATUSLINE_H
#define QUILLMARSH_PLUGINS_VIEWER_STATUSLINE_H

#include "workspace.h"

#include <quillmarsh/widgets/label.h>
#include <quillmarsh/widgets/progressbar.h>
#include <quillmarsh/widgets/textbutton.h>

namespace viewer
{

/// Status line. The job that runs stands at its right end, with a button that stops it. Frame thread only.
class StatusLine : public quillmarsh::gui::Component
{
public:
    StatusLine(quillmarsh::gui::Component &parent, Workspace &workspace);
    ~StatusLine() override;

    /// Brings everything up to date; `status` is that of the room.
    void Update(string const &status);
    static float CalcHeight();

    void RecalcLayout() override;

private:
    void ShowJob();

    Workspace &workspace_;
    quillmarsh::widgets::Label *said_;
    quillmarsh::widgets::Label *failure_;
    quillmarsh::widgets::Label *status_;
    quillmarsh::widgets::ProgressBar *progress_;
    quillmarsh::widgets::TextButton *stop_;
    /// Of the job that is shown; 0 for none.
    unsigned int job_ = 0;
};

} // namespace viewer

#endif
