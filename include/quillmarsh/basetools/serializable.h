// Interface of what can be written to and read from a binary stream.
#ifndef QUILLMARSH_BASETOOLS_SERIALIZABLE_H
#define QUILLMARSH_BASETOOLS_SERIALIZABLE_H

#include <quillmarsh/platform/types.h>

namespace quillmarsh
{

/// Something with a binary form. It has no data of its own; threads are the derived class's matter.
class QUILLMARSH_API Serializable
{
public:
    Serializable();
    Serializable(Serializable const &);
    Serializable &operator=(Serializable const &);
    virtual ~Serializable();

    /// Writes the object in the present byte order of output.
    virtual void Serialize(std::ostream &out) const = 0;
    /// Replaces the object by what is read in the present byte order of input.
    virtual void Deserialize(std::istream &in) = 0;
};

} // namespace quillmarsh

#endif
