#include "source/platform/dialogs.h"

#include "source/platform/linux/sdl/sdldialog.h"
#include "source/platform/linux/terminaldialog.h"

#include <mutex>

namespace quillmarsh::platform
{

eDialogAnswer PresentSystemDialog(DialogRequest const &request)
{
    static std::mutex s_oneAtATime;
    std::lock_guard const lock(s_oneAtATime);
    std::optional<eDialogAnswer> const answer = PresentWindowDialog(request);
    return answer ? *answer : PresentTerminalDialog(request);
}

} // namespace quillmarsh::platform
