// Description of an input device.
#ifndef QUILLMARSH_FRAMEWORK_HUMANINTERFACEDEVICEINFO_H
#define QUILLMARSH_FRAMEWORK_HUMANINTERFACEDEVICEINFO_H

#include <quillmarsh/framework/directinputdeviceinfo.h>

namespace quillmarsh
{

/// Description of an input device: a value type that its driver fills in. Texts that were not set are "Unknown".
class QUILLMARSH_API HumanInterfaceDeviceInfo
{
public:
    /// @name Identity
    /// The creation id is the number by which the console addresses the device; the host assigns it.
    /// @{
    unsigned int GetCreationID() const { return creationID_; }
    void SetCreationID(unsigned int id) { creationID_ = id; }
    string const &GetCreatorPluginName() const { return creatorPluginName_; }
    void SetCreatorPluginName(string const &name) { creatorPluginName_ = name; }
    /// @}

    /// @name Description
    /// Texts for users.
    /// @{
    string const &GetDeviceDescription() const { return deviceDescription_; }
    void SetDeviceDescription(string const &description) { deviceDescription_ = description; }
    string const &GetVendor() const { return vendor_; }
    void SetVendor(string const &vendor) { vendor_ = vendor; }
    string const &GetModelType() const { return modelType_; }
    void SetModelType(string const &type) { modelType_ = type; }
    string const &GetModelSubType() const { return modelSubType_; }
    void SetModelSubType(string const &subType) { modelSubType_ = subType; }
    string const &GetHardwarePort() const { return hardwarePort_; }
    void SetHardwarePort(string const &port) { hardwarePort_ = port; }
    string const &GetAdditionalInfo() const { return additionalInfo_; }
    void SetAdditionalInfo(string const &info) { additionalInfo_ = info; }
    /// @}

    /// @name DirectInput
    /// A device that works through DirectInput only can use it: the first flag sets the second, which then cannot be
    /// cleared.
    /// @{
    bool IsDirectInputOnly() const { return isDirectInputOnly_; }
    void SetDirectInputOnly(bool only);
    bool CanUseDirectInput() const { return canUseDirectInput_; }
    void SetCanUseDirectInput(bool canUse);
    DirectInputDeviceInstanceInfo const &GetDirectInputDeviceInstanceInfo() const { return directInputInstance_; }
    void SetDirectInputDeviceInstanceInfo(DirectInputDeviceInstanceInfo const &info) { directInputInstance_ = info; }
    /// @}

    /// Short text: creation id, description and creator, joined by "/".
    string MakeShortDesc() const;
    /// Prints one line for each item behind `tabs` tabs.
    void Dump(ostream &out, unsigned int tabs) const;

private:
    unsigned int creationID_ = 0;
    string creatorPluginName_ = "Unknown";
    string deviceDescription_ = "Unknown";
    string vendor_ = "Unknown";
    string modelType_ = "Unknown";
    string modelSubType_ = "Unknown";
    string hardwarePort_ = "Unknown";
    string additionalInfo_ = "Unknown";
    bool isDirectInputOnly_ = false;
    bool canUseDirectInput_ = false;
    DirectInputDeviceInstanceInfo directInputInstance_;
};

} // namespace quillmarsh

#endif
