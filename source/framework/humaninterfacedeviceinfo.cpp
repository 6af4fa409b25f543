#include <quillmarsh/framework/humaninterfacedeviceinfo.h>

#include <quillmarsh/basetools/streameffectors.h>
#include <quillmarsh/basetools/texttools.h>

#include <ostream>

namespace quillmarsh
{

void HumanInterfaceDeviceInfo::SetDirectInputOnly(bool only)
{
    isDirectInputOnly_ = only;
    canUseDirectInput_ = canUseDirectInput_ || only;
}

void HumanInterfaceDeviceInfo::SetCanUseDirectInput(bool canUse)
{
    canUseDirectInput_ = canUse || isDirectInputOnly_;
}

string HumanInterfaceDeviceInfo::MakeShortDesc() const
{
    return MakeString(creationID_) + "/" + deviceDescription_ + "/" + creatorPluginName_;
}

void HumanInterfaceDeviceInfo::Dump(ostream &out, unsigned int tabs) const
{
    IndentEffector const indent(tabs);
    out << indent << "CreationID........: " << MakeString(creationID_) << std::endl;
    out << indent << "CreatorPluginName.: " << creatorPluginName_ << std::endl;
    out << indent << "DeviceDescription.: " << deviceDescription_ << std::endl;
    out << indent << "Vendor............: " << vendor_ << std::endl;
    out << indent << "ModelType.........: " << modelType_ << std::endl;
    out << indent << "ModelSubType......: " << modelSubType_ << std::endl;
    out << indent << "HardwarePort......: " << hardwarePort_ << std::endl;
    out << indent << "AdditionalInfo....: " << additionalInfo_ << std::endl;
    out << indent << "IsDirectInputOnly.: " << MakeString(isDirectInputOnly_) << std::endl;
    out << indent << "CanUseDirectInput.: " << MakeString(canUseDirectInput_) << std::endl;
    out << indent << "DInputInstanceGUID: " << directInputInstance_.InstanceGUID << std::endl;
    out << indent << "DInputInstanceName: " << directInputInstance_.InstanceName << std::endl;
    out << indent << "DInputProductGUID.: " << directInputInstance_.ProductGUID << std::endl;
    out << indent << "DInputProductName.: " << directInputInstance_.ProductName << std::endl;
}

} // namespace quillmarsh
