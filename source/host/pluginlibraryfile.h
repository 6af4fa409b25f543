// One plug-in library, loaded and checked.
#ifndef QUILLMARSH_SOURCE_HOST_PLUGINLIBRARYFILE_H
#define QUILLMARSH_SOURCE_HOST_PLUGINLIBRARYFILE_H

#include <quillmarsh/basetools/dynamiclinklibrary.h>
#include <quillmarsh/framework/pluginlibrary.h>

#include <vector>

namespace quillmarsh::host
{

/// One plug-in library: loads the file, checks its record, and returns its descriptors.
class PluginLibraryFile : private DynamicLinkLibrary
{
public:
    /// Loads the file. Throws a KernelException with the reason when it cannot be used.
    explicit PluginLibraryFile(string const &fileName);
    ~PluginLibraryFile() override;

    using DynamicLinkLibrary::GetFileName;

    /// Keeps the library loaded when this object is deleted, because its code is still used.
    void Keep() { SetAutoUnload(false); }

    std::vector<PluginDescriptor *> const &GetDescriptors() const { return descriptors_; }

private:
    void FillImportTable(DLLImportTable &table) override;

    PluginLibraryRecord const &Open();
    /// Calls code of the library, and refuses the library when the code throws. `what` begins the reason.
    template<typename Call>
    void CallLibrary(char const *what, Call &&call) const;
    void CheckRecord(PluginLibraryRecord const &record) const;
    void CheckVersion(library_info::LibraryVersion const &version) const;
    void CollectDescriptors(PluginLibraryRecord const &record);
    void CheckDescriptor(PluginDescriptor const &descriptor) const;
    [[noreturn]] void Refuse(string const &reason) const;

    PluginLibraryEntry entry_ = nullptr;
    std::vector<PluginDescriptor *> descriptors_;
};

/// Throws a KernelException that names the file of a plug-in library and the reason why it cannot be used.
[[noreturn]] void RefusePluginFile(string const &file, string const &reason);

} // namespace quillmarsh::host

#endif
