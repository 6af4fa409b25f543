// The console settings that PrepareStandardStreams() changes.
#ifndef QUILLMARSH_SOURCE_PLATFORM_WIN32_CONSOLESETTINGS_H
#define QUILLMARSH_SOURCE_PLATFORM_WIN32_CONSOLESETTINGS_H

namespace quillmarsh::platform
{

/// Restores the console's earlier settings; harmless if they were never changed.
void RestoreConsole();

} // namespace quillmarsh::platform

#endif
