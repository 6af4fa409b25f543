// Failure of work on sampled data.
#ifndef QUILLMARSH_DATAOBJECTS_DATAEXCEPTION_H
#define QUILLMARSH_DATAOBJECTS_DATAEXCEPTION_H

#include <quillmarsh/basetools/exception.h>
#include <quillmarsh/dataobjects/codecfailure.h>

namespace quillmarsh::sampled_data
{

/// Thrown when data cannot be read, processed or written. Its message is one line that names the fault and its place.
class QUILLMARSH_API DataException : public Exception
{
public:
    /// A failure of work on loaded data.
    explicit DataException(string const &message) { SetMessage(message); }
    /// A failure of loading or saving; the message is the name of the file, ": ", and the text of the failure.
    DataException(string const &fileName, CodecFailure const &failure) : failure_(failure)
    {
        SetMessage(fileName + ": " + failure.text);
    }

    /// Returns the failure of loading or saving; none for other work.
    CodecFailure const &GetFailure() const { return failure_; }

private:
    CodecFailure failure_;
};

} // namespace quillmarsh::sampled_data

#endif
