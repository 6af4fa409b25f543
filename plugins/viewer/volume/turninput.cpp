#include "turninput.h"

#include <quillmarsh/basetools/exception.h>
#include <quillmarsh/devices/gamecontroller.h>
#include <quillmarsh/devices/orientationtracker.h>
#include <quillmarsh/framework/kernel.h>
#include <quillmarsh/framework/samplereadsentry.h>

#include <algorithm>
#include <cmath>

namespace viewer::volumes
{

using namespace quillmarsh;

namespace
{

constexpr char s_szGameController[] = "GameController";
constexpr char s_szOrientationTracker[] = "OrientationTracker";

/// Degrees in a second, and factor in a second, of an axis at its end.
constexpr double s_turnSpeed = 120;
constexpr double s_zoomSpeed = 3;
/// Part of an axis' way at which hands are at rest.
constexpr double s_deadZone = 0.15;
/// A longer frame turns no farther: the program was asleep.
constexpr double s_longestFrame = 0.1;
/// Degrees that a tracker trembles.
constexpr double s_tremble = 0.05;

double ReadAxis(GameController const &controller, GameController::eAxis axis)
{
    if (!controller.HasAxis(axis))
        return 0;
    double const position = std::clamp(double(controller.GetAxisPosition(axis)), -1.0, 1.0);
    double const way = std::max(std::abs(position) - s_deadZone, 0.0) / (1 - s_deadZone);
    return std::copysign(way, position);
}

/// From the tracker's axes (left, up, ahead) to those of the view (right, down, away), and back.
vec3 ToView(vec3 const &v)
{
    return {-v.x, -v.y, v.z};
}

} // namespace

TurnInput::TurnInput(Scene &scene, std::function<void(string const &)> failed)
    : scene_(scene),
      failed_(std::move(failed))
{
}

void TurnInput::Forget()
{
    lastPose_.reset();
    broken_ = nullptr;
}

bool TurnInput::IsToRead(HIDController const *controller) const
{
    return controller != nullptr && controller != broken_;
}

template<typename Work>
void TurnInput::Read(HIDController &controller, Work work)
{
    try
    {
        HumanInterfaceDevice &device = controller.GetParentHID();
        // The kernel has sampled it: another sample would lose the keys of a device that has some, too. Takes no second
        // lock while another reader still holds its own.
        AsyncSampleReadSentry const sentry(device, !device.IsSampledDataLocked());
        work();
    }
    catch (Exception const &thrown)
    {
        broken_ = &controller;
        failed_("The volume cannot be turned by a device: " + thrown.GetMessage());
    }
}

void TurnInput::Update(double seconds)
{
    VolumeSettings const &settings = scene_.Settings();
    Kernel &kernel = Kernel::Instance();
    HIDController *const pad = settings.followsController ? kernel.GetHIDController(s_szGameController, 0) : nullptr;
    if (auto *const controller = dynamic_cast<GameController *>(pad); IsToRead(controller))
        Read(*controller, [&] { ReadController(*controller, std::min(seconds, s_longestFrame)); });
    HIDController *const sensor =
        settings.followsTracker ? kernel.GetHIDController(s_szOrientationTracker, 0) : nullptr;
    auto *const tracker = dynamic_cast<OrientationTracker *>(sensor);
    if (IsToRead(tracker))
        Read(*tracker, [&] { ReadTracker(*tracker); });
    else
        lastPose_.reset();
}

void TurnInput::ReadController(GameController const &controller, double seconds)
{
    double const way = s_turnSpeed * seconds;
    RotationAngles const angles = {-ReadAxis(controller, GameController::AxisX) * way,
                                   -ReadAxis(controller, GameController::AxisY) * way,
                                   ReadAxis(controller, GameController::AxisRX) * way};
    if (angles.yaw != 0 || angles.pitch != 0 || angles.roll != 0)
        scene_.SetRotation(Turn(scene_.GetRotation(), angles));
    if (double const zoom = ReadAxis(controller, GameController::AxisRY); zoom != 0)
        scene_.SetTurnZoom(scene_.GetTurnZoom() * std::pow(s_zoomSpeed, -zoom * seconds));
}

void TurnInput::ReadTracker(OrientationTracker const &tracker)
{
    Pose pose;
    tracker.GetOrientation(pose.x, pose.y, pose.z);
    pose = {ToView(pose.x), ToView(pose.y), ToView(pose.z)};
    if (!lastPose_)
    {
        lastPose_ = pose;
        return;
    }
    // What has turned the former axes into the new ones, row by row.
    auto const turned = [&](float vec3::*component)
    {
        return vec3(pose.x.*component * lastPose_->x.x + pose.y.*component * lastPose_->y.x +
                        pose.z.*component * lastPose_->z.x,
                    pose.x.*component * lastPose_->x.y + pose.y.*component * lastPose_->y.y +
                        pose.z.*component * lastPose_->z.y,
                    pose.x.*component * lastPose_->x.z + pose.y.*component * lastPose_->y.z +
                        pose.z.*component * lastPose_->z.z);
    };
    vec3 const right = turned(&vec3::x);
    vec3 const down = turned(&vec3::y);
    vec3 const away = turned(&vec3::z);
    double const cosine = (double(right.x) + double(down.y) + double(away.z) - 1) / 2;
    if (cosine > std::cos(s_tremble * 3.14159265 / 180))
        return;
    lastPose_ = pose;
    Rotation const &old = scene_.GetRotation();
    auto const apply = [&](vec3 const &row) { return old.right * row.x + old.down * row.y + old.away * row.z; };
    // Turning by nothing takes away what rounding has left.
    scene_.SetRotation(Turn({apply(right), apply(down), apply(away)}, {}));
}

} // namespace viewer::volumes
