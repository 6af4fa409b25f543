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
        // There will be no destructor to restore it.
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
        // The mask is stored before it is held against the stream's state.
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
