#include "inputwatch.h"

#include <quillmarsh/framework/humaninterfacedevice.h>
#include <quillmarsh/framework/samplereadsentry.h>
#include <quillmarsh/mathtools/transforms.h>

#include <algorithm>
#include <cmath>

namespace workbench
{

using namespace quillmarsh;
using static_gestures::Gesture;

namespace
{

/// A head must turn by this many degrees before a new line is printed.
constexpr float s_orientationStep = 10.0f;

} // namespace

void InputWatch::Connect(HumanInterfaceDevice &device)
{
    unsigned int const numControllers = device.GetNumControllers();
    for (unsigned int i = 0; i < numControllers; ++i)
    {
        HIDController *const controller = device.GetController(i);
        if (auto *const glove = dynamic_cast<Glove *>(controller))
            gloves_.push_back({glove, {}});
        else if (auto *const tracker = dynamic_cast<OrientationTracker *>(controller))
            trackers_.push_back({tracker, vec3::ZERO});
    }
}

void InputWatch::DisconnectAll()
{
    gloves_.clear();
    trackers_.clear();
}

void InputWatch::Update(ostream &out)
{
    for (WatchedGlove &watched : gloves_)
        UpdateGlove(watched, out);
    if (!settings_.orientations)
        return;
    for (WatchedTracker &watched : trackers_)
        UpdateTracker(watched, out);
}

void InputWatch::UpdateGlove(WatchedGlove &watched, ostream &out)
{
    active_.clear();
    {
        AsyncSampleReadSentry const sentry(*watched.glove, true);
        for (Gesture const *gesture = analyzer_.GetFirstActiveGesture(*watched.glove); gesture;
             gesture = analyzer_.GetNextActiveGesture(*watched.glove))
            active_.push_back(gesture->GetID());
    }
    // Gestures are followed while nothing is printed, too: one that lasts since before does not begin when printing
    // does.
    if (settings_.gestures)
    {
        PrintMissing(out, "Gesture ends: ", watched.active, active_);
        PrintMissing(out, "Gesture begins: ", active_, watched.active);
    }
    watched.active.swap(active_);
}

void InputWatch::PrintMissing(ostream &out, char const *what, std::vector<unsigned int> const &ids,
                              std::vector<unsigned int> const &others) const
{
    for (unsigned int const id : ids)
    {
        if (std::find(others.begin(), others.end(), id) == others.end())
            out << what << analyzer_.FindRegisteredGesture(id)->GetName() << std::endl;
    }
}

void InputWatch::UpdateTracker(WatchedTracker &watched, ostream &out)
{
    vec3 axes[3];
    {
        AsyncSampleReadSentry const sentry(*watched.tracker, true);
        watched.tracker->GetOrientation(axes[0], axes[1], axes[2]);
    }
    mat3 rotation;
    GenerateRotateMV(rotation, axes[0], axes[1], axes[2]);
    vec3 angles;
    FactorEulerHPR_MV(rotation, angles.x, angles.y, angles.z);
    if ((angles - watched.angles).AbsMax() < s_orientationStep)
        return;
    watched.angles = angles;
    out << "Orientation: head " << std::lround(angles.x) << ", pitch " << std::lround(angles.y) << ", roll "
        << std::lround(angles.z) << std::endl;
}

} // namespace workbench
