// Driver for head-mounted displays and their controllers, through OpenHMD.
#include "openhmddevice.h"

#include <quillmarsh/basetools/exception.h>
#include <quillmarsh/basetools/namedparameter.h>
#include <quillmarsh/basetools/texttools.h>
#include <quillmarsh/framework/directinputconfig.h>
#include <quillmarsh/framework/hiddriver.h>
#include <quillmarsh/framework/plugindescriptors.h>
#include <quillmarsh/framework/pluginlibrary.h>

#include <optional>
#include <vector>

namespace input_openhmd
{
namespace
{

using namespace quillmarsh;

/// Creates the devices that are connected at an enumeration. OpenHMD searches for devices only while none is open.
class OpenHMDDriver : public HIDDriver0
{
public:
    /// A bool or its text: true makes devices of OpenHMD's dummies, which never move, too.
    static constexpr char s_szParameterDummies[] = "dummies";

    bool SetPluginParameter(NamedParameter const &parameter) override
    {
        if (parameter.GetName() != s_szParameterDummies)
            return false;
        if (parameter.GetValueType() == NamedParameter::e_string)
            return ToValue(parameter.GetValueString(), withDummies_);
        if (parameter.GetValueType() != NamedParameter::e_bool)
            return false;
        withDummies_ = parameter.GetValueBool();
        return true;
    }

    bool GetPluginParameter(string const &name, NamedParameter &parameter) const override
    {
        if (name != s_szParameterDummies)
            return false;
        parameter = NamedParameter(name, withDummies_);
        return true;
    }

    void OpenDriver(DirectInputConfig const &, unsigned int) override { context_.emplace(); }
    void CloseDriver() override { context_.reset(); }
    bool PollDeviceChanges() override { return false; }

    unsigned int EnumerateDevices() override
    {
        std::scoped_lock const lock(context_->GetLock());
        indices_.clear();
        int const count = ohmd_ctx_probe(context_->Get());
        if (count < 0)
            QUILLMARSH_THROW(HIDDriverException, "OpenHMD cannot search for devices: " + context_->GetError());
        for (int index = 0; index < count; ++index)
        {
            if (withDummies_ || (context_->GetNumber(index, OHMD_DEVICE_FLAGS) & OHMD_DEVICE_FLAGS_NULL_DEVICE) == 0)
                indices_.push_back(index);
        }
        return static_cast<unsigned int>(indices_.size());
    }

    HumanInterfaceDevice *CreateDevice(unsigned int index) override
    {
        return index < indices_.size() ? new OpenHMDDevice(*context_, indices_[index]) : nullptr;
    }

private:
    bool withDummies_ = false;
    std::optional<OpenHMDContext> context_;
    /// Indices in the context's list of the devices that this driver creates.
    std::vector<int> indices_;
};

class OpenHMDDescriptor : public HIDDriverPluginDescriptor
{
public:
    OpenHMDDescriptor()
        : HIDDriverPluginDescriptor(PluginInfo(library_info::GetHeaderVersion(), e_plugin_hid_driver, "input_openhmd",
                                               PluginVersion(1, 0, 0, 0), library_info::GetBuildTimestamp(),
                                               "Head-mounted displays through OpenHMD", "The Quillmarsh authors"))
    {
    }

    HIDDriver *CreateHIDDriver() override { return new OpenHMDDriver; }
};

} // namespace
} // namespace input_openhmd

QUILLMARSH_PLUGIN_LIBRARY(input_openhmd::OpenHMDDescriptor)
