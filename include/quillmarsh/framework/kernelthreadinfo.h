// Thread that the kernel's frames run on.
#ifndef QUILLMARSH_FRAMEWORK_KERNELTHREADINFO_H
#define QUILLMARSH_FRAMEWORK_KERNELTHREADINFO_H

#include <quillmarsh/platform/types.h>

namespace quillmarsh
{

/// Description of the thread on which the kernel runs its frames. A plain record.
struct QUILLMARSH_API KernelThreadInfo
{
    HANDLE ThreadHandle = nullptr;
    unsigned int ThreadID = 0;
    int Priority = 0;
    bool EnablePriorityBoost = true;

    /// Prints one line for each field behind `tabs` tabs.
    void Dump(ostream &out, unsigned int tabs) const;
};

} // namespace quillmarsh

#endif
