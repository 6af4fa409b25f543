// Interface of objects that make others of their kind.
#ifndef QUILLMARSH_BASETOOLS_PROTOTYPE_H
#define QUILLMARSH_BASETOOLS_PROTOTYPE_H

#include <quillmarsh/platform/types.h>

namespace quillmarsh
{

/// An object that can be copied by code that does not know its class. A base for programs; the derived class says which
/// threads may use it.
class QUILLMARSH_API Prototype
{
public:
    /// @name Life
    /// The class has no data, so that copying copies nothing.
    /// @{
    Prototype();
    Prototype(Prototype const &);
    Prototype &operator=(Prototype const &);
    virtual ~Prototype();
    /// @}

    /// Makes a new object of the same class and value. The caller owns it.
    virtual AutoPtr<Prototype> Clone() const = 0;
};

} // namespace quillmarsh

#endif
