// What commands need to work with the GUI manager.
#ifndef QUILLMARSH_SOURCE_FRAMEWORK_COMMANDS_GUIMANAGERUSE_H
#define QUILLMARSH_SOURCE_FRAMEWORK_COMMANDS_GUIMANAGERUSE_H

#include <quillmarsh/basetools/outputstream.h>
#include <quillmarsh/gui/gui_manager.h>

namespace quillmarsh::framework_commands
{

/// Returns the GUI manager. In a program without one it tells so, and returns null.
inline gui::Manager *FindGUIManager(ostream &out)
{
    if (gui::Manager::IsCreated())
        return gui::Manager::InstancePtr();
    out << e_error << "Cannot find gui-manager.\n" << e_info;
    return nullptr;
}

} // namespace quillmarsh::framework_commands

#endif
