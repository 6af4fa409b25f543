#include "source/dataobjects/datafiles.h"

#include <quillmarsh/basetools/filesystem.h>

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

/// Names are UTF-8 on every system, so the path is made of characters that say so. Empty for a name that no file has.
path MakePath(string const &fileName)
{
    // A name that the system would cut short names another file.
    if (fileName.find('\0') != string::npos)
        return {};
    try
    {
        return path(std::u8string(fileName.begin(), fileName.end()));
    }
    catch (std::exception const &)
    {
        // Not well-formed, on a system that has to convert it.
        return {};
    }
}

file_type TypeOf(path const &name)
{
    std::error_code error;
    return std::filesystem::status(name, error).type();
}

file_type TypeOfEntry(path const &name)
{
    std::error_code error;
    return std::filesystem::symlink_status(name, error).type();
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
    path const name = MakePath(fileName);
    return TypeOf(name) == file_type::regular ? name : path();
}

bool MayReplaceFile(string const &fileName, bool overwrite)
{
    // Looked up as it is: a name that FileExists takes for a pattern can be that of a file.
    switch (TypeOfEntry(MakePath(fileName)))
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
    path const name = MakePath(fileName);
    std::error_code error;
    switch (TypeOf(name))
    {
    case file_type::directory:
    case file_type::fifo:
    case file_type::socket:
        return;
    case file_type::regular:
        if (!CanOpen(name, std::ios_base::app))
            return;
        permissions_ = std::filesystem::status(name, error).permissions();
        if (!CreateBeside(std::filesystem::canonical(name, error)))
            path_ = name;
        return;
    case file_type::not_found:
        // A link that leads nowhere is there all the same.
        if (TypeOfEntry(name) != file_type::not_found || !CreateBeside(name))
            path_ = name;
        return;
    default:
        path_ = name;
    }
}

FileReplacement::~FileReplacement()
{
    if (target_.empty())
        return;
    std::error_code error;
    std::filesystem::remove(path_, error);
}

bool FileReplacement::Commit()
{
    if (target_.empty())
        return true;
    std::error_code error;
    if (permissions_ != perms::unknown)
        std::filesystem::permissions(path_, permissions_, error);
    std::filesystem::rename(path_, target_, error);
    if (error)
        return false;
    target_.clear();
    return true;
}

bool FileReplacement::CreateBeside(path const &target)
{
    if (target.empty())
        return false;
    path const beside = target.parent_path() / MakeHiddenName();
    if (!CanOpen(beside, std::ios_base::out))
        return false;
    path_ = beside;
    target_ = target;
    return true;
}

} // namespace quillmarsh
