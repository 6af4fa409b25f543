// The plug-ins of a run.
#ifndef QUILLMARSH_HOST_PLUGINSET_H
#define QUILLMARSH_HOST_PLUGINSET_H

#include "pluginlibraryfile.h"

namespace quillmarsh::host
{

/// A parameter for a plug-in, by the plug-in's name. A plug-in gets it as a text.
struct PluginParameter
{
    string plugin;
    string name;
    string value;
};

/// All plug-in libraries of a run, and what they offer. Frame thread only.
class PluginSet : NoCopy
{
public:
    struct Entry
    {
        PluginDescriptor *descriptor;
        string fileName;
    };

    /// Loads a library. Throws a KernelException.
    void Load(string const &fileName);
    /// Unloads the libraries, the last one first. Nothing of theirs may be in use.
    void Unload();
    /// Leaves the libraries in the process for good.
    void Keep();

    std::vector<Entry> const &GetEntries() const { return entries_; }
    /// The application's factory, null without one. Throws a KernelException when there is more than one.
    PluginDescriptor *FindApplication() const;

    /// What Create() gives to plug-ins. Throws a KernelException when one of them is for a plug-in that is not loaded.
    void SetParameters(std::vector<PluginParameter> const &parameters);
    /// A new plug-in of a descriptor, null when it gives none. Throws a KernelException when the plug-in refuses a
    /// parameter.
    AutoPtr<Plugin> Create(PluginDescriptor &descriptor) const;

    void Dump(ostream &out) const;

private:
    std::vector<AutoPtr<PluginLibraryFile>> libraries_;
    std::vector<Entry> entries_;
    std::vector<PluginParameter> parameters_;
};

} // namespace quillmarsh::host

#endif
