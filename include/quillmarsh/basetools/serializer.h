// Binary values on streams: `stream <= value` writes, `stream >= value` reads.
#ifndef QUILLMARSH_BASETOOLS_SERIALIZER_H
#define QUILLMARSH_BASETOOLS_SERIALIZER_H

#include <quillmarsh/basetools/serializable.h>
#include <quillmarsh/basetools/serializer_parameters.h>
#include <quillmarsh/platform/types.h>

namespace quillmarsh
{

// Everything here works in the calling thread's byte order of serializer_parameters, and on any thread. Nothing looks
// for failures: a read that fails leaves its target as the stream left it, and the caller tests the stream, or has told
// it to throw.

/// @name Byte order
/// Each reverses the bytes of a value in place.
/// @{
QUILLMARSH_API void FlipByteOrder(unsigned short &value);
QUILLMARSH_API void FlipByteOrder(short &value);
QUILLMARSH_API void FlipByteOrder(unsigned int &value);
QUILLMARSH_API void FlipByteOrder(int &value);
QUILLMARSH_API void FlipByteOrder(unsigned long &value);
QUILLMARSH_API void FlipByteOrder(long &value);
QUILLMARSH_API void FlipByteOrder(float &value);
QUILLMARSH_API void FlipByteOrder(double &value);
/// Reverses a run of bytes end to end.
QUILLMARSH_API void FlipByteOrderN(unsigned char *data, unsigned int byteSize);
/// @}

/// @name Bytes
/// A block is written and read as it is. In an array of blocks, each block is reversed when the byte order is not the
/// machine's: the block size is therefore the width of one number, and not of a structure of several numbers.
/// @{
QUILLMARSH_API void WriteByteBlock(ostream &out, char const *data, unsigned int byteSize);
QUILLMARSH_API void WriteByteBlock(ostream &out, unsigned char const *data, unsigned int byteSize);
QUILLMARSH_API void ReadByteBlock(istream &in, char *data, unsigned int byteSize);
QUILLMARSH_API void ReadByteBlock(istream &in, unsigned char *data, unsigned int byteSize);
QUILLMARSH_API void WriteByteBlocks(ostream &out, char const *data, unsigned int blockByteSize, unsigned int numBlocks);
QUILLMARSH_API void WriteByteBlocks(ostream &out, unsigned char const *data, unsigned int blockByteSize,
                                    unsigned int numBlocks);
QUILLMARSH_API void ReadByteBlocks(istream &in, char *data, unsigned int blockByteSize, unsigned int numBlocks);
QUILLMARSH_API void ReadByteBlocks(istream &in, unsigned char *data, unsigned int blockByteSize,
                                   unsigned int numBlocks);
/// @}

/// @name Writing
/// A bool is written as a byte, 0 or 1. A `long` is written as four bytes, whatever its width in memory is; a value
/// that does not fit asserts, and its low four bytes are written. A string is written as its length, an unsigned int,
/// and its bytes.
/// @{
QUILLMARSH_API ostream &operator<=(ostream &out, unsigned char value);
QUILLMARSH_API ostream &operator<=(ostream &out, char value);
QUILLMARSH_API ostream &operator<=(ostream &out, bool value);
QUILLMARSH_API ostream &operator<=(ostream &out, unsigned short value);
QUILLMARSH_API ostream &operator<=(ostream &out, short value);
QUILLMARSH_API ostream &operator<=(ostream &out, unsigned int value);
QUILLMARSH_API ostream &operator<=(ostream &out, int value);
QUILLMARSH_API ostream &operator<=(ostream &out, unsigned long value);
QUILLMARSH_API ostream &operator<=(ostream &out, long value);
QUILLMARSH_API ostream &operator<=(ostream &out, float value);
QUILLMARSH_API ostream &operator<=(ostream &out, double value);
QUILLMARSH_API ostream &operator<=(ostream &out, string const &value);
/// @}

/// @name Reading
/// A bool is true for every byte except 0. The `int` operator always reads in the machine's byte order; counts and
/// sizes are therefore `unsigned int`. A string takes no more memory than for the characters that arrive, whatever
/// length stands in front of them.
/// @{
QUILLMARSH_API istream &operator>=(istream &in, unsigned char &value);
QUILLMARSH_API istream &operator>=(istream &in, char &value);
QUILLMARSH_API istream &operator>=(istream &in, bool &value);
QUILLMARSH_API istream &operator>=(istream &in, unsigned short &value);
QUILLMARSH_API istream &operator>=(istream &in, short &value);
QUILLMARSH_API istream &operator>=(istream &in, unsigned int &value);
QUILLMARSH_API istream &operator>=(istream &in, int &value);
QUILLMARSH_API istream &operator>=(istream &in, unsigned long &value);
QUILLMARSH_API istream &operator>=(istream &in, long &value);
QUILLMARSH_API istream &operator>=(istream &in, float &value);
QUILLMARSH_API istream &operator>=(istream &in, double &value);
QUILLMARSH_API istream &operator>=(istream &in, string &value);
/// @}

} // namespace quillmarsh

#endif
