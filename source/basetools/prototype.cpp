#include <quillmarsh/basetools/prototype.h>

namespace quillmarsh
{

Prototype::Prototype() = default;
Prototype::Prototype(Prototype const &) = default;
Prototype &Prototype::operator=(Prototype const &) = default;
Prototype::~Prototype() = default;

} // namespace quillmarsh
