// Game controllers, as SDL has them.
#ifndef QUILLMARSH_PLUGINS_INPUT_DESKTOP_LINUX_SDLPAD_H
#define QUILLMARSH_PLUGINS_INPUT_DESKTOP_LINUX_SDLPAD_H

#include "../padsystem.h"

#include <SDL.h>

namespace input_desktop
{

/// Holds SDL's lock of all joysticks: none comes or goes.
class JoystickLock : quillmarsh::NoCopy
{
public:
    JoystickLock() { SDL_LockJoysticks(); }
    ~JoystickLock() { SDL_UnlockJoysticks(); }
};

/// Index of a joystick with the number, which holds while the lock is held; negative without one.
int FindJoystick(unsigned int id);

/// Opens one by its index, which holds. A controller that the mapping database knows has the places of a game pad, one
/// that it does not know those of its hardware. Null when it cannot be opened.
quillmarsh::AutoPtr<Pad> OpenSdlPad(int index);

} // namespace input_desktop

#endif
