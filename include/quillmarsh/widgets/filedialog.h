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
/// their names without regard to case. Names that begin with a dot show while the name that is typed begins with one.
/// Backspace outside of the fields goes to the parent directory; above the roots, Windows lists its drives. What cannot be opened or listed is told in the dialog, with the system's reason,
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
        /// Gets the full name of the file, after the dialog was deleted; that of a directory ends in a separator. A file
        /// to write gets the first extension if it is entered without one. Not called for a cancelled dialog. May be
        /// null.
        std::function<void(string const &)> action = nullptr;
        /// Called after a cancelled dialog was deleted. May be null.
        std::function<void()> cancelAction = nullptr;
    };

    /// Makes a dialog that deletes itself when it was answered, and opens it.
    static FileDialog &Show(Params params);

    ~FileDialog() override;
    /// Returns the directory that is listed, with a separator at its end; empty while the drives are listed.
    string const &GetDirectory() const { return directory_; }
    /// Lists another directory, which may be relative to the listed one. Shows the reason, and stays where it is, if that
    /// fails.
    void GoTo(string const &directory);
    /// Lists the parent directory with the present one selected; above a root, the roots if there are several.
    void GoToParent();
    /// Takes a name, absolute or relative to the directory, as if it was entered.
    void Accept(string const &name);
    /// Closes the dialog without a file, as its button does.
    void Cancel();

    using Panel::OnKeyboardKey;
    bool OnKeyboardKey(bool down, eKey key, unsigned int repeatCount, char character) override;

private:
    struct Entry
    {
        string name;
        /// Name as glyphs in lower case, by which entries are sorted.
        string sortKey;
        bool isDirectory;
    };
    class Lister;

    explicit FileDialog(Params params);
    void MakeWidgets();
    /// Lists a directory, or the volumes for an empty name. Returns false, and changes nothing, if that fails.
    bool Load(string const &directory);
    /// Fills the list with the entries that are to be shown.
    void ShowEntries();
    bool IsListed(Entry const &entry) const;
    void SelectEntry(string const &name);
    void ShowReason(string const &reason);
    void SetName(string const &name);
    /// Returns the name that is entered: the bytes of a name that was chosen, also where the field cannot show them.
    string GetEnteredName() const;
    /// Completes a name that is relative to the directory, and resolves "." and "..".
    string MakeFullName(string const &name) const;

    /// @name What the user does
    /// @{
    void OnEntrySelected(unsigned int row);
    void OnEntryOpened(unsigned int row);
    void OnNameChanged();
    void OnDirectoryEntered();
    /// @}
    /// @name Answers
    /// @{
    void AcceptDirectory(string const &fullName);
    void AcceptForReading(string const &fullName);
    void AcceptForWriting(string fullName);
    void Finish(string const &fileName);
    /// @}

    Params params_;
    string directory_;
    std::vector<Entry> listed_;
    bool showsHidden_ = false;
    /// Name that was put into the field, and what the field makes of it.
    string chosenName_;
    string chosenText_;
    TextField *directoryField_ = nullptr;
    /// What the field makes of the directory's name.
    string directoryText_;
    ListBox *entries_ = nullptr;
    TextField *nameField_ = nullptr;
    Label *reason_ = nullptr;
};

} // namespace quillmarsh::widgets

#endif
