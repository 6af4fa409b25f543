#include <quillmarsh/host/pluginset.h>

#include "catching.h"
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
    try
    {
        libraries_.push_back(std::make_unique<PluginLibraryFile>(fileName));
    }
    catch (KernelException const &thrown)
    {
        refusals_.push_back({fileName, thrown.GetMessage()});
        throw;
    }
    for (PluginDescriptor *const descriptor : libraries_.back()->GetDescriptors())
        entries_.push_back({descriptor, fileName});
}

void PluginSet::Add(PluginDescriptor &descriptor)
{
    entries_.push_back({&descriptor, ""});
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
                                                  "' both have an application, but a run has only one.");
        }
        found = &entry;
    }
    return found != nullptr ? found->descriptor : nullptr;
}

void PluginSet::Refuse(PluginDescriptor const &descriptor, string const &reason) const
{
    auto const isMeant = [&descriptor](Entry const &entry) { return entry.descriptor == &descriptor; };
    auto const found = std::find_if(entries_.begin(), entries_.end(), isMeant);
    RefusePluginFile(found != entries_.end() ? found->fileName : descriptor.GetPluginInfo().GetPluginName(), reason);
}

PluginSet::Parameter PluginSet::Resolve(PluginParameter const &parameter) const
{
    Parameter resolved{"", "", parameter.value};
    for (Entry const &entry : entries_)
    {
        string const &plugin = entry.descriptor->GetPluginInfo().GetPluginName();
        bool const fits = parameter.path.starts_with(plugin + '.') && parameter.path.size() > plugin.size() + 1;
        if (!fits || plugin.size() <= resolved.plugin.size())
            continue;
        resolved.plugin = plugin;
        resolved.name = parameter.path.substr(plugin.size() + 1);
    }
    return resolved;
}

void PluginSet::SetParameters(std::vector<PluginParameter> const &parameters)
{
    std::vector<Parameter> resolved;
    for (PluginParameter const &parameter : parameters)
    {
        resolved.push_back(Resolve(parameter));
        if (resolved.back().plugin.empty())
            QUILLMARSH_THROW(KernelException, "No loaded plug-in is named in the parameter '" + parameter.path + "'.");
    }
    parameters_ = std::move(resolved);
}

AutoPtr<Plugin> PluginSet::Create(PluginDescriptor &descriptor) const
{
    AutoPtr<Plugin> plugin;
    if (std::optional<string> const reason = Catch([&] { plugin.reset(descriptor.CreateAndSetupPlugin()); }))
        Refuse(descriptor, "its constructor failed: " + *reason);
    for (Parameter const &parameter : parameters_)
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
        out << "Plug-in of " << (entry.fileName.empty() ? "the program" : entry.fileName) << ":\n";
        entry.descriptor->GetPluginInfo().Dump(out, 1);
    }
}

} // namespace quillmarsh::host
