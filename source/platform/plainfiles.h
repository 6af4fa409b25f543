// Seam: plain files of data.
#ifndef QUILLMARSH_SOURCE_PLATFORM_PLAINFILES_H
#define QUILLMARSH_SOURCE_PLATFORM_PLAINFILES_H

#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <memory>

namespace quillmarsh::platform
{

struct FileCloser
{
    void operator()(std::FILE *file) const { std::fclose(file); }
};
using FilePtr = std::unique_ptr<std::FILE, FileCloser>;

// Paths are those of file_system::GetStreamPath. A function that fails sets errno.

/// Opens a plain file for reading and sets its size. Returns null on failure, and for anything that is not a plain
/// file, since a pipe could block its reader. Child processes do not inherit the file.
FilePtr OpenPlainFile(std::filesystem::path const &name, std::uint64_t &byteSize);

/// Creates an empty file without a name, for writing and reading, in the system's folder for temporary files. It is gone
/// when it is closed. Returns null on failure.
FilePtr OpenTemporaryFile();

/// Moves to a byte of a file, counted from 0.
bool SeekFile(std::FILE *file, std::uint64_t offset);

/// Creates an empty file. Returns false on failure, and when the name exists already, even as a broken link.
bool CreateNewFile(std::filesystem::path const &name);

} // namespace quillmarsh::platform

#endif
