// The head that OpenTrack tells of.
#ifndef QUILLMARSH_PLUGINS_INPUT_OPENTRACK_OPENTRACKDEVICE_H
#define QUILLMARSH_PLUGINS_INPUT_OPENTRACK_OPENTRACKDEVICE_H

#include "datagramsocket.h"
#include "pose.h"
#include "tracker_support/resettabletrackers.h"

#include <quillmarsh/basetools/time.h>
#include <quillmarsh/framework/humaninterfacedevice.h>

#include <optional>

namespace input_opentrack
{

/// Where to listen.
struct Endpoint
{
    /// Nobody but programs of this machine, unless told otherwise.
    string address = "127.0.0.1";
    unsigned int port = 4242;
};

/// Listens from its connection on. Each sample takes what has come, and shows the last of it; at rest when nothing has
/// come for a second.
class OpenTrackDevice final : public quillmarsh::HumanInterfaceDevice
{
public:
    explicit OpenTrackDevice(Endpoint endpoint);

    unsigned int GetNumControllers() override { return 2; }
    quillmarsh::HIDController *GetController(unsigned int index) override;
    void DumpDeviceCaps(quillmarsh::ostream &out, unsigned int tabs) const override;
    void ConnectDevice(HWND appWindow) override;
    void DisconnectDevice() override;
    void SampleDevice() override;

protected:
    void ApplyUseDirectInput(bool) override {}

private:
    static constexpr double s_maxSilence = 1.0;
    /// In one sample, so that a sender that never pauses does not hold it up.
    static constexpr unsigned int s_maxDatagrams = 1000;

    void ReceivePoses();

    Endpoint const endpoint_;
    std::optional<DatagramSocket> socket_;
    std::optional<Pose> pose_;
    quillmarsh::HighResolutionTimer silence_;
    unsigned int numPoses_ = 0;
    unsigned int numDropped_ = 0;
    tracker_support::ResettableOrientationTracker orientation_;
    tracker_support::ResettablePositionTracker position_;
};

} // namespace input_opentrack

#endif
