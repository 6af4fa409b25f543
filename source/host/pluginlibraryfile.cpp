#include "pluginlibraryfile.h"

#include "catching.h"
#include "system.h"

#include <quillmarsh/basetools/filesystem.h>
#include <quillmarsh/basetools/libraryinfo.h>
#include <quillmarsh/basetools/platforminfo.h>
#include <quillmarsh/basetools/texttools.h>
#include <quillmarsh/framework/plugindescriptors.h>
#include <quillmarsh/host/pluginset.h>

#include <algorithm>
#include <fstream>
#include <iterator>
#include <sstream>

namespace quillmarsh::host
{

namespace
{

/// True when the descriptor is of the class that its type stands for.
bool HasClassOfItsType(PluginDescriptor const &descriptor)
{
    using Test = bool (*)(PluginDescriptor const &);
    static constexpr auto s_isA = []<typename Class>(Class *) -> Test
    { return [](PluginDescriptor const &tested) { return dynamic_cast<Class const *>(&tested) != nullptr; }; };
    // Indexed by type.
    static constexpr Test s_tests[] = {
        s_isA(static_cast<GenericExtensionPluginDescriptor *>(nullptr)),
        s_isA(static_cast<ApplicationPluginDescriptor *>(nullptr)),
        s_isA(static_cast<DirectInputProxyPluginDescriptor *>(nullptr)),
        s_isA(static_cast<HIDDriverPluginDescriptor *>(nullptr)),
        s_isA(static_cast<VideoSubsystemPluginDescriptor *>(nullptr)),
        s_isA(static_cast<VideoRendererPluginDescriptor *>(nullptr)),
    };
    unsigned int const type = descriptor.GetPluginInfo().GetPluginType();
    return type < std::size(s_tests) && s_tests[type](descriptor);
}

/// Returns the folders that the user lists in the environment.
std::vector<string> GetPluginPath()
{
    std::vector<string> directories;
    string list;
    if (!platform_info::ExpandEnvironmentVariable("%QUILLMARSH_PLUGIN_PATH%", list))
        return directories;
    std::istringstream entries(list);
    for (string entry; std::getline(entries, entry, system::s_folderSeparator);)
    {
        // An empty or relative name would search the current directory, or a place below it.
        if (file_system::IsAbsolutePathName(entry))
            directories.push_back(entry);
    }
    return directories;
}

} // namespace

void RefusePluginFile(string const &file, string const &reason)
{
    QUILLMARSH_THROW(KernelException, "The plug-in '" + file + "' cannot be used: " + reason);
}

PluginLibraryFile::PluginLibraryFile(string const &fileName) : DynamicLinkLibrary(fileName)
{
    PluginLibraryRecord const &record = Open();
    CheckRecord(record);
    CollectDescriptors(record);
}

PluginLibraryFile::~PluginLibraryFile() = default;

void PluginLibraryFile::Refuse(string const &reason) const
{
    RefusePluginFile(GetFileName(), reason);
}

template<typename Call>
void PluginLibraryFile::CallLibrary(char const *what, Call &&call) const
{
    if (std::optional<string> const reason = Catch(call))
        Refuse(what + *reason);
}

void PluginLibraryFile::FillImportTable(DLLImportTable &table)
{
    table.Add(s_szPluginLibraryEntry, &entry_);
}

PluginLibraryRecord const &PluginLibraryFile::Open()
{
    if (system::IsLibraryFile(GetFileName()) && !system::IsCompleteLibraryFile(GetFileName()))
        Refuse("the library is cut off: it loads more than the file contains.");
    if (!Load())
    {
        if (!system::IsLibraryFile(GetFileName()))
            Refuse("it is not a library (" + GetLoadError() + ").");
        Refuse("the library cannot be loaded: " + GetLoadError());
    }
    if (!ImportSymbols(nullptr))
        Refuse(string("it is not a plug-in library, because it does not export ") + s_szPluginLibraryEntry + ".");
    PluginLibraryRecord const *record = nullptr;
    CallLibrary("its entry failed: ", [&] { record = entry_(); });
    if (record == nullptr || record->Magic != s_pluginLibraryMagic)
        Refuse(string("the result of ") + s_szPluginLibraryEntry + " is not the record of a plug-in library.");
    return *record;
}

void PluginLibraryFile::CheckVersion(library_info::LibraryVersion const &version) const
{
    library_info::LibraryVersion const own = library_info::GetLibraryVersion();
    if (!own.IsCompatibleWith(version))
        Refuse("it was built with version " + version.MakeString() + " of the library, and this host has " +
               own.MakeString() + ".");
}

void PluginLibraryFile::CheckRecord(PluginLibraryRecord const &record) const
{
    // Checks the head first: the other fields have a meaning only if it fits.
    unsigned int const *const version = record.LibraryVersion;
    CheckVersion(library_info::LibraryVersion(version[0], version[1], version[2], version[3]));

    PluginLibraryRecord const expected = MakePluginLibraryRecord();
    if (record.RecordLayout != expected.RecordLayout || record.RecordSize != expected.RecordSize)
    {
        Refuse("its record has layout " + MakeString(record.RecordLayout) + " and " + MakeString(record.RecordSize) +
               " bytes, and this host reads layout " + MakeString(expected.RecordLayout) + " with " +
               MakeString(expected.RecordSize) + ".");
    }
    auto const differing = std::mismatch(std::begin(record.CrossingSizes), std::end(record.CrossingSizes),
                                         std::begin(expected.CrossingSizes));
    if (differing.first != std::end(record.CrossingSizes))
    {
        Refuse("its " + string(s_pluginLibraryCrossings[differing.first - std::begin(record.CrossingSizes)]) + " has " +
               MakeString(*differing.first) + " bytes, and the host's has " + MakeString(*differing.second) +
               ": they were built with different compilers or settings.");
    }
}

void PluginLibraryFile::CollectDescriptors(PluginLibraryRecord const &record)
{
    unsigned int count = 0;
    CallLibrary("its number of plug-ins cannot be read: ", [&] { count = record.GetNumDescriptors(); });
    if (count == 0)
        Refuse("it offers no plug-in.");
    for (unsigned int i = 0; i < count; ++i)
    {
        PluginDescriptor *descriptor = nullptr;
        CallLibrary("its descriptors cannot be created: ", [&] { descriptor = record.GetDescriptor(i); });
        if (descriptor == nullptr)
            Refuse("its descriptor " + MakeString(i) + " is missing.");
        CheckDescriptor(*descriptor);
        descriptors_.push_back(descriptor);
    }
}

void PluginLibraryFile::CheckDescriptor(PluginDescriptor const &descriptor) const
{
    PluginInfo const &info = descriptor.GetPluginInfo();
    CheckVersion(info.GetLibraryVersion());
    if (!HasClassOfItsType(descriptor))
    {
        Refuse("the descriptor of '" + info.GetPluginName() + "' is of another class than its type " +
               PluginInfo::FormatPluginType(info.GetPluginType()) + " says.");
    }
}

std::vector<string> GetPluginDirectories(string const &programFileName, string const &installed)
{
    string path;
    string base;
    string extension;
    file_system::SplitFileName(programFileName, path, base, extension);
    std::vector<string> directories = GetPluginPath();
    directories.insert(directories.end(), {path + "plugins", path + installed});
    if (string const users = system::GetUserPluginDirectory(); !users.empty())
        directories.push_back(users);
    return directories;
}

string FindPluginFile(string const &name, std::vector<string> const &directories)
{
    string path;
    string base;
    string extension;
    file_system::SplitFileName(name, path, base, extension);
    if (!path.empty() || file_system::IsAbsolutePathName(name))
    {
        if (!file_system::FileExists(name))
            RefusePluginFile(name, "there is no such file.");
        return file_system::GetFullPathNameA(name, false);
    }
    string searched;
    for (string directory : directories)
    {
        file_system::ForceTrailingPathSeparator(directory);
        for (string const &file : {directory + name, directory + name + GetPluginExtension()})
        {
            if (!name.empty() && file_system::FileExists(file))
                return file;
        }
        searched += (searched.empty() ? "" : ", ") + directory;
    }
    RefusePluginFile(name, "there is no such file in " + searched + "; a file elsewhere needs its path.");
}

std::vector<string> ReadPluginCompanions(string const &libraryFileName)
{
    string path;
    string base;
    string extension;
    file_system::SplitFileName(libraryFileName, path, base, extension);
    string const fileName = path + base + ".plugins";
    std::vector<string> names;
    if (!file_system::FileExists(fileName))
        return names;
    std::ifstream file(file_system::GetStreamPath(fileName));
    if (!file)
        RefusePluginFile(fileName, file_system::GetLastFailureReason());
    for (string line; std::getline(file, line);)
    {
        while (!line.empty() && (line.back() == '\r' || line.back() == ' '))
            line.pop_back();
        if (!line.empty() && line.front() != '#')
            names.push_back(line);
    }
    if (file.bad())
        RefusePluginFile(fileName, "it cannot be read.");
    return names;
}

} // namespace quillmarsh::host
