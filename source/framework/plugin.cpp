#include <quillmarsh/framework/plugin.h>

#include <quillmarsh/basetools/diagnostics.h>
#include <quillmarsh/basetools/streameffectors.h>
#include <quillmarsh/basetools/texttools.h>

#include <iterator>
#include <ostream>

namespace quillmarsh
{

PluginVersion::PluginVersion(unsigned int first, unsigned int second, unsigned int third, unsigned int fourth)
    : Number{first, second, third, fourth}
{
}

string PluginVersion::MakeString() const
{
    string text = quillmarsh::MakeString(Number[0]);
    for (unsigned int i = 1; i < std::size(Number); ++i)
        text += '.' + quillmarsh::MakeString(Number[i]);
    return text;
}

PluginInfo::PluginInfo() : libraryVersion_(library_info::GetLibraryVersion()), pluginType_() {}

PluginInfo::PluginInfo(library_info::LibraryVersion const &libraryVersion, ePluginType pluginType,
                       string const &pluginName, PluginVersion const &pluginVersion, string const &buildTimestamp,
                       string const &description, string const &developerInfo)
    : libraryVersion_(libraryVersion),
      pluginType_(pluginType),
      pluginName_(pluginName),
      pluginVersion_(pluginVersion),
      buildTimestamp_(buildTimestamp),
      description_(description),
      developerInfo_(developerInfo)
{
}

PluginInfo::PluginInfo(PluginInfo const &other, ePluginType pluginType) : PluginInfo(other)
{
    pluginType_ = pluginType;
}

bool PluginInfo::operator==(PluginInfo const &other) const
{
    return libraryVersion_ == other.libraryVersion_ && pluginType_ == other.pluginType_ &&
           pluginName_ == other.pluginName_ && pluginVersion_ == other.pluginVersion_ &&
           buildTimestamp_ == other.buildTimestamp_ && description_ == other.description_ &&
           developerInfo_ == other.developerInfo_;
}

void PluginInfo::Dump(ostream &out, unsigned int tabs) const
{
    IndentEffector const indent(tabs);
    out << indent << "LibraryVersion: " << libraryVersion_.MakeString() << std::endl;
    out << indent << "PluginType....: " << FormatPluginType(pluginType_) << std::endl;
    out << indent << "PluginName....: " << pluginName_ << std::endl;
    out << indent << "PluginVersion.: " << pluginVersion_.MakeString() << std::endl;
    out << indent << "BuildTimestamp: " << buildTimestamp_ << std::endl;
    out << indent << "Description...: " << description_ << std::endl;
    out << indent << "DeveloperInfo.: " << developerInfo_ << std::endl;
}

string PluginInfo::FormatPluginType(ePluginType pluginType)
{
    static constexpr char const *s_names[] = {"GenericExtension", "Application",    "DirectInputProxy",
                                              "HIDDriver",        "VideoSubsystem", "VideoRenderer"};
    return pluginType < std::size(s_names) ? s_names[pluginType] : "BadPluginType";
}

Plugin::~Plugin() = default;

bool Plugin::SetPluginParameter(NamedParameter const &)
{
    return false;
}

bool Plugin::GetPluginParameter(string const &, NamedParameter &) const
{
    return false;
}

PluginInfo const &Plugin::GetPluginInfo() const
{
    QUILLMARSH_ASSERT(pluginInfo_ != nullptr, "Plugin-info not available.");
    static PluginInfo const s_none;
    return pluginInfo_ != nullptr ? *pluginInfo_ : s_none;
}

PluginDescriptor::PluginDescriptor(PluginInfo const &info) : info_(info) {}

PluginDescriptor::~PluginDescriptor() = default;

Plugin *PluginDescriptor::CreateAndSetupPlugin()
{
    Plugin *const plugin = CreatePlugin();
    if (plugin != nullptr)
        plugin->SetPluginInfo(&info_);
    return plugin;
}

} // namespace quillmarsh
