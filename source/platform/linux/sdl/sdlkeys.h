// Keys and their characters from SDL. The desktop's thread only.
#ifndef QUILLMARSH_SOURCE_PLATFORM_LINUX_SDL_SDLKEYS_H
#define QUILLMARSH_SOURCE_PLATFORM_LINUX_SDL_SDLKEYS_H

#include <quillmarsh/platform/desktopevents.h>

#include "source/platform/linux/sdl/sdlfunctions.h"

namespace quillmarsh::platform
{

/// Returns the key of a scancode; e_key_none when eKey does not name it.
eKey FindKey(SDL_Scancode scancode);
KeyModifiers MakeModifiers(unsigned int sdlModifiers);

/// @name Characters that keys type
/// SDL reports the meaning of a key without modifiers, and separately the text that was typed. So each press teaches
/// the character of its key with the present modifiers, just before a caller asks for it.
/// @{

/// Records that a key went down; it has no character unless a text follows.
void LearnKeyDown(eKey key, KeyModifiers const &modifiers);
/// Records the UTF-8 text that the last key typed.
void LearnText(char const *text);
/// Forgets all characters, because the layout has changed.
void ForgetCharacters();
/// @}

} // namespace quillmarsh::platform

#endif
