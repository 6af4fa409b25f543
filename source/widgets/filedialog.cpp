#include <quillmarsh/widgets/filedialog.h>

#include <quillmarsh/basetools/filesystem.h>
#include <quillmarsh/widgets/label.h>
#include <quillmarsh/widgets/listbox.h>
#include <quillmarsh/widgets/stack.h>
#include <quillmarsh/widgets/textbutton.h>
#include <quillmarsh/widgets/textencoding.h>
#include <quillmarsh/widgets/textfield.h>

#include "source/widgets/glyphcase.h"
#include "source/widgets/inputhelp.h"

#include <algorithm>
#include <iterator>

namespace quillmarsh::widgets
{

namespace
{

constexpr vec2 s_sizeInUnits(480, 400);
/// The list takes what is left of the panel; this much at least.
constexpr vec2 s_listSizeInUnits(200, 72);

string MakeSortKey(string const &name)
{
    string key = ToGlyphs(name);
    std::transform(key.begin(), key.end(), key.begin(), ToLowerGlyph);
    return key;
}

/// Tells whether a name has an extension, which may have dots itself, without regard to case.
bool HasExtension(string const &name, string const &extension)
{
    string const end = file_system::GetExtensionSeparator() + extension;
    if (name.size() <= end.size())
        return false;
    return std::equal(end.begin(), end.end(), name.end() - static_cast<std::ptrdiff_t>(end.size()),
                      [](char a, char b) { return ToLowerGlyph(a) == ToLowerGlyph(b); });
}

} // namespace

/// Reads one directory.
class FileDialog::Lister : public file_system::FileSystemWalker
{
public:
    std::vector<Entry> TakeSorted()
    {
        std::sort(entries_.begin(), entries_.end(),
                  [](Entry const &a, Entry const &b)
                  {
                      if (a.isDirectory != b.isDirectory)
                          return a.isDirectory;
                      int const order = a.sortKey.compare(b.sortKey);
                      return order != 0 ? order < 0 : a.name < b.name;
                  });
        return std::move(entries_);
    }

