// The extension that gives widgets their look.
#include "look.h"

#include <quillmarsh/basetools/variableproxy.h>
#include <quillmarsh/basetools/variableregistry.h>
#include <quillmarsh/framework/genericextension.h>
#include <quillmarsh/framework/kernel.h>
#include <quillmarsh/framework/plugindescriptors.h>
#include <quillmarsh/framework/pluginlibrary.h>
#include <quillmarsh/gui/gui_manager.h>
#include <quillmarsh/platform/displaymodes.h>

#include <ostream>

namespace standard_look
{
namespace
{

using namespace quillmarsh;

constexpr char s_themeVariable[] = "look.theme";
constexpr char s_scaleVariable[] = "look.scale";

/// Has the look for as long as it exists, and exports its variables.
class LookExtension : public GenericExtension, VariableProxy::Observer
{
public:
    LookExtension()
    {
        if (!gui::Manager::IsCreated())
            return;
        look_.reset(new Look(FindScale()));
        themeName_ = look_->GetTheme().name;
        VariableRegistry *const registry = Kernel::Instance().GetVariableRegistry();
        if (registry == nullptr)
            return;
        registry->RegisterVariable(VariableProxyString(&themeName_, s_themeVariable, DescribeThemes(), false, this));
        registry->RegisterVariable(VariableProxyRangeCheckedFloat(
            &scale_, 0, 4, s_scaleVariable, "pixels of a unit, from 0.5 on; 0: those of the display", false, this));
    }
    ~LookExtension() override
    {
        VariableRegistry *const registry = look_ ? Kernel::Instance().GetVariableRegistry() : nullptr;
        if (registry == nullptr)
            return;
        registry->UnregisterVariable(s_themeVariable);
        registry->UnregisterVariable(s_scaleVariable);
    }

    string GetGenericExtensionInterfaceName() override { return "standard_look"; }

    void OnValueChanged(VariableProxy const &proxy) override
    {
        if (proxy.GetName() == s_scaleVariable)
        {
            look_->SetScale(FindScale());
            return;
        }
        if (look_->SetTheme(themeName_))
            return;
        GetConOut() << "There is no theme '" << themeName_ << "'; " << DescribeThemes() << '.' << std::endl;
        themeName_ = look_->GetTheme().name;
    }

private:
    static string DescribeThemes()
    {
        string text = "colours:";
        for (Theme const &theme : GetThemes())
            text += string(&theme == GetThemes().data() ? " " : ", ") + theme.name;
        return text;
    }

    float FindScale() const { return scale_ > 0 ? scale_ : platform::ReadDisplayScale(); }

    AutoPtr<Look> look_;
    string themeName_;
    float scale_ = 0;
};

class LookDescriptor : public GenericExtensionPluginDescriptor
{
public:
    LookDescriptor()
        : GenericExtensionPluginDescriptor(PluginInfo(
              library_info::GetHeaderVersion(), e_plugin_generic_extension, "standard_look", PluginVersion(1, 0, 0, 0),
              library_info::GetBuildTimestamp(), "The look of widgets", "The Quillmarsh authors"))
    {
    }

    GenericExtension *CreateGenericExtension() override { return new LookExtension; }
};

} // namespace
} // namespace standard_look

QUILLMARSH_PLUGIN_LIBRARY(standard_look::LookDescriptor)
