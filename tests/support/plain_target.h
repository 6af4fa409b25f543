// The loops without vectors, which the kernels for every instruction set are compared with.
#ifndef QUILLMARSH_TESTS_SUPPORT_PLAIN_TARGET_H
#define QUILLMARSH_TESTS_SUPPORT_PLAIN_TARGET_H

#include "source/dataobjects/transfer/samplekernels.h"

namespace quillmarsh::tests
{

/// Returns the target without vectors. A build for a single instruction set has none; the tests then compare this set
/// with itself.
inline long long GetPlainTarget()
{
    return GetKernelTargets().back();
}

} // namespace quillmarsh::tests

#endif
