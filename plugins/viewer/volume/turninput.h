// Devices that turn the volume.
#ifndef QUILLMARSH_PLUGINS_VIEWER_VOLUME_TURNINPUT_H
#define QUILLMARSH_PLUGINS_VIEWER_VOLUME_TURNINPUT_H

#include "scene.h"

#include <optional>

namespace quillmarsh
{
class GameController;
class HIDController;
class OrientationTracker;
} // namespace quillmarsh

namespace viewer::volumes
{

/// Reads the first game controller and the first orientation tracker of the kernel, if the settings want it. The axes X
/// and Y of a controller turn the volume, RX rolls and RY zooms it; with a tracker, it turns as if it was held by it.
/// Frame thread only.
class TurnInput : quillmarsh::NoCopy
{
public:
    /// Borrows the scene. `failed` gets a line when a device cannot be read, which is then left alone.
    TurnInput(Scene &scene, std::function<void(string const &)> failed);

    /// Reads the devices; to be called in each frame while the turned volume shows.
    void Update(double seconds);
    /// Forgets the devices: they will be deleted, or the volume does not show.
    void Forget();

private:
    /// Axes of a pose: the tracker's x, y and z.
    struct Pose
    {
        quillmarsh::vec3 x, y, z;
    };

    bool IsToRead(quillmarsh::HIDController const *controller) const;
    template<typename Work>
    void Read(quillmarsh::HIDController &controller, Work work);
    void ReadController(quillmarsh::GameController const &controller, double seconds);
    void ReadTracker(quillmarsh::OrientationTracker const &tracker);

    Scene &scene_;
    std::function<void(string const &)> failed_;
    std::optional<Pose> lastPose_;
    /// Could not be read.
    quillmarsh::HIDController const *broken_ = nullptr;
};

} // namespace viewer::volumes

#endif
