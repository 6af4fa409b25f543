// Copies of samples in one pass, for which two public functions would need two passes.
#ifndef QUILLMARSH_SOURCE_DATAOBJECTS_TRANSFER_SAMPLECOPIES_H
#define QUILLMARSH_SOURCE_DATAOBJECTS_TRANSFER_SAMPLECOPIES_H

#include <quillmarsh/dataobjects/signalbase.h>

namespace quillmarsh
{

/// Works like CopySamples_3BytesBGRTo1ByteL, then CopySamples_NBytes of one byte.
void CopySamples_3BytesBGRTo1ByteL1ByteClone(SignalBase &dst, unsigned int dstLOffset, SignalBase const &src,
                                             unsigned int srcBGROffset, unsigned int dstOffset, unsigned int srcOffset);

/// Works like CopySamples_1ByteLTo3BytesBGR, then CopySamples_NBytes of one byte.
void CopySamples_1ByteLTo3BytesBGR1ByteClone(SignalBase &dst, unsigned int dstBGROffset, SignalBase const &src,
                                             unsigned int srcLOffset, unsigned int dstOffset, unsigned int srcOffset);

} // namespace quillmarsh

#endif
