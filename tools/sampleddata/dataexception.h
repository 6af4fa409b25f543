// Failure of work on a data file.
#ifndef QUILLMARSH_TOOLS_SAMPLEDDATA_DATAEXCEPTION_H
#define QUILLMARSH_TOOLS_SAMPLEDDATA_DATAEXCEPTION_H

#include <quillmarsh/basetools/exception.h>

namespace quillmarsh::tools
{

/// Data that cannot be read, worked on or written. Its message is one line that says what was wrong and where.
class DataException : public Exception
{
public:
    explicit DataException(string const &message) { SetMessage(message); }
};

} // namespace quillmarsh::tools

#endif
