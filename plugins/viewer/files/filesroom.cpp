// The folder at the left: its list with previews, and the commands that open and close.
#include "files/filelist.h"
#include "files/previews.h"
#include "files/recentfolders.h"
#include "room.h"

#include <quillmarsh/basetools/filesystem.h>
#include <quillmarsh/basetools/texttools.h>
#include <quillmarsh/dataobjects/dataexception.h>
#include <quillmarsh/dataobjects/datafiles.h>
#include <quillmarsh/widgets/filedialog.h>
#include <quillmarsh/widgets/label.h>
#include <quillmarsh/widgets/menu.h>
#include <quillmarsh/widgets/textbutton.h>
#include <quillmarsh/widgets/textfield.h>

#include <algorithm>
#include <map>
#include <ostream>
#include <sstream>

namespace viewer
{
namespace
{

using namespace quillmarsh;
using sampled_data::DataException;

class FilesRoom : public Room
{
public:
    explicit FilesRoom(Workspace &workspace) : workspace_(workspace), previews_(workspace.GetLoader()) {}

    char const *GetTitle() const override { return "Files"; }
    bool StandsLeft() const override { return true; }
    void AddCommands(CommandSet &commands) override;
    std::span<KeyBinding const> GetKeys() const override;
    void MakeInspector(widgets::Stack &column) override;
    void Update(double) override;
    void WriteState(ostream &out) const override;

private:
    struct Command;
    static Command const s_commands[];

    /// @name What commands do
    /// @{
    void Open(string const &name, bool instead);
    void OpenNeighbour(bool forward);
    void ReadFolder(string const &path);
    void ReadParent();
    void ShowDialog();
    /// @}
    void MakeButtons(widgets::Stack &row);
    void OpenEntry(unsigned int index);
    void ListSamples();
    void TakeResults();
    void TellFailure(LoadResult const &result);
    void ShowCurrent();
    void ShowList();
    void AskForPreviews();

