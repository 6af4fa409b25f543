// Keys and their characters, as SDL tells of them. The desktop's thread only.
#ifndef QUILLMARSH_SOURCE_PLATFORM_LINUX_SDL_SDLKEYS_H
#define QUILLMARSH_SOURCE_PLATFORM_LINUX_SDL_SDLKEYS_H

#include <quillmarsh/platform/desktopevents.h>

#include <SDL.h>

namespace quillmarsh::platform
{

/// Gives e_key_none for what is no key of ours.
eKey FindKey(SDL_Scancode scancode);
KeyModifiers MakeModifiers(unsigned int sdlModifiers);

/// @name Characters that keys type
/// SDL tells what a key without modifiers means, and apart from that the text that was typed. So each press teaches the
/// character of its key under the modifiers of that moment, just before somebody asks for it.
/// @{

/// Notes that a key went down: it has no character unless text follows.
void LearnKeyDown(eKey key, KeyModifiers const &modifiers);
/// Notes the text, in UTF-8, that the last key typed.
void LearnText(char const *text);
/// Forgets all characters: another layout is in use.
void ForgetCharacters();
/// @}

} // namespace quillmarsh::platform

#endif
