// The widgets for work on the current document.
#ifndef QUILLMARSH_PLUGINS_VIEWER_WORK_WORKPANEL_H
#define QUILLMARSH_PLUGINS_VIEWER_WORK_WORKPANEL_H

#include "choice.h"
#include "room.h"

#include <quillmarsh/widgets/label.h>
#include <quillmarsh/widgets/progressbar.h>
#include <quillmarsh/widgets/slider.h>
#include <quillmarsh/widgets/textfield.h>

#include <viewer_model/files/documentwork.h>

namespace viewer
{

/// Fills the column with groups of widgets, one for each command. Every button runs the line that could be typed. The
/// widgets belong to the column. Frame thread only.
class WorkPanel : quillmarsh::NoCopy
{
public:
    WorkPanel(Workspace &workspace, DocumentWork &work, quillmarsh::widgets::Stack &column);

    /// Follows the current document and its work.
    void Update();
    /// Asks for the name of a file to save to, beginning with the document's own. Throws a DataException when nothing
    /// can be saved.
    void AskForFile();
    /// Asks for the beginning of the names of mipmaps.
    void AskForMipmaps();

private:
    /// A row of the list of jobs.
    struct JobRow
    {
        quillmarsh::widgets::Stack *row;
        quillmarsh::widgets::ProgressBar *bar;
        unsigned int number = 0;
    };

    void MakeSteps(quillmarsh::widgets::Stack &column);
    void MakeFormat(quillmarsh::widgets::Stack &column);
    void MakeSize(quillmarsh::widgets::Stack &column);
    void MakeCrop(quillmarsh::widgets::Stack &column);
    void MakeFlip(quillmarsh::widgets::Stack &column);
    void MakeSave(quillmarsh::widgets::Stack &column);
    void MakeJobs(quillmarsh::widgets::Stack &column);

    /// Adds a button to the widgets that need a document.
    quillmarsh::widgets::TextButton *AddButton(quillmarsh::gui::Component *parent, string const &text,
                                               std::function<void()> action, char const *toolTip);
    void ShowDocument();
    void ShowSteps(DocumentPtr const &document);
    void ShowJobs();
    /// Returns the settings for saving as words of a line.
    string FormatSaveWords() const;
    DocumentPtr RequireDocument() const;

    Workspace &workspace_;
    DocumentWork &work_;
    quillmarsh::widgets::Label *summary_ = nullptr;
    quillmarsh::widgets::TextButton *undo_ = nullptr;
    quillmarsh::widgets::TextButton *redo_ = nullptr;
    Choice *format_ = nullptr;
    Choice *filter_ = nullptr;
    quillmarsh::widgets::TextField *size_ = nullptr;
    quillmarsh::widgets::TextField *cropSize_ = nullptr;
    quillmarsh::widgets::TextField *cropPlace_ = nullptr;
    std::vector<quillmarsh::widgets::TextButton *> flips_;
    quillmarsh::widgets::Label *qualityText_ = nullptr;
    quillmarsh::widgets::Slider *quality_ = nullptr;
    quillmarsh::widgets::CheckBox *compression_ = nullptr;
    quillmarsh::widgets::Label *jobsHeading_ = nullptr;
    std::vector<JobRow> jobs_;
    std::vector<quillmarsh::widgets::TextButton *> buttons_;
    /// What the widgets show.
    DocumentPtr shown_;
    string sizeText_;
    unsigned int revision_ = 0;
    bool isBusy_ = false;
};

} // namespace viewer

#endif
