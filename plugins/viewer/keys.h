// Keys and the console lines that they stand for.
#ifndef QUILLMARSH_PLUGINS_VIEWER_KEYS_H
#define QUILLMARSH_PLUGINS_VIEWER_KEYS_H

#include <quillmarsh/platform/inputcodes.h>
#include <quillmarsh/platform/types.h>

#include <span>

namespace viewer
{

/// Modifier keys of a binding.
enum eModifiers : unsigned int
{
    e_plain = 0,
    e_shift = 1,
    e_control = 2,
    e_alt = 4
};

/// A key, what it does, and the words for the help page. Rooms have tables of these; the help page and the menus are made
/// from them.
struct KeyBinding
{
    quillmarsh::eKey key;
    unsigned int modifiers;
    /// The console line that it runs.
    char const *line;
    /// For the help page, as in "Zoom in".
    char const *description;
    /// True if a held key repeats it.
    bool repeats = false;
};

/// Returns the name of a key with its modifiers, as in "Ctrl+Shift+A", "Page Up", "F1".
quillmarsh::string FormatKey(KeyBinding const &binding);

} // namespace viewer

#endif
