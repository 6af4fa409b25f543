#include "../system.h"

#include <quillmarsh/basetools/filesystem.h>
#include <quillmarsh/basetools/platforminfo.h>
#include <quillmarsh/host/pluginset.h>

#include <cstdint>
#include <cstring>
#include <fstream>

#include <elf.h>
#include <link.h>

namespace quillmarsh::host
{

char const *GetPluginExtension()
{
    return ".so";
}

namespace system
{

bool IsLibraryFile(string const &fileName)
{
    std::ifstream file(fileName, std::ios::binary);
    char head[4] = {};
    file.read(head, sizeof(head));
    return file && std::memcmp(head, ELFMAG, SELFMAG) == 0;
}

bool IsCompleteLibraryFile(string const &fileName)
{
    std::ifstream file(fileName, std::ios::binary | std::ios::ate);
    auto const fileSize = static_cast<std::uint64_t>(file.tellg());
    ElfW(Ehdr) header{};
    file.seekg(0);
    file.read(reinterpret_cast<char *>(&header), sizeof(header));
    // The loader itself refuses a file for another machine, and then reads no more than its header.
    if (file && header.e_phentsize != sizeof(ElfW(Phdr)))
        return true;
    for (unsigned int i = 0; file && i < header.e_phnum; ++i)
    {
        ElfW(Phdr) segment{};
        file.seekg(static_cast<std::streamoff>(header.e_phoff + i * sizeof(segment)));
        file.read(reinterpret_cast<char *>(&segment), sizeof(segment));
        bool const isCutOff = segment.p_type == PT_LOAD &&
                              (segment.p_offset > fileSize || segment.p_filesz > fileSize - segment.p_offset);
        if (isCutOff)
            return false;
    }
    return static_cast<bool>(file);
}

char const s_folderSeparator = ':';

string GetUserPluginDirectory()
{
    string data;
    // A name that is not absolute does not count.
    if (!platform_info::ExpandEnvironmentVariable("%XDG_DATA_HOME%", data) || !data.starts_with('/'))
    {
        if (!file_system::GetUserHomeDirectory(data, true))
            return "";
        data += ".local/share";
    }
    return data + "/quillmarsh/plugins";
}

HICON LoadProgramIcon(unsigned int)
{
    return nullptr;
}

} // namespace system

} // namespace quillmarsh::host
