#include <quillmarsh/host/pluginset.h>

#include "pluginlibraryfile.h"

#include <quillmarsh/basetools/exception.h>
#include <quillmarsh/basetools/namedparameter.h>

#include <algorithm>
#include <ostream>

namespace quillmarsh::host
{

PluginSet::PluginSet() = default;

PluginSet::~PluginSet() = default;

void PluginSet::Load(string const &fileName)
{
    libraries_.push_back(std::make_unique<PluginLibraryFile>(fileName));
    for (PluginDescriptor *const descriptor : libraries_.back()->GetDescriptors())
        entries_.push_back({descriptor, fileName});
}

void PluginSet::Unload()
{
    entries_.clear();
    while (!libraries_.empty())
        libraries_.pop_back();
}

void PluginSet::Keep()
{
    for (AutoPtr<PluginLibraryFile> const &library : libraries_)
        library->Keep();
}

PluginDescriptor *PluginSet::FindApplication() const
{
    Entry const *found = nullptr;
    for (Entry const &entry : entries_)
    {
        if (entry.descriptor->GetPluginInfo().GetPluginType() != e_plugin_application)
            continue;
        if (found != nullptr)
        {
            QUILLMARSH_THROW(KernelException, "'" + found->fileName + "' and '" + entry.fileName +
                                                  "' both bring an application; a run has one.");
        }
        found = &entry;
    }
    return found != nullptr ? found->descriptor : nullptr;
}

void PluginSet::SetParameters(std::vector<PluginParameter> const &parameters)
{
    for (PluginParameter const &parameter : parameters)
    {
        auto const isMeant = [&parameter](Entry const &entry)
        { return entry.descriptor->GetPluginInfo().GetPluginName() == parameter.plugin; };
        if (std::none_of(entries_.begin(), entries_.end(), isMeant))
        {
            QUILLMARSH_THROW(KernelException, "There is no plug-in '" + parameter.plugin +
                                                  "' to be given the parameter '" + parameter.name + "'.");
        }
    }
    parameters_ = parameters;
}

AutoPtr<Plugin> PluginSet::Create(PluginDescriptor &descriptor) const
{
    AutoPtr<Plugin> plugin(descriptor.CreateAndSetupPlugin());
    for (PluginParameter const &parameter : parameters_)
    {
        if (plugin == nullptr || parameter.plugin != descriptor.GetPluginInfo().GetPluginName())
            continue;
        if (!plugin->SetPluginParameter(NamedParameter(parameter.name, parameter.value)))
        {
            QUILLMARSH_THROW(KernelException,
                             "It does not take '" + parameter.value + "' as its parameter '" + parameter.name + "'.");
        }
    }
    return plugin;
}

void PluginSet::Dump(ostream &out) const
{
    for (Entry const &entry : entries_)
    {
        out << "Plug-in of " << entry.fileName << ":\n";
        entry.descriptor->GetPluginInfo().Dump(out, 1);
    }
}

} // namespace quillmarsh::host
