// The plug-ins of a run.
#ifndef QUILLMARSH_HOST_PLUGINSET_H
#define QUILLMARSH_HOST_PLUGINSET_H

#include <quillmarsh/framework/plugindescriptors.h>

#include <vector>

namespace quillmarsh::host
{

class PluginLibraryFile;

/// A parameter for a plug-in, which gets it as a text.
struct PluginParameter
{
    /// Name of the plug-in and name of the parameter, joined by a dot. Both may contain dots; the longest name of a
    /// loaded plug-in that fits counts.
    string path;
    string value;
};

/// All plug-in libraries of a run, and what they offer. Frame thread only.
class PluginSet : NoCopy
{
public:
    /// One plug-in that a loaded library offers.
    struct Entry
    {
        /// Describes the plug-in and creates it; owned by its library.
        PluginDescriptor *descriptor;
        /// Name of the library's file.
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
    /// A new plug-in of a descriptor, null when it gives none. Throws a KernelException when the plug-in's constructor
    /// throws, with the name of its file, and when it refuses a parameter.
    AutoPtr<Plugin> Create(PluginDescriptor &descriptor) const;
    /// The same, as the class that the descriptor's type stands for. Throws a KernelException when it is of another.
    template<typename Class>
    AutoPtr<Class> CreateAs(PluginDescriptor &descriptor) const
    {
        AutoPtr<Plugin> plugin = Create(descriptor);
        auto *const wanted = dynamic_cast<Class *>(plugin.get());
        if (plugin != nullptr && wanted == nullptr)
            Refuse(descriptor, "its plug-in is of another class than its type says.");
        static_cast<void>(plugin.release());
        return AutoPtr<Class>(wanted);
    }

    /// Prints the plug-ins with their files.
    void Dump(ostream &out) const;

private:
    struct Parameter
    {
        string plugin;
        string name;
        string value;
    };

    [[noreturn]] void Refuse(PluginDescriptor const &descriptor, string const &reason) const;
    /// Splits the path at the longest name of a plug-in that fits. The plug-in is empty when none fits.
    Parameter Resolve(PluginParameter const &parameter) const;

    std::vector<AutoPtr<PluginLibraryFile>> libraries_;
    std::vector<Entry> entries_;
    std::vector<Parameter> parameters_;
};

/// Full name of the file that a user names. One with a path separator, or a drive, is that file; a name alone is
/// looked for in the directories, with the system's extension if it has none, and never in the current one. Throws a
/// KernelException when there is no such file.
string FindPluginFile(string const &name, std::vector<string> const &directories);

/// Extension of plug-in libraries, with its dot.
char const *GetPluginExtension();

} // namespace quillmarsh::host

#endif
