#include "source/dataobjects/packages/packagecodecs.h"

#include <quillmarsh/dataobjects/dataexception.h>
#include <quillmarsh/dataobjects/packageinspection.h>

namespace quillmarsh
{

bool QueryPackage(sampled_data::InputFile &file, std::size_t numDimensions, DataFileHead &head)
{
    try
    {
        sampled_data::PackageDesc const desc = sampled_data::InspectPackage(file.GetStream(), file.GetByteSize());
        head = {s_szPackageCodec, static_cast<eSampleFormat>(desc.format), desc.dimensions};
    }
    catch (sampled_data::DataException const &thrown)
    {
        TellCodecFailure(eCodecFailure::e_otherFormat, thrown.GetMessage());
        return false;
    }
    if (head.dimensions.size() == numDimensions)
        return true;
    TellCodecFailure(eCodecFailure::e_otherFormat, "a package of other data");
    return false;
}

} // namespace quillmarsh
