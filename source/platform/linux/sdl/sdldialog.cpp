#include "source/platform/linux/sdl/sdldialog.h"

#include "source/platform/linux/sdl/sdlfunctions.h"
#include "source/platform/linux/terminaldialog.h"

#include <cstdlib>
#include <vector>

namespace quillmarsh::platform
{
namespace
{

bool IsSet(char const *variable)
{
    char const *const value = std::getenv(variable);
    return value && *value != '\0';
}

/// Returns the least harmful answer, for a window that was closed without a choice.
eDialogAnswer GetAnswerOfClosing(DialogRequest const &request)
{
    switch (request.buttons)
    {
    case eDialogButtons::e_abortRetryIgnore:
        return eDialogAnswer::e_ignore;
    case eDialogButtons::e_cancelOk:
        return eDialogAnswer::e_cancel;
    default:
        return eDialogAnswer::e_ok;
    }
}

} // namespace

std::optional<eDialogAnswer> PresentWindowDialog(DialogRequest const &request)
{
    if ((!IsSet("DISPLAY") && !IsSet("WAYLAND_DISPLAY")) || !LoadSdl())
        return std::nullopt;

    std::vector<SDL_MessageBoxButtonData> buttons;
    for (DialogButton const &button : GetDialogButtons(request.buttons))
    {
        bool const isDefault = button.answer == request.defaultAnswer;
        Uint32 const flags = isDefault ? static_cast<Uint32>(SDL_MESSAGEBOX_BUTTON_RETURNKEY_DEFAULT) : 0;
        buttons.push_back({flags, static_cast<int>(button.answer), button.name});
    }
    SDL_MessageBoxData box = {};
    box.flags = static_cast<Uint32>(SDL_MESSAGEBOX_ERROR) | SDL_MESSAGEBOX_BUTTONS_LEFT_TO_RIGHT;
    box.title = request.title.c_str();
    box.message = request.text.c_str();
    box.numbuttons = static_cast<int>(buttons.size());
    box.buttons = buttons.data();

    int answer = -1;
    if (SDL_ShowMessageBox(&box, &answer) != 0)
        return std::nullopt;
    return answer < 0 ? GetAnswerOfClosing(request) : static_cast<eDialogAnswer>(answer);
}

} // namespace quillmarsh::platform
