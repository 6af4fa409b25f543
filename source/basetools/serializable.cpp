#include <quillmarsh/basetools/serializable.h>

namespace quillmarsh
{

Serializable::Serializable() = default;
Serializable::Serializable(Serializable const &) = default;
Serializable &Serializable::operator=(Serializable const &) = default;
Serializable::~Serializable() = default;

} // namespace quillmarsh
