// Path arithmetic with a record of separators, so that the rules of one system can be tested on another.
#ifndef QUILLMARSH_SOURCE_BASETOOLS_PATHRULES_H
#define QUILLMARSH_SOURCE_BASETOOLS_PATHRULES_H

#include <quillmarsh/platform/types.h>

#include <vector>

namespace quillmarsh::file_system
{

/// How a system writes paths.
struct PathRules
{
    char pathSeparator;
    char extensionSeparator;
    /// 0 if there are no volumes.
    char volumeSeparator;
    /// Another character that the system accepts as a path separator; 0 for none.
    char otherSeparator;
    /// Prefix of a wide name; empty for none.
    char const *widePrefix;
    /// True when a path separator at the front means the root of the one tree of files.
    bool hasRoot;
    /// True when names like "con" and "nul.txt" mean devices in each directory.
    bool hasDeviceNames;
};

constexpr PathRules s_windowsPathRules = {'\\', '.', ':', '/', "\\\\?\\", false, true};
constexpr PathRules s_unixPathRules = {'/', '.', '\0', '\0', "", true, false};

/// @name Operations of filesystem.h with given rules
/// @{
void SplitFileName(PathRules const &rules, string const &full, string &path, string &base, string &extension);
void RemoveTrailingPathSeparator(PathRules const &rules, string &name);
void ForceTrailingPathSeparator(PathRules const &rules, string &name);
bool IsAbsolutePathName(PathRules const &rules, string const &name);
void SplitPathName(PathRules const &rules, string const &name, std::vector<string> &pieces);
bool ExpandPathName(PathRules const &rules, string const &in, string &out, bool trailingSeparator);
bool ConvertPathName(PathRules const &rules, string const &name, wstring &wide);
bool ConvertPathName(PathRules const &rules, wstring const &wide, string &name);
/// @}

/// Puts `directory`, which is not empty, in front of a relative name.
void ForceFullPathName(PathRules const &rules, string const &directory, string &name, bool trailingSeparator);

/// Adds a trailing separator to the name of a directory, or removes it unless it belongs to the root or a drive.
void ApplyTrailingPathSeparator(PathRules const &rules, string &name, bool trailingSeparator);

/// Removes from the front of a name the part that cannot be created as a directory: a root; on Windows the long-path
/// prefix, and a drive, or a server with its share, behind that prefix or behind "\\\\".
string EatRoot(PathRules const &rules, string &name);

/// True when a name means a device, with any path and extension, on a system that has names for devices. Behind the
/// long-path prefix it is true for everything that is not a file on a volume or a server.
bool NamesDevice(PathRules const &rules, string const &name);

/// True when the system can be asked for a name: it is not empty, and has no character 0, which would cut it off.
bool IsUsableName(string const &name);

/// True when a name can mean one file: it is usable, and has no "?" or "*" behind the long-path prefix.
bool CanBeLookedUp(PathRules const &rules, string const &name);

/// Turns the name of a directory into the name to look up. Returns false for a name that cannot be a directory's.
bool MakeDirectoryLookupName(PathRules const &rules, string const &name, string &lookupName);

} // namespace quillmarsh::file_system

#endif
