// A wrong field of a package.
#ifndef QUILLMARSH_SOURCE_DATAOBJECTS_PACKAGES_PACKAGEFAULT_H
#define QUILLMARSH_SOURCE_DATAOBJECTS_PACKAGES_PACKAGEFAULT_H

#include <quillmarsh/dataobjects/dataexception.h>

namespace quillmarsh::sampled_data
{

/// Thrown for a wrong field. Its failure names no file, because a package can be part of any stream; who knows the
/// file's name throws the failure again with it.
class PackageFault : public DataException
{
public:
    PackageFault(std::uint64_t offset, string const &field, string const &what)
        : DataException("byte " + std::to_string(offset) + ": " + field + ": " + what),
          place_({eCodecFailure::e_damaged, GetMessage(), offset, field})
    {
    }

    /// Returns the failure with the place of the field.
    CodecFailure const &GetPlace() const { return place_; }

private:
    CodecFailure place_;
};

} // namespace quillmarsh::sampled_data

#endif
