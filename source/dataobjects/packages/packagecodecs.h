// Common code of the codecs of packages.
#ifndef QUILLMARSH_SOURCE_DATAOBJECTS_PACKAGES_PACKAGECODECS_H
#define QUILLMARSH_SOURCE_DATAOBJECTS_PACKAGES_PACKAGECODECS_H

#include <quillmarsh/basetools/filesystem.h>
#include <quillmarsh/dataobjects/datacodecparameters.h>
#include <quillmarsh/dataobjects/datacodecs.h>
#include <quillmarsh/dataobjects/inputfile.h>

#include "source/dataobjects/packages/packagefiles.h"

namespace quillmarsh
{

inline constexpr char s_szPackageCodec[] = "QMDP";

/// Saves data in `package`, and sets its payload, byte order and id; the caller has set the rest. False for another
/// format.
template<typename Package, typename Container>
bool SavePackage(Package &package, Container const &data, string const &fileName, string const &format,
                 NamedParameterList const &params)
{
    using namespace data_codec_parameters;

    if (format != s_szPackageCodec)
    {
        TellCodecFailure(eCodecFailure::e_otherFormat, "not a format of packages");
        return false;
    }
    if (fileName.empty() || data.GetNumSamples() == 0)
    {
        TellCodecFailure(eCodecFailure::e_unsupported,
                         fileName.empty() ? "the name of the file is missing" : "there are no samples to save");
        return false;
    }
    package.SetPackageByteOrderOnWrite(params.GetValueBool(Param_ByteOrderBigEndian, Value_ByteOrderBigEndian_Default));
    package.SetPackageID(params.GetValueUInteger(Param_PackageID, Value_PackageID_Default));
    package.SetPayload(&data);
    string const path = file_system::GetFullPathNameA(fileName, false);
    FileReplacement replacement(path, params.GetValueBool(Param_FileOverwrite, Value_FileOverwrite_Default));
    return !replacement.GetPath().empty() && WritePackageFile(package, path, replacement);
}

/// Loads a package, which the caller has set up, and returns its payload, owned by the caller; null on failure.
template<typename Package>
auto LoadPackage(Package &package, string const &fileName) -> decltype(package.GetPayload(true))
{
    bool const loaded = package.LoadFromFile(file_system::GetFullPathNameA(fileName, false), false);
    return loaded ? package.GetPayload(true) : nullptr;
}

/// Does the same from an open file.
template<typename Package>
auto LoadPackage(Package &package, sampled_data::InputFile &file) -> decltype(package.GetPayload(true))
{
    return ReadPackageFile(package, file.GetStream()) ? package.GetPayload(true) : nullptr;
}

/// Describes a package with this number of dimensions. For any other file, tells the failure and returns false.
bool QueryPackage(sampled_data::InputFile &file, std::size_t numDimensions, DataFileHead &head);

inline bool IsOriginBottom(NamedParameterList const &params)
{
    using namespace signal_codec_parameters;
    return params.GetValueBool(Param_OriginBottom, Value_OriginBottom_Default);
}

inline bool IsOriginBack(NamedParameterList const &params)
{
    using namespace signal_codec_parameters;
    return params.GetValueBool(Param_OriginBack, Value_OriginBack_Default);
}

} // namespace quillmarsh

#endif
