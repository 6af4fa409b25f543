// What the codecs of all packages do alike.
#ifndef QUILLMARSH_SOURCE_DATAOBJECTS_PACKAGES_PACKAGECODECS_H
#define QUILLMARSH_SOURCE_DATAOBJECTS_PACKAGES_PACKAGECODECS_H

#include <quillmarsh/basetools/filesystem.h>
#include <quillmarsh/dataobjects/datacodecparameters.h>

#include "source/dataobjects/codecs/filereplacement.h"

namespace quillmarsh
{

inline constexpr char s_szPackageCodec[] = "QMDP";

/// Saves data in a package that is set up but for its payload and byte order. False for another format.
template<typename Package, typename Container>
bool SavePackage(Package &package, Container const &data, string const &fileName, string const &format,
                 NamedParameterList const &params)
{
    using namespace data_codec_parameters;

    if (format != s_szPackageCodec || fileName.empty() || data.GetNumSamples() == 0)
        return false;
    string const path = file_system::GetFullPathNameA(fileName, false);
    if (!MayReplaceFile(path, params.GetValueBool(Param_FileOverwrite, Value_FileOverwrite_Default)))
        return false;
    package.SetPackageByteOrderOnWrite(params.GetValueBool(Param_ByteOrderBigEndian, Value_ByteOrderBigEndian_Default));
    package.SetPayload(&data);
    return package.SaveToFile(path, false);
}

/// Loads a package that is set up, and hands out its payload; null on failure.
template<typename Package>
auto LoadPackage(Package &package, string const &fileName) -> decltype(package.GetPayload(true))
{
    bool const loaded = package.LoadFromFile(file_system::GetFullPathNameA(fileName, false), false);
    return loaded ? package.GetPayload(true) : nullptr;
}

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
