// The settings of the console that PrepareStandardStreams() changes.
#ifndef QUILLMARSH_SOURCE_PLATFORM_WIN32_CONSOLESETTINGS_H
#define QUILLMARSH_SOURCE_PLATFORM_WIN32_CONSOLESETTINGS_H

namespace quillmarsh::platform
{

/// Gives the console its earlier settings back; harmless if they were never changed.
void RestoreConsole();

} // namespace quillmarsh::platform

#endif
