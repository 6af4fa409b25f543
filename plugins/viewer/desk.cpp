#include "desk.h"

#include <quillmarsh/gui/gui_manager.h>

#include <algorithm>
#include <cmath>

namespace viewer
{

using namespace quillmarsh;
using namespace quillmarsh::widgets;

namespace
{

constexpr float s_filesShare = 0.22F;
/// Least widths of file list and view, in units.
constexpr float s_minFiles = 180;
constexpr float s_minMain = 240;
/// A file that is loaded sooner than this leaves the last view until then.
constexpr double s_patience = 0.3;

unsigned int GetModifiers()
{
    gui::Manager const &manager = gui::Manager::Instance();
    return (manager.IsKeyModifierPressed(e_key_modifier_shift) ? e_shift : e_plain) |
           (manager.IsKeyModifierPressed(e_key_modifier_control) ? e_control : e_plain) |
           (manager.IsKeyModifierPressed(e_key_modifier_alt) ? e_alt : e_plain);
}

KeyBinding const *FindIn(std::span<KeyBinding const> keys, eKey key, unsigned int modifiers)
{
    auto const found =
        std::find_if(keys.begin(), keys.end(),
                     [=](KeyBinding const &binding) { return binding.key == key && binding.modifiers == modifiers; });
    return found != keys.end() ? &*found : nullptr;
}

/// Column that takes the width of its place, whatever its widgets had before.
class LeftColumn : public Stack
{
public:
    explicit LeftColumn(gui::Component &parent) : Stack(true, &parent)
    {
        SetAlignment(e_stack_stretch);
        SetFitToParent(true);
        SetMargin(Measures::Margin);
    }

    void RecalcSize() override
    {
        Stack::RecalcSize();
        SetSizeX(0);
    }
};

} // namespace

/// Stage and inspector, side by side.
class Desk::Main : public gui::Component
{
public:
    explicit Main(gui::Component &parent)
    {
        SetGhost(true);
        AttachTo(parent);
    }

    void Set(Component &stage, Component &inspector)
    {
        stage_ = &stage;
        inspector_ = &inspector;
    }

