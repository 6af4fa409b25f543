#include "volumeroom.h"

#include "volumecommands.h"

#include <quillmarsh/dataobjects/dataexception.h>
#include <quillmarsh/gui/gui_widgets.h>

#include <algorithm>
#include <cmath>
#include <ostream>
#include <sstream>

namespace viewer::volumes
{

using namespace quillmarsh;

namespace
{

constexpr KeyBinding s_keys[] = {
    {e_key_period, e_plain, "step 1", "Next slice", true},
    {e_key_comma, e_plain, "step -1", "Previous slice", true},
    {e_key_period, e_shift, "step 10", "Ten slices on", true},
    {e_key_comma, e_shift, "step -10", "Ten slices back", true},
    {e_key_home, e_plain, "step -100000", "First slice"},
    {e_key_end, e_plain, "step 100000", "Last slice"},
    {e_key_arrow_left, e_plain, "nudge -1 0", "Move the cross hair, or turn the volume, to the left", true},
    {e_key_arrow_right, e_plain, "nudge 1 0", "The same to the right", true},
    {e_key_arrow_up, e_plain, "nudge 0 -1", "The same upwards", true},
    {e_key_arrow_down, e_plain, "nudge 0 1", "The same downwards", true},
    {e_key_arrow_left, e_shift, "nudge -10 0", "The same ten times to the left", true},
    {e_key_arrow_right, e_shift, "nudge 10 0", "Ten times to the right", true},
    {e_key_arrow_up, e_shift, "nudge 0 -10", "Ten times upwards", true},
    {e_key_arrow_down, e_shift, "nudge 0 10", "Ten times downwards", true},
    {e_key_v, e_plain, "pane", "Next pane, which the keys then act on"},
    {e_key_m, e_plain, "maximize", "Let the pane fill the window, or show all"},
    {e_key_o, e_plain, "fourth", "Oblique slice or turned volume"},
    {e_key_x, e_plain, "cross", "Show or hide the cross hair"},
    {e_key_s, e_plain, "volume-smooth", "Smooth or square samples"},
    {e_key_equals, e_plain, "volume-zoom-by 1.25", "Zoom in", true},
    {e_key_minus, e_plain, "volume-zoom-by 0.8", "Zoom out", true},
    {e_key_num_add, e_plain, "volume-zoom-by 1.25", "Zoom in", true},
    {e_key_num_subtract, e_plain, "volume-zoom-by 0.8", "Zoom out", true},
    {e_key_0, e_plain, "volume-zoom fit", "Show the whole volume"},
    {e_key_1, e_plain, "volume-zoom 1", "One pixel for each sample"},
    {e_key_r_bracket, e_plain, "slab-by 1", "Thicker slab", true},
    {e_key_l_bracket, e_plain, "slab-by -1", "Thinner slab", true},
    {e_key_k, e_plain, "slab-kind", "Slice, maximum or mean"},
    {e_key_a, e_plain, "volume-window auto", "Window from the least to the greatest value"},
    {e_key_d, e_plain, "volume-window all", "Window of the whole range"},
    {e_key_p, e_plain, "volume-palette", "Next palette"},
    {e_key_c, e_plain, "volume-channel", "Next channel"},
    {e_key_g, e_plain, "follow-controller", "Turn the volume with a game controller"},
    {e_key_t, e_plain, "follow-tracker", "Turn the volume with a tracker"},
};

} // namespace

VolumeRoom::VolumeRoom(Workspace &workspace)
    : workspace_(workspace),
      scene_([this] { OnChanged(); }, [&workspace] { workspace.Invalidate(); },
             [&workspace](string const &reason) { workspace.Say(reason, true); }),
      context_(workspace, scene_),
      turnInput_(scene_, [&workspace](string const &reason) { workspace.Say(reason, true); })
{
}

VolumeRoom::~VolumeRoom() = default;

void VolumeRoom::AddCommands(CommandSet &commands)
{
    AddVolumeCommands(commands, *this);
}

std::span<KeyBinding const> VolumeRoom::GetKeys() const
{
    return s_keys;
}

gui::Component *VolumeRoom::MakeView(gui::Component &parent)
{
    quad_ = new Quad(context_, parent);
    quad_->SetFractions(fractions_.x, fractions_.y);
    return quad_;
}

void VolumeRoom::MakeInspector(widgets::Stack &column)
{
    inspector_ = new VolumeInspector(context_, column);
}

void VolumeRoom::CreateVideoResources(bool)
{
    string reason;
    drawer_ = StackDrawer::Create(reason);
    if (quad_ != nullptr)
        quad_->GetTurnPane().SetDrawsArea(drawer_ != nullptr, reason);
}

void VolumeRoom::ReleaseVideoResources(bool)
{
    drawer_.reset();
}

bool VolumeRoom::RenderArea(gui::InterleavedRenderArea const &area)
{
    if (area.GetAreaCode() != TurnPane::s_areaCode)
        return false;
    if (drawer_ == nullptr || scene_.GetVolume() == nullptr)
        return true;
    drawer_->SetVolume(scene_.GetSmallVolume());
    VolumeSettings const &settings = scene_.Settings();
    drawer_->Draw(gui::Rectangle(area.GetAbsolutePosition(), area.GetSize()),
                  {scene_.GetRotation(), scene_.GetTurnZoom(), settings.density, settings.tones}, scene_.GetTones(),
                  Pane::s_background);
    return true;
}

void VolumeRoom::Show(DocumentPtr const &document, bool isOther)
{
    LoadedPtr const loaded = document != nullptr ? document->GetLoaded() : nullptr;
    ContentPtr const content = loaded != nullptr ? loaded->content : nullptr;
    if (content != scene_.GetContent())
        scene_.SetContent(content, isOther);
}

void VolumeRoom::Update(double seconds)
{
    scene_.Poll();
    context_.Update(seconds);
    if (inspector_ != nullptr)
        inspector_->Update();
    // The frames go on until the fine picture is there.
    bool const isTurnedShown = quad_ != nullptr && quad_->GetTurnPane().IsBranchVisible();
    if (isTurnedShown && drawer_ != nullptr && drawer_->IsCoarse())
        workspace_.Invalidate();
    if (isTurnedShown && scene_.GetVolume() != nullptr)
        turnInput_.Update(seconds);
    else
        turnInput_.Forget();
}

string VolumeRoom::GetStatus() const
{
    VolumeBase const *const volume = scene_.GetVolume();
    if (volume == nullptr || quad_ == nullptr)
        return string();
    Pane const *const pane = quad_->FindPaneUnderMouse();
    vec3 place;
    bool const isUnderMouse = pane != nullptr && pane->FindPlace(pane->CalcRelativeMousePosition(), place);
    if (!isUnderMouse)
        place = scene_.GetCutPlace();
    std::ostringstream text;
    // The far edge of the volume belongs to the last sample.
    auto const index = [](float along, unsigned int count)
    { return std::min(static_cast<unsigned int>(std::max(0.0f, along)), count - 1); };
    unsigned int const x = index(place.x, volume->GetNumColumns()), y = index(place.y, volume->GetNumRows()),
                       z = index(place.z, volume->GetNumLayers());
    text << (isUnderMouse ? "" : "cut ") << x << ", " << y << ", " << z << ": "
         << FormatSample(volume->GetSampleFormat(), volume->SampleB(z, y, x)) << "   " << volume->GetNumColumns()
         << " × " << volume->GetNumRows() << " × " << volume->GetNumLayers() << "   "
         << std::lround(scene_.GetZoom() * 100) << "%";
    return text.str();
}

void VolumeRoom::WriteState(ostream &out) const
{
    WriteVolumeState(out, scene_.Settings(), GetFractions());
}

Scene &VolumeRoom::RequireVolume()
{
    if (scene_.GetVolume() == nullptr)
        throw sampled_data::DataException("no volume is shown");
    return scene_;
}

void VolumeRoom::Arrange()
{
    if (quad_ != nullptr)
        quad_->Arrange();
}

vec2 VolumeRoom::GetFractions() const
{
    return quad_ != nullptr ? quad_->GetFractions() : fractions_;
}

void VolumeRoom::SetFractions(vec2 const &fractions)
{
    fractions_ = fractions;
    if (quad_ != nullptr)
        quad_->SetFractions(fractions.x, fractions.y);
}

void VolumeRoom::OnChanged()
{
    if (quad_ != nullptr)
        quad_->InvalidatePanes();
    workspace_.Invalidate();
}

} // namespace viewer::volumes

namespace viewer
{

std::unique_ptr<Room> MakeVolumeRoom(Workspace &workspace)
{
    return std::make_unique<volumes::VolumeRoom>(workspace);
}

} // namespace viewer
