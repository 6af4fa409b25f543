// One plug-in library, loaded and checked.
#ifndef QUILLMARSH_HOST_PLUGINLIBRARYFILE_H
#define QUILLMARSH_HOST_PLUGINLIBRARYFILE_H

#include <quillmarsh/basetools/dynamiclinklibrary.h>
#include <quillmarsh/framework/pluginlibrary.h>

#include <vector>

namespace quillmarsh::host
{

/// One plug-in library: loads the file, checks the record that it hands over, and gives its descriptors.
class PluginLibraryFile : private DynamicLinkLibrary
{
public:
    /// Loads the file. Throws a KernelException that says what is wrong with it.
    explicit PluginLibraryFile(string const &fileName);
    ~PluginLibraryFile() override;

    using DynamicLinkLibrary::GetFileName;

    /// Leaves the library in the process when this object goes, for code of it that is still to be used.
    void Keep() { SetAutoUnload(false); }

    std::vector<PluginDescriptor *> const &GetDescriptors() const { return descriptors_; }

private:
    void FillImportTable(DLLImportTable &table) override;

    PluginLibraryRecord const &Open();
    void CheckRecord(PluginLibraryRecord const &record) const;
    void CheckVersion(library_info::LibraryVersion const &version) const;
    void CollectDescriptors(PluginLibraryRecord const &record);
    [[noreturn]] void Refuse(string const &reason) const;

    PluginLibraryEntry entry_ = nullptr;
    std::vector<PluginDescriptor *> descriptors_;
};

/// Full name of the file that a `--plugin` names. One with a path separator, or a drive, is that file; a name alone is
/// looked for in the directories, with the system's extension if it has none, and never in the current one. Throws a
/// KernelException when there is no such file.
string FindPluginFile(string const &name, std::vector<string> const &directories);

} // namespace quillmarsh::host

#endif
