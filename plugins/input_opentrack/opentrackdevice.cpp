#include "opentrackdevice.h"

#include <quillmarsh/basetools/streameffectors.h>
#include <quillmarsh/basetools/texttools.h>

#include <utility>

namespace input_opentrack
{

using namespace quillmarsh;

OpenTrackDevice::OpenTrackDevice(Endpoint endpoint)
    : endpoint_(std::move(endpoint)),
      orientation_(*this, OrientationTracker::EulerSamplingMode),
      position_(*this)
{
    DeviceInfo().SetDeviceDescription("Head tracker");
    DeviceInfo().SetVendor("OpenTrack");
    DeviceInfo().SetModelType("UDP");
    DeviceInfo().SetHardwarePort(endpoint_.address + " port " + MakeString(endpoint_.port));
}

HIDController *OpenTrackDevice::GetController(unsigned int index)
{
    HIDController *const controllers[] = {&orientation_, &position_};
    return index < std::size(controllers) ? controllers[index] : nullptr;
}

void OpenTrackDevice::DumpDeviceCaps(ostream &out, unsigned int tabs) const
{
    out << IndentEffector(tabs) << "Datagrams: " << numPoses_ << nl;
    out << IndentEffector(tabs) << "Dropped..: " << numDropped_ << nl;
}

void OpenTrackDevice::ConnectDevice(HWND)
{
    socket_.emplace(endpoint_.address, endpoint_.port);
    DeviceInfo().SetHardwarePort(socket_->GetName());
}

void OpenTrackDevice::DisconnectDevice()
{
    socket_.reset();
    pose_.reset();
}

void OpenTrackDevice::SampleDevice()
{
    ReceivePoses();
    if (pose_ && silence_.GetElapsedSeconds() >= s_maxSilence)
        pose_.reset();
    if (pose_)
    {
        orientation_.Sample(pose_->orientation);
        position_.Sample(pose_->position);
    }
    else
    {
        orientation_.SampleRest();
        position_.SampleRest();
    }
}

void OpenTrackDevice::ReceivePoses()
{
    // One byte more than a pose has, so that longer datagrams are recognised.
    std::byte buffer[s_poseSize + 1];
    Pose pose;
    for (unsigned int i = 0; i < s_maxDatagrams; ++i)
    {
        std::size_t size = 0;
        DatagramSocket::eResult const result = socket_->Receive(buffer, size);
        if (result == DatagramSocket::e_nothing)
            return;
        if (result == DatagramSocket::e_datagram && ReadPose(std::span(buffer).first(size), pose))
        {
            ++numPoses_;
            pose_ = pose;
            silence_.Start();
        }
        else
        {
            ++numDropped_;
        }
    }
}

} // namespace input_opentrack
