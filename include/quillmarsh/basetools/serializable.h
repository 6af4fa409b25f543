// Interface of objects that can be written to and read from a binary stream.
#ifndef QUILLMARSH_BASETOOLS_SERIALIZABLE_H
#define QUILLMARSH_BASETOOLS_SERIALIZABLE_H

#include <quillmarsh/platform/types.h>

namespace quillmarsh
{

/// An object with a binary form. This class has no data; the derived class says which threads may use it.
class QUILLMARSH_API Serializable
{
public:
    /// @name Life
    /// The class has no data, so that copying copies nothing.
    /// @{
    Serializable();
    Serializable(Serializable const &);
    Serializable &operator=(Serializable const &);
    virtual ~Serializable();
    /// @}

    /// Writes the object in the calling thread's byte order of output.
    virtual void Serialize(std::ostream &out) const = 0;
    /// Reads the object in the calling thread's byte order of input, and replaces the present value.
    virtual void Deserialize(std::istream &in) = 0;
};

} // namespace quillmarsh

#endif
