#include <quillmarsh/host/textoutput.h>

#include <quillmarsh/basetools/outputstream.h>

#include <cstdlib>

namespace quillmarsh::host
{

namespace
{

/// Returns the escape sequence of an output type; empty for the terminal's own colour.
std::string_view GetColour(unsigned int type)
{
    switch (type)
    {
    case OutputStream::e_typeWarning:
        return "\033[33m";
    case OutputStream::e_typeError:
        return "\033[31m";
    case OutputStream::e_typeAttention:
        return "\033[36m";
    case OutputStream::e_typeQuery:
        return "\033[35m";
    case OutputStream::e_typeEcho:
    case OutputStream::e_typeDebug:
        return "\033[2m";
    default:
        return {};
    }
}

} // namespace

TextOutput::~TextOutput() = default;

void AppendColoured(string &target, std::string_view text, unsigned int type)
{
    std::string_view const colour = GetColour(type);
    while (!text.empty())
    {
        std::size_t const lineEnd = text.find('\n');
        std::string_view const line = text.substr(0, lineEnd);
        if (line.empty() || colour.empty())
            target += line;
        else
            target.append(colour).append(line).append("\033[0m");
        if (lineEnd == std::string_view::npos)
            return;
        target += '\n';
        text.remove_prefix(lineEnd + 1);
    }
}

bool WantsColours()
{
    return std::getenv("NO_COLOR") == nullptr;
}

} // namespace quillmarsh::host
