// Lines of the console as columns of glyphs.
#ifndef QUILLMARSH_SOURCE_WIDGETS_CONSOLECHARACTERS_H
#define QUILLMARSH_SOURCE_WIDGETS_CONSOLECHARACTERS_H

#include <quillmarsh/platform/types.h>

#include <string_view>

namespace quillmarsh::widgets
{

/// @name Lines of a console buffer
/// Their bytes may be anything: UTF-8 that is cut, control characters. What ToGlyphs() makes of them stands in columns.
/// A carriage return takes none, so that lines of other systems look as usual. Any thread.
/// @{
/// Returns the number of bytes that the first `columns` columns take. A character of more columns is not cut.
std::size_t SkipColumns(std::string_view line, std::size_t columns);
/// Returns the columns.
string MakeColumns(string const &line);
/// Appends a text as well-formed UTF-8 that other programs take: without carriage returns, and with a replacement
/// character for each control character but tab and line feed, and for each byte that is no UTF-8.
void AppendClean(string &target, std::string_view text);
/// @}

} // namespace quillmarsh::widgets

#endif
