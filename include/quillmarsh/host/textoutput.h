// Interface of outputs that show the console's text.
#ifndef QUILLMARSH_HOST_TEXTOUTPUT_H
#define QUILLMARSH_HOST_TEXTOUTPUT_H

#include <quillmarsh/platform/types.h>

#include <string_view>

namespace quillmarsh::host
{

/// Shows the console's text. The console makes one call at a time, on any thread.
class TextOutput
{
public:
    virtual ~TextOutput();
    /// Shows a text of one output type; it may have several lines, or a part of one.
    virtual void Write(std::string_view text, unsigned int type) = 0;
};

/// Appends text to `target` with the escape sequences for the colour of its output type. Each line is coloured
/// separately.
void AppendColoured(string &target, std::string_view text, unsigned int type);

/// True when text on a terminal should be coloured: the environment variable NO_COLOR is not set.
bool WantsColours();

} // namespace quillmarsh::host

#endif
