// The head whose pose OpenTrack sends.
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

/// The address and port to listen at.
struct Endpoint
{
    /// The default accepts only programs on this machine.
    string address = "127.0.0.1";
    unsigned int port = 4242;
};

/// Listens while it is connected. Each sample reads all datagrams that have arrived, and uses the last one. The device
/// is at rest when none has arrived for a second.
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
    /// Most datagrams that one sample reads, so that a sender without pauses cannot delay it.
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
