// Reasons why a file cannot be opened.
#ifndef QUILLMARSH_SOURCE_DATAOBJECTS_CODECS_OPENFAILURES_H
#define QUILLMARSH_SOURCE_DATAOBJECTS_CODECS_OPENFAILURES_H

#include <quillmarsh/dataobjects/codecfailure.h>
#include <quillmarsh/dataobjects/inputfile.h>

namespace quillmarsh
{

/// Returns a failure if the name is empty, or belongs to a directory, a pipe, a socket or a device. No failure for a
/// plain file, and for an unused name.
CodecFailure FindReadingObstacle(string const &fileName);

/// Returns a failure if data cannot be saved under this name: the same reasons, but a device can be written to. Without
/// `overwrite`, an existing file is a failure, too.
CodecFailure FindWritingObstacle(string const &fileName, bool overwrite);

/// Returns the failure for a name that already exists.
CodecFailure DescribeTakenName();
/// Returns the failure of the call that has just failed to open a file: "cannot be opened: " and the system's reason.
CodecFailure DescribeOpenFailure();
/// Returns the failure of a call that has just failed to write: the system's reason, or "writing failed" without one.
CodecFailure DescribeWriteFailure();

/// Returns the failure of a call that has just failed to create or write a temporary file.
CodecFailure DescribeTemporaryFailure();

/// Returns the failure of an allocation: "not enough memory", and `text` with the size if it is not empty.
CodecFailure DescribeNoMemory(string const &text);

/// Tells a codec's failure to the innermost CodecFailureSentry.
void Tell(CodecFailure const &failure);

/// Opens a plain file. On failure, tells it and returns null.
AutoPtr<sampled_data::InputFile> OpenInputFile(string const &fileName);

} // namespace quillmarsh

#endif
