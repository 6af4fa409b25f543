// Game controllers, as the multimedia part of Windows has them.
#ifndef QUILLMARSH_PLUGINS_INPUT_DESKTOP_WIN32_WINPAD_H
#define QUILLMARSH_PLUGINS_INPUT_DESKTOP_WIN32_WINPAD_H

#include "../padsystem.h"

namespace input_desktop
{

/// Those that are plugged in, in ascending order. Takes a while.
void FindWinPads(std::vector<unsigned int> &ids);
string GetWinPadName(unsigned int id);
/// Null when it has been unplugged.
quillmarsh::AutoPtr<Pad> OpenWinPad(unsigned int id);

} // namespace input_desktop

#endif
