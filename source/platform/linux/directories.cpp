#include "source/platform/files.h"

#include <algorithm>
#include <cstdlib>
#include <dirent.h>
#include <fcntl.h>
#include <filesystem>
#include <pwd.h>
#include <sys/stat.h>
#include <unistd.h>
#include <vector>

namespace quillmarsh::platform
{
namespace
{

struct Entry
{
    string name;
    bool isDirectory;
};

struct DirectoryCloser
{
    void operator()(DIR *directory) const { closedir(directory); }
};

/// Reads the whole listing, sorts it, and closes the directory, so that a walk through a deep tree keeps no descriptors
/// open.
class SortedListing : public DirectoryListing
{
public:
    SortedListing(DirectoryIdentity const &identity, std::vector<Entry> entries)
        : identity_(identity),
          entries_(std::move(entries))
    {
        std::sort(entries_.begin(), entries_.end(), [](Entry const &a, Entry const &b) { return a.name < b.name; });
    }

    bool GetIdentity(DirectoryIdentity &identity) const override
    {
        identity = identity_;
        return true;
    }

    bool Next(string &name, bool &isDirectory) override
    {
        if (next_ == entries_.size())
            return false;
        name = entries_[next_].name;
        isDirectory = entries_[next_].isDirectory;
        ++next_;
        return true;
    }

private:
    DirectoryIdentity identity_;
    std::vector<Entry> entries_;
    std::size_t next_ = 0;
};

/// True when an entry is a directory, or a link to one.
bool IsDirectory(int directory, dirent const &entry)
{
    bool const mustLook = entry.d_type == DT_LNK || entry.d_type == DT_UNKNOWN;
    if (!mustLook)
        return entry.d_type == DT_DIR;
    struct stat status;
    return fstatat(directory, entry.d_name, &status, 0) == 0 && S_ISDIR(status.st_mode);
}

string GetVariable(char const *name)
{
    char const *const value = std::getenv(name);
    return value ? value : "";
}

} // namespace

AutoPtr<DirectoryListing> DirectoryListing::Open(string const &path)
{
    std::unique_ptr<DIR, DirectoryCloser> const directory(opendir(path.c_str()));
    struct stat status;
    if (!directory || fstat(dirfd(directory.get()), &status) != 0)
        return nullptr;
    std::vector<Entry> entries;
    while (dirent const *const entry = readdir(directory.get()))
        entries.push_back({entry->d_name, IsDirectory(dirfd(directory.get()), *entry)});
    return std::make_unique<SortedListing>(DirectoryIdentity{status.st_dev, status.st_ino}, std::move(entries));
}

bool ReadProcessDirectory(string &directory)
{
    std::error_code error;
    std::filesystem::path const current = std::filesystem::current_path(error);
    if (error)
        return false;
    directory = current.native();
    return true;
}

bool ChangeProcessDirectory(string const &directory)
{
    return chdir(directory.c_str()) == 0;
}

bool ReadTempDirectory(string &directory)
{
    string const named = GetVariable("TMPDIR");
    struct stat status;
    bool const isUsable = !named.empty() && stat(named.c_str(), &status) == 0 && S_ISDIR(status.st_mode);
    directory = isUsable ? named : "/tmp";
    return true;
}

bool ReadHomeDirectory(string &directory)
{
    directory = GetVariable("HOME");
    if (!directory.empty())
        return true;
    std::vector<char> buffer(16384);
    passwd record;
    passwd *found = nullptr;
    if (getpwuid_r(getuid(), &record, buffer.data(), buffer.size(), &found) != 0 || !found || !found->pw_dir)
        return false;
    directory = found->pw_dir;
    return true;
}

bool ReadUserDirectory(eUserDirectory kind, string &directory)
{
    bool const isConfig = kind == eUserDirectory::e_config;
    string const named = GetVariable(isConfig ? "XDG_CONFIG_HOME" : "XDG_STATE_HOME");
    if (named.starts_with('/'))
    {
        directory = named;
        return true;
    }
    string home;
    struct stat status;
    if (!ReadHomeDirectory(home) || stat(home.c_str(), &status) != 0 || !S_ISDIR(status.st_mode))
        return false;
    directory = home + (isConfig ? "/.config" : "/.local/state");
    return true;
}

bool ReadVolumes(std::vector<string> &volumes)
{
    volumes = {"/"};
    return true;
}

bool ExpandEnvironment(string const &in, string &out)
{
    out.clear();
    for (std::size_t at = 0; at < in.size();)
    {
        std::size_t const end = in[at] == '%' ? in.find('%', at + 1) : string::npos;
        string const name = end == string::npos ? string() : in.substr(at + 1, end - at - 1);
        char const *const value = name.empty() || name.find('\0') != string::npos ? nullptr : std::getenv(name.c_str());
        if (value)
        {
            out += value;
            at = end + 1;
        }
        else
            // Text between two "%" that names no variable stays; its second "%" can begin the next reference.
            out += in[at++];
    }
    return true;
}

} // namespace quillmarsh::platform
