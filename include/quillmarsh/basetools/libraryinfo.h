// Name, version and makers of this library.
#ifndef QUILLMARSH_BASETOOLS_LIBRARYINFO_H
#define QUILLMARSH_BASETOOLS_LIBRARYINFO_H

#include <quillmarsh/platform/types.h>

/// Facts about the library itself. Any thread.
namespace quillmarsh::library_info
{

/// Version of the library: three numbers and the build type, 0 release and 1 debug. A value type.
class LibraryVersion
{
public:
    constexpr LibraryVersion(unsigned int majorNumber, unsigned int minorNumber, unsigned int buildNumber,
                             unsigned int buildType)
        : major_(majorNumber),
          minor_(minorNumber),
          build_(buildNumber),
          buildType_(buildType)
    {
    }

    /// @name Parts of the version
    /// As they were given to the constructor.
    /// @{
    constexpr unsigned int GetMajorNumber() const { return major_; }
    constexpr unsigned int GetMinorNumber() const { return minor_; }
    constexpr unsigned int GetBuildNumber() const { return build_; }
    constexpr unsigned int GetBuildType() const { return buildType_; }
    constexpr bool IsBuildTypeDebug() const { return buildType_ == 1; }
    constexpr bool IsBuildTypeRelease() const { return buildType_ == 0; }
    /// @}

    /// True when all four parts are equal.
    constexpr bool operator==(LibraryVersion const &) const = default;

    /// True when modules of the two versions work together: all but the third number are equal.
    constexpr bool IsCompatibleWith(LibraryVersion const &other) const
    {
        return major_ == other.major_ && minor_ == other.minor_ && buildType_ == other.buildType_;
    }

    /// The three numbers and "debug", "release" or "UnknownBuildType", joined by ".".
    QUILLMARSH_API string MakeString() const;

private:
    unsigned int major_;
    unsigned int minor_;
    unsigned int build_;
    unsigned int buildType_;
};

/// Version of the library that is loaded.
QUILLMARSH_API LibraryVersion GetLibraryVersion();

/// Version of the headers that the calling module was compiled with; a constant of that module. A host compares it with
/// GetLibraryVersion() to find out whether a plug-in fits.
constexpr LibraryVersion GetHeaderVersion()
{
    return LibraryVersion(QUILLMARSH_VERSION_MAJOR, QUILLMARSH_VERSION_MINOR, QUILLMARSH_VERSION_BUILD,
                          QUILLMARSH_ASSERTIONS);
}

/// Returns the time of the sources that the library was built from, as "2026-01-31 23:59:59 UTC": SOURCE_DATE_EPOCH, or
/// else their last commit.
QUILLMARSH_API string GetBuildTimestamp();
/// Name of the library, "quillmarsh".
QUILLMARSH_API string GetLibraryName();
/// Copyright notice: one line with year and holder.
QUILLMARSH_API string GetCopyrightNotice();

/// Number of texts of GetDeveloperInfo().
QUILLMARSH_API unsigned int GetNumDevelopers();
/// Text about a developer of the library, by index from 0; empty for an index out of range.
QUILLMARSH_API string GetDeveloperInfo(unsigned int index);

} // namespace quillmarsh::library_info

#endif
