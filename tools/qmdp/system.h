// What qmdp needs from the system beyond the library.
#ifndef QUILLMARSH_TOOLS_QMDP_SYSTEM_H
#define QUILLMARSH_TOOLS_QMDP_SYSTEM_H

#include <quillmarsh/platform/types.h>

#include <vector>

// linux/ and win32/ implement what is declared here, and the build picks one.
namespace quillmarsh::tools::system
{

/// Prepares the standard streams: bytes go through unchanged, and a reader that goes away is a failed write.
void PrepareStandardStreams();

/// Whether both standard output and standard error are terminals, and take escape sequences.
bool IsOutputTerminal();

/// The words of the command line behind the program's name, in UTF-8.
std::vector<string> GetWords(int argc, char **argv);

} // namespace quillmarsh::tools::system

#endif
