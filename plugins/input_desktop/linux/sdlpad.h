// Game controllers that SDL provides.
#ifndef QUILLMARSH_PLUGINS_INPUT_DESKTOP_LINUX_SDLPAD_H
#define QUILLMARSH_PLUGINS_INPUT_DESKTOP_LINUX_SDLPAD_H

#include "../padsystem.h"

#include <SDL.h>

namespace input_desktop
{

/// Holds SDL's lock of all joysticks, so that none is added or removed.
class JoystickLock : quillmarsh::NoCopy
{
public:
    JoystickLock() { SDL_LockJoysticks(); }
    ~JoystickLock() { SDL_UnlockJoysticks(); }
};

/// Returns the index of the joystick with this id, negative if there is none. It is valid while the lock is held.
int FindJoystick(unsigned int id);

/// Opens a joystick by its index; the caller holds the lock. A controller in the mapping database has the layout of a
/// game pad, any other has the layout of its hardware. Null when it cannot be opened.
quillmarsh::AutoPtr<Pad> OpenSdlPad(int index);

} // namespace input_desktop

#endif
