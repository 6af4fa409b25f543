// Byte order of the streams that values are serialised to and from.
#ifndef QUILLMARSH_BASETOOLS_SERIALIZER_PARAMETERS_H
#define QUILLMARSH_BASETOOLS_SERIALIZER_PARAMETERS_H

#include <quillmarsh/platform/types.h>

#include <optional>

/// Two switches for the whole process, one for output and one for input. Both start with the order of the machine.
///
/// A sentry sets an order for its own thread and leaves the switches alone, so that threads can serialise at one time
/// in different orders. Any thread may call everything here.
namespace quillmarsh::serializer_parameters
{

/// A constant of the build.
constexpr bool IsMachineBigEndian()
{
    return false;
}

/// Sets the byte order of output from now on: for the process or, on a thread that holds a sentry of output, for that
/// thread until its innermost sentry ends.
QUILLMARSH_API void SetOutputStreamByteOrder(bool bigEndian);
/// Byte order of the calling thread's output.
QUILLMARSH_API bool IsOutputStreamByteOrderBigEndian();
/// Sets the byte order of input from now on, likewise.
QUILLMARSH_API void SetInputStreamByteOrder(bool bigEndian);
/// Byte order of the calling thread's input.
QUILLMARSH_API bool IsInputStreamByteOrderBigEndian();

/// True when the calling thread writes in another order than the machine's.
QUILLMARSH_API bool IsFlippingOutput();
/// True when the calling thread reads in another order than the machine's.
QUILLMARSH_API bool IsFlippingInput();

/// Sets the byte order of output for a scope and the thread that makes the sentry. Sentries may nest; each ends on its
/// own thread.
class QUILLMARSH_API OutputStreamByteOrderSentry : NoCopy
{
public:
    /// Without an argument it sets the order of the machine.
    explicit OutputStreamByteOrderSentry(bool bigEndian = IsMachineBigEndian());
    ~OutputStreamByteOrderSentry();

private:
    /// Order that an outer sentry of the thread has set, if there is one.
    std::optional<bool> savedBigEndian_;
};

/// Sets the byte order of input for a scope and the thread that makes the sentry, likewise.
class QUILLMARSH_API InputStreamByteOrderSentry : NoCopy
{
public:
    /// Without an argument it sets the order of the machine.
    explicit InputStreamByteOrderSentry(bool bigEndian = IsMachineBigEndian());
    ~InputStreamByteOrderSentry();

private:
    /// Order that an outer sentry of the thread has set, if there is one.
    std::optional<bool> savedBigEndian_;
};

} // namespace quillmarsh::serializer_parameters

#endif
