#include <quillmarsh/mathtools/mathserializer.h>

#include <quillmarsh/basetools/serializer.h>
#include <quillmarsh/mathtools/color4f.h>
#include <quillmarsh/mathtools/quaternion.h>

namespace quillmarsh
{

namespace
{

template<typename T>
ostream &WriteFloats(ostream &out, T const &value)
{
    WriteByteBlocks(out, reinterpret_cast<unsigned char const *>(value.ToPtr()), sizeof(float),
                    sizeof(T) / sizeof(float));
    return out;
}

template<typename T>
istream &ReadFloats(istream &in, T &value)
{
    ReadByteBlocks(in, reinterpret_cast<unsigned char *>(value.ToPtr()), sizeof(float), sizeof(T) / sizeof(float));
    return in;
}

} // namespace

ostream &operator<=(ostream &out, vec2 const &value)
{
    return WriteFloats(out, value);
}

ostream &operator<=(ostream &out, vec3 const &value)
{
    return WriteFloats(out, value);
}

ostream &operator<=(ostream &out, vec4 const &value)
{
    return WriteFloats(out, value);
}

ostream &operator<=(ostream &out, mat2 const &value)
{
    return WriteFloats(out, value);
}

ostream &operator<=(ostream &out, mat3 const &value)
{
    return WriteFloats(out, value);
}

ostream &operator<=(ostream &out, mat4 const &value)
{
    return WriteFloats(out, value);
}

ostream &operator<=(ostream &out, quat const &value)
{
    return WriteFloats(out, value);
}

ostream &operator<=(ostream &out, color4f const &value)
{
    return WriteFloats(out, value);
}

ostream &operator<=(ostream &out, color4b const &value)
{
    return out <= value.a <= value.r <= value.g <= value.b;
}

istream &operator>=(istream &in, vec2 &value)
{
    return ReadFloats(in, value);
}

istream &operator>=(istream &in, vec3 &value)
{
    return ReadFloats(in, value);
}

istream &operator>=(istream &in, vec4 &value)
{
    return ReadFloats(in, value);
}

istream &operator>=(istream &in, mat2 &value)
{
    return ReadFloats(in, value);
}

istream &operator>=(istream &in, mat3 &value)
{
    return ReadFloats(in, value);
}

istream &operator>=(istream &in, mat4 &value)
{
    return ReadFloats(in, value);
}

istream &operator>=(istream &in, quat &value)
{
    return ReadFloats(in, value);
}

istream &operator>=(istream &in, color4f &value)
{
    return ReadFloats(in, value);
}

istream &operator>=(istream &in, color4b &value)
{
    return in >= value.a >= value.r >= value.g >= value.b;
}

} // namespace quillmarsh
