// The programs that the host's code becomes.
#ifndef QUILLMARSH_HOST_PROGRAMKIND_H
#define QUILLMARSH_HOST_PROGRAMKIND_H

#include <quillmarsh/platform/types.h>

namespace quillmarsh::host
{

/// What one of the programs does differently.
struct ProgramKind
{
    /// On the path, and in front of messages.
    char const *name;
    /// Plug-in library that is loaded if no other one brings an application.
    char const *application;
    /// First lines of the help.
    char const *description;
    /// True for a program that shows files in a window. Its arguments may name files, its window opens wherever there is
    /// a display, and the run lasts until that is closed. Standard input is a script only when the user asks for that.
    bool isViewer;
};

/// Returns the program of this name. It must be one of those in the table.
ProgramKind const &GetProgramKind(string const &name);

} // namespace quillmarsh::host

#endif
