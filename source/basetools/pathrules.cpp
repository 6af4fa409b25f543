#include "source/basetools/pathrules.h"

#include <quillmarsh/basetools/texttools.h>

#include <algorithm>
#include <string_view>
#include <utility>

namespace quillmarsh::file_system
{
namespace
{

bool EndsInSeparator(PathRules const &rules, string const &name)
{
    return !name.empty() && name.back() == rules.pathSeparator;
}

bool IsRoot(PathRules const &rules, string const &name)
{
    return rules.hasRoot && name.size() == 1 && name.front() == rules.pathSeparator;
}

bool IsRooted(PathRules const &rules, string const &name)
{
    return rules.hasRoot && !name.empty() && name.front() == rules.pathSeparator;
}

bool IsDrive(PathRules const &rules, string const &name)
{
    return rules.volumeSeparator != '\0' && name.size() == 2 && IsLetter(name[0]) && name[1] == rules.volumeSeparator;
}

constexpr std::string_view s_devices[] = {"CON", "PRN", "AUX", "NUL", "CONIN$", "CONOUT$"};
constexpr std::string_view s_ports[] = {"COM", "LPT"};
constexpr std::string_view s_portNumbers[] = {"1", "2", "3", "4",      "5",      "6",
                                              "7", "8", "9", "\u00b9", "\u00b2", "\u00b3"};

bool IsDevice(string const &name)
{
    if (std::ranges::find(s_devices, name) != std::end(s_devices))
        return true;
    constexpr std::size_t length = s_ports[0].size();
    return name.size() > length && std::ranges::find(s_ports, name.substr(0, length)) != std::end(s_ports) &&
           std::ranges::find(s_portNumbers, name.substr(length)) != std::end(s_portNumbers);
}

/// True when the text behind the long-path prefix begins with a server.
bool NamesServer(PathRules const &rules, string const &nameBehindPrefix)
{
    string begin = nameBehindPrefix.substr(0, 4);
    UpperCase(begin);
    return begin == string("UNC") + rules.pathSeparator;
}

/// There, the system takes names of any of its objects.
bool NamesFileBehindPrefix(PathRules const &rules, string const &name)
{
    string begin = name.substr(0, 7);
    UpperCase(begin);
    bool const hasDrive = IsDrive(rules, name.substr(0, 2)) && name.size() > 2 && name[2] == rules.pathSeparator;
    return hasDrive || NamesServer(rules, name) || begin == "VOLUME{";
}

/// Resolves "." and "..". False if ".." meets no more pieces than `floor`.
bool ResolvePieces(std::vector<string> const &pieces, std::size_t floor, std::vector<string> &resolved)
{
    for (string const &piece : pieces)
    {
        if (piece == ".")
            continue;
        if (piece != "..")
        {
            resolved.push_back(piece);
            continue;
        }
        if (resolved.size() <= floor)
            return false;
        resolved.pop_back();
    }
    return true;
}

} // namespace

void SplitFileName(PathRules const &rules, string const &full, string &path, string &base, string &extension)
{
    // rfind gives npos without a separator, and npos + 1 is 0. The pieces are made before any output changes, since
    // an output can be the input.
    std::size_t const nameAt = full.rfind(rules.pathSeparator) + 1;
    string pathPiece = full.substr(0, nameAt);
    string basePiece = full.substr(nameAt);
    string extensionPiece;

    std::size_t const dotAt = basePiece.rfind(rules.extensionSeparator);
    if (dotAt != string::npos && dotAt != 0 && dotAt + 1 != basePiece.size())
    {
        extensionPiece = basePiece.substr(dotAt + 1);
        basePiece.erase(dotAt);
    }
    path = std::move(pathPiece);
    base = std::move(basePiece);
    extension = std::move(extensionPiece);
}

void RemoveTrailingPathSeparator(PathRules const &rules, string &name)
{
    if (EndsInSeparator(rules, name) && !IsRoot(rules, name))
        name.pop_back();
}

void ForceTrailingPathSeparator(PathRules const &rules, string &name)
{
    if (!EndsInSeparator(rules, name))
        name += rules.pathSeparator;
}

bool IsAbsolutePathName(PathRules const &rules, string const &name)
{
    bool const hasVolume = rules.volumeSeparator != '\0' && name.size() >= 2 && name[1] == rules.volumeSeparator;
    return hasVolume || (!name.empty() && name.front() == rules.pathSeparator);
}

void SplitPathName(PathRules const &rules, string const &name, std::vector<string> &pieces)
{
    BreakIntoLines(name, pieces, rules.pathSeparator);
    std::erase(pieces, string());
}

bool ExpandPathName(PathRules const &rules, string const &in, string &out, bool trailingSeparator)
{
    // The first piece of an absolute name is its volume, which ".." must not remove; a root is no piece.
    std::size_t const floor = IsAbsolutePathName(rules, in) && !rules.hasRoot ? 1 : 0;
    string expanded = IsRooted(rules, in) ? string(1, rules.pathSeparator) : string();

    std::vector<string> pieces;
    SplitPathName(rules, in, pieces);
    std::vector<string> resolved;
    bool const succeeded = ResolvePieces(pieces, floor, resolved);
    out.clear();
    if (!succeeded)
        return false;

    for (string const &piece : resolved)
        expanded += piece + rules.pathSeparator;
    if (!resolved.empty() && !trailingSeparator)
        expanded.pop_back();
    out = std::move(expanded);
    return true;
}

bool ConvertPathName(PathRules const &rules, string const &name, wstring &wide)
{
    return AsciiToUnicode(rules.widePrefix + name, wide);
}

bool ConvertPathName(PathRules const &rules, wstring const &wide, string &name)
{
    if (!UnicodeToAscii(wide, name))
        return false;
    EatPrefix(name, rules.widePrefix);
    return true;
}

void ForceFullPathName(PathRules const &rules, string const &directory, string &name, bool trailingSeparator)
{
    if (name.empty())
        name = directory;
    else if (!IsAbsolutePathName(rules, name) && name.front() != rules.otherSeparator)
    {
        string full = directory;
        ForceTrailingPathSeparator(rules, full);
        name.insert(0, full);
    }
    if (trailingSeparator)
        ForceTrailingPathSeparator(rules, name);
}

void ApplyTrailingPathSeparator(PathRules const &rules, string &name, bool trailingSeparator)
{
    if (trailingSeparator)
    {
        ForceTrailingPathSeparator(rules, name);
        return;
    }
    string shorter = name;
    RemoveTrailingPathSeparator(rules, shorter);
    // A drive without a separator means the present directory of that drive, and an empty name means no directory.
    if (!IsDrive(rules, shorter) && !shorter.empty())
        name = std::move(shorter);
}

string EatRoot(PathRules const &rules, string &name)
{
    string const whole = name;
    auto const eatPieces = [&](unsigned int count)
    {
        for (; count > 0 && !name.empty(); --count)
            name.erase(0, std::min(name.find(rules.pathSeparator), name.size() - 1) + 1);
    };
    if (*rules.widePrefix != '\0' && EatPrefix(name, rules.widePrefix))
        eatPieces(NamesServer(rules, name) ? 3 : 1);
    else if (!rules.hasRoot && EatPrefix(name, string(2, rules.pathSeparator)))
        eatPieces(2);
    else if (!name.empty() && name.front() == rules.pathSeparator)
        name.erase(0, 1);
    return whole.substr(0, whole.size() - name.size());
}

bool NamesDevice(PathRules const &rules, string const &name)
{
    if (!rules.hasDeviceNames)
        return false;
    if (MatchPrefix(name, rules.widePrefix))
        return !NamesFileBehindPrefix(rules, name.substr(string(rules.widePrefix).size()));
    // Only the last piece counts, and of it only the part in front of its extension or of a stream in it. Blanks at the
    // end do not count.
    std::size_t const end = name.find_last_not_of("\\/") + 1;
    std::size_t begin = end;
    while (begin > 0 && string("\\/").find(name[begin - 1]) == string::npos)
        --begin;
    string base = name.substr(begin, end - begin);
    if (base.size() > 1 && base[1] == rules.volumeSeparator)
        base.erase(0, 2);
    base.resize(std::min(base.size(), base.find_first_of(".:")));
    base.erase(base.find_last_not_of(' ') + 1);
    UpperCase(base);
    return IsDevice(base);
}

bool IsUsableName(string const &name)
{
    return !name.empty() && name.find('\0') == string::npos;
}

bool CanBeLookedUp(PathRules const &rules, string const &name)
{
    string const prefix = rules.widePrefix;
    std::size_t const begin = MatchPrefix(name, prefix) ? prefix.size() : 0;
    return IsUsableName(name) && name.find_first_of("?*", begin) == string::npos;
}

bool MakeDirectoryLookupName(PathRules const &rules, string const &name, string &lookupName)
{
    lookupName.clear();
    if (!CanBeLookedUp(rules, name))
        return false;
    string shorter = name;
    RemoveTrailingPathSeparator(rules, shorter);
    if (shorter.size() == 2 && !IsRooted(rules, shorter))
    {
        if (!IsDrive(rules, shorter))
            return false;
        shorter += rules.pathSeparator;
        shorter += '*';
    }
    lookupName = std::move(shorter);
    return true;
}

} // namespace quillmarsh::file_system
