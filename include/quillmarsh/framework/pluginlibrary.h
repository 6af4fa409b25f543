// Entry point of plug-in libraries. A library defines it once; a host checks its record before it trusts the library.
#ifndef QUILLMARSH_FRAMEWORK_PLUGINLIBRARY_H
#define QUILLMARSH_FRAMEWORK_PLUGINLIBRARY_H

#include <quillmarsh/framework/application.h>
#include <quillmarsh/framework/kernelexecutionparams.h>
#include <quillmarsh/framework/plugin.h>

#include <tuple>

namespace quillmarsh
{

/// Record that a plug-in library hands over. A plain record.
///
/// Everything up to `RecordSize` is the head. It is the same in every layout of the record and in every version of the
/// library, so that a host can read it first and report what does not fit.
struct PluginLibraryRecord
{
    /// Always s_pluginLibraryMagic.
    unsigned int Magic;
    /// Number of the layout of the fields behind the head.
    unsigned int RecordLayout;
    /// Version of the headers that the library was built with: major, minor, build, and 1 for a debug build.
    unsigned int LibraryVersion[4];
    /// Size of this record.
    unsigned int RecordSize;

    /// Sizes of the records that cross between host and library. They tell builds apart that have the same version.
    unsigned int CrossingSizes[8];
    /// Number of descriptors in the library.
    unsigned int (*GetNumDescriptors)();
    /// Descriptor by index, owned by the library; null past the end.
    PluginDescriptor *(*GetDescriptor)(unsigned int index);
};

/// First word of every record.
constexpr unsigned int s_pluginLibraryMagic = 0x4c504d51;
/// Number of the layout that this header describes.
constexpr unsigned int s_pluginLibraryRecordLayout = 1;

/// Names of the sizes in PluginLibraryRecord::CrossingSizes, for messages.
constexpr char const *s_pluginLibraryCrossings[] = {
    "pointer",     "string",        "PluginInfo",   "Plugin",
    "StartupInfo", "StartupResult", "AutoInitInfo", "KernelExecutionParams"};

/// Name of the one symbol that a plug-in library exports.
#define QUILLMARSH_PLUGIN_ENTRY QuillmarshGetPluginLibrary
/// Name of the entry point, for the table of imports.
constexpr char s_szPluginLibraryEntry[] = "QuillmarshGetPluginLibrary";
/// Type of the entry point.
using PluginLibraryEntry = PluginLibraryRecord const *(*)();

/// Record of these headers without its two functions. A library completes it, and a host compares with it.
constexpr PluginLibraryRecord MakePluginLibraryRecord()
{
    return {s_pluginLibraryMagic,
            s_pluginLibraryRecordLayout,
            {QUILLMARSH_VERSION_MAJOR, QUILLMARSH_VERSION_MINOR, QUILLMARSH_VERSION_BUILD, QUILLMARSH_ASSERTIONS},
            sizeof(PluginLibraryRecord),
            {sizeof(void *), sizeof(string), sizeof(PluginInfo), sizeof(Plugin), sizeof(Application::StartupInfo),
             sizeof(Application::StartupResult), sizeof(Application::AutoInitInfo), sizeof(KernelExecutionParams)},
            nullptr,
            nullptr};
}

/// Descriptors of one library, made at the first call. `Tag` is a type of the library's own file, which keeps two
/// libraries in one process apart.
template<typename Tag, typename... Descriptors>
class PluginLibrary
{
public:
    /// The record of the library.
    static PluginLibraryRecord const *GetRecord()
    {
        static constexpr PluginLibraryRecord s_record = MakeRecord();
        return &s_record;
    }

private:
    static constexpr PluginLibraryRecord MakeRecord()
    {
        PluginLibraryRecord record = MakePluginLibraryRecord();
        record.GetNumDescriptors = &GetNumDescriptors;
        record.GetDescriptor = &GetDescriptor;
        return record;
    }

    static unsigned int GetNumDescriptors() { return sizeof...(Descriptors); }

    static PluginDescriptor *GetDescriptor(unsigned int index)
    {
        static std::tuple<Descriptors...> s_descriptors;
        PluginDescriptor *const pointers[] = {&std::get<Descriptors>(s_descriptors)...};
        return index < sizeof...(Descriptors) ? pointers[index] : nullptr;
    }
};

} // namespace quillmarsh

/// Defines the entry point of a plug-in library. It stands once in the library, at the outermost level of a source
/// file, with the classes of the descriptors:
/// \code
/// QUILLMARSH_PLUGIN_LIBRARY(MyApplicationDescriptor)
/// \endcode
#define QUILLMARSH_PLUGIN_LIBRARY(...)                                                                                 \
    namespace                                                                                                          \
    {                                                                                                                  \
    struct QuillmarshPluginLibraryTag;                                                                                 \
    }                                                                                                                  \
    QUILLMARSH_PLUGIN_EXPORT ::quillmarsh::PluginLibraryRecord const *QUILLMARSH_PLUGIN_ENTRY();                       \
    ::quillmarsh::PluginLibraryRecord const *QUILLMARSH_PLUGIN_ENTRY()                                                 \
    {                                                                                                                  \
        return ::quillmarsh::PluginLibrary<QuillmarshPluginLibraryTag, __VA_ARGS__>::GetRecord();                      \
    }

#endif
