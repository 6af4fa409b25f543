#include "workpanel.h"

#include <quillmarsh/basetools/commandlineparser.h>
#include <quillmarsh/basetools/filesystem.h>
#include <quillmarsh/basetools/texttools.h>
#include <quillmarsh/widgets/filedialog.h>

#include <cmath>

namespace viewer
{

using namespace quillmarsh;
using namespace quillmarsh::sampled_data;
using widgets::Measures;
using widgets::Stack;
using widgets::TextButton;

namespace
{

/// Jobs that are listed at the same time; the status line tells of the first of all.
constexpr std::size_t s_numJobRows = 4;
constexpr float s_fieldWidth = 88;

struct FlipButton
{
    char const *text;
    char const *line;
    char const *toolTip;
    eSampleAxis axis;
};

constexpr FlipButton s_flipButtons[] = {
    {"Columns", "flip columns", "Reverse the order of the columns: left becomes right", eSampleAxis::e_columns},
    {"Rows", "flip rows", "Reverse the order of the rows: top becomes bottom", eSampleAxis::e_rows},
    {"Layers", "flip layers", "Reverse the order of the layers: front becomes back", eSampleAxis::e_layers},
};

string Quote(string const &text)
{
    return CommandLineParser().FormatWord(text);
}

/// Returns dimensions as ParseSize() reads them.
string FormatSize(Dimensions const &dimensions)
{
    string text;
    for (auto dimension = dimensions.rbegin(); dimension != dimensions.rend(); ++dimension)
        text += (text.empty() ? "" : "x") + MakeString(*dimension);
    return text;
}

std::vector<string> ListFormats()
{
    std::vector<string> names;
    for (eSampleFormat const format : GetNamedFormats())
        names.push_back(GetFormatName(format));
    return names;
}

/// Adds a heading and returns a column below it.
Stack &AddGroup(Stack &column, string const &title)
{
    auto *const group = new Stack(true, &column);
    group->SetAlignment(widgets::e_stack_stretch);
    new widgets::Label(group, title, widgets::ShaderName_Section);
    return *group;
}

void AddCaption(Stack &row, string const &text)
{
    auto *const label = new widgets::Label(&row, text);
    label->SetFixedWidth(true);
    row.SetFill(*label);
}

/// Returns the folder of a file, and its name without the folder.
std::pair<string, string> SplitFolder(string const &fileName)
{
    string path;
    string base;
    string extension;
    file_system::SplitFileName(fileName, path, base, extension);
    return {path, fileName.substr(path.size())};
}

} // namespace

WorkPanel::WorkPanel(Workspace &workspace, DocumentWork &work, Stack &column) : workspace_(workspace), work_(work)
{
    MakeSteps(column);
    MakeFormat(column);
    MakeSize(column);
    MakeCrop(column);
    MakeFlip(column);
    MakeSave(column);
    MakeJobs(column);
    ShowDocument();
}

TextButton *WorkPanel::AddButton(gui::Component *parent, string const &text, std::function<void()> action,
                                 char const *toolTip)
{
    auto *const button = new TextButton(parent, text);
    button->SetAction(std::move(action));
    button->SetMinWidth(s_fieldWidth);
    button->SetToolTipText(toolTip);
    buttons_.push_back(button);
    return button;
}

void WorkPanel::MakeSteps(Stack &column)
{
    Stack &group = AddGroup(column, "Steps");
    summary_ = new widgets::Label(&group, "", widgets::ShaderName_Hint);
    summary_->SetWrapWidth(Room::s_inspectorWidth);
    auto *const row = new Stack(false, &group);
    undo_ = AddButton(
        row, "Undo", [this] { workspace_.Run("undo"); }, "");
    redo_ = AddButton(
        row, "Redo", [this] { workspace_.Run("redo"); }, "");
}

void WorkPanel::MakeFormat(Stack &column)
{
    Stack &group = AddGroup(column, "Format");
    auto *const row = new Stack(false, &group);
    format_ = new Choice(row, ListFormats());
    row->SetFill(*format_);
    format_->SetToolTipText("Format that the samples get");
    AddButton(
        row, "Convert", [this] { workspace_.Run("convert -format=" + format_->GetChosen()); },
        "Change the sample format");
}

void WorkPanel::MakeSize(Stack &column)
{
    Stack &group = AddGroup(column, "Size");
    auto *const row = new Stack(false, &group);
    auto const resize = [this]
    { workspace_.Run("resize " + Quote(size_->GetText()) + " -filter=" + filter_->GetChosen()); };
    size_ = new widgets::TextField(row, "", s_fieldWidth);
    row->SetFill(*size_);
    size_->SetPlaceholder("640x480");
    size_->SetToolTipText("Columns x rows x layers");
    size_->SetEnterAction([resize](string const &) { resize(); });
    AddButton(row, "Resize", resize, "Resample to this size");
    auto *const filterRow = new Stack(false, &group);
    AddCaption(*filterRow, "Filter");
    filter_ = new Choice(filterRow, GetFilterNames());
    filter_->SetToolTipText("nearest: keeps values; linear: weighs neighbours; area: mean, best for smaller data; "
                            "lanczos: sharper");
    filter_->SetMinWidth(s_fieldWidth);
    filter_->Choose("area");
}

void WorkPanel::MakeCrop(Stack &column)
{
    Stack &group = AddGroup(column, "Crop");
    auto *const row = new Stack(false, &group);
    auto const crop = [this]
    { workspace_.Run("crop " + Quote(cropSize_->GetText()) + " -at=" + Quote(cropPlace_->GetText())); };
    cropSize_ = new widgets::TextField(row, "", s_fieldWidth);
    row->SetFill(*cropSize_);
    cropSize_->SetToolTipText("Size of the part that stays: columns x rows x layers");
    cropSize_->SetEnterAction([crop](string const &) { crop(); });
    AddButton(row, "Crop", crop, "Keep a part only");
    auto *const placeRow = new Stack(false, &group);
    AddCaption(*placeRow, "From");
    cropPlace_ = new widgets::TextField(placeRow, "0x0", s_fieldWidth);
    cropPlace_->SetToolTipText("First column x row x layer that stays, counted from 0");
    cropPlace_->SetEnterAction([crop](string const &) { crop(); });
}

void WorkPanel::MakeFlip(Stack &column)
{
    Stack &group = AddGroup(column, "Flip");
    auto *const row = new Stack(false, &group, Measures::Grid);
    for (FlipButton const &flip : s_flipButtons)
    {
        flips_.push_back(AddButton(
            row, flip.text, [this, &flip] { workspace_.Run(flip.line); }, flip.toolTip));
        flips_.back()->SetMinWidth(0);
        row->SetFill(*flips_.back());
    }
}

void WorkPanel::MakeSave(Stack &column)
{
    Stack &group = AddGroup(column, "Save");
    auto *const qualityRow = new Stack(false, &group);
    AddCaption(*qualityRow, "Quality");
    qualityText_ = new widgets::Label(qualityRow, "");
    quality_ = new widgets::Slider(false, &group, Room::s_inspectorWidth);
    quality_->SetRange(0, static_cast<float>(data_codec_parameters::Value_Quality_Max), 1);
    quality_->SetValue(static_cast<float>(data_codec_parameters::Value_Quality_Default));
    quality_->SetToolTipText("Quality of JPEG files: 100 is the best");
    compression_ = new widgets::CheckBox(&group, "Compress PNG and TIFF", true);
    auto *const row = new Stack(false, &group);
    AddButton(
        row, "Save…", [this] { workspace_.Run("save"); }, "Save as a file (Ctrl+S)");
    AddButton(
        row, "Mipmaps…", [this] { workspace_.Run("mipmaps"); },
        "Save smaller and smaller versions as packages; the size must be powers of two");
}

void WorkPanel::MakeJobs(Stack &column)
{
    Stack &group = AddGroup(column, "Work that goes on");
    jobsHeading_ = new widgets::Label(&group, "None.", widgets::ShaderName_Hint);
    for (std::size_t i = 0; i < s_numJobRows; ++i)
    {
        auto *const row = new Stack(false, &group);
        auto *const bar =
            new widgets::ProgressBar(row, Room::s_inspectorWidth - Measures::ControlHeight - Measures::Gap);
        auto *const stop = new TextButton(row, "");
        stop->SetShaderName(widgets::ShaderName_ToolButton);
        stop->SetMark(widgets::e_mark_cross);
        stop->SetToolTipText("Stop this job");
        stop->SetAction([this, i] { workspace_.Run("stop " + MakeString(jobs_[i].number)); });
        row->SetVisible(false);
        jobs_.push_back({row, bar});
    }
}

void WorkPanel::Update()
{
    DocumentPtr const &document = workspace_.GetDocuments().GetCurrent();
    bool const isBusy = document && work_.IsBusy(document);
    if (document != shown_ || isBusy != isBusy_ || (document && document->GetRevision() != revision_))
        ShowDocument();
    qualityText_->SetText(MakeString(std::lround(quality_->GetValue())));
    ShowJobs();
}

void WorkPanel::ShowDocument()
{
    DocumentPtr const &document = workspace_.GetDocuments().GetCurrent();
    bool const isOther = document != shown_;
    shown_ = document;
    revision_ = document ? document->GetRevision() : 0;
    isBusy_ = document && work_.IsBusy(document);
    bool const isThere = document && document->GetLoaded();
    for (TextButton *const button : buttons_)
        button->SetEnabled(isThere);
    ShowSteps(document);
    if (!isThere)
    {
        summary_->SetText(document ? "Is being loaded." : "Nothing is open.");
        // A document that comes later counts as another one.
        shown_ = nullptr;
        return;
    }
    Content const &content = *document->GetLoaded()->content;
    string const size = FormatSize(content.GetData().GetDimensions());
    // What somebody types stays until the size is another one.
    if (size != sizeText_)
    {
        sizeText_ = size;
        size_->SetText(size);
        cropSize_->SetText(size);
        cropPlace_->SetText(content.GetNumDimensions() == 1 ? "0" : content.GetNumDimensions() == 2 ? "0x0" : "0x0x0");
    }
    if (isOther)
        format_->Choose(GetFormatName(content.GetData().GetFormat()));
    for (std::size_t i = 0; i < flips_.size(); ++i)
        flips_[i]->SetEnabled(HasAxis(content.GetNumDimensions(), s_flipButtons[i].axis));
    summary_->SetText(size + " " + GetFormatName(content.GetData().GetFormat()) +
                      (document->IsChanged() ? ", not saved" : ""));
}

void WorkPanel::ShowSteps(DocumentPtr const &document)
{
    string const undo = document && !isBusy_ ? document->GetUndoName() : "";
    string const redo = document && !isBusy_ ? document->GetRedoName() : "";
    undo_->SetEnabled(!undo.empty());
    redo_->SetEnabled(!redo.empty());
    undo_->SetToolTipText(undo.empty() ? "Take the last step back (Ctrl+Z)" : "Take back: " + undo + " (Ctrl+Z)");
    redo_->SetToolTipText(redo.empty() ? "Make a step again (Ctrl+Y)" : "Make again: " + redo + " (Ctrl+Y)");
}

void WorkPanel::ShowJobs()
{
    std::vector<Jobs::Job> const jobs = workspace_.GetJobs().List();
    jobsHeading_->SetVisible(jobs.empty());
    for (std::size_t i = 0; i < jobs_.size(); ++i)
    {
        bool const isShown = i < jobs.size();
        jobs_[i].row->SetVisible(isShown);
        if (!isShown)
            continue;
        jobs_[i].number = jobs[i].number;
        jobs_[i].bar->SetText(jobs[i].title);
        jobs_[i].bar->SetValue(jobs[i].isRunning ? static_cast<float>(jobs[i].part) : 0);
    }
}

string WorkPanel::FormatSaveWords() const
{
    string words = " -quality=" + MakeString(std::lround(quality_->GetValue()));
    if (!compression_->IsPressed())
        words += " -no-compression";
    return words;
}

DocumentPtr WorkPanel::RequireDocument() const
{
    DocumentPtr const &document = workspace_.GetDocuments().GetCurrent();
    if (!document)
        throw DataException("nothing is open");
    if (!document->GetLoaded())
        throw DataException(document->IsLoading() ? document->GetTitle() + ": is being loaded"
                                                  : document->GetFailure());
    return document;
}

void WorkPanel::AskForFile()
{
    DocumentPtr const document = RequireDocument();
    auto const [folder, name] = SplitFolder(document->GetFileName());
    widgets::FileDialog::Params params = {.title = "Save", .isSaving = true};
    params.directory = folder.empty() ? workspace_.GetFolder().GetPath() : folder;
    params.fileName = name.empty() ? document->GetTitle() : name;
    // The dialog has asked whether a file may be replaced.
    params.action = [this](string const &fileName)
    { workspace_.Run("save " + Quote(fileName) + FormatSaveWords() + " -overwrite"); };
    widgets::FileDialog::Show(std::move(params));
}

void WorkPanel::AskForMipmaps()
{
    DocumentPtr const document = RequireDocument();
    auto const [folder, name] = SplitFolder(document->GetFileName());
    widgets::FileDialog::Params params = {.title = "Save mipmaps, as NAME.0 and so on", .isSaving = true};
    params.directory = folder.empty() ? workspace_.GetFolder().GetPath() : folder;
    params.fileName = (name.empty() ? document->GetTitle() : name) + ".levels";
    params.action = [this](string const &prefix)
    { workspace_.Run("mipmaps " + Quote(prefix) + " -filter=" + filter_->GetChosen()); };
    widgets::FileDialog::Show(std::move(params));
}

} // namespace viewer
