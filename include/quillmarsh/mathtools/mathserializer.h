// Math types on binary streams: `stream <= value` writes, `stream >= value` reads.
#ifndef QUILLMARSH_MATHTOOLS_MATHSERIALIZER_H
#define QUILLMARSH_MATHTOOLS_MATHSERIALIZER_H

#include <quillmarsh/platform/types.h>

namespace quillmarsh
{

// The header of each type includes this one, since without these operators a type that converts to a pointer would be
// written as a truth value.

class vec2;
class vec3;
class vec4;
class mat2;
class mat3;
class mat4;
class quat;
class color4f;
class color4b;

/// @name Writing
/// Writes the floats in storage order, each in the byte order of output (see serializer_parameters.h). A color4b is
/// written as its four bytes, the highest in memory first, in every byte order.
/// @{
QUILLMARSH_API ostream &operator<=(ostream &out, vec2 const &value);
QUILLMARSH_API ostream &operator<=(ostream &out, vec3 const &value);
QUILLMARSH_API ostream &operator<=(ostream &out, vec4 const &value);
QUILLMARSH_API ostream &operator<=(ostream &out, mat2 const &value);
QUILLMARSH_API ostream &operator<=(ostream &out, mat3 const &value);
QUILLMARSH_API ostream &operator<=(ostream &out, mat4 const &value);
QUILLMARSH_API ostream &operator<=(ostream &out, quat const &value);
QUILLMARSH_API ostream &operator<=(ostream &out, color4f const &value);
QUILLMARSH_API ostream &operator<=(ostream &out, color4b const &value);
/// @}

/// @name Reading
/// Reads what was written. Nothing looks for failures: values that the stream does not supply stay as they were.
/// @{
QUILLMARSH_API istream &operator>=(istream &in, vec2 &value);
QUILLMARSH_API istream &operator>=(istream &in, vec3 &value);
QUILLMARSH_API istream &operator>=(istream &in, vec4 &value);
QUILLMARSH_API istream &operator>=(istream &in, mat2 &value);
QUILLMARSH_API istream &operator>=(istream &in, mat3 &value);
QUILLMARSH_API istream &operator>=(istream &in, mat4 &value);
QUILLMARSH_API istream &operator>=(istream &in, quat &value);
QUILLMARSH_API istream &operator>=(istream &in, color4f &value);
QUILLMARSH_API istream &operator>=(istream &in, color4b &value);
/// @}

} // namespace quillmarsh

#endif
