// One line of a dump of a controller's capabilities.
#ifndef QUILLMARSH_SOURCE_DEVICES_DUMPLINE_H
#define QUILLMARSH_SOURCE_DEVICES_DUMPLINE_H

#include <quillmarsh/basetools/streameffectors.h>
#include <quillmarsh/basetools/texttools.h>

namespace quillmarsh
{

/// Prints a label, which ends with ": ", and the library's text form of a value.
template<typename T>
void DumpLine(ostream &out, unsigned int tabs, string const &label, T const &value)
{
    out << IndentEffector(tabs) << label << MakeString(value) << nl;
}

} // namespace quillmarsh

#endif
