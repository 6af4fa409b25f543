// The robot of a host.
#ifndef QUILLMARSH_HOST_HOSTROBOT_H
#define QUILLMARSH_HOST_HOSTROBOT_H

#include <quillmarsh/gui/gui_robot.h>

namespace quillmarsh::host
{

class HostKernel;

/// A gui::Robot whose mouse and keyboard are devices of the kernel, ahead of those of all drivers.
///
/// The devices come when Begin() is called, and with each operation of the robot. They go when the robot has done
/// nothing for two seconds, if there are other devices to go back to. Both happen between frames, as with any device
/// that is plugged in or unplugged. The application is asked about these devices as about others. The kernel moves the
/// robot by itself, ahead of the sampling of devices. Frame thread only.
class HostRobot : NoCopy
{
public:
    /// Borrows `kernel`, which must outlive this object.
    explicit HostRobot(HostKernel &kernel);
    ~HostRobot();

    /// Returns the robot, which takes operations.
    gui::Robot &GetRobot() { return robot_; }
    /// Lets the devices come. May be called ahead of the walk.
    void Begin();
    /// With true, the devices stay while the robot does nothing; false at first.
    void SetStays(bool stays) { stays_ = stays; }
    /// Returns why the last operation failed, and forgets it; empty if it did not. Called once for each frame while the
    /// robot is busy.
    string TakeFailure();

private:
    class Driver;

    /// Moves the robot. Returns true when its devices must come or go.
    bool Poll();
    bool HasOwnDevices() const;
    bool HasOtherDevices() const;

    HostKernel &kernel_;
    gui::Robot robot_;
    bool hasDriver_ = false;
    bool stays_ = false;
    bool areWanted_ = false;
    bool areConnected_ = false;
    double idleSeconds_ = 0;
    unsigned int framesWithoutDevices_ = 0;
    string failure_;
};

} // namespace quillmarsh::host

#endif
