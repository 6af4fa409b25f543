#include <quillmarsh/framework/directinputdeviceinfo.h>

#include <quillmarsh/basetools/streameffectors.h>
#include <quillmarsh/basetools/texttools.h>

#include "source/platform/directinput.h"

#include <algorithm>
#include <ostream>
#include <string_view>

namespace quillmarsh
{

namespace
{

struct NamedSubType
{
    unsigned int type;
    unsigned int subType;
    char const *name;
};

constexpr unsigned int s_firstType = 0x11;

constexpr char const *s_typeNames[] = {"unclassified",      "mouse",
                                       "keyboard",          "joystick",
                                       "gamepad",           "steering controller",
                                       "flight controller", "first-person-game controller",
                                       "device controller", "screen pointer",
                                       "remote controller", "supplemental controller"};

constexpr NamedSubType s_subTypes[] = {
    {0x12, 2, "traditional"},
    {0x12, 3, "fingerstick"},
    {0x12, 4, "touchpad"},
    {0x12, 5, "trackball"},
    {0x12, 6, "absolute axis data"},
    {0x13, 1, "IBM PC/XT 83-key keyboard"},
    {0x13, 2, "Olivetti 102-key keyboard"},
    {0x13, 3, "IBM PC/AT 84-key keyboard"},
    {0x13, 4, "IBM PC Enhanced 101/102-key or Microsoft Natural keyboard"},
    {0x13, 5, "Nokia 1050 keyboard"},
    {0x13, 6, "Nokia 9140 keyboard"},
    {0x13, 7, "Japanese NEC PC98 keyboard"},
    {0x13, 8, "Japanese NEC PC98 laptop keyboard"},
    {0x13, 9, "Japanese NEC PC98 106-key keyboard"},
    {0x13, 10, "Japanese 106-key keyboard"},
    {0x13, 11, "Japanese AX keyboard"},
    {0x13, 12, "Japanese J3100 keyboard"},
    {0x14, 1, "limited"},
    {0x14, 2, "standard"},
    {0x15, 1, "limited"},
    {0x15, 2, "standard"},
    {0x15, 3, "tilt"},
    {0x16, 1, "limited"},
    {0x16, 2, "combined pedals"},
    {0x16, 3, "dual pedals"},
    {0x16, 4, "three pedals"},
    {0x16, 5, "hand held"},
    {0x17, 1, "limited"},
    {0x17, 2, "joystick"},
    {0x17, 3, "yoke"},
    {0x17, 4, "remote control"},
    {0x18, 1, "limited"},
    {0x18, 3, "6 degrees of freedom"},
    {0x18, 4, "shooter"},
    {0x19, 3, "communications selector"},
    {0x19, 4, "hardwired communications selector"},
    {0x1a, 3, "light gun"},
    {0x1a, 4, "light pen"},
    {0x1a, 5, "touch screen"},
    {0x1c, 3, "secondary hand held controller"},
    {0x1c, 4, "head tracker"},
    {0x1c, 5, "hand tracker"},
    {0x1c, 6, "gear selection buttons"},
    {0x1c, 7, "gear selection axis"},
    {0x1c, 8, "single throttle controls"},
    {0x1c, 9, "multiple throttle controls"},
    {0x1c, 10, "combined pedals"},
    {0x1c, 11, "dual pedals"},
    {0x1c, 12, "three pedals"},
    {0x1c, 13, "rudder pedals"},
};

/// Text of a field of fixed length, which may have no end mark.
template<std::size_t length>
std::string_view GetFieldText(char const (&field)[length])
{
    return {field, static_cast<std::size_t>(std::find(field, field + length, '\0') - field)};
}

bool IsSameGuid(_GUID const &left, _GUID const &right)
{
    return win_utils::Guid(left) == win_utils::Guid(right);
}

} // namespace

DirectInputDeviceInstanceInfo::DirectInputDeviceInstanceInfo() : InstanceName("Unknown"), ProductName("Unknown") {}

DirectInputDeviceInstanceInfo::DirectInputDeviceInstanceInfo(win_utils::Guid const &instanceGUID,
                                                             win_utils::Guid const &productGUID,
                                                             string const &instanceName, string const &productName)
    : InstanceGUID(instanceGUID),
      ProductGUID(productGUID),
      InstanceName(instanceName),
      ProductName(productName)
{
}

void DirectInputDeviceInstanceInfo::DumpInfo(ostream &out, unsigned int tabs) const
{
    IndentEffector const indent(tabs);
    out << indent << "InstanceGUID: " << InstanceGUID << std::endl;
    out << indent << "InstanceName: " << InstanceName << std::endl;
    out << indent << "ProductGUID.: " << ProductGUID << std::endl;
    out << indent << "ProductName.: " << ProductName << std::endl;
}

DirectInputDeviceInstanceInfo8::DirectInputDeviceInstanceInfo8(DIDEVICEINSTANCEA const &instance)
    : instance_(new DIDEVICEINSTANCEA(instance))
{
}

DirectInputDeviceInstanceInfo8::DirectInputDeviceInstanceInfo8(DirectInputDeviceInstanceInfo8 const &other)
    : DirectInputDeviceInstanceInfo8(*other.instance_)
{
}

DirectInputDeviceInstanceInfo8 &DirectInputDeviceInstanceInfo8::operator=(DIDEVICEINSTANCEA const &instance)
{
    *instance_ = instance;
    return *this;
}

DirectInputDeviceInstanceInfo8 &DirectInputDeviceInstanceInfo8::operator=(DirectInputDeviceInstanceInfo8 const &other)
{
    return *this = *other.instance_;
}

DirectInputDeviceInstanceInfo8::~DirectInputDeviceInstanceInfo8() = default;

bool DirectInputDeviceInstanceInfo8::operator==(DirectInputDeviceInstanceInfo8 const &other) const
{
    DIDEVICEINSTANCEA const &left = *instance_;
    DIDEVICEINSTANCEA const &right = *other.instance_;
    return left.dwSize == right.dwSize && IsSameGuid(left.guidInstance, right.guidInstance) &&
           IsSameGuid(left.guidProduct, right.guidProduct) && left.dwDevType == right.dwDevType &&
           GetFieldText(left.tszInstanceName) == GetFieldText(right.tszInstanceName) &&
           GetFieldText(left.tszProductName) == GetFieldText(right.tszProductName) &&
           IsSameGuid(left.guidFFDriver, right.guidFFDriver) && left.wUsagePage == right.wUsagePage &&
           left.wUsage == right.wUsage;
}

void DirectInputDeviceInstanceInfo8::CopyInfo(DirectInputDeviceInstanceInfo &info) const
{
    info.InstanceGUID = instance_->guidInstance;
    info.ProductGUID = instance_->guidProduct;
    info.InstanceName = GetFieldText(instance_->tszInstanceName);
    info.ProductName = GetFieldText(instance_->tszProductName);
}

void DirectInputDeviceInstanceInfo8::DumpInfo(ostream &out, unsigned int tabs) const
{
    string typeText;
    string subTypeText;
    FormatDeviceType(instance_->dwDevType & 0xff, (instance_->dwDevType >> 8) & 0xff, typeText, subTypeText);

    IndentEffector const indent(tabs);
    out << indent << "InstanceGUID.: " << win_utils::Guid(instance_->guidInstance) << std::endl;
    out << indent << "InstanceName.: " << GetFieldText(instance_->tszInstanceName) << std::endl;
    out << indent << "ProductGUID..: " << win_utils::Guid(instance_->guidProduct) << std::endl;
    out << indent << "ProductName..: " << GetFieldText(instance_->tszProductName) << std::endl;
    out << indent << "DeviceType...: " << typeText << std::endl;
    out << indent << "DeviceSubType: " << subTypeText << std::endl;
}

void DirectInputDeviceInstanceInfo8::FormatDeviceType(unsigned int type, unsigned int subType, string &typeText,
                                                      string &subTypeText)
{
    typeText = "unknown";
    subTypeText = "unknown";
    if (type >= s_firstType && type - s_firstType < std::size(s_typeNames))
        typeText = s_typeNames[type - s_firstType];
    for (NamedSubType const &known : s_subTypes)
        if (known.type == type && known.subType == subType)
            subTypeText = known.name;
}

} // namespace quillmarsh
