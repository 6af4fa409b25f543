// Texts of failures of packages: the class name, and the field at which a stream ended.
#ifndef QUILLMARSH_SOURCE_DATAOBJECTS_PACKAGES_PACKAGEFIELDS_H
#define QUILLMARSH_SOURCE_DATAOBJECTS_PACKAGES_PACKAGEFIELDS_H

#include <quillmarsh/basetools/diagnostics.h>
#include <quillmarsh/basetools/serializable.h>

#include <ios>
#include <typeinfo>

namespace quillmarsh
{

/// Returns the plain name of the object's class, followed by the text.
inline string PackageMessage(Serializable const &object, string const &text)
{
    return FormatClassName(GetTypeName(typeid(object))) + ": " + text;
}

/// Reads a field of a package. If the stream throws, the new exception names the field.
template<typename Read>
void ReadField(Serializable const &object, char const *field, Read const &read)
{
    try
    {
        read();
    }
    catch (std::ios_base::failure const &failure)
    {
        throw std::ios_base::failure(PackageMessage(object, string("Cannot read ") + field + "."), failure.code());
    }
}

} // namespace quillmarsh

#endif
