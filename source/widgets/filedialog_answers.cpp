// How a file dialog ends.
#include <quillmarsh/widgets/filedialog.h>

#include <quillmarsh/basetools/filesystem.h>
#include <quillmarsh/widgets/messagedialog.h>

#include <fstream>

namespace quillmarsh::widgets
{

namespace
{

bool IsDirectory(string const &name)
{
    return file_system::GetFileType(name, true) == std::filesystem::file_type::directory;
}

string Quote(string const &name)
{
    return '"' + name + '"';
}

/// Directory of a full name, with its separator, and the rest of the name.
void SplitDirectory(string const &fullName, string &directory, string &name)
{
    string base;
    string extension;
    file_system::SplitFileName(fullName, directory, base, extension);
    name = fullName.substr(directory.size());
}

} // namespace

void FileDialog::Accept(string const &name)
{
    if (name.empty() && !(params_.isDirectory && !directory_.empty()))
        return ShowReason("Enter a name.");
    string const fullName = name.empty() ? directory_ : MakeFullName(name);
    if (params_.isDirectory)
        AcceptDirectory(fullName);
    else if (IsDirectory(fullName))
        GoTo(fullName);
    else if (params_.isSaving)
        AcceptForWriting(fullName);
    else
        AcceptForReading(fullName);
}

void FileDialog::AcceptDirectory(string const &fullName)
{
    if (IsDirectory(fullName))
    {
        string name = fullName;
        file_system::ForceTrailingPathSeparator(name);
        return Finish(name);
    }
    bool const exists = file_system::FileExists(fullName);
    ShowReason("Cannot open " + Quote(fullName) + ": " +
               (exists ? "it is no directory" : file_system::GetLastFailureReason()));
}

void FileDialog::AcceptForReading(string const &fullName)
{
    // Only a plain file may be opened for a trial: a pipe would wait for its writer.
    std::filesystem::file_type const type = file_system::GetFileType(fullName, true);
    bool const isPlain = type == std::filesystem::file_type::regular;
    bool const isOther = type != std::filesystem::file_type::none && type != std::filesystem::file_type::not_found;
    if (isPlain ? std::ifstream(file_system::GetStreamPath(fullName)).is_open() : isOther)
        return Finish(fullName);
    ShowReason("Cannot open " + Quote(fullName) + ": " + file_system::GetLastFailureReason());
}

void FileDialog::AcceptForWriting(string fullName)
{
    string directory;
    string name;
    SplitDirectory(fullName, directory, name);
    if (name.empty() || !IsDirectory(directory) || file_system::GetStreamPath(fullName).empty())
        return ShowReason("Cannot write " + Quote(fullName) + ": " + file_system::GetLastFailureReason());
    char const dot = file_system::GetExtensionSeparator();
    if (!params_.extensions.empty() && file_system::GetFileNameExtension(name).empty())
        fullName += fullName.back() == dot ? params_.extensions.front() : dot + params_.extensions.front();
    if (!file_system::FileExists(fullName))
        return Finish(fullName);
    if (IsDirectory(fullName))
        return ShowReason("Cannot write " + Quote(fullName) + ": it is a directory");
    gui::Watch<FileDialog> const self(*this);
    MessageDialog::Params question;
    question.title = params_.title;
    question.text = Quote(fullName) + " exists. Replace it?";
    question.sign = e_mark_warning;
    question.buttons = {"Replace", "Cancel"};
    question.defaultButton = 1;
    question.action = [self, fullName](unsigned int button)
    {
        if (button == 0 && self.Get() != nullptr)
            self->Finish(fullName);
    };
    MessageDialog::Show(std::move(question));
}

void FileDialog::Finish(string const &fileName)
{
    std::function<void(string const &)> const action = params_.action;
    gui::Watch<FileDialog> const self(*this);
    SetCloseAction(nullptr);
    Close();
    delete self.Get();
    if (action)
        action(fileName);
}

void FileDialog::Cancel()
{
    Close();
}

} // namespace quillmarsh::widgets
