// Path arithmetic over a record of separators, so that the rules of one system can be tried on another.
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
    /// 0 where there are no volumes.
    char volumeSeparator;
    /// What the system also takes for a path separator; 0 for none.
    char otherSeparator;
    /// What a wide name begins with; empty if nothing.
    char const *widePrefix;
    /// Whether a path separator at the front stands for the root of the one tree of files.
    bool hasRoot;
    /// Whether names like "con" and "nul.txt" stand for devices in each directory.
    bool hasDeviceNames;
};

constexpr PathRules s_windowsPathRules = {'\\', '.', ':', '/', "\\\\?\\", false, true};
constexpr PathRules s_unixPathRules = {'/', '.', '\0', '\0', "", true, false};

/// @name The operations of filesystem.h, under the rules given
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

/// Gives the name of a directory a trailing separator, or takes it away, where it is not the root's or a drive's own.
void ApplyTrailingPathSeparator(PathRules const &rules, string &name, bool trailingSeparator);

/// Takes what no directory can be made of from the front of a name: a root; on Windows the long-path prefix, and a drive
/// or a server with its share where they stand behind it or behind "\\\\".
string EatRoot(PathRules const &rules, string &name);

/// Whether a name stands for a device, with whatever path and extension, where the system keeps names for them; behind
/// the long-path prefix, whether it stands for anything but a file on a volume or a server.
bool NamesDevice(PathRules const &rules, string const &name);

/// Whether the system can be asked for a name: not empty, and without a character 0, which would cut it short.
bool IsUsableName(string const &name);

/// Whether a name can stand for one file: usable, and without "?" and "*" behind the long-path prefix.
bool CanBeLookedUp(PathRules const &rules, string const &name);

/// Turns the name of a directory into the one to look up. False for a name that stands for no directory.
bool MakeDirectoryLookupName(PathRules const &rules, string const &name, string &lookupName);

} // namespace quillmarsh::file_system

#endif
