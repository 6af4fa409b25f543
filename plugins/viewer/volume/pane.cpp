#include "pane.h"

#include <quillmarsh/basetools/texttools.h>
#include <quillmarsh/gui/gui_manager.h>
#include <quillmarsh/gui/gui_renderer.h>
#include <quillmarsh/widgets/measures.h>

#include <algorithm>
#include <cmath>
#include <sstream>

namespace viewer::volumes
{

using namespace quillmarsh;
using widgets::Measures;

namespace
{

constexpr int s_wheelNotch = 120;
/// Zoom of a notch.
constexpr double s_wheelFactor = 1.25;
/// Parts of the window that a pixel of movement changes.
constexpr double s_windowWidthStep = 0.005;
constexpr double s_windowPlaceStep = 0.003;
constexpr double s_minWindow = 1e-6;
/// Seconds without a movement of the wheel.
constexpr double s_echoDelay = 0.4;

constexpr color4b s_paneColours[] = {
    {94, 160, 255, 255}, {110, 205, 120, 255}, {255, 112, 112, 255}, {245, 200, 66, 255}, {190, 150, 255, 255}};

bool IsControlPressed()
{
    return gui::Manager::Instance().IsKeyModifierPressed(e_key_modifier_control);
}

bool IsShiftPressed()
{
    return gui::Manager::Instance().IsKeyModifierPressed(e_key_modifier_shift);
}

/// Draws a line with straight ends, `thickness` pixels wide.
void DrawLine(gui::Renderer &renderer, vec2 const &from, vec2 const &to, float thickness, color4b colour)
{
    vec2 const along = to - from;
    float const length = along.Length();
    if (!(length > 0))
        return;
    vec2 const half(-along.y / length * thickness / 2, along.x / length * thickness / 2);
    gui::VertexBufferC vertices(4);
    vec2 const corners[] = {from + half, from - half, to + half, to - half};
    for (unsigned int i = 0; i < 4; ++i)
        vertices[i] = gui::VertexC(vec3(corners[i].x, corners[i].y, 0), colour);
    renderer.DrawPrimitive(vertices, gui::Renderer::e_triangleStrip, 2, 0);
}

string Join(char const *name, std::initializer_list<double> values)
{
    std::ostringstream line;
    line << name;
    for (double const value : values)
        line << ' ' << value;
    return line.str();
}

double Round(double value, double parts)
{
    // Not the negative zero.
    return std::round(value * parts) / parts + 0.0;
}

} // namespace

color4b GetPaneColour(ePane pane)
{
    return s_paneColours[static_cast<std::size_t>(pane)];
}

std::array<std::size_t, 3> GetPaneAxes(ePane pane)
{
    if (pane == ePane::e_row)
        return {0, 2, 1};
    if (pane == ePane::e_column)
        return {1, 2, 0};
    return {0, 1, 2};
}

void StepPane(Scene &scene, ePane pane, int count)
{
    if (pane == ePane::e_oblique)
    {
        scene.SetCutAt(scene.GetCutPlace() + scene.GetObliqueRotation().away * static_cast<float>(count));
        return;
    }
    std::size_t const axis = GetPaneAxes(pane)[2];
    Cut cut = scene.GetCut();
    long long const index =
        std::clamp<long long>(static_cast<long long>(cut[axis]) + count, 0, std::max(scene.GetSize(axis), 1U) - 1);
    cut[axis] = static_cast<unsigned int>(index);
    scene.SetCut(cut);
}

string MakeCutLine(Scene const &scene)
{
    Cut const &cut = scene.GetCut();
    return Join("cut", {double(cut[0]), double(cut[1]), double(cut[2])});
}

string MakeWindowLine(Scene const &scene)
{
    double const largest = scene.GetLargest();
    DisplaySettings const &tones = scene.Settings().tones;
    return Join("volume-window", {tones.low * largest, tones.high * largest});
}

string MakeObliqueLine(Scene const &scene)
{
    RotationAngles const &angles = scene.Settings().oblique;
    return Join("oblique", {Round(angles.yaw, 10), Round(angles.pitch, 10)});
}

string MakeFocusLine(Scene const &scene)
{
    vec3 const &focus = scene.GetFocus();
    return Join("volume-center", {Round(double(focus.x), 10), Round(double(focus.y), 10), Round(double(focus.z), 10)});
}

string MakeZoomLine(Scene const &scene)
{
    return Join("volume-zoom", {Round(scene.GetZoom(), 1000)});
}

string MakeTurnLine(Scene const &scene)
{
    RotationAngles const angles = FindAngles(scene.GetRotation());
    return Join("turn", {Round(angles.yaw, 10), Round(angles.pitch, 10), Round(angles.roll, 10)});
}

void PaneContext::EchoLater(string const &line)
{
    later_ = line;
    laterAge_ = 0;
}

void PaneContext::Update(double seconds)
{
    laterAge_ += seconds;
    if (!later_.empty() && laterAge_ > s_echoDelay)
        workspace.Echo(std::exchange(later_, string()));
}

Pane::Pane(PaneContext &context, ePane pane, gui::Component *parent) : View(parent), context_(context), pane_(pane) {}

Pane::~Pane() = default;

string Pane::GetCaption() const
{
    return GetPaneNames()[static_cast<std::size_t>(pane_)];
}

string Pane::GetMiddleLine() const
{
    return MakeFocusLine(GetScene());
}

void Pane::Step(int count)
{
    StepPane(GetScene(), pane_, count);
}

string Pane::GetStepLine() const
{
    return MakeCutLine(GetScene());
}

string Pane::GetZoomLine() const
{
    return MakeZoomLine(GetScene());
}

bool Pane::OnMouseEnterExit(bool enter, bool direct, vec2 const &position)
{
    // The status line follows the mouse.
    context_.workspace.Invalidate();
    return View::OnMouseEnterExit(enter, direct, position);
}

bool Pane::OnMouseButton(bool down, eMouseButton button, bool doubleClick, unsigned int, vec2 const &position)
{
    bool const isKnown =
        button == e_mouse_button_left || button == e_mouse_button_right || button == e_mouse_button_middle;
    if (!down || !isKnown || GetScene().GetVolume() == nullptr)
        return false;
    if (context_.active != pane_)
    {
        context_.active = pane_;
        GetScene().Changed();
    }
    if (doubleClick && button == e_mouse_button_left)
    {
        context_.workspace.Run("maximize");
        return true;
    }
    if (!RequestMouseCapture())
        return true;
    dragged_ = button;
    hasDragged_ = false;
    last_ = position;
    if (button == e_mouse_button_left)
        hasDragged_ = DragLeft(position, vec2(0, 0));
    return true;
}

bool Pane::OnMouseCapture(bool begin)
{
    if (begin || !dragged_)
        return true;
    eMouseButton const button = *dragged_;
    dragged_.reset();
    if (!hasDragged_)
        return true;
    string const line = button == e_mouse_button_left    ? GetLeftLine()
                        : button == e_mouse_button_right ? MakeWindowLine(GetScene())
                                                         : GetMiddleLine();
    context_.workspace.Echo(line);
    return true;
}

bool Pane::OnMouseMove(bool, double, vec2 const &position)
{
    context_.workspace.Invalidate();
    vec2 const distance = position - last_;
    if (!dragged_ || !IsMouseCaptureTarget() || (distance.x == 0 && distance.y == 0))
        return false;
    last_ = position;
    hasDragged_ = true;
    if (GetScene().GetVolume() == nullptr)
        return true;
    if (*dragged_ == e_mouse_button_left)
        DragLeft(position, distance);
    else if (*dragged_ == e_mouse_button_right)
        DragWindow(distance);
    else
        DragMiddle(distance);
    return true;
}

void Pane::DragWindow(vec2 const &distance)
{
    DisplaySettings &tones = GetScene().Settings().tones;
    double const middle = (tones.low + tones.high) / 2 - double(distance.y) * s_windowPlaceStep *
                                                             std::max(std::abs(tones.high - tones.low), s_minWindow);
    double const width =
        std::max((tones.high - tones.low) * std::exp(double(distance.x) * s_windowWidthStep), s_minWindow);
    tones.low = middle - width / 2;
    tones.high = middle + width / 2;
    GetScene().Changed();
}

bool Pane::OnMouseWheel(int delta, vec2 const &position)
{
    if (GetScene().GetVolume() == nullptr)
        return false;
    wheelRest_ += delta;
    int const notches = wheelRest_ / s_wheelNotch;
    wheelRest_ -= notches * s_wheelNotch;
    if (notches == 0)
        return true;
    if (IsControlPressed())
    {
        ZoomAt(std::pow(s_wheelFactor, notches), position);
        context_.EchoLater(GetZoomLine());
    }
    else
    {
        Step(-notches);
        context_.EchoLater(GetStepLine());
    }
    return true;
}

void Pane::DrawFrame(gui::Renderer &renderer)
{
    color4b colour = GetPaneColour(pane_);
    bool const isActive = context_.active == pane_;
    color4b frame = colour;
    frame.a = isActive ? 255 : 110;
    renderer.DrawRectangleFrame(gui::RectangleC(gui::Rectangle(vec2::ZERO, GetSize()), frame),
                                Measures::Pixels(isActive ? 2 : 1));
    DrawNote(renderer, {Measures::Pixels(Measures::Gap), Measures::Pixels(6)}, GetTitle(), colour);
}

void Pane::DrawCut(gui::Renderer &renderer, vec2 const &middle, vec2 const &direction, ePane pane)
{
    float const length = direction.Length();
    if (!GetScene().Settings().showsCross || !(length > 1e-4F))
        return;
    vec2 const unit = direction / length;
    float const gap = Measures::Pixels(6);
    float const reach = GetSize().Length() + (middle - GetSize() / 2.0F).Length();
    color4b colour = GetPaneColour(pane);
    colour.a = 190;
    // Lines along the sides cover whole pixels.
    bool const isStraight = std::abs(unit.x) < 1e-4F || std::abs(unit.y) < 1e-4F;
    vec2 const place = isStraight ? vec2(std::floor(middle.x) + 0.5F, std::floor(middle.y) + 0.5F) : middle;
    float const thickness = isStraight ? Measures::Pixels(1) : Measures::Pixels(1) * 1.25F;
    DrawLine(renderer, place + unit * gap, place + unit * reach, thickness, colour);
    DrawLine(renderer, place - unit * gap, place - unit * reach, thickness, colour);
}

SlicePane::SlicePane(PaneContext &context, eSliceAxis axis)
    : Pane(context, static_cast<ePane>(axis), nullptr),
      axis_(axis)
{
}

Placement SlicePane::GetPlacement() const
{
    std::array<std::size_t, 3> const axes = GetPaneAxes(GetPane());
    vec3 const focus = GetScene().GetFocus();
    float const *const numbers = focus.ToPtr();
    return {double(numbers[axes[0]]), double(numbers[axes[1]]), GetScene().GetZoom()};
}

vec3 SlicePane::ToPlace(vec2 const &position) const
{
    std::array<std::size_t, 3> const axes = GetPaneAxes(GetPane());
    Placement const placement = GetPlacement();
    vec3 place = GetScene().GetCutPlace();
    place.ToPtr()[axes[0]] = static_cast<float>(placement.ToImageX(double(position.x), double(GetSize().x)));
    place.ToPtr()[axes[1]] = static_cast<float>(placement.ToImageY(double(position.y), double(GetSize().y)));
    return place;
}

vec2 SlicePane::ToView(vec3 const &place) const
{
    std::array<std::size_t, 3> const axes = GetPaneAxes(GetPane());
    Placement const placement = GetPlacement();
    return {static_cast<float>(placement.ToViewX(double(place.ToPtr()[axes[0]]), double(GetSize().x))),
            static_cast<float>(placement.ToViewY(double(place.ToPtr()[axes[1]]), double(GetSize().y)))};
}

bool SlicePane::FindPlace(vec2 const &position, vec3 &place) const
{
    place = ToPlace(position);
    vec3 const size = GetScene().GetSize();
    return place.x >= 0 && place.y >= 0 && place.z >= 0 && place.x < size.x && place.y < size.y && place.z < size.z;
}

string SlicePane::GetTitle() const
{
    constexpr char const *names[] = {"Layer", "Row", "Column"};
    Scene const &scene = GetScene();
    std::size_t const axis = GetPaneAxes(GetPane())[2];
    VolumeSettings const &settings = scene.Settings();
    std::ostringstream title;
    title << names[static_cast<std::size_t>(axis_)] << ' ' << scene.GetCut()[axis] << " of " << scene.GetSize(axis);
    if (settings.projection != eProjection::e_slice && settings.thickness > 1)
        title << " · " << GetProjectionNames()[static_cast<std::size_t>(settings.projection)] << " of "
              << settings.thickness;
    if (scene.IsSlicePending(axis_))
        title << " …";
    return title.str();
}

void SlicePane::Compose(ImageBase &picture)
{
    Scene &scene = GetScene();
    auto const [levels, step] = scene.GetSlice(axis_);
    Placement placement = GetPlacement();
    placement = {placement.x / step, placement.y / step, placement.zoom * step};
    PixelArea const area = {0, 0, picture.GetNumColumns(), picture.GetNumRows()};
    if (levels == nullptr)
    {
        auto *const pixels = reinterpret_cast<Pixel *>(picture.GetSamplesB());
        std::fill(pixels, pixels + picture.GetNumSamples(), s_background);
        return;
    }
    if (!scene.Settings().isSmooth || placement.zoom <= 1)
    {
        ComposeImage(picture, area, *levels, scene.GetTones(), placement, scene.Settings().isSmooth, -1, s_background);
        return;
    }
    // The slice as a volume of one layer, which is cut in its middle.
    ImageBase const &slice = levels->GetLevel(0);
    VolumeBaseFromExternalStorageAdapter layer(slice.GetSampleFormat());
    layer.SetExternalStorage(const_cast<unsigned char *>(slice.GetSamplesB()), 1, slice.GetNumRows(),
                             slice.GetNumColumns());
    auto const way = static_cast<float>(1 / placement.zoom);
    Plane const plane = {
        {static_cast<float>(placement.x), static_cast<float>(placement.y), 0.5F}, {way, 0, 0}, {0, way, 0}};
    ComposePlane(picture, layer, plane, scene.GetTones(), s_background);
}

void SlicePane::DrawOver(gui::Renderer &renderer)
{
    Scene const &scene = GetScene();
    if (scene.GetVolume() == nullptr)
        return;
    std::array<std::size_t, 3> const axes = GetPaneAxes(GetPane());
    constexpr ePane panes[] = {ePane::e_column, ePane::e_row, ePane::e_layer};
    vec2 const middle = ToView(scene.GetCutPlace());
    // The slice of the axis to the right cuts this one from top to bottom.
    DrawCut(renderer, middle, {0, 1}, panes[axes[0]]);
    DrawCut(renderer, middle, {1, 0}, panes[axes[1]]);
    if (!scene.Settings().showsTurned)
    {
        vec3 across = vec3::ZERO;
        across.ToPtr()[axes[2]] = 1;
        vec3 const line = scene.GetObliqueRotation().away.Cross(across);
        DrawCut(renderer, middle, {line.ToPtr()[axes[0]], line.ToPtr()[axes[1]]}, ePane::e_oblique);
    }
    DrawFrame(renderer);
}

bool SlicePane::DragLeft(vec2 const &position, vec2 const &)
{
    GetScene().SetCutAt(ToPlace(position));
    return true;
}

string SlicePane::GetLeftLine() const
{
    return MakeCutLine(GetScene());
}

void SlicePane::DragMiddle(vec2 const &distance)
{
    std::array<std::size_t, 3> const axes = GetPaneAxes(GetPane());
    auto const zoom = static_cast<float>(GetScene().GetZoom());
    vec3 focus = GetScene().GetFocus();
    focus.ToPtr()[axes[0]] -= distance.x / zoom;
    focus.ToPtr()[axes[1]] -= distance.y / zoom;
    GetScene().SetFocus(focus);
}

void SlicePane::ZoomAt(double factor, vec2 const &position)
{
    vec3 const before = ToPlace(position);
    vec3 const focus = GetScene().GetFocus();
    double const old = GetScene().GetZoom();
    GetScene().SetZoom(old * factor);
    auto const part = static_cast<float>(old / GetScene().GetZoom());
    std::array<std::size_t, 3> const axes = GetPaneAxes(GetPane());
    vec3 moved = focus;
    for (std::size_t const axis : {axes[0], axes[1]})
        moved.ToPtr()[axis] = before.ToPtr()[axis] + (focus.ToPtr()[axis] - before.ToPtr()[axis]) * part;
    GetScene().SetFocus(moved);
}

ObliquePane::ObliquePane(PaneContext &context) : Pane(context, ePane::e_oblique, nullptr) {}

vec3 ObliquePane::ToPlace(vec2 const &position) const
{
    Plane const plane = GetScene().GetObliquePlane(static_cast<float>(GetScene().GetZoom()));
    vec2 const distance = position - GetSize() / 2.0F;
    return plane.origin + plane.right * distance.x + plane.down * distance.y;
}

bool ObliquePane::FindPlace(vec2 const &position, vec3 &place) const
{
    place = ToPlace(position);
    vec3 const size = GetScene().GetSize();
    return place.x >= 0 && place.y >= 0 && place.z >= 0 && place.x < size.x && place.y < size.y && place.z < size.z;
}

string ObliquePane::GetTitle() const
{
    RotationAngles const &angles = GetScene().Settings().oblique;
    std::ostringstream title;
    title << "Oblique " << Round(angles.yaw, 10) << "°, " << Round(angles.pitch, 10) << "°";
    return title.str();
}

void ObliquePane::Compose(ImageBase &picture)
{
    if (GetScene().GetVolume() != nullptr && GetScene().ComposeOblique(picture, s_background))
        return;
    auto *const pixels = reinterpret_cast<Pixel *>(picture.GetSamplesB());
    std::fill(pixels, pixels + picture.GetNumSamples(), s_background);
}

void ObliquePane::DrawOver(gui::Renderer &renderer)
{
    Scene const &scene = GetScene();
    if (scene.GetVolume() == nullptr)
        return;
    Rotation const rotation = scene.GetObliqueRotation();
    auto const zoom = static_cast<float>(scene.GetZoom());
    vec3 const distance = scene.GetCutPlace() - scene.GetObliquePlane(1).origin;
    vec2 const middle = GetSize() / 2.0F + vec2(rotation.right.Dot(distance), rotation.down.Dot(distance)) * zoom;
    constexpr ePane panes[] = {ePane::e_column, ePane::e_row, ePane::e_layer};
    for (std::size_t axis = 0; axis < 3; ++axis)
    {
        vec3 across = vec3::ZERO;
        across.ToPtr()[axis] = 1;
        vec3 const line = rotation.away.Cross(across);
        DrawCut(renderer, middle, {rotation.right.Dot(line), rotation.down.Dot(line)}, panes[axis]);
    }
    DrawFrame(renderer);
}

bool ObliquePane::DragLeft(vec2 const &position, vec2 const &distance)
{
    bool const isFirst = distance.x == 0 && distance.y == 0;
    if (isFirst)
        isTurning_ = IsShiftPressed();
    if (!isTurning_)
    {
        GetScene().SetCutAt(ToPlace(position));
        return true;
    }
    RotationAngles &angles = GetScene().Settings().oblique;
    angles.yaw = std::remainder(angles.yaw - double(distance.x) / 2, 360);
    angles.pitch = std::clamp(angles.pitch - double(distance.y) / 2, -90.0, 90.0);
    GetScene().Changed();
    return !isFirst;
}

string ObliquePane::GetLeftLine() const
{
    return isTurning_ ? MakeObliqueLine(GetScene()) : MakeCutLine(GetScene());
}

void ObliquePane::DragMiddle(vec2 const &distance)
{
    Rotation const rotation = GetScene().GetObliqueRotation();
    vec2 const samples = distance / static_cast<float>(GetScene().GetZoom());
    GetScene().SetFocus(GetScene().GetFocus() - rotation.right * samples.x - rotation.down * samples.y);
}

void ObliquePane::ZoomAt(double factor, vec2 const &)
{
    GetScene().SetZoom(GetScene().GetZoom() * factor);
}

} // namespace viewer::volumes
