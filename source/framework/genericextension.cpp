#include <quillmarsh/framework/genericextension.h>

namespace quillmarsh
{

GenericExtension::GenericExtension() = default;

GenericExtension::~GenericExtension() = default;

} // namespace quillmarsh