    void Add(string const &name, bool isDirectory) { entries_.push_back({name, MakeSortKey(name), isDirectory}); }

protected:
    void OnFile(unsigned int, unsigned int, string const &, string const &name) override { Add(name, false); }
    bool OnDirectory(unsigned int, unsigned int, string const &, string const &name) override
    {
        Add(name, true);
        return false;
    }

private:
    std::vector<Entry> entries_;
};

FileDialog &FileDialog::Show(Params params)
{
    auto *const dialog = new FileDialog(std::move(params));
    gui::Watch<FileDialog> const watch(*dialog);
    dialog->Open();
    if (watch.Get() != nullptr)
        dialog->RunModal();
    if (watch.Get() != nullptr)
        dialog->nameField_->RequestKeyboardFocus();
    return *dialog;
}

FileDialog::FileDialog(Params params) : Panel(params.title, s_sizeInUnits), params_(std::move(params))
{
    MakeWidgets();
    string processDirectory;
    bool const isThere = (!params_.directory.empty() && Load(params_.directory)) ||
                         (file_system::GetProcessDirectory(processDirectory, true) && Load(processDirectory));
    if (!isThere)
    {
        std::vector<string> volumes;
        file_system::GetVolumes(volumes);
        Load(volumes.empty() ? string() : volumes.front());
    }
    SetName(params_.fileName);
    OnNameChanged();
    nameField_->SelectAll();
    SetCloseAction(
        [this]
        {
            std::function<void()> const cancelAction = params_.cancelAction;
            delete this;
            if (cancelAction)
                cancelAction();
        });
}

FileDialog::~FileDialog() = default;

void FileDialog::MakeWidgets()
{
    auto *const column = new Stack(true, &GetContent());
    column->SetFitToParent(true);
    column->SetAlignment(e_stack_stretch);
    auto *const top = new Stack(false, column);
    auto *const up = new TextButton(top, string());
    up->SetMark(e_mark_parent_folder);
    up->SetToolTipText("Parent directory");
    up->SetAction([this] { GoToParent(); });
    directoryField_ = new TextField(top);
    directoryField_->SetEnterAction([this](string const &) { OnDirectoryEntered(); });
    top->SetFill(*directoryField_);

    entries_ = new ListBox(column, s_listSizeInUnits);
    entries_->SetAction([this](unsigned int row) { OnEntrySelected(row); });
    entries_->SetOpenAction([this](unsigned int row) { OnEntryOpened(row); });
    column->SetFill(*entries_);
    reason_ = new Label(column, string(), ShaderName_Failure);
    reason_->SetFixedWidth(true);

    auto *const bottom = new Stack(false, column);
    new Label(bottom, "Name");
    nameField_ = new TextField(bottom);
    nameField_->SetAction([this](string const &) { OnNameChanged(); });
    bottom->SetFill(*nameField_);
    char const *const answer = params_.isDirectory ? "Choose" : (params_.isSaving ? "Save" : "Open");
    auto *const accept = new TextButton(bottom, answer);
    accept->SetAction([this] { Accept(GetEnteredName()); });
    auto *const cancel = new TextButton(bottom, "Cancel");
    cancel->SetAction([this] { Cancel(); });
    SetDefaultButton(accept);
    SetCancelButton(cancel);
}

// The list.

bool FileDialog::Load(string const &directory)
{
    Lister lister;
    string full = directory;
    if (directory.empty())
    {
        std::vector<string> volumes;
        if (!file_system::GetVolumes(volumes))
            return false;
        for (string const &volume : volumes)
            lister.Add(volume, true);
    }
    else if (!file_system::ForceFullPathName(full, true) || !lister.Walk(full))
    {
        return false;
    }
    listed_ = lister.TakeSorted();
    directory_ = full;
    directoryField_->SetText(directory_);
    directoryText_ = directoryField_->GetText();
    ShowReason(string());
    ShowEntries();
    return true;
}

bool FileDialog::IsListed(Entry const &entry) const
{
    bool const isHidden = entry.name.starts_with('.');
    if (isHidden && !showsHidden_)
        return false;
    auto const &extensions = params_.extensions;
    if (entry.isDirectory)
        return true;
    bool const hasExtension = std::any_of(extensions.begin(), extensions.end(),
                                          [&](string const &each) { return HasExtension(entry.name, each); });
    return !params_.isDirectory && (extensions.empty() || hasExtension);
}

void FileDialog::ShowEntries()
{
    std::vector<ListItem> items;
    items.reserve(listed_.size());
    for (unsigned int i = 0; i < listed_.size(); ++i)
    {
        Entry const &entry = listed_[i];
        eMark const directoryMark = directory_.empty() ? e_mark_drive : e_mark_folder;
        if (IsListed(entry))
            items.push_back({entry.name, entry.isDirectory ? directoryMark : e_mark_file, string(), i});
    }
    entries_->Select(ListBox::s_noItem);
    entries_->SetItems(std::move(items));
    entries_->ScrollTo(0);
}

void FileDialog::SelectEntry(string const &name)
{
    for (unsigned int row = 0; row < entries_->GetNumItems(); ++row)
    {
        if (entries_->GetItem(row).text == name)
            return entries_->Select(row);
    }
}

void FileDialog::GoTo(string const &directory)
{
    string const fullName = directory.empty() ? directory : MakeFullName(directory);
    if (!Load(fullName))
    {
        ShowReason("Cannot list \"" + fullName + "\": " + file_system::GetLastFailureReason());
        return;
    }
    // What was chosen in one directory is nothing in another one; a file to write keeps its name.
    if (!params_.isSaving)
        SetName(string());
}

void FileDialog::GoToParent()
{
    string child = directory_;
    file_system::RemoveTrailingPathSeparator(child);
    string parent;
    string name;
    string extension;
    file_system::SplitFileName(child, parent, name, extension);
    bool const isRoot = parent.empty() || parent == directory_;
    std::vector<string> volumes;
    file_system::GetVolumes(volumes);
    bool const hasMoreRoots = volumes != std::vector<string>{directory_};
    if (directory_.empty() || (isRoot && !hasMoreRoots))
        return;
    string const former = directory_;
    GoTo(isRoot ? string() : parent);
    if (directory_ != former)
        SelectEntry(isRoot ? former : child.substr(parent.size()));
}

// The fields.

void FileDialog::ShowReason(string const &reason)
{
    reason_->SetText(reason);
}

void FileDialog::SetName(string const &name)
{
    nameField_->SetText(name);
    chosenName_ = name;
    chosenText_ = nameField_->GetText();
}

string FileDialog::GetEnteredName() const
{
    string const text = nameField_->GetText();
    return text == chosenText_ ? chosenName_ : text;
}

string FileDialog::MakeFullName(string const &name) const
{
    string full = file_system::IsAbsolutePathName(name) ? name : directory_ + name;
    // On Windows, both separators are typed.
    std::replace(full.begin(), full.end(), '/', file_system::GetPathSeparator());
    std::vector<string> pieces;
    file_system::SplitPathName(full, pieces);
    bool const hasDots =
        std::any_of(pieces.begin(), pieces.end(), [](string const &piece) { return piece == "." || piece == ".."; });
    string expanded;
    if (hasDots && file_system::ExpandPathName(full, expanded, false))
        full = expanded;
    return full;
}

void FileDialog::OnNameChanged()
{
    bool const showsHidden = nameField_->GetText().starts_with('.');
    ShowReason(string());
    if (showsHidden == showsHidden_)
        return;
    showsHidden_ = showsHidden;
    ShowEntries();
}

void FileDialog::OnDirectoryEntered()
{
    string const text = directoryField_->GetText();
    GoTo(text == directoryText_ ? directory_ : text);
}

void FileDialog::OnEntrySelected(unsigned int row)
{
    if (row >= entries_->GetNumItems())
        return;
    Entry const &entry = listed_[entries_->GetItem(row).data];
    if (entry.isDirectory == params_.isDirectory)
        SetName(entry.name);
}

void FileDialog::OnEntryOpened(unsigned int row)
{
    if (row >= entries_->GetNumItems())
        return;
    Entry const entry = listed_[entries_->GetItem(row).data];
    if (entry.isDirectory)
        GoTo(directory_ + entry.name);
    else
        Accept(entry.name);
}

bool FileDialog::OnKeyboardKey(bool down, eKey key, unsigned int repeatCount, char character)
{
    if (down && key == e_key_backspace)
    {
        GoToParent();
        return true;
    }
    bool const entersList = key == e_key_arrow_down || key == e_key_arrow_up;
    if (down && entersList && nameField_->IsFocused() && entries_->GetNumItems() != 0)
    {
        gui::Watch<ListBox> const entries(*entries_);
        entries_->RequestKeyboardFocus();
        if (entries.Get() != nullptr)
            entries->OnKeyboardKey(down, key, repeatCount, character);
        return true;
    }
    return Panel::OnKeyboardKey(down, key, repeatCount, character);
}

} // namespace quillmarsh::widgets
