// Driver for programs that track a head and send its pose in OpenTrack's datagrams.
#include "opentrackdevice.h"

#include <quillmarsh/basetools/namedparameter.h>
#include <quillmarsh/basetools/outputstream.h>
#include <quillmarsh/basetools/streameffectors.h>
#include <quillmarsh/basetools/texttools.h>
#include <quillmarsh/framework/directinputconfig.h>
#include <quillmarsh/framework/hiddriver.h>
#include <quillmarsh/framework/kernel.h>
#include <quillmarsh/framework/plugindescriptors.h>
#include <quillmarsh/framework/pluginlibrary.h>

#include <algorithm>
#include <ostream>

namespace input_opentrack
{
namespace
{

using namespace quillmarsh;

/// Creates one device, which always exists. It is at rest while no program sends.
class OpenTrackDriver : public HIDDriver0
{
public:
    static constexpr char s_szParameterAddress[] = "address";
    static constexpr char s_szParameterPort[] = "port";

    /// Sets the address or the port for devices that are created later.
    bool SetPluginParameter(NamedParameter const &parameter) override
    {
        if (parameter.GetName() == s_szParameterAddress)
            return SetAddress(parameter);
        if (parameter.GetName() == s_szParameterPort)
            return SetPort(parameter);
        return Refuse("The parameter '" + parameter.GetName() + "' does not exist; the parameters are '" +
                      s_szParameterAddress + "' and '" + s_szParameterPort + "'");
    }

    bool GetPluginParameter(string const &name, NamedParameter &parameter) const override
    {
        if (name == s_szParameterAddress)
            parameter = NamedParameter(name, endpoint_.address);
        else if (name == s_szParameterPort)
            parameter = NamedParameter(name, endpoint_.port);
        else
            return false;
        return true;
    }

    void OpenDriver(DirectInputConfig const &, unsigned int) override {}
    void CloseDriver() override {}
    bool PollDeviceChanges() override { return false; }
    unsigned int EnumerateDevices() override { return 1; }
    HumanInterfaceDevice *CreateDevice(unsigned int index) override
    {
        return index == 0 ? new OpenTrackDevice(endpoint_) : nullptr;
    }

private:
    static constexpr unsigned int s_maxPort = 65535;

    bool SetAddress(NamedParameter const &parameter)
    {
        if (parameter.GetValueType() != NamedParameter::e_string)
            return Refuse("The address must be a text with an IP address");
        endpoint_.address = parameter.GetValueString();
        return true;
    }

    /// Sets the port from a number or its text.
    bool SetPort(NamedParameter const &parameter)
    {
        int port = -1;
        switch (parameter.GetValueType())
        {
        case NamedParameter::e_integer:
            port = parameter.GetValueInteger();
            break;
        case NamedParameter::e_uinteger:
            port = static_cast<int>(std::min(parameter.GetValueUInteger(), s_maxPort + 1));
            break;
        case NamedParameter::e_string:
            ToValue(parameter.GetValueString(), port);
            break;
        default:
            break;
        }
        if (port < 0 || port > static_cast<int>(s_maxPort))
            return Refuse("The port must be a number from 1 to " + MakeString(s_maxPort) + ", or 0 for any free port");
        endpoint_.port = static_cast<unsigned int>(port);
        return true;
    }

    static bool Refuse(string const &reason)
    {
        GetConOut() << SetOutputTypeEffector(OutputStream::e_typeError) << "input_opentrack: " << reason << ".\n"
                    << SetOutputTypeEffector(OutputStream::e_typeInfo);
        return false;
    }

    Endpoint endpoint_;
};

class OpenTrackDescriptor : public HIDDriverPluginDescriptor
{
public:
    OpenTrackDescriptor()
        : HIDDriverPluginDescriptor(PluginInfo(library_info::GetHeaderVersion(), e_plugin_hid_driver, "input_opentrack",
                                               PluginVersion(1, 0, 0, 0), library_info::GetBuildTimestamp(),
                                               "Head tracking by OpenTrack's datagrams", "The Quillmarsh authors"))
    {
    }

    HIDDriver *CreateHIDDriver() override { return new OpenTrackDriver; }
};

} // namespace
} // namespace input_opentrack

QUILLMARSH_PLUGIN_LIBRARY(input_opentrack::OpenTrackDescriptor)
