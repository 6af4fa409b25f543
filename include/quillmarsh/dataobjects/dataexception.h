// Failure of work on a data file.
#ifndef QUILLMARSH_DATAOBJECTS_DATAEXCEPTION_H
#define QUILLMARSH_DATAOBJECTS_DATAEXCEPTION_H

#include <quillmarsh/basetools/exception.h>

namespace quillmarsh::sampled_data
{

/// Data that cannot be read, worked on or written. Its message is one line that says what was wrong and where.
class QUILLMARSH_API DataException : public Exception
{
public:
    explicit DataException(string const &message) { SetMessage(message); }
};

} // namespace quillmarsh::sampled_data

#endif
