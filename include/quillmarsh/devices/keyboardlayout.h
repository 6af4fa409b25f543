// The layout of keyboards that no system maps to characters.
#ifndef QUILLMARSH_DEVICES_KEYBOARDLAYOUT_H
#define QUILLMARSH_DEVICES_KEYBOARDLAYOUT_H

#include <quillmarsh/platform/inputcodes.h>
#include <quillmarsh/platform/types.h>

namespace quillmarsh
{

class Keyboard;

/// Key, and the modifiers that are held while it types a character.
struct KeyStroke
{
    eKey key = e_key_none;
    /// L-Shift or R-Shift.
    bool shift = false;
    /// R-Alt.
    bool altGr = false;

    bool operator==(KeyStroke const &) const = default;
};

/// @name Layout for robots and recordings
/// A keyboard of the United States that types the whole of Latin-1, the same on every system. OEM102 types the grave
/// accent and the tilde, too. With R-Alt, a key types the character whose code is higher by 128, so that R-Alt and D
/// type 'ä'; R-Alt, Shift and Space type the last one, 'ÿ'. The number pad types its digits.
/// @{

/// Finds the character of a stroke. Returns false, and leaves `character` alone, when it types none. Any thread.
QUILLMARSH_API bool FindLayoutCharacter(KeyStroke const &stroke, char &character);
/// Finds the character of a key with the modifiers that are pressed. With Control or L-Alt, keys type none. Under the
/// same sentry as other reads of the keyboard.
QUILLMARSH_API bool FindLayoutCharacter(Keyboard const &keyboard, eKey key, char &character);
/// Finds the stroke that types a character, which is none of the grave accent key. A tab and a line feed are the keys
/// Tab and Enter, although these type no character. Returns false for other control characters. Any thread.
QUILLMARSH_API bool FindLayoutStroke(char character, KeyStroke &stroke);
/// @}

/// Finds the key of a name, as GetKeyName() returns it, in upper or lower case. Any thread.
QUILLMARSH_API bool FindKeyOfName(string const &name, eKey &key);

} // namespace quillmarsh

#endif
