// Scope objects that restore what a stream was set to.
#ifndef QUILLMARSH_BASETOOLS_STREAMSENTRIES_H
#define QUILLMARSH_BASETOOLS_STREAMSENTRIES_H

#include <quillmarsh/platform/types.h>

#include <ios>

namespace quillmarsh
{

/// Sets a stream's exception mask for a scope.
///
/// The constructor throws `std::ios_base::failure` when the stream is already in one of the states of the mask. The
/// destructor never throws, and sets the old mask in any case.
class QUILLMARSH_API StreamExceptionSentry : NoCopy
{
public:
    /// The stream is borrowed and outlives the sentry. `mask` holds bits of `std::ios_base::iostate`.
    StreamExceptionSentry(basic_ios<char> &stream, short mask);
    ~StreamExceptionSentry();

private:
    void RestoreMask();

    basic_ios<char> &stream_;
    std::ios_base::iostate oldMask_;
};

/// Restores a stream's format flags at the end of a scope.
class QUILLMARSH_API StreamFormatFlagsSentry : NoCopy
{
public:
    /// The stream is borrowed and outlives the sentry.
    explicit StreamFormatFlagsSentry(basic_ios<char> &stream);
    ~StreamFormatFlagsSentry();

private:
    basic_ios<char> &stream_;
    std::ios_base::fmtflags oldFlags_;
};

} // namespace quillmarsh

#endif
