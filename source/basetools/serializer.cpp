#include <quillmarsh/basetools/serializer.h>

#include <quillmarsh/basetools/diagnostics.h>

#include <algorithm>
#include <cstdint>
#include <istream>
#include <limits>
#include <ostream>
#include <vector>

namespace quillmarsh
{
namespace
{

using serializer_parameters::IsFlippingInput;
using serializer_parameters::IsFlippingOutput;

constexpr std::size_t s_stringChunkSize = 128;
constexpr char const *s_szTooWide = "Value does not fit the four bytes that a long has on a stream.";

template<typename T>
void Flip(T &value)
{
    auto *const bytes = reinterpret_cast<unsigned char *>(&value);
    std::reverse(bytes, bytes + sizeof(T));
}

template<typename T>
ostream &Write(ostream &out, T value)
{
    if (IsFlippingOutput())
        Flip(value);
    return out.write(reinterpret_cast<char const *>(&value), sizeof(T));
}

template<typename T>
istream &Read(istream &in, T &value, bool flip)
{
    in.read(reinterpret_cast<char *>(&value), sizeof(T));
    // After a failed read the target stays as the stream has left it.
    if (flip && !in.fail())
        Flip(value);
    return in;
}

/// Reads a value that has fewer bytes on the stream than in memory.
template<typename Narrow, typename Wide>
istream &ReadNarrow(istream &in, Wide &value)
{
    Narrow narrow = 0;
    Read(in, narrow, IsFlippingInput());
    if (!in.fail())
        value = narrow;
    return in;
}

std::streamsize BlocksSize(unsigned int blockByteSize, unsigned int numBlocks)
{
    return static_cast<std::streamsize>(static_cast<std::uint64_t>(blockByteSize) * numBlocks);
}

/// Reserves memory for the characters that are known to have arrived, so that the string does not grow above that by
/// doubling.
void ReserveForArrived(istream &in, string &value, std::size_t length)
{
    std::streamsize const numArrived = in.good() ? in.rdbuf()->in_avail() : 0;
    if (numArrived > 0)
        value.reserve(std::min(length, static_cast<std::size_t>(numArrived)));
}

} // namespace

void FlipByteOrder(unsigned short &value)
{
    Flip(value);
}

void FlipByteOrder(short &value)
{
    Flip(value);
}

void FlipByteOrder(unsigned int &value)
{
    Flip(value);
}

void FlipByteOrder(int &value)
{
    Flip(value);
}

void FlipByteOrder(unsigned long &value)
{
    Flip(value);
}

void FlipByteOrder(long &value)
{
    Flip(value);
}

void FlipByteOrder(float &value)
{
    Flip(value);
}

void FlipByteOrder(double &value)
{
    Flip(value);
}

void FlipByteOrderN(unsigned char *data, unsigned int byteSize)
{
    std::reverse(data, data + byteSize);
}

void WriteByteBlock(ostream &out, char const *data, unsigned int byteSize)
{
    out.write(data, static_cast<std::streamsize>(byteSize));
}

void WriteByteBlock(ostream &out, unsigned char const *data, unsigned int byteSize)
{
    WriteByteBlock(out, reinterpret_cast<char const *>(data), byteSize);
}

void ReadByteBlock(istream &in, char *data, unsigned int byteSize)
{
    in.read(data, static_cast<std::streamsize>(byteSize));
}

void ReadByteBlock(istream &in, unsigned char *data, unsigned int byteSize)
{
    ReadByteBlock(in, reinterpret_cast<char *>(data), byteSize);
}

void WriteByteBlocks(ostream &out, char const *data, unsigned int blockByteSize, unsigned int numBlocks)
{
    if (!IsFlippingOutput())
    {
        out.write(data, BlocksSize(blockByteSize, numBlocks));
        return;
    }
    std::vector<char> reversed(blockByteSize);
    for (unsigned int i = 0; i < numBlocks && !out.fail(); ++i, data += blockByteSize)
    {
        std::reverse_copy(data, data + blockByteSize, reversed.begin());
        WriteByteBlock(out, reversed.data(), blockByteSize);
    }
}

void WriteByteBlocks(ostream &out, unsigned char const *data, unsigned int blockByteSize, unsigned int numBlocks)
{
    WriteByteBlocks(out, reinterpret_cast<char const *>(data), blockByteSize, numBlocks);
}

void ReadByteBlocks(istream &in, char *data, unsigned int blockByteSize, unsigned int numBlocks)
{
    if (!IsFlippingInput())
    {
        in.read(data, BlocksSize(blockByteSize, numBlocks));
        return;
    }
    std::vector<char> reversed(blockByteSize);
    for (unsigned int i = 0; i < numBlocks; ++i, data += blockByteSize)
    {
        ReadByteBlock(in, reversed.data(), blockByteSize);
        if (in.fail())
            return;
        std::reverse_copy(reversed.begin(), reversed.end(), data);
    }
}

void ReadByteBlocks(istream &in, unsigned char *data, unsigned int blockByteSize, unsigned int numBlocks)
{
    ReadByteBlocks(in, reinterpret_cast<char *>(data), blockByteSize, numBlocks);
}

ostream &operator<=(ostream &out, unsigned char value)
{
    return Write(out, value);
}

ostream &operator<=(ostream &out, char value)
{
    return Write(out, value);
}

ostream &operator<=(ostream &out, bool value)
{
    return Write(out, static_cast<unsigned char>(value ? 1 : 0));
}

ostream &operator<=(ostream &out, unsigned short value)
{
    return Write(out, value);
}

ostream &operator<=(ostream &out, short value)
{
    return Write(out, value);
}

ostream &operator<=(ostream &out, unsigned int value)
{
    return Write(out, value);
}

ostream &operator<=(ostream &out, int value)
{
    return Write(out, value);
}

ostream &operator<=(ostream &out, unsigned long value)
{
    auto const narrow = static_cast<std::uint32_t>(value);
    QUILLMARSH_ASSERT(narrow == value, s_szTooWide);
    return Write(out, narrow);
}

ostream &operator<=(ostream &out, long value)
{
    auto const narrow = static_cast<std::int32_t>(value);
    QUILLMARSH_ASSERT(narrow == value, s_szTooWide);
    return Write(out, narrow);
}

ostream &operator<=(ostream &out, float value)
{
    return Write(out, value);
}

ostream &operator<=(ostream &out, double value)
{
    return Write(out, value);
}

ostream &operator<=(ostream &out, string const &value)
{
    auto const length = static_cast<unsigned int>(value.size());
    QUILLMARSH_ASSERT(length == value.size(), "Text is too long for a stream.");
    out <= length;
    WriteByteBlock(out, value.data(), length);
    return out;
}

istream &operator>=(istream &in, unsigned char &value)
{
    return Read(in, value, false);
}

istream &operator>=(istream &in, char &value)
{
    return Read(in, value, false);
}

istream &operator>=(istream &in, bool &value)
{
    return ReadNarrow<unsigned char>(in, value);
}

istream &operator>=(istream &in, unsigned short &value)
{
    return Read(in, value, IsFlippingInput());
}

istream &operator>=(istream &in, short &value)
{
    return Read(in, value, IsFlippingInput());
}

istream &operator>=(istream &in, unsigned int &value)
{
    return Read(in, value, IsFlippingInput());
}

istream &operator>=(istream &in, int &value)
{
    // Never reverses bytes, since there are streams that have signed numbers in the machine's order.
    return Read(in, value, false);
}

istream &operator>=(istream &in, unsigned long &value)
{
    return ReadNarrow<std::uint32_t>(in, value);
}

istream &operator>=(istream &in, long &value)
{
    return ReadNarrow<std::int32_t>(in, value);
}

istream &operator>=(istream &in, float &value)
{
    return Read(in, value, IsFlippingInput());
}

istream &operator>=(istream &in, double &value)
{
    return Read(in, value, IsFlippingInput());
}

istream &operator>=(istream &in, string &value)
{
    value.clear();
    unsigned int length = 0;
    in >= length;
    if (length > s_stringChunkSize)
        ReserveForArrived(in, value, length);

    char chunk[s_stringChunkSize];
    for (std::size_t left = length; left != 0 && in.good(); left -= std::min(left, s_stringChunkSize))
    {
        in.read(chunk, static_cast<std::streamsize>(std::min(left, s_stringChunkSize)));
        value.append(chunk, static_cast<std::size_t>(in.gcount()));
    }
    return in;
}

} // namespace quillmarsh
