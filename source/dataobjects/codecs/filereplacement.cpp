#include "source/dataobjects/codecs/filereplacement.h"

#include <quillmarsh/basetools/filesystem.h>
#include <quillmarsh/dataobjects/datafiles.h>

#include "source/dataobjects/codecs/openfailures.h"
#include "source/platform/files.h"
#include "source/platform/plainfiles.h"

#include <algorithm>
#include <cerrno>
#include <cstdint>
#include <fstream>
#include <mutex>
#include <random>
#include <system_error>
#include <vector>

namespace quillmarsh
{
namespace
{

using std::filesystem::file_type;
using std::filesystem::path;
using std::filesystem::perms;

/// The unfinished files of all threads.
class UnfinishedFiles
{
public:
    static UnfinishedFiles &Instance()
    {
        static UnfinishedFiles instance;
        return instance;
    }

    void Add(path const &file)
    {
        std::lock_guard const lock(mutex_);
        files_.push_back(file);
    }
    void Drop(path const &file)
    {
        std::lock_guard const lock(mutex_);
        files_.erase(std::remove(files_.begin(), files_.end(), file), files_.end());
    }
    void RemoveAll()
    {
        std::lock_guard const lock(mutex_);
        std::error_code error;
        // A folder was added before the files in it.
        for (auto file = files_.rbegin(); file != files_.rend(); ++file)
            std::filesystem::remove(*file, error);
    }

private:
    std::mutex mutex_;
    std::vector<path> files_;
};

/// Returns the name of a path as UTF-8.
string ToName(path const &file)
{
    std::u8string const text = file.u8string();
    return string(text.begin(), text.end());
}

/// Returns a file name that cannot be guessed.
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

bool CanWrite(path const &name)
{
    return std::ofstream(name, std::ios_base::app | std::ios_base::binary).is_open();
}

bool IsPipe(string const &fileName)
{
    file_type const type = file_system::GetFileType(fileName, true);
    return type == file_type::fifo || type == file_type::socket;
}

/// Returns the end of a chain of links; the name itself when the system does not report it.
path FollowEachLink(path name)
{
    constexpr int mostLinks = 40;
    std::error_code error;
    for (int i = 0; i < mostLinks && std::filesystem::symlink_status(name, error).type() == file_type::symlink; ++i)
    {
        path const next = std::filesystem::read_symlink(name, error);
        if (error)
            break;
        name = name.parent_path() / next;
    }
    return name;
}

} // namespace

FileReplacement::FileReplacement(string const &fileName, bool overwrite) : overwrite_(overwrite)
{
    CodecFailure failure = overwrite && IsPipe(fileName) ? CodecFailure() : FindWritingObstacle(fileName, overwrite);
    if (!failure)
    {
        errno = 0;
        ReplaceFile(fileName);
        if (path_.empty())
            failure = DescribeWriteFailure();
    }
    if (failure)
        Tell(failure);
}

void FileReplacement::ReplaceFile(string const &fileName)
{
    path const name = file_system::GetStreamPath(fileName);
    std::error_code error;
    switch (file_system::GetFileType(fileName, true))
    {
    case file_type::regular:
        if (!CanWrite(name))
            return;
        permissions_ = std::filesystem::status(name, error).permissions();
        if (!CreateBeside(file_system::GetStreamPath(platform::FollowLinks(fileName))))
            path_ = name;
        return;
    case file_type::fifo:
    case file_type::socket:
    case file_type::not_found:
        // If a new file cannot be created in the directory, the target cannot be created in place either.
        CreateBeside(FollowEachLink(name));
        return;
    default:
        path_ = name;
    }
}

FileReplacement::~FileReplacement()
{
    if (target_.empty())
        return;
    int const reason = errno;
    file_system::DeleteFileA(ToName(path_));
    UnfinishedFiles::Instance().Drop(path_);
    errno = reason;
}

bool FileReplacement::Commit()
{
    if (target_.empty())
        return true;
    std::error_code error;
    if (permissions_ != perms::unknown)
        std::filesystem::permissions(path_, permissions_, error);
    errno = 0;
    if (!file_system::MoveFileA(ToName(path_), ToName(target_), overwrite_))
    {
        bool const isTaken = errno == EEXIST && !overwrite_;
        Tell(isTaken ? DescribeTakenName() : DescribeWriteFailure());
        return false;
    }
    UnfinishedFiles::Instance().Drop(path_);
    target_.clear();
    return true;
}

bool FileReplacement::CreateBeside(path const &target)
{
    path const beside = target.parent_path() / MakeHiddenName();
    // Added before the file exists, because another thread may remove unfinished files at any moment.
    UnfinishedFiles::Instance().Add(beside);
    if (!platform::CreateNewFile(beside))
    {
        UnfinishedFiles::Instance().Drop(beside);
        return false;
    }
    path_ = beside;
    target_ = target;
    return true;
}

TemporaryFile::TemporaryFile()
{
    std::error_code error;
    folder_ = std::filesystem::temp_directory_path(error) / MakeHiddenName();
    path const file = folder_ / "data";
    UnfinishedFiles::Instance().Add(folder_);
    UnfinishedFiles::Instance().Add(file);
    if (!error && std::filesystem::create_directory(folder_, error))
        std::filesystem::permissions(folder_, perms::owner_all, error);
    if (error)
        errno = error.value();
    else
        name_ = ToName(file);
}

TemporaryFile::~TemporaryFile()
{
    int const reason = errno;
    std::error_code error;
    for (path const &entry : {folder_ / "data", folder_})
    {
        std::filesystem::remove(entry, error);
        UnfinishedFiles::Instance().Drop(entry);
    }
    errno = reason;
}

namespace sampled_data
{

void RemoveUnfinishedFiles()
{
    UnfinishedFiles::Instance().RemoveAll();
}

} // namespace sampled_data

} // namespace quillmarsh