    void RecalcLayout() override
    {
        SetPosition(0, 0);
        SetSize(GetParentSize());
        float const width = inspector_->IsVisible() ? std::min(Inspector::CalcWidth(), GetSize().x) : 0;
        stage_->SetPosition(0, 0);
        stage_->SetSize(GetSize().x - width, GetSize().y);
        inspector_->SetPosition(GetSize().x - width, 0);
        inspector_->SetSize(width, GetSize().y);
    }

private:
    Component *stage_ = nullptr;
    Component *inspector_ = nullptr;
};

Desk::Desk(Workspace &workspace, Rooms const &rooms, std::span<KeyBinding const> globalKeys)
    : Panel(string()),
      workspace_(workspace),
      rooms_(rooms),
      globalKeys_(globalKeys),
      splitter_(new Splitter(false, &GetContent())),
      main_(new Main(splitter_->GetSecond())),
      stage_(new Stage(*main_, workspace)),
      inspector_(new Inspector(*main_, workspace)),
      status_(new StatusLine(GetContent(), workspace)),
      filesShare_(s_filesShare),
      documentsRevision_(workspace.GetDocuments().GetRevision() - 1)
{
    SetMovable(false);
    SetResizable(false);
    SetClosable(false);
    SetMargin(0);
    SetShaderName(ShaderName_Desk);
    main_->Set(*stage_, *inspector_);
    splitter_->SetMinSizes(s_minFiles, s_minMain);
    splitter_->SetFraction(filesShare_);
    splitter_->SetAction([this](float fraction) { filesShare_ = fraction; });
    AddRooms();
}

Desk::~Desk() = default;

void Desk::AddRooms()
{
    for (std::unique_ptr<Room> const &room : rooms_)
    {
        if (room->StandsLeft())
        {
            room->MakeInspector(*new LeftColumn(splitter_->GetFirst()));
            continue;
        }
        inspector_->Add(*room);
        Component *const view = room->MakeView(*stage_);
        if (view == nullptr)
            continue;
        view->SetVisible(false);
        views_.push_back({room.get(), view});
    }
}

// What is shown.

void Desk::Update(double seconds)
{
    Documents const &documents = workspace_.GetDocuments();
    DocumentPtr const &current = documents.GetCurrent();
    bool const isLoading = current != nullptr && current->IsLoading();
    bool const wasPatient = loadingTime_ < s_patience;
    loadingTime_ = isLoading ? loadingTime_ + seconds : 0;
    if (isLoading)
        workspace_.Invalidate();
    if (documents.GetRevision() != documentsRevision_ || (wasPatient && loadingTime_ >= s_patience))
    {
        documentsRevision_ = documents.GetRevision();
        ShowDocument();
    }
    inspector_->Update();
    status_->Update(shownRoom_ != nullptr ? shownRoom_->GetStatus() : string());
}

void Desk::ShowDocument()
{
    DocumentPtr const &document = workspace_.GetDocuments().GetCurrent();
    ShowTitles();
    bool const isLoading = document != nullptr && document->IsLoading();
    if (isLoading && shownRoom_ != nullptr && loadingTime_ < s_patience)
        return;
    Room *room = nullptr;
    if (document != nullptr && document->GetLoaded() != nullptr)
    {
        auto const found =
            std::find_if(views_.begin(), views_.end(),
                         [&document](ViewOfRoom const &each) {
                             return each.room->GetNumDimensions() == document->GetLoaded()->content->GetNumDimensions();
                         });
        room = found != views_.end() ? found->room : nullptr;
    }
    ShowRoom(room, document);
    if (room == nullptr)
        ShowMessage(document);
    workspace_.Invalidate();
}

void Desk::ShowTitles()
{
    std::vector<DocumentPtr> const &all = workspace_.GetDocuments().GetAll();
    std::vector<string> titles;
    unsigned int shown = 0;
    for (DocumentPtr const &each : all)
    {
        if (each == workspace_.GetDocuments().GetCurrent())
            shown = static_cast<unsigned int>(titles.size());
        titles.push_back(each->GetTitle() + (each->IsChanged() ? " *" : ""));
    }
    stage_->ShowTitles(titles, shown);
}

void Desk::ShowRoom(Room *room, DocumentPtr const &document)
{
    if (shownRoom_ != nullptr && shownRoom_ != room)
        shownRoom_->Show(nullptr, true);
    bool const isOther = room != shownRoom_ || document != shownDocument_;
    unsigned int const revision = document != nullptr ? document->GetRevision() : 0;
    if (room != nullptr && (isOther || revision != shownRevision_))
        room->Show(document, isOther);
    shownRoom_ = room;
    shownDocument_ = document;
    shownRevision_ = revision;
    auto const found =
        std::find_if(views_.begin(), views_.end(), [room](ViewOfRoom const &each) { return each.room == room; });
    stage_->ShowView(found != views_.end() ? found->view : nullptr);
    inspector_->SetShown(room);
}

void Desk::ShowMessage(DocumentPtr const &document)
{
    if (document == nullptr)
    {
        stage_->SetMessage("Nothing is open",
                           "Choose a file in the list at the left, drop files or a folder on this window, or type "
                           "\"open\" and a name into the console (F9). F1 shows all keys.",
                           false);
    }
    else if (document->IsLoading())
        stage_->SetMessage("Loading " + document->GetTitle() + "…", string(), false);
    else if (!document->GetFailure().empty())
        stage_->SetMessage(document->GetTitle() + " cannot be opened", document->GetFailure(), true);
    else
        stage_->SetMessage(document->GetTitle(), "There is no view for this kind of data.", true);
}

// Columns.

void Desk::ShowFiles(bool show)
{
    showsFiles_ = show;
    splitter_->GetFirst().SetVisible(show);
    splitter_->SetMinSizes(show ? s_minFiles : 0, s_minMain);
    splitter_->SetFraction(show ? filesShare_ : 0);
    ReportDirtyGeometry();
    workspace_.Invalidate();
}

void Desk::SetFilesShare(float share)
{
    filesShare_ = share;
    if (showsFiles_)
        splitter_->SetFraction(share);
    workspace_.Invalidate();
}

void Desk::ShowInspector(bool show)
{
    inspector_->SetVisible(show);
    ReportDirtyGeometry();
    workspace_.Invalidate();
}

// Geometry.

void Desk::RecalcSize()
{
    Panel::RecalcSize();
    SetPosition(0, 0);
    SetSize(gui::Manager::Instance().GetWindowSize());
}

void Desk::RecalcLayout()
{
    Panel::RecalcLayout();
    vec2 const size = GetContent().GetSize();
    float const statusHeight = std::min(StatusLine::CalcHeight(), size.y);
    splitter_->SetPosition(0, 0);
    splitter_->SetSize(size.x, size.y - statusHeight);
    status_->SetPosition(0, size.y - statusHeight);
    status_->SetSize(size.x, statusHeight);
}

void Desk::OnWindowResize(unsigned int, unsigned int)
{
    ReportDirtyGeometry();
}

// Keys.

/// The room that is seen has the first word, then the window, then the rooms without a view.
KeyBinding const *Desk::FindBinding(eKey key, unsigned int modifiers) const
{
    KeyBinding const *binding = shownRoom_ != nullptr ? FindIn(shownRoom_->GetKeys(), key, modifiers) : nullptr;
    if (binding == nullptr)
        binding = FindIn(globalKeys_, key, modifiers);
    for (std::unique_ptr<Room> const &room : rooms_)
    {
        if (binding == nullptr && room->GetNumDimensions() == 0)
            binding = FindIn(room->GetKeys(), key, modifiers);
    }
    return binding;
}

bool Desk::RunKey(eKey key, unsigned int repeatCount)
{
    KeyBinding const *const binding = FindBinding(key, GetModifiers());
    if (binding == nullptr)
        return false;
    if (repeatCount == 0 || binding->repeats)
        workspace_.Run(binding->line);
    return true;
}

bool Desk::OnKeyboardKey(bool down, eKey key, unsigned int repeatCount, char character)
{
    return Panel::OnKeyboardKey(down, key, repeatCount, character) || (down && RunKey(key, repeatCount));
}

} // namespace viewer
