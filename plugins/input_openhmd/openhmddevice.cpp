#include "openhmddevice.h"

#include <quillmarsh/basetools/exception.h>
#include <quillmarsh/basetools/namedparameter.h>

#include <cmath>
#include <utility>

namespace input_openhmd
{

using namespace quillmarsh;

OpenHMDDevice::OpenHMDDevice(OpenHMDContext &context, int index) : context_(context), index_(index)
{
    std::scoped_lock const lock(context_.GetLock());
    int const flags = context_.GetNumber(index_, OHMD_DEVICE_FLAGS);
    if ((flags & OHMD_DEVICE_FLAGS_ROTATIONAL_TRACKING) != 0)
        orientation_.emplace(*this, OrientationTracker::QuaternionSamplingMode);
    if ((flags & OHMD_DEVICE_FLAGS_POSITIONAL_TRACKING) != 0)
        position_.emplace(*this);
    Describe(context_.GetNumber(index_, OHMD_DEVICE_CLASS), flags);
}

OpenHMDDevice::~OpenHMDDevice()
{
    OpenHMDDevice::DisconnectDevice();
}

void OpenHMDDevice::Describe(int deviceClass, int flags)
{
    HumanInterfaceDeviceInfo &info = DeviceInfo();
    info.SetDeviceDescription(context_.GetText(index_, OHMD_PRODUCT));
    info.SetVendor(context_.GetText(index_, OHMD_VENDOR));
    info.SetHardwarePort(context_.GetText(index_, OHMD_PATH));
    if (deviceClass == OHMD_DEVICE_CLASS_HMD)
        info.SetModelType("Head-mounted display");
    else
        info.SetModelType(deviceClass == OHMD_DEVICE_CLASS_CONTROLLER ? "Controller" : "Tracker");
    if ((flags & OHMD_DEVICE_FLAGS_LEFT_CONTROLLER) != 0)
        info.SetModelSubType("Left");
    else if ((flags & OHMD_DEVICE_FLAGS_RIGHT_CONTROLLER) != 0)
        info.SetModelSubType("Right");
}

bool OpenHMDDevice::SetHIDParameter(NamedParameter const &parameter)
{
    if (parameter.GetName() != s_szParameterSensors || parameter.GetValueType() != NamedParameter::e_pointer ||
        parameter.GetValuePointer() == nullptr || device_ == nullptr)
        return false;
    std::scoped_lock const lock(context_.GetLock());
    return ohmd_device_setf(device_, OHMD_EXTERNAL_SENSOR_FUSION,
                            static_cast<float const *>(parameter.GetValuePointer())) == OHMD_S_OK;
}

unsigned int OpenHMDDevice::GetNumControllers()
{
    return (orientation_ ? 1 : 0) + (position_ ? 1 : 0);
}

HIDController *OpenHMDDevice::GetController(unsigned int index)
{
    if (index == 0 && orientation_)
        return &*orientation_;
    return position_ && index + 1 == GetNumControllers() ? &*position_ : nullptr;
}

void OpenHMDDevice::ConnectDevice(HWND)
{
    std::scoped_lock const lock(context_.GetLock());
    device_ = ohmd_list_open_device(context_.Get(), index_);
    if (device_ == nullptr)
        QUILLMARSH_THROW(HIDException, "OpenHMD cannot open the device: " + context_.GetError());
}

void OpenHMDDevice::DisconnectDevice()
{
    std::scoped_lock const lock(context_.GetLock());
    if (ohmd_device *const device = std::exchange(device_, nullptr))
        ohmd_close_device(device);
}

void OpenHMDDevice::SampleDevice()
{
    quat orientation = quat::IDENTITY;
    vec3 position = vec3::ZERO;
    {
        std::scoped_lock const lock(context_.GetLock());
        ohmd_ctx_update(context_.Get());
        if ((orientation_ && ohmd_device_getf(device_, OHMD_ROTATION_QUAT, orientation) != OHMD_S_OK) ||
            (position_ && ohmd_device_getf(device_, OHMD_POSITION_VECTOR, position) != OHMD_S_OK))
            QUILLMARSH_THROW(HIDException, "OpenHMD cannot read the device: " + context_.GetError());
    }
    if (orientation_)
        SampleOrientation(orientation);
    if (position_)
        position_->Sample(vec3(-position.x, position.y, -position.z));
}

void OpenHMDDevice::SampleOrientation(quat const &orientation)
{
    // Sensors that have reported nothing yet, or invalid numbers, are no rotation.
    float const norm = orientation.Norm();
    if (std::isfinite(norm) && norm > 0.0f)
        orientation_->Sample(quat(-orientation.x, orientation.y, -orientation.z, orientation.w).Unit());
    else
        orientation_->SampleRest();
}

} // namespace input_openhmd
