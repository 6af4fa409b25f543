#include <quillmarsh/mathtools/squarematrix.h>

#include <quillmarsh/basetools/exception.h>

namespace quillmarsh
{

void math_details::ThrowUninvertibleMatrix()
{
    QUILLMARSH_THROW(MatrixNotInvertibleException, "Uninvertible matrix.");
}

} // namespace quillmarsh
