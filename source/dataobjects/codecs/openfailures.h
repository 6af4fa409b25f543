// What stands in the way of opening a file.
#ifndef QUILLMARSH_SOURCE_DATAOBJECTS_CODECS_OPENFAILURES_H
#define QUILLMARSH_SOURCE_DATAOBJECTS_CODECS_OPENFAILURES_H

#include <quillmarsh/dataobjects/codecfailure.h>
#include <quillmarsh/dataobjects/inputfile.h>

namespace quillmarsh
{

/// What makes a name none of a plain file that can be read: no name at all, or that of a directory, a pipe, a socket or a
/// device. No failure for a plain file and for a name that nothing has.
CodecFailure FindReadingObstacle(string const &fileName);

/// What makes a name none to save under: as above, but a device may be written to; with `overwrite` false also anything
/// that has the name.
CodecFailure FindWritingObstacle(string const &fileName, bool overwrite);

/// Failure of saving under a name that something has.
CodecFailure DescribeTakenName();
/// Failure of the call that has just failed to open a file: "cannot be opened: " and the system's reason.
CodecFailure DescribeOpenFailure();
/// Failure of a call that has just failed to write: the system's reason, or "writing failed" if it has none.
CodecFailure DescribeWriteFailure();

/// Failure of an allocation: "not enough memory", and the text that tells how much, where there is one.
CodecFailure DescribeNoMemory(string const &text);

/// Tells a codec's failure.
void Tell(CodecFailure const &failure);

/// Opens a plain file; null, with the failure told, if that fails.
AutoPtr<sampled_data::InputFile> OpenInputFile(string const &fileName);

} // namespace quillmarsh

#endif
