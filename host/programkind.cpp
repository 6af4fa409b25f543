#include "programkind.h"

#include <quillmarsh/basetools/diagnostics.h>

#include <algorithm>
#include <iterator>

namespace quillmarsh::host
{

namespace
{

constexpr ProgramKind s_kinds[] = {
    {"quillmarsh-host", "workbench",
     "Runs an application from a plug-in library, the workbench by default, with a console in the terminal.\n"
     "When standard input is not a terminal, its lines run as a script.",
     false},
    {"quillmarsh-view", "viewer",
     "Shows pictures, volumes, signals and input devices. Without a FILE it shows the last folder.\n"
     "In a terminal it has a console; otherwise it runs until its window is closed.",
     true},
};

} // namespace

ProgramKind const &GetProgramKind(string const &name)
{
    auto const found = std::find_if(std::begin(s_kinds), std::end(s_kinds),
                                    [&](ProgramKind const &kind) { return kind.name == name; });
    QUILLMARSH_ASSERT(found != std::end(s_kinds), "There is no such program.");
    return found != std::end(s_kinds) ? *found : s_kinds[0];
}

} // namespace quillmarsh::host
