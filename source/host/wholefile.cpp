#include "wholefile.h"

#include <quillmarsh/basetools/filesystem.h>

#include <cerrno>
#include <fstream>

namespace quillmarsh::host
{

namespace
{

bool WriteText(string const &fileName, string const &text)
{
    std::ofstream file(file_system::GetStreamPath(fileName), std::ios::binary | std::ios::trunc);
    file << text << std::flush;
    file.close();
    return !file.fail();
}

/// Name of the file that the links of a name lead to.
string FollowLinks(string const &fileName)
{
    std::error_code error;
    std::filesystem::path const target = std::filesystem::canonical(file_system::GetStreamPath(fileName), error);
    if (error)
        return fileName;
    std::u8string const name = target.u8string();
    return string(name.begin(), name.end());
}

} // namespace

string WriteWholeFile(string const &fileName, string const &text, bool overwrite)
{
    using std::filesystem::file_type;
    bool const exists = file_system::FileExists(fileName);
    if (exists && !overwrite)
        return "the file already exists";
    if (exists && file_system::GetFileType(fileName, true) != file_type::regular)
        return "it is not a file";
    errno = 0;
    if (!exists)
    {
        if (WriteText(fileName, text))
            return "";
        string reason = file_system::GetLastFailureReason();
        file_system::DeleteFileA(fileName);
        return reason;
    }
    string const target = FollowLinks(fileName);
    string directory;
    string base;
    string extension;
    file_system::SplitFileName(file_system::GetFullPathNameA(target, false), directory, base, extension);
    string beside;
    if (!file_system::CreateTempFile(beside, directory, "new"))
        return file_system::GetLastFailureReason();
    std::error_code ignored;
    std::filesystem::permissions(file_system::GetStreamPath(beside),
                                 std::filesystem::status(file_system::GetStreamPath(target), ignored).permissions(),
                                 ignored);
    if (WriteText(beside, text) && file_system::MoveFileA(beside, target, overwrite))
        return "";
    string reason = file_system::GetLastFailureReason();
    file_system::DeleteFileA(beside);
    return reason;
}

} // namespace quillmarsh::host
