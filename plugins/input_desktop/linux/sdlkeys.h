// Keys and their characters, as SDL tells of them.
#ifndef QUILLMARSH_PLUGINS_INPUT_DESKTOP_LINUX_SDLKEYS_H
#define QUILLMARSH_PLUGINS_INPUT_DESKTOP_LINUX_SDLKEYS_H

#include "../desktop.h"

#include <SDL.h>

#include <array>

namespace input_desktop
{

/// e_key_none for what is no key of ours.
quillmarsh::eKey FindKey(SDL_Scancode scancode);

/// Characters of the keys under the present layout. Any thread.
///
/// SDL tells what a key without modifiers means, and apart from that the text that was typed. So each press teaches the
/// character of its key under the modifiers of that moment, just before somebody asks for it.
class CharacterMap : quillmarsh::NoCopy
{
public:
    CharacterMap() { Forget(); }

    /// Another layout is in use.
    void Forget();
    /// A key went down: it has no character unless text follows.
    void OnKeyDown(quillmarsh::eKey key, KeyModifiers const &modifiers);
    /// UTF-8 that the last key typed.
    void OnText(char const *text);
    bool Find(quillmarsh::eKey key, KeyModifiers const &modifiers, char &character) const;

private:
    static constexpr short s_notKnown = -1;

    mutable quillmarsh::CriticalSection lock_;
    /// By modifiers and key; 0 is no character.
    std::array<std::array<short, quillmarsh::e_key_none>, 32> characters_;
    short *last_ = nullptr;
};

} // namespace input_desktop

#endif
