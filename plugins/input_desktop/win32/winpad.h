// Game controllers that the multimedia part of Windows provides.
#ifndef QUILLMARSH_PLUGINS_INPUT_DESKTOP_WIN32_WINPAD_H
#define QUILLMARSH_PLUGINS_INPUT_DESKTOP_WIN32_WINPAD_H

#include "../padsystem.h"

namespace input_desktop
{

/// Lists the ids of the connected controllers, in ascending order. Takes milliseconds.
void FindWinPads(std::vector<unsigned int> &ids);
string GetWinPadName(unsigned int id);
/// Opens a controller. Null when it has been unplugged.
quillmarsh::AutoPtr<Pad> OpenWinPad(unsigned int id);

} // namespace input_desktop

#endif
