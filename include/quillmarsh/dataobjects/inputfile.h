// A file that is opened once, inspected and loaded.
#ifndef QUILLMARSH_DATAOBJECTS_INPUTFILE_H
#define QUILLMARSH_DATAOBJECTS_INPUTFILE_H

#include <quillmarsh/platform/types.h>

#include <cstdint>
#include <cstdio>
#include <istream>

namespace quillmarsh::sampled_data
{

/// A plain file, open for reading. What is read through it is the same file to the end, whatever becomes of the name
/// meanwhile. One thread at a time.
class QUILLMARSH_API InputFile : NoCopy
{
public:
    /// Opens the file. Throws a DataException that names it and the cause: not there, no permission, a directory, a pipe,
    /// a device.
    explicit InputFile(string const &fileName);
    ~InputFile();

    string const &GetName() const { return name_; }
    /// Size of the file when it was opened.
    std::uint64_t GetByteSize() const { return byteSize_; }

    /// @name Two ways to read
    /// Each call goes back to the beginning of the file, and ends the other way.
    /// @{
    istream &GetStream();
    /// The file of the standard library; it is closed with this object.
    std::FILE *GetFile();
    /// @}

private:
    class Buffer;

    string name_;
    std::uint64_t byteSize_ = 0;
    AutoPtr<Buffer> buffer_;
    istream stream_;
};

} // namespace quillmarsh::sampled_data

#endif
