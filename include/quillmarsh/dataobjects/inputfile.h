// A file that is opened once, for inspection and loading.
#ifndef QUILLMARSH_DATAOBJECTS_INPUTFILE_H
#define QUILLMARSH_DATAOBJECTS_INPUTFILE_H

#include <quillmarsh/platform/types.h>

#include <cstdint>
#include <cstdio>
#include <istream>

namespace quillmarsh::sampled_data
{

/// A plain file, or the copy of a stream, that is open for reading. It stays the same file even if another file gets its name. One thread at a
/// time.
class QUILLMARSH_API InputFile : NoCopy
{
public:
    /// Opens the file. Throws a DataException that names it and the reason: it does not exist, no permission, a
    /// directory, a pipe, a device.
    explicit InputFile(string const &fileName);
    /// Copies the rest of a stream into a temporary file, which is read instead; `name` stands for it in messages.
    /// Throws a DataException when the stream cannot be read or the copy cannot be written.
    InputFile(istream &in, string const &name);
    ~InputFile();

    /// Returns the name of the file, as it was passed.
    string const &GetName() const { return name_; }
    /// True if the file can be opened by its name; false for the copy of a stream.
    bool IsNamed() const { return isNamed_; }
    /// Returns the size in bytes that the file had when it was opened.
    std::uint64_t GetByteSize() const { return byteSize_; }

    /// @name Two ways to read
    /// Each call goes back to the beginning of the file. Do not use the other way after it.
    /// @{
    istream &GetStream();
    /// Returns the file for functions of the standard library. This object closes it.
    std::FILE *GetFile();
    /// @}

private:
    class Buffer;

    string name_;
    bool isNamed_;
    std::uint64_t byteSize_ = 0;
    AutoPtr<Buffer> buffer_;
    istream stream_;
};

} // namespace quillmarsh::sampled_data

#endif
