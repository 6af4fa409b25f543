#include "nullrenderer.h"

#include "nullsubsystem.h"
#include "parameters.h"

#include <sstream>

namespace video_null
{

NullRenderer::NullRenderer(std::function<void(string const &)> report)
    : gui_(*new NullGUIRenderer(*this, std::move(report)))
{
    AttachGUIRenderer(gui_);
}

bool NullRenderer::IsCompatibleWith(VideoSubsystem const &subsystem) const
{
    return subsystem.GetVideoSubsystemInterfaceName() == NullSubsystem::s_szInterfaceName;
}

bool NullRenderer::SetPluginParameter(NamedParameter const &parameter)
{
    bool areManaged = false;
    if (parameter.GetName() != s_szManagedResources || !ReadSwitch(parameter, areManaged))
        return false;
    gui_.SetManagedResources(areManaged);
    return true;
}

bool NullRenderer::GetPluginParameter(string const &name, NamedParameter &parameter) const
{
    if (name == s_szManagedResources)
    {
        parameter = NamedParameter(name, gui_.CreatesManagedResourcesOnly());
        return true;
    }
    std::ostringstream text;
    if (name == s_szLastFrame)
        gui_.GetLastFrame().Dump(text);
    else if (name == s_szFaults)
    {
        for (string const &fault : gui_.GetFaults())
            text << fault << "\n";
    }
    else
        return false;
    parameter = NamedParameter(name, text.str());
    return true;
}

} // namespace video_null
