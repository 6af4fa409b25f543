// Makes data packages byte by byte.
#ifndef QUILLMARSH_TESTS_SUPPORT_PACKAGE_BYTES_H
#define QUILLMARSH_TESTS_SUPPORT_PACKAGE_BYTES_H

#include <quillmarsh/platform/types.h>

#include <algorithm>
#include <initializer_list>

namespace quillmarsh::tests
{

/// Writes a 32-bit number in either byte order.
inline string NumberBytes(unsigned int number, bool bigEndian = false)
{
    string bytes;
    for (int shift = 0; shift < 32; shift += 8)
        bytes += static_cast<char>(number >> shift & 0xFF);
    if (bigEndian)
        std::reverse(bytes.begin(), bytes.end());
    return bytes;
}

/// Returns the bytes with one bit inverted.
inline string FlipBit(string bytes, std::size_t bit)
{
    bytes[bit / 8] = static_cast<char>(bytes[bit / 8] ^ 1 << bit % 8);
    return bytes;
}

struct PackageFrame
{
    unsigned int payloadType, id = 0;
    bool bigEndian = false;
};

/// Makes a package whose payload has these numbers in its fixed part, and these samples.
inline string PackageBytes(PackageFrame const &frame, std::initializer_list<unsigned int> fixed, string const &samples)
{
    string payload;
    for (unsigned int const number : fixed)
        payload += NumberBytes(number, frame.bigEndian);
    payload += samples;
    string const id = NumberBytes(frame.id, frame.bigEndian);
    string const byteSize = NumberBytes(static_cast<unsigned int>(payload.size()), frame.bigEndian);
    return "<QuillMarshDataPackage//" + NumberBytes(frame.bigEndian ? 0xFFFFFFFF : 0) + id + byteSize +
           NumberBytes(frame.payloadType, frame.bigEndian) + "///>" + payload + "<///" + id +
           "//QuillMarshDataPackage>";
}

} // namespace quillmarsh::tests

#endif
