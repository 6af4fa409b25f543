#include <quillmarsh/basetools/windows/messageloop.h>

#include "source/platform/messagequeue.h"

namespace quillmarsh::win_utils
{

void RunStandardMessageLoop()
{
    for (;;)
    {
        platform::ThreadMessage message;
        if (!platform::PeekThreadMessage(message, true))
            platform::WaitThreadMessage();
        else if (message.message == platform::s_messageQuit)
            return;
        else
            platform::DispatchThreadMessage(message);
    }
}

} // namespace quillmarsh::win_utils
