// Wakes a question at the terminal when the program is told to end.
#ifndef QUILLMARSH_SOURCE_PLATFORM_LINUX_ENDSIGNALS_H
#define QUILLMARSH_SOURCE_PLATFORM_LINUX_ENDSIGNALS_H

namespace quillmarsh::platform
{

/// Descriptor that becomes readable, as an eventfd, when a SignalWatch receives TERM or HUP. Kept until the process
/// ends; -1 if the system has none left. Any thread.
int GetEndSignalDescriptor();

} // namespace quillmarsh::platform

#endif
