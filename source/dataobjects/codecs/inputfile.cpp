#include <quillmarsh/dataobjects/inputfile.h>

#include <quillmarsh/basetools/filesystem.h>
#include <quillmarsh/dataobjects/dataexception.h>

#include "source/dataobjects/codecs/openfailures.h"
#include "source/platform/plainfiles.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <streambuf>
#include <vector>

namespace quillmarsh::sampled_data
{

/// Reads large blocks directly into the reader's memory.
class InputFile::Buffer final : public std::streambuf
{
public:
    Buffer(platform::FilePtr file, std::uint64_t byteSize) : file_(std::move(file)), byteSize_(byteSize) {}

    std::FILE *GetFile() const { return file_.get(); }

protected:
    int_type underflow() override
    {
        std::size_t const count = Read(bytes_.data(), bytes_.size());
        setg(bytes_.data(), bytes_.data(), bytes_.data() + count);
        return count > 0 ? traits_type::to_int_type(bytes_[0]) : traits_type::eof();
    }

    std::streamsize xsgetn(char *bytes, std::streamsize count) override
    {
        std::streamsize const buffered = std::min<std::streamsize>(count, egptr() - gptr());
        std::copy_n(gptr(), buffered, bytes);
        setg(eback(), gptr() + buffered, egptr());
        std::streamsize const left = count - buffered;
        return buffered + static_cast<std::streamsize>(Read(bytes + buffered, static_cast<std::size_t>(left)));
    }

    pos_type seekoff(off_type offset, std::ios_base::seekdir direction, std::ios_base::openmode) override
    {
        off_type const here = static_cast<off_type>(offset_) - (egptr() - gptr());
        if (direction == std::ios_base::cur && offset == 0)
            return here;
        if (direction == std::ios_base::cur)
            offset += here;
        return seekpos(direction == std::ios_base::end ? static_cast<off_type>(byteSize_) + offset : offset, {});
    }

    pos_type seekpos(pos_type position, std::ios_base::openmode) override
    {
        off_type const offset = position;
        if (offset < 0 || !platform::SeekFile(file_.get(), static_cast<std::uint64_t>(offset)))
            return off_type{-1};
        setg(nullptr, nullptr, nullptr);
        offset_ = static_cast<std::uint64_t>(offset);
        return position;
    }

private:
    std::size_t Read(char *bytes, std::size_t count)
    {
        std::size_t const read = count > 0 ? std::fread(bytes, 1, count, file_.get()) : 0;
        offset_ += read;
        return read;
    }

    platform::FilePtr file_;
    std::uint64_t byteSize_;
    /// Offset in the file of the end of the buffered bytes.
    std::uint64_t offset_ = 0;
    std::array<char, 4096> bytes_;
};

namespace
{

/// Copies a stream and returns the number of bytes.
std::uint64_t CopyStream(istream &in, std::FILE *copy, string const &name)
{
    std::vector<char> bytes(std::size_t{64} << 10);
    std::uint64_t byteSize = 0;
    errno = 0;
    while (in)
    {
        in.read(bytes.data(), static_cast<std::streamsize>(bytes.size()));
        auto const count = static_cast<std::size_t>(in.gcount());
        byteSize += count;
        if (std::fwrite(bytes.data(), 1, count, copy) != count)
            throw DataException(name, DescribeTemporaryFailure());
    }
    if (in.bad())
        throw DataException(name, {eCodecFailure::e_system, "cannot be read"});
    if (std::fflush(copy) != 0)
        throw DataException(name, DescribeTemporaryFailure());
    return byteSize;
}

} // namespace

InputFile::InputFile(istream &in, string const &name) : name_(name), isNamed_(false), stream_(nullptr)
{
    errno = 0;
    platform::FilePtr copy = platform::OpenTemporaryFile();
    if (!copy)
        throw DataException(name, DescribeTemporaryFailure());
    byteSize_ = CopyStream(in, copy.get(), name);
    buffer_ = std::make_unique<Buffer>(std::move(copy), byteSize_);
    stream_.rdbuf(buffer_.get());
}

InputFile::InputFile(string const &fileName) : name_(fileName), isNamed_(true), stream_(nullptr)
{
    if (CodecFailure const failure = FindReadingObstacle(fileName))
        throw DataException(fileName, failure);
    errno = 0;
    platform::FilePtr file = platform::OpenPlainFile(file_system::GetStreamPath(fileName), byteSize_);
    if (!file)
        throw DataException(fileName, DescribeOpenFailure());
    buffer_ = std::make_unique<Buffer>(std::move(file), byteSize_);
    stream_.rdbuf(buffer_.get());
}

InputFile::~InputFile() = default;

istream &InputFile::GetStream()
{
    stream_.clear();
    stream_.seekg(0);
    return stream_;
}

std::FILE *InputFile::GetFile()
{
    buffer_->pubseekpos(0);
    return buffer_->GetFile();
}

} // namespace quillmarsh::sampled_data
