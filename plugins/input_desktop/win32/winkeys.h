// Keys and their characters, as Windows tells of them.
#ifndef QUILLMARSH_PLUGINS_INPUT_DESKTOP_WIN32_WINKEYS_H
#define QUILLMARSH_PLUGINS_INPUT_DESKTOP_WIN32_WINKEYS_H

#include "../desktop.h"

namespace input_desktop
{

/// Key by the code that its hardware sends; e_key_none for what is no key of ours.
quillmarsh::eKey FindKey(unsigned int scanCode, bool isExtended);

/// Character of a key under the present layout, in Latin-1; false if the key has none.
bool FindCharacter(quillmarsh::eKey key, KeyModifiers const &modifiers, char &character);

} // namespace input_desktop

#endif
