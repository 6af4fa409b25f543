// Seam: plain files that are opened for data.
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

// Paths are those of file_system::GetStreamPath. On failure, the run-time library's number of the error tells why.

/// Opens a plain file for reading, and tells its size. Null for anything else of that name, too: a pipe would keep its
/// reader waiting. Child processes do not inherit the file.
FilePtr OpenPlainFile(std::filesystem::path const &name, std::uint64_t &byteSize);

/// Goes to a byte of a file, counted from 0.
bool SeekFile(std::FILE *file, std::uint64_t offset);

/// Creates an empty file. False when there is anything of that name, a link that leads nowhere included.
bool CreateNewFile(std::filesystem::path const &name);

} // namespace quillmarsh::platform

#endif
