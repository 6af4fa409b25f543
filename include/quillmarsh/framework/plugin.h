// Identity and base of everything that a plug-in library can bring.
#ifndef QUILLMARSH_FRAMEWORK_PLUGIN_H
#define QUILLMARSH_FRAMEWORK_PLUGIN_H

#include <quillmarsh/basetools/libraryinfo.h>
#include <quillmarsh/platform/types.h>

namespace quillmarsh
{

class NamedParameter;

/// What a plug-in is, and so from which base class it derives.
enum ePluginType : unsigned int
{
    e_plugin_generic_extension = 0,
    e_plugin_application,
    e_plugin_direct_input_proxy,
    e_plugin_hid_driver,
    e_plugin_video_subsystem,
    e_plugin_video_renderer
};

/// Version of a plug-in: four numbers. A plain record.
struct QUILLMARSH_API PluginVersion
{
    unsigned int Number[4];

    PluginVersion(unsigned int first = 1, unsigned int second = 0, unsigned int third = 0, unsigned int fourth = 0);

    bool operator==(PluginVersion const &other) const = default;

    /// The numbers in decimal, joined by dots.
    string MakeString() const;
};

/// Identity of a plug-in, which can be read without creating it. A copyable record.
class QUILLMARSH_API PluginInfo
{
public:
    /// The library's own version, no type yet, version 1.0.0.0, empty texts.
    PluginInfo();
    PluginInfo(library_info::LibraryVersion const &libraryVersion, ePluginType pluginType, string const &pluginName,
               PluginVersion const &pluginVersion, string const &buildTimestamp, string const &description,
               string const &developerInfo);
    /// A copy with the type replaced.
    PluginInfo(PluginInfo const &other, ePluginType pluginType);

    /// Version of the library that the plug-in was built for.
    library_info::LibraryVersion const &GetLibraryVersion() const { return libraryVersion_; }
    ePluginType GetPluginType() const { return pluginType_; }
    string const &GetPluginName() const { return pluginName_; }
    PluginVersion const &GetPluginVersion() const { return pluginVersion_; }
    string const &GetBuildTimestamp() const { return buildTimestamp_; }
    string const &GetDescription() const { return description_; }
    string const &GetDeveloperInfo() const { return developerInfo_; }

    /// Compares all seven fields.
    bool operator==(PluginInfo const &other) const;

    /// Prints one line for each field behind `tabs` tabs.
    void Dump(ostream &out, unsigned int tabs) const;

    /// Readable name of a type; "BadPluginType" for a value that is none.
    static string FormatPluginType(ePluginType pluginType);

private:
    library_info::LibraryVersion libraryVersion_;
    ePluginType pluginType_;
    string pluginName_;
    PluginVersion pluginVersion_;
    string buildTimestamp_;
    string description_;
    string developerInfo_;
};

/// Base of all plug-ins.
///
/// An object is made by its descriptor, in the code of its own library, and deleted by the kernel through its virtual
/// destructor; it may not outlive the descriptor. Frame thread only.
class QUILLMARSH_API Plugin : NoCopy
{
public:
    virtual ~Plugin();

    /// Takes a parameter; false when it is unknown or does not fit. A plug-in has none unless it says so.
    virtual bool SetPluginParameter(NamedParameter const &parameter);
    /// Gives the value of a parameter; false, and the output unchanged, when it is unknown.
    virtual bool GetPluginParameter(string const &name, NamedParameter &parameter) const;

    /// The identity, which is borrowed and must stay as long as the plug-in.
    void SetPluginInfo(PluginInfo *info) { pluginInfo_ = info; }
    /// Asserts "Plugin-info not available." when none was set, and gives an empty one then.
    PluginInfo const &GetPluginInfo() const;

protected:
    Plugin() = default;

private:
    PluginInfo const *pluginInfo_ = nullptr;
};

/// Factory of one plug-in, which carries its identity. A plug-in library hands over its descriptors (see
/// pluginlibrary.h), each of them of one of the typed classes of plugindescriptors.h.
class QUILLMARSH_API PluginDescriptor : NoCopy
{
public:
    virtual ~PluginDescriptor();

    /// A new plug-in, owned by the caller, or null.
    virtual Plugin *CreatePlugin() = 0;

    PluginInfo const &GetPluginInfo() const { return info_; }

    /// A new plug-in that knows its identity, owned by the caller, or null.
    Plugin *CreateAndSetupPlugin();

protected:
    explicit PluginDescriptor(PluginInfo const &info);

private:
    PluginInfo info_;
};

} // namespace quillmarsh

#endif
