#include <quillmarsh/basetools/libraryinfo.h>

#include "source/basetools/buildtimestamp.h"

#include <iterator>

namespace quillmarsh::library_info
{
namespace
{

constexpr char const *s_developers[] = {"The Quillmarsh authors"};

} // namespace

string LibraryVersion::MakeString() const
{
    char const *const buildType = IsBuildTypeDebug() ? "debug" : IsBuildTypeRelease() ? "release" : "UnknownBuildType";
    return std::to_string(major_) + '.' + std::to_string(minor_) + '.' + std::to_string(build_) + '.' + buildType;
}

LibraryVersion GetLibraryVersion()
{
    return GetHeaderVersion();
}

string GetBuildTimestamp()
{
    return QUILLMARSH_BUILD_TIMESTAMP;
}

string GetLibraryName()
{
    return "quillmarsh";
}

string GetCopyrightNotice()
{
    return "Copyright (c) 2026 The Quillmarsh authors";
}

unsigned int GetNumDevelopers()
{
    return static_cast<unsigned int>(std::size(s_developers));
}

string GetDeveloperInfo(unsigned int index)
{
    return index < GetNumDevelopers() ? s_developers[index] : "";
}

} // namespace quillmarsh::library_info
