// Byte order of the streams that values are serialised to and from.
#ifndef QUILLMARSH_BASETOOLS_SERIALIZER_PARAMETERS_H
#define QUILLMARSH_BASETOOLS_SERIALIZER_PARAMETERS_H

#include <quillmarsh/platform/types.h>

/// Process-wide switches, one for output and one for input; the machine's own order at first.
///
/// They are not locked: two threads that serialise at one time in different orders disturb each other, so a sentry is
/// held for a short stretch on one thread only.
namespace quillmarsh::serializer_parameters
{

/// A constant of the build.
constexpr bool IsMachineBigEndian()
{
    return false;
}

/// Byte order of what is written from now on.
QUILLMARSH_API void SetOutputStreamByteOrder(bool bigEndian);
/// Byte order of what is written.
QUILLMARSH_API bool IsOutputStreamByteOrderBigEndian();
/// Byte order of what is read from now on.
QUILLMARSH_API void SetInputStreamByteOrder(bool bigEndian);
/// Byte order of what is read.
QUILLMARSH_API bool IsInputStreamByteOrderBigEndian();

/// True when the order of the stream is not that of the machine.
QUILLMARSH_API bool IsFlippingOutput();
/// Whether bytes are flipped on their way in, likewise.
QUILLMARSH_API bool IsFlippingInput();

/// Sets the byte order of output for a scope.
class QUILLMARSH_API OutputStreamByteOrderSentry : NoCopy
{
public:
    explicit OutputStreamByteOrderSentry(bool bigEndian = IsMachineBigEndian());
    ~OutputStreamByteOrderSentry();

private:
    bool savedBigEndian_;
};

/// Sets the byte order of input for a scope.
class QUILLMARSH_API InputStreamByteOrderSentry : NoCopy
{
public:
    explicit InputStreamByteOrderSentry(bool bigEndian = IsMachineBigEndian());
    ~InputStreamByteOrderSentry();

private:
    bool savedBigEndian_;
};

} // namespace quillmarsh::serializer_parameters

#endif
