// Bases of the plug-in that binds the system's DirectInput.
#ifndef QUILLMARSH_FRAMEWORK_DIRECTINPUTPROXY_H
#define QUILLMARSH_FRAMEWORK_DIRECTINPUTPROXY_H

#include <quillmarsh/framework/directinputdeviceinfo.h>
#include <quillmarsh/framework/plugin.h>

#include <vector>

namespace quillmarsh
{

/// Plug-in that binds the system's DirectInput for device drivers. Frame thread only. The library never calls it.
class QUILLMARSH_API DirectInputProxy : public Plugin
{
public:
    ~DirectInputProxy() override;

    /// Name of the interface; it tells the version.
    virtual string GetDirectInputProxyInterfaceName() = 0;
    /// Starts DirectInput in the version; 0 is the newest. Throws DirectInputProxyException when that fails.
    virtual void OpenProxy(unsigned int version) = 0;
    /// Ends DirectInput. All devices that used it were deleted before.
    virtual void CloseProxy() = 0;

    /// @name Exclusive mode
    /// True when drivers may use devices exclusively while the application covers the whole screen; false at first.
    /// @{
    bool IsAllowedFullscreenExclusiveMode() const { return allowFullscreenExclusiveMode_; }
    void SetAllowFullscreenExclusiveMode(bool allow) { allowFullscreenExclusiveMode_ = allow; }
    /// @}

protected:
    DirectInputProxy();

private:
    bool allowFullscreenExclusiveMode_ = false;
};

/// Proxy of version 8.
class QUILLMARSH_API DirectInputProxy8 : public DirectInputProxy
{
public:
    ~DirectInputProxy8() override;

    /// "DirectInputProxy8".
    string GetDirectInputProxyInterfaceName() override;
    /// Replaces the list by the attached devices.
    virtual void EnumerateInstances(std::vector<DirectInputDeviceInstanceInfo8> &instances) = 0;
    /// Gives the system's interface IDirectInputDevice8A of a device, with a reference that the caller owns; null when
    /// the system refuses the device.
    virtual IUnknown *CreateInstance(win_utils::Guid const &instanceGUID) = 0;

    /// Readable form of a combination of the system's cooperative-level flags; empty for 0.
    static string GetCooperativeLevelDesc(unsigned long flags);

protected:
    DirectInputProxy8();
};

} // namespace quillmarsh

#endif
