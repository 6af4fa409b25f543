#include "source/dataobjects/codecs/filereplacement.h"

#include <quillmarsh/basetools/filesystem.h>

#include "source/platform/files.h"

#include <cstdint>
#include <fstream>
#include <random>
#include <system_error>

namespace quillmarsh
{
namespace
{

using std::filesystem::file_type;
using std::filesystem::path;
using std::filesystem::perms;

/// The name of a path in the library's text.
string ToName(path const &file)
{
    std::u8string const text = file.u8string();
    return string(text.begin(), text.end());
}

/// Nobody can guess it, and nobody else gets it.
string MakeHiddenName()
{
    constexpr char digits[] = "0123456789abcdef";
    std::random_device random;
    std::uint64_t number = std::uint64_t{random()} << 32 | random();
    string name = ".quillmarsh-";
    for (int i = 0; i < 16; ++i, number >>= 4)
        name += digits[number & 15];
    return name + ".tmp";
}

bool CanOpen(path const &name, std::ios_base::openmode mode)
{
    return std::ofstream(name, mode | std::ios_base::binary).is_open();
}

} // namespace

path FindDataFile(string const &fileName)
{
    bool const isFile = file_system::GetFileType(fileName, true) == file_type::regular;
    return isFile ? file_system::GetStreamPath(fileName) : path();
}

bool MayReplaceFile(string const &fileName, bool overwrite)
{
    // Looked up as it is: a name that FileExists takes for a pattern can be that of a file.
    switch (file_system::GetFileType(fileName, false))
    {
    case file_type::none:
    case file_type::not_found:
        return true;
    case file_type::regular:
    case file_type::character:
    case file_type::block:
        return overwrite;
    default:
        return overwrite && file_system::DeleteFileA(fileName);
    }
}

FileReplacement::FileReplacement(string const &fileName)
{
    path const name = file_system::GetStreamPath(fileName);
    if (name.empty())
        return;
    std::error_code error;
    switch (file_system::GetFileType(fileName, true))
    {
    case file_type::directory:
    case file_type::fifo:
    case file_type::socket:
        return;
    case file_type::regular:
        if (!CanOpen(name, std::ios_base::app))
            return;
        permissions_ = std::filesystem::status(name, error).permissions();
        if (!CreateBeside(file_system::GetStreamPath(platform::FollowLinks(fileName))))
            path_ = name;
        return;
    case file_type::not_found:
        // A link that leads nowhere is there all the same.
        if (file_system::GetFileType(fileName, false) != file_type::not_found || !CreateBeside(name))
            path_ = name;
        return;
    default:
        path_ = name;
    }
}

FileReplacement::~FileReplacement()
{
    if (!target_.empty())
        file_system::DeleteFileA(ToName(path_));
}

bool FileReplacement::Commit()
{
    if (target_.empty())
        return true;
    std::error_code error;
    if (permissions_ != perms::unknown)
        std::filesystem::permissions(path_, permissions_, error);
    if (!file_system::MoveFileA(ToName(path_), ToName(target_), true))
        return false;
    target_.clear();
    return true;
}

bool FileReplacement::CreateBeside(path const &target)
{
    path const beside = target.parent_path() / MakeHiddenName();
    if (!CanOpen(beside, std::ios_base::out))
        return false;
    path_ = beside;
    target_ = target;
    return true;
}

} // namespace quillmarsh
