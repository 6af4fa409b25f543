#include <quillmarsh/platform/clipboard.h>

#include "source/platform/desktopevents.h"
#include "source/platform/linux/sdl/sdlfunctions.h"

namespace quillmarsh::platform
{

string ReadClipboardText()
{
    if (!IsDesktopThread())
        return {};
    std::unique_ptr<char, decltype(SDL_free)> const text(SDL_GetClipboardText(), SDL_free);
    return text ? text.get() : "";
}

bool WriteClipboardText(string const &text)
{
    return IsDesktopThread() && SDL_SetClipboardText(text.c_str()) == 0;
}

} // namespace quillmarsh::platform