    Workspace &workspace_;
    Previews previews_;
    RecentFolders recent_;
    /// @name Owned by their parents, and null without a GUI
    /// @{
    FileList *list_ = nullptr;
    widgets::Label *path_ = nullptr;
    widgets::TextField *filter_ = nullptr;
    widgets::Label *count_ = nullptr;
    widgets::TextButton *recentButton_ = nullptr;
    /// @}
    unsigned int folderRevision_ = 0;
    unsigned int documentsRevision_ = 0;
    /// Failures by file that were told.
    std::map<string, string> told_;
    /// File of the current document.
    string shownFile_;
    bool wasLoaded_ = false;
    unsigned int numUpdates_ = 0;
};

// Names.

bool IsFolder(string const &name)
{
    return file_system::GetFileType(name, true) == std::filesystem::file_type::directory;
}

string GetFolderOf(string const &fileName)
{
    string path, base, extension;
    file_system::SplitFileName(fileName, path, base, extension);
    return path;
}

string GetLastPart(string const &fileName)
{
    return fileName.substr(GetFolderOf(fileName).size());
}

string FormatLine(char const *command, string const &name)
{
    return string(command) + ' ' + CommandLineParser().FormatWord(name);
}

/// Returns the reason behind "FILE: ".
string CutFileName(string const &failure, string const &fileName)
{
    return failure.starts_with(fileName + ": ") ? failure.substr(fileName.size() + 2) : failure;
}

std::vector<string> GetExtensionList()
{
    std::istringstream words(sampled_data::GetExtensions());
    std::vector<string> extensions;
    for (string word; words >> word;)
        extensions.push_back(word.substr(word.front() == '.' ? 1 : 0));
    return extensions;
}

} // namespace

// Commands.

namespace
{

constexpr KeyBinding s_keys[] = {
    {e_key_o, e_control, "open", "Choose a file to open"},
    {e_key_w, e_control, "close", "Close the file that is shown"},
    {e_key_page_down, e_plain, "next", "Next file of the folder", true},
    {e_key_page_up, e_plain, "previous", "Previous file of the folder", true},
    {e_key_arrow_right, e_alt, "next", "Next file of the folder", true},
    {e_key_arrow_left, e_alt, "previous", "Previous file of the folder", true},
    {e_key_arrow_up, e_alt, "folder-up", "Go to the folder above"},
    {e_key_f5, e_plain, "folder -again", "Read the folder again"},
    {e_key_tab, e_control, "document -next", "Next of the open files"},
};

constexpr CommandWord s_openWords[] = {
    CommandWord::Option("instead", "close the file that is shown, unless it has changes\n"),
    CommandWord::Argument("0) file-name", "name of a file or folder\n", command_values::s_file)};
constexpr CommandWord s_closeWords[] = {CommandWord::Option("discard", "give up changes that were not saved\n")};
constexpr CommandWord s_folderWords[] = {
    CommandWord::Option("again", "read the same folder again\n"),
    CommandWord::Argument("0) folder-name", "folder to list\n", command_values::s_file)};
constexpr CommandWord s_filterWords[] = {
    CommandWord::Argument("0) words", "shows the entries that have all of these words in their names\n")};
constexpr CommandWord s_recentWords[] = {
    CommandWord::Argument("0) folder-name", "remembers a folder as the latest\n", command_values::s_file)};
constexpr CommandWord s_documentWords[] = {
    CommandWord::Option("next", "shows the next one, the first after the last\n"),
    CommandWord::Argument("0) number", "number of an open file, from 1\n", command_values::s_uinteger)};

} // namespace

struct FilesRoom::Command
{
    char const *name;
    char const *shortDesc;
    std::span<CommandWord const> words;
    char const *plain;
    void (*run)(FilesRoom &room, ostream &out, CommandArguments const &arguments);
};

constexpr FilesRoom::Command FilesRoom::s_commands[] = {
    {"open", "Open a file or list a folder", s_openWords, "ask for a file",
     [](FilesRoom &room, ostream &, CommandArguments const &arguments)
     {
         if (string const *const name = arguments.FindArgument(0))
             room.Open(*name, arguments.HasOption("instead"));
         else
             room.ShowDialog();
     }},
    {"next",
     "Open the next file of the folder",
     {},
     "open it in place of the one that is shown",
     [](FilesRoom &room, ostream &, CommandArguments const &) { room.OpenNeighbour(true); }},
    {"previous",
     "Open the previous file of the folder",
     {},
     "open it in place of the one that is shown",
     [](FilesRoom &room, ostream &, CommandArguments const &) { room.OpenNeighbour(false); }},
    {"close", "Close the file that is shown", s_closeWords, "close it, unless it has changes that were not saved",
     [](FilesRoom &room, ostream &, CommandArguments const &arguments)
     {
         DocumentPtr const &document = room.workspace_.GetDocuments().GetCurrent();
         if (document == nullptr)
             throw DataException("nothing is open");
         if (document->IsChanged() && !arguments.HasOption("discard"))
             throw DataException(document->GetTitle() + " has changes: save them, or use 'close -discard'");
         room.told_.erase(document->GetFileName());
         room.workspace_.GetDocuments().Close();
     }},
    {"document", "Show one of the open files", s_documentWords, "list them",
     [](FilesRoom &room, ostream &out, CommandArguments const &arguments)
     {
         Documents &documents = room.workspace_.GetDocuments();
         std::vector<DocumentPtr> const &all = documents.GetAll();
         auto const current = std::find(all.begin(), all.end(), documents.GetCurrent());
         auto const index = static_cast<std::size_t>(current - all.begin());
         unsigned int number = 0;
         if (string const *const text = arguments.FindArgument(0))
         {
             if (!ToValue(*text, number) || number == 0 || number > all.size())
                 throw DataException("no open file has the number " + *text);
             documents.SetCurrent(all[number - 1]);
         }
         else if (arguments.HasOption("next"))
         {
             if (!all.empty())
                 documents.SetCurrent(all[(index + 1) % all.size()]);
         }
         else
         {
             for (std::size_t i = 0; i < all.size(); ++i)
                 out << i + 1 << ": " << all[i]->GetTitle() << (all[i]->IsChanged() ? " (changed)" : "")
                     << (i == index ? " (shown)" : "") << std::endl;
         }
     }},
    {"folder", "List a folder", s_folderWords, "print the folder that is listed",
     [](FilesRoom &room, ostream &out, CommandArguments const &arguments)
     {
         string const &shown = room.workspace_.GetFolder().GetPath();
         if (string const *const name = arguments.FindArgument(0))
             room.ReadFolder(room.workspace_.MakeFullName(*name));
         else if (!arguments.HasOption("again"))
             out << (shown.empty() ? "none" : shown) << std::endl;
         else if (!shown.empty())
             room.ReadFolder(shown);
     }},
    {"folder-up",
     "List the folder above",
     {},
     "list it",
     [](FilesRoom &room, ostream &, CommandArguments const &) { room.ReadParent(); }},
    {"filter", "List only some files of the folder", s_filterWords, "list all",
     [](FilesRoom &room, ostream &, CommandArguments const &arguments)
     {
         string const *const words = arguments.FindArgument(0);
         room.workspace_.GetFolder().SetFilter(words != nullptr ? *words : string());
         if (room.filter_ != nullptr && room.filter_->GetText() != room.workspace_.GetFolder().GetFilter())
             room.filter_->SetText(room.workspace_.GetFolder().GetFilter());
     }},
    {"recent-folder", "Remember a folder that can be listed again", s_recentWords, "print the folders",
     [](FilesRoom &room, ostream &out, CommandArguments const &arguments)
     {
         if (string const *const name = arguments.FindArgument(0))
             room.recent_.Add(room.workspace_.MakeFullName(*name));
         else
         {
             for (string const &folder : room.recent_.GetAll())
                 out << folder << std::endl;
         }
     }},
};

namespace
{

void FilesRoom::AddCommands(CommandSet &commands)
{
    for (Command const &command : s_commands)
    {
        commands.Add(command.name, command.shortDesc, command.words, command.plain,
                     [this, &command](ostream &out, CommandArguments const &arguments)
                     {
                         command.run(*this, out, arguments);
                         workspace_.Invalidate();
                     });
    }
}

std::span<KeyBinding const> FilesRoom::GetKeys() const
{
    return s_keys;
}

void FilesRoom::Open(string const &name, bool instead)
{
    string const full = workspace_.MakeFullName(name);
    if (IsFolder(full))
    {
        ReadFolder(full);
        return;
    }
    Documents &documents = workspace_.GetDocuments();
    DocumentPtr const old = documents.GetCurrent();
    if (instead && old != nullptr && !old->IsChanged() && old->GetFileName() != full)
        documents.Close();
    documents.Open(full);
    string path = GetFolderOf(full);
    if (path == workspace_.GetFolder().GetPath())
        return;
    // The failure of the file itself says more than that of its folder.
    if (IsFolder(path))
        ReadFolder(path);
}

void FilesRoom::OpenNeighbour(bool forward)
{
    Folder const &folder = workspace_.GetFolder();
    string from = shownFile_;
    DocumentPtr const &current = workspace_.GetDocuments().GetCurrent();
    if (current != nullptr && !current->GetFileName().empty())
        from = current->GetFileName();
    string const found = folder.FindNeighbour(from, forward);
    if (found.empty())
        throw DataException("the folder has no other file");
    Open(found, true);
}

void FilesRoom::ReadFolder(string const &path)
{
    string reason;
    if (!workspace_.GetFolder().Read(path, reason))
        throw DataException(reason);
    recent_.Add(workspace_.GetFolder().GetPath());
}

void FilesRoom::ReadParent()
{
    string path = workspace_.GetFolder().GetPath();
    if (path.empty())
        throw DataException("no folder is listed");
    string const left = path;
    file_system::RemoveTrailingPathSeparator(path);
    string const parent = GetFolderOf(path);
    if (parent.empty() || parent == left)
        throw DataException("there is no folder above " + left);
    ReadFolder(parent);
    if (list_ == nullptr)
        return;
    ShowList();
    list_->Select(GetLastPart(path));
}

void FilesRoom::ShowDialog()
{
    widgets::FileDialog::Show({.title = "Open",
                               .directory = workspace_.GetFolder().GetPath(),
                               .extensions = GetExtensionList(),
                               .action = [this](string const &name) { workspace_.Run(FormatLine("open", name)); }});
}

// The list.

void FilesRoom::MakeInspector(widgets::Stack &column)
{
    auto *const head = new widgets::Stack(false, &column, widgets::Measures::Grid);
    head->SetFill(*new widgets::Label(head, "Files", widgets::ShaderName_Heading));
    MakeButtons(*head);
    path_ = new widgets::Label(&column, string(), widgets::ShaderName_Hint);
    path_->SetFixedWidth(true);
    path_->SetGhost(false);
    filter_ = new widgets::TextField(&column);
    filter_->SetPlaceholder("Filter");
    filter_->SetToolTipText("Lists the files that have all of these words in their names.");
    filter_->SetAction([this](string const &words)
                       { workspace_.Run(words.empty() ? string("filter") : FormatLine("filter", words)); });
    list_ = new FileList(column, {.open = [this](unsigned int index) { OpenEntry(index); },
                                  .changed = [this] { workspace_.Invalidate(); },
                                  .findPreview = [this](FolderEntry const &entry)
                                  { return previews_.Find(workspace_.GetFolder().GetPath() + entry.name); }});
    column.SetFill(*list_);
    count_ = new widgets::Label(&column, string(), widgets::ShaderName_Hint);
    count_->SetFixedWidth(true);
    ShowList();
}

void FilesRoom::MakeButtons(widgets::Stack &row)
{
    auto const add = [&row](widgets::eMark mark, char const *tip)
    {
        auto *const button = new widgets::TextButton(&row, string());
        button->SetShaderName(widgets::ShaderName_ToolButton);
        button->SetMark(mark);
        button->SetToolTipText(tip);
        return button;
    };
    add(widgets::e_mark_parent_folder, "Folder above (Alt+Up)")->SetAction([this] { workspace_.Run("folder-up"); });
    recentButton_ = add(widgets::e_mark_arrow_down, "Folders that were listed before");
    recentButton_->SetAction(
        [this]
        {
            std::vector<widgets::MenuItem> items;
            for (string const &folder : recent_.GetAll())
            {
                items.push_back({.text = folder,
                                 .action = [this, folder] { workspace_.Run(FormatLine("folder", folder)); },
                                 .mark = widgets::e_mark_folder});
            }
            widgets::Menu::OpenBelow(std::move(items), *recentButton_);
        });
    add(widgets::e_mark_folder, "Choose a file (Ctrl+O)")->SetAction([this] { workspace_.Run("open"); });
}

void FilesRoom::OpenEntry(unsigned int index)
{
    Folder const &folder = workspace_.GetFolder();
    if (index >= folder.GetEntries().size())
        return;
    FolderEntry const &entry = folder.GetEntries()[index];
    string const name = folder.GetPath() + entry.name;
    workspace_.Run(FormatLine(entry.isFolder ? "folder" : "open -instead", name));
}

// Frames.

void FilesRoom::Update(double)
{
    // The lines that the program was started with have run after the first frame.
    if (++numUpdates_ == 2)
        ListSamples();
    TakeResults();
    Documents const &documents = workspace_.GetDocuments();
    if (documents.GetRevision() != documentsRevision_)
    {
        documentsRevision_ = documents.GetRevision();
        ShowCurrent();
    }
    if (list_ == nullptr)
        return;
    if (workspace_.GetFolder().GetRevision() != folderRevision_)
        ShowList();
    AskForPreviews();
}

/// Lists the data set that comes with the program, if nothing else was asked for.
void FilesRoom::ListSamples()
{
    string const samples = file_system::FindDataFile("samples");
    string reason;
    if (workspace_.GetFolder().GetPath().empty() && workspace_.GetDocuments().GetAll().empty() && !samples.empty())
        workspace_.GetFolder().Read(samples, reason);
}

void FilesRoom::TakeResults()
{
    bool hasPreviews = false;
    for (LoadResult const &result : workspace_.GetDocuments().Poll())
    {
        bool const hasFailed = result.part == LoadResult::ePart::e_failed;
        if (GetFolderOf(result.fileName) == workspace_.GetFolder().GetPath() &&
            result.part != LoadResult::ePart::e_preview)
        {
            workspace_.GetFolder().SetFailure(GetLastPart(result.fileName),
                                              CutFileName(result.failure, result.fileName));
        }
        if (hasFailed)
            TellFailure(result);
        else if (result.part != LoadResult::ePart::e_preview)
            told_.erase(result.fileName);
        hasPreviews = previews_.Take(result) || hasPreviews;
    }
    if (!hasPreviews || list_ == nullptr)
        return;
    list_->Refresh();
    workspace_.Invalidate();
}

/// Tells once why an open file cannot be loaded; its preview fails for the same reason.
void FilesRoom::TellFailure(LoadResult const &result)
{
    auto const &all = workspace_.GetDocuments().GetAll();
    bool const isOpen =
        std::any_of(all.begin(), all.end(),
                    [&result](DocumentPtr const &document) { return document->GetFileName() == result.fileName; });
    if (isOpen && std::exchange(told_[result.fileName], result.failure) != result.failure)
        workspace_.Say(result.failure, true);
}

/// Follows the current document in the list, and reads its neighbours ahead.
void FilesRoom::ShowCurrent()
{
    DocumentPtr const &document = workspace_.GetDocuments().GetCurrent();
    string const fileName = document != nullptr ? document->GetFileName() : string();
    bool const isLoaded = document != nullptr && !document->IsLoading();
    Folder const &folder = workspace_.GetFolder();
    if (isLoaded && (!wasLoaded_ || fileName != shownFile_))
    {
        std::vector<string> neighbours = {folder.FindNeighbour(fileName, true), folder.FindNeighbour(fileName, false)};
        std::erase_if(neighbours, [&fileName](string const &name) { return name.empty() || name == fileName; });
        workspace_.GetLoader().ReadAhead(std::move(neighbours));
    }
    wasLoaded_ = isLoaded;
    if (fileName == shownFile_)
        return;
    // After the last file was closed, the next one is that beside it.
    if (!fileName.empty())
        shownFile_ = fileName;
    if (list_ == nullptr)
        return;
    ShowList();
    if (GetFolderOf(fileName) == folder.GetPath())
        list_->Select(GetLastPart(fileName));
}

void FilesRoom::ShowList()
{
    Folder const &folder = workspace_.GetFolder();
    folderRevision_ = folder.GetRevision();
    DocumentPtr const &document = workspace_.GetDocuments().GetCurrent();
    bool const isHere = document != nullptr && GetFolderOf(document->GetFileName()) == folder.GetPath();
    list_->SetEntries(folder.GetEntries(), isHere ? GetLastPart(document->GetFileName()) : string());
    path_->SetText(folder.GetPath());
    path_->SetToolTipText(folder.GetPath());
    std::vector<FolderEntry> const &entries = folder.GetEntries();
    auto const numFailed =
        std::count_if(entries.begin(), entries.end(), [](FolderEntry const &entry) { return !entry.failure.empty(); });
    string text = MakeString(entries.size()) + (entries.size() == 1 ? " entry" : " entries");
    if (numFailed > 0)
        text += ", " + MakeString(numFailed) + " cannot be opened";
    if (folder.GetPath().empty())
        text = "No folder is listed.";
    else if (entries.empty())
        text = folder.GetFilter().empty() ? "Nothing here can be opened." : "No name has all of these words.";
    count_->SetText(text);
    filter_->SetWrong(entries.empty() && !folder.GetFilter().empty());
    workspace_.Invalidate();
}

void FilesRoom::AskForPreviews()
{
    Folder const &folder = workspace_.GetFolder();
    std::vector<string> names;
    unsigned int const end = list_->GetFirstVisible() + list_->GetNumVisible();
    for (unsigned int i = list_->GetFirstVisible(); i < end && i < folder.GetEntries().size(); ++i)
    {
        FolderEntry const &entry = folder.GetEntries()[i];
        if (!entry.isFolder && entry.failure.empty())
            names.push_back(folder.GetPath() + entry.name);
    }
    previews_.Ask(names);
}

// State.

void FilesRoom::WriteState(ostream &out) const
{
    std::vector<string> const &folders = recent_.GetAll();
    for (auto folder = folders.rbegin(); folder != folders.rend(); ++folder)
        out << FormatLine("recent-folder", *folder) << '\n';
    if (!workspace_.GetFolder().GetPath().empty())
        out << FormatLine("folder", workspace_.GetFolder().GetPath()) << '\n';
}

} // namespace

std::unique_ptr<Room> MakeFilesRoom(Workspace &workspace)
{
    return std::make_unique<FilesRoom>(workspace);
}

} // namespace viewer
