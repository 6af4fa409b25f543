#include <quillmarsh/basetools/filesystem.h>

#include "source/basetools/pathrules.h"
#include "source/platform/files.h"

namespace quillmarsh::file_system
{

/// Directories that the walk has entered and not left, innermost first.
struct FileSystemWalker::Ancestors
{
    platform::DirectoryIdentity identity;
    Ancestors const *outer;

    static bool Contain(Ancestors const *ancestors, platform::DirectoryIdentity const &identity)
    {
        while (ancestors && !(ancestors->identity == identity))
            ancestors = ancestors->outer;
        return ancestors != nullptr;
    }
};

FileSystemWalker::FileSystemWalker() = default;
FileSystemWalker::FileSystemWalker(FileSystemWalker const &) = default;
FileSystemWalker &FileSystemWalker::operator=(FileSystemWalker const &) = default;
FileSystemWalker::~FileSystemWalker() = default;

bool FileSystemWalker::Walk(string const &root)
{
    cancelled_ = false;
    OnBeginWalk(root);
    // With a separator, an empty name would mean the root of the system.
    bool opened = false;
    if (IsUsableName(root))
    {
        string path = root;
        ForceTrailingPathSeparator(path);
        opened = WalkOneLevel(0, path, nullptr);
    }
    OnEndWalk();
    return opened && !cancelled_;
}

bool FileSystemWalker::WalkOneLevel(unsigned int level, string const &path, Ancestors const *ancestors)
{
    if (cancelled_)
        return false;
    AutoPtr<platform::DirectoryListing> const listing = platform::DirectoryListing::Open(path);
    if (!listing)
        return false;
    platform::DirectoryIdentity identity;
    if (listing->GetIdentity(identity) && Ancestors::Contain(ancestors, identity))
        return false;
    Ancestors const here = {identity, ancestors};

    string name;
    bool isDirectory = false;
    unsigned int index = 0;
    while (!cancelled_ && listing->Next(name, isDirectory))
    {
        if (isDirectory && (name == "." || name == ".."))
            continue;
        if (!isDirectory)
            OnFile(level, index, path, name);
        else if (OnDirectory(level, index, path, name))
            WalkOneLevel(level + 1, path + name + GetPathSeparator(), &here);
        ++index;
    }
    return true;
}

void FileSystemWalker::OnBeginWalk(string const &) {}

void FileSystemWalker::OnEndWalk() {}

void FileSystemWalker::OnFile(unsigned int, unsigned int, string const &, string const &) {}

bool FileSystemWalker::OnDirectory(unsigned int, unsigned int, string const &, string const &)
{
    return true;
}

} // namespace quillmarsh::file_system
