// Identity and base of everything that a plug-in library can bring.
#ifndef QUILLMARSH_FRAMEWORK_PLUGIN_H
#define QUILLMARSH_FRAMEWORK_PLUGIN_H

#include <quillmarsh/basetools/libraryinfo.h>
#include <quillmarsh/platform/types.h>

namespace quillmarsh
{

class NamedParameter;

/// Kind of a plug-in, which also tells its base class.
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

    /// Takes the four numbers.
    PluginVersion(unsigned int first = 1, unsigned int second = 0, unsigned int third = 0, unsigned int fourth = 0);

    /// Compares all four numbers.
    bool operator==(PluginVersion const &other) const = default;

    /// The numbers in decimal, joined by dots.
    string MakeString() const;
};

/// Identity of a plug-in, which can be read without creating it. A copyable record.
class QUILLMARSH_API PluginInfo
{
public:
    /// Takes the library's own version, version 1.0.0.0 for the plug-in, and empty texts. The type is set later.
    PluginInfo();
    /// Takes all seven fields.
    PluginInfo(library_info::LibraryVersion const &libraryVersion, ePluginType pluginType, string const &pluginName,
               PluginVersion const &pluginVersion, string const &buildTimestamp, string const &description,
               string const &developerInfo);
    /// Copies `other`, but with this type.
    PluginInfo(PluginInfo const &other, ePluginType pluginType);

    /// @name Fields
    /// The library version is the one that the plug-in was built for.
    /// @{
    library_info::LibraryVersion const &GetLibraryVersion() const { return libraryVersion_; }
    ePluginType GetPluginType() const { return pluginType_; }
    string const &GetPluginName() const { return pluginName_; }
    PluginVersion const &GetPluginVersion() const { return pluginVersion_; }
    string const &GetBuildTimestamp() const { return buildTimestamp_; }
    string const &GetDescription() const { return description_; }
    string const &GetDeveloperInfo() const { return developerInfo_; }
    /// @}

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
/// The descriptor makes an object, in the code of its own library; the kernel deletes it through its virtual
/// destructor. The object must not outlive the descriptor. Frame thread only.
class QUILLMARSH_API Plugin : NoCopy
{
public:
    virtual ~Plugin();

    /// Sets a parameter. Returns false when it is unknown or its value does not fit; by default a plug-in has none.
    virtual bool SetPluginParameter(NamedParameter const &parameter);
    /// Gives the value of a parameter. Returns false, and leaves the output alone, when it is unknown.
    virtual bool GetPluginParameter(string const &name, NamedParameter &parameter) const;

    /// Sets the identity, which is borrowed and outlives the plug-in.
    void SetPluginInfo(PluginInfo *info) { pluginInfo_ = info; }
    /// The identity. Asserts "Plugin-info not available." when none was set, and gives an empty one then.
    PluginInfo const &GetPluginInfo() const;

protected:
    Plugin() = default;

private:
    PluginInfo const *pluginInfo_ = nullptr;
};

/// Factory of one plug-in; it also holds the identity of the plug-in. A plug-in library hands over its descriptors (see
/// pluginlibrary.h). Each is derived from one of the typed classes of plugindescriptors.h.
class QUILLMARSH_API PluginDescriptor : NoCopy
{
public:
    virtual ~PluginDescriptor();

    /// Makes a plug-in, which the caller owns. May return null.
    virtual Plugin *CreatePlugin() = 0;

    /// Identity of the plug-in; good as long as the descriptor.
    PluginInfo const &GetPluginInfo() const { return info_; }

    /// Makes a plug-in with CreatePlugin() and sets its identity. The caller owns it; null when none was made.
    Plugin *CreateAndSetupPlugin();

protected:
    explicit PluginDescriptor(PluginInfo const &info);

private:
    PluginInfo info_;
};

} // namespace quillmarsh

#endif
