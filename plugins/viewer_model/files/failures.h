// Reasons of failures for people.
#ifndef QUILLMARSH_PLUGINS_VIEWER_MODEL_FILES_FAILURES_H
#define QUILLMARSH_PLUGINS_VIEWER_MODEL_FILES_FAILURES_H

#include <quillmarsh/platform/types.h>

namespace viewer
{

/// For a handler of any exception: returns one line with its message.
quillmarsh::string DescribeException();

} // namespace viewer

#endif
