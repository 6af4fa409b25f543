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

/// All plug-in libraries of a run, and their plug-ins. Frame thread only.
class PluginSet : NoCopy
{
public:
    /// One plug-in that a loaded library offers.
    struct Entry
    {
        /// Describes the plug-in and creates it; its library owns it, if it comes from one.
        PluginDescriptor *descriptor;
        /// Name of the library's file; empty for a plug-in of the program.
        string fileName;
    };

    /// A library that could not be used.
    struct Refusal
    {
        string fileName;
        string reason;
    };

    /// Creates an empty set.
    PluginSet();
    ~PluginSet();

    /// Loads a library. Throws a KernelException that names the file and the reason when it cannot be used.
    void Load(string const &fileName);
    /// Adds a plug-in of the program itself. The descriptor is borrowed, and must outlive the run.
    void Add(PluginDescriptor &descriptor);
    /// Returns the libraries that Load() has refused.
    std::vector<Refusal> const &GetRefusals() const { return refusals_; }
    /// Unloads the libraries, the last one first. None of their code or objects may be in use.
    void Unload();
    /// Keeps the libraries loaded until the process ends.
    void Keep();

    /// Returns all plug-ins, in the order of loading.
    std::vector<Entry> const &GetEntries() const { return entries_; }
    /// Returns the descriptor of the application, null if there is none. Throws a KernelException when there are
    /// several.
    PluginDescriptor *FindApplication() const;

    /// Sets the parameters that Create() passes to plug-ins. Throws a KernelException when one of them is for a plug-in
    /// that is not loaded.
    void SetParameters(std::vector<PluginParameter> const &parameters);
    /// Creates a plug-in and passes it its parameters; null when the descriptor creates none. Throws a KernelException
    /// when the plug-in's constructor throws, with the name of its file, and when it refuses a parameter.
    AutoPtr<Plugin> Create(PluginDescriptor &descriptor) const;
    /// Creates a plug-in of the class that the descriptor's type stands for. Throws a KernelException also when the
    /// plug-in is of another class.
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
    std::vector<Refusal> refusals_;
    std::vector<Parameter> parameters_;
};

/// Returns the full name of the plug-in file that a user names. A name with a path separator or a drive is that file.
/// Any other name is searched in `directories`, with the system's extension if it has none, but never in the current
/// directory. Throws a KernelException when the file does not exist.
string FindPluginFile(string const &name, std::vector<string> const &directories);

/// Returns the names of the plug-ins that a plug-in library wants beside it, such as a look or the driver of mouse and
/// keyboard. They stand, one in a line, in a text file beside the library that has its name and the extension
/// ".plugins"; a line that begins with "#" is a remark. Empty if there is no such file. Throws a KernelException if it
/// cannot be read.
std::vector<string> ReadPluginCompanions(string const &libraryFileName);

/// Returns the directories in which a program looks for plug-ins, in this order:
/// - the full names in the environment variable `QUILLMARSH_PLUGIN_PATH`, separated by ":", on Windows by ";"; other
///   names in it do not count
/// - "plugins" beside the program's file, where a build puts them
/// - `installed`, which is relative to the same place
/// - the user's own: "quillmarsh/plugins" in `XDG_DATA_HOME`, usually "~/.local/share"; on Windows in "%LOCALAPPDATA%".
///
/// They may not exist. So the user's own folder never hides a plug-in of the program, but the variable can.
std::vector<string> GetPluginDirectories(string const &programFileName, string const &installed);

/// Returns the extension of plug-in libraries, with its dot.
char const *GetPluginExtension();

} // namespace quillmarsh::host

#endif
