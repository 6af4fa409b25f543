#include <quillmarsh/basetools/streamsentries.h>

namespace quillmarsh
{

StreamExceptionSentry::StreamExceptionSentry(basic_ios<char> &stream, short mask)
    : stream_(stream),
      oldMask_(stream.exceptions())
{
    try
    {
        stream_.exceptions(static_cast<std::ios_base::iostate>(mask));
    }
    catch (...)
    {
        // The destructor, which restores the mask, is not called after a constructor that throws.
        RestoreMask();
        throw;
    }
}

StreamExceptionSentry::~StreamExceptionSentry()
{
    RestoreMask();
}

void StreamExceptionSentry::RestoreMask()
{
    try
    {
        stream_.exceptions(oldMask_);
    }
    catch (std::ios_base::failure const &)
    {
        // The stream stores the mask before it compares it with its state.
    }
}

StreamFormatFlagsSentry::StreamFormatFlagsSentry(basic_ios<char> &stream) : stream_(stream), oldFlags_(stream.flags())
{
}

StreamFormatFlagsSentry::~StreamFormatFlagsSentry()
{
    stream_.flags(oldFlags_);
}

} // namespace quillmarsh
