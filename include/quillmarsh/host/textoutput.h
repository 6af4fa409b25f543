// Where the console's text is shown.
#ifndef QUILLMARSH_HOST_TEXTOUTPUT_H
#define QUILLMARSH_HOST_TEXTOUTPUT_H

#include <quillmarsh/platform/types.h>

#include <string_view>

namespace quillmarsh::host
{

/// Where the console's text is shown. One call at a time; the console sees to that.
class TextOutput
{
public:
    virtual ~TextOutput();
    /// Shows a text of one output type; it may have several lines, or a part of one.
    virtual void Write(std::string_view text, unsigned int type) = 0;
};

/// Appends text to `target` in the colour of its output type; every line is coloured by itself.
void AppendColoured(string &target, std::string_view text, unsigned int type);

/// Whether text on a terminal is to be coloured: unless the environment variable NO_COLOR is set.
bool WantsColours();

} // namespace quillmarsh::host

#endif
