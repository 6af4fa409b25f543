// Modal panel that asks for the name of a file.
#ifndef QUILLMARSH_WIDGETS_FILEDIALOG_H
#define QUILLMARSH_WIDGETS_FILEDIALOG_H

#include <quillmarsh/widgets/panel.h>

#include <vector>

namespace quillmarsh::widgets
{

class Label;
class ListBox;
class TextField;

/// File dialog: a modal panel with the directory, its entries, and a name. Directories come first, all in the order of
/// their names without regard to case. What cannot be opened or listed is told in the dialog, with the system's reason,
/// and the dialog stays. Nothing waits for it: an action gets the answer. Frame thread only.
class QUILLMARSH_API FileDialog : public Panel
{
public:
    /// What it asks for, all in UTF-8. A plain record.
    struct Params
    {
        string title = "Open";
        /// True asks for a file to write: it may not exist, and one that exists is confirmed.
        bool isSaving = false;
        /// True asks for a directory.
        bool isDirectory = false;
        /// Where it begins; the process directory if that is empty or does not exist.
        string directory = string();
        /// Name at the begin.
        string fileName = string();
        /// Extensions without a dot that are listed, without regard to case; none for all files.
        std::vector<string> extensions = {};
        /// Gets the full name of the file, after the dialog was deleted. Not called for a cancelled dialog. May be null.
        std::function<void(string const &)> action = nullptr;
        /// Called after a cancelled dialog was deleted. May be null.
        std::function<void()> cancelAction = nullptr;
    };

    /// Makes a dialog that deletes itself when it was answered, and opens it.
    static FileDialog &Show(Params params);

    ~FileDialog() override;
    /// Returns the directory that is listed, with a separator at its end.
    string const &GetDirectory() const { return directory_; }
    /// Lists another directory. Shows the reason, and stays where it is, if that fails.
    void GoTo(string const &directory);
    /// Takes a name, absolute or relative to the directory, as if it was entered.
    void Accept(string const &name);
    /// Closes the dialog without a file, as its button does.
    void Cancel();

private:
    explicit FileDialog(Params params);
    void List();
    void ShowReason(string const &reason);
    void Finish(string const &fileName);

    Params params_;
    string directory_;
    TextField *directoryField_ = nullptr;
    ListBox *entries_ = nullptr;
    TextField *nameField_ = nullptr;
    Label *reason_ = nullptr;
};

} // namespace quillmarsh::widgets

#endif
