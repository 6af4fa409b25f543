// The plug-ins of a run.
#ifndef QUILLMARSH_HOST_PLUGINSET_H
#define QUILLMARSH_HOST_PLUGINSET_H

#include <quillmarsh/framework/plugindescriptors.h>

#include <vector>

namespace quillmarsh::host
{

class PluginLibraryFile;

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

    PluginSet();
    ~PluginSet();

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

/// Full name of the file that a user names. One with a path separator, or a drive, is that file; a name alone is
/// looked for in the directories, with the system's extension if it has none, and never in the current one. Throws a
/// KernelException when there is no such file.
string FindPluginFile(string const &name, std::vector<string> const &directories);

/// Extension of plug-in libraries, with its dot.
char const *GetPluginExtension();

} // namespace quillmarsh::host

#endif
