// Interface of objects that make others of their kind.
#ifndef QUILLMARSH_BASETOOLS_PROTOTYPE_H
#define QUILLMARSH_BASETOOLS_PROTOTYPE_H

#include <quillmarsh/platform/types.h>

namespace quillmarsh
{

/// Something that is copied without knowing its class. A base for programs; threads are the derived class's matter.
class QUILLMARSH_API Prototype
{
public:
    Prototype();
    Prototype(Prototype const &);
    Prototype &operator=(Prototype const &);
    virtual ~Prototype();

    /// A new object of the same class and value.
    virtual AutoPtr<Prototype> Clone() const = 0;
};

} // namespace quillmarsh

#endif
