// Names, types and defaults of the parameters that codecs read, and how a program makes lists of them.
#ifndef QUILLMARSH_DATAOBJECTS_DATACODECPARAMETERS_H
#define QUILLMARSH_DATAOBJECTS_DATACODECPARAMETERS_H

#include <quillmarsh/basetools/namedparameter.h>

namespace quillmarsh
{

/// Parameters of all codecs. A codec leaves alone what its format has no use for.
namespace data_codec_parameters
{

/// @name bool: whether a file that is there may be replaced
/// @{
inline constexpr char Param_FileOverwrite[] = "FileOverwrite";
inline constexpr bool Value_FileOverwrite_Default = false;
/// @}

/// @name bool: byte order of formats that have both
/// @{
inline constexpr char Param_ByteOrderBigEndian[] = "ByteOrderBigEndian";
inline constexpr bool Value_ByteOrderBigEndian_Default = false;
/// @}

/// @name bool: whether formats that can do without compression compress
/// @{
inline constexpr char Param_UseCompression[] = "UseCompression";
inline constexpr bool Value_UseCompression_Default = true;
/// @}

/// @name unsigned int: how much work compression without loss takes on
/// @{
inline constexpr char Param_CompressionLevel[] = "CompressionLevel";
inline constexpr unsigned int Value_CompressionLevel_Min = 0;
inline constexpr unsigned int Value_CompressionLevel_Max = 100;
inline constexpr unsigned int Value_CompressionLevel_Default = 100;
/// @}

/// @name unsigned int: quality of compression with loss
/// @{
inline constexpr char Param_Quality[] = "Quality";
inline constexpr unsigned int Value_Quality_Min = 0;
inline constexpr unsigned int Value_Quality_Max = 100;
inline constexpr unsigned int Value_Quality_Default = 100;
/// @}

/// @name unsigned int: id of a data package
/// @{
inline constexpr char Param_PackageID[] = "PackageID";
inline constexpr unsigned int Value_PackageID_Default = 0;
/// @}

} // namespace data_codec_parameters

/// Parameters of signals, images and volumes.
namespace signal_codec_parameters
{

/// @name bool: whether the first row in memory is the bottom one
/// @{
inline constexpr char Param_OriginBottom[] = "OriginBottom";
inline constexpr bool Value_OriginBottom_Default = false;
/// @}

/// @name bool: whether the first layer in memory is the one at the back
/// @{
inline constexpr char Param_OriginBack[] = "OriginBack";
inline constexpr bool Value_OriginBack_Default = false;
/// @}

/// @name string: file formats of signals
/// @{
inline constexpr char Param_SignalFileFormat[] = "SignalFileFormat";
inline constexpr char Value_SignalFileFormat_QMDP[] = "QMDP";
inline constexpr char const *Value_SignalFileFormat_Default = Value_SignalFileFormat_QMDP;
/// @}

/// @name string: file formats of images
/// @{
inline constexpr char Param_ImageFileFormat[] = "ImageFileFormat";
inline constexpr char Value_ImageFileFormat_TIFF[] = "TIFF";
inline constexpr char Value_ImageFileFormat_JPEG[] = "JPEG";
inline constexpr char Value_ImageFileFormat_PNG[] = "PNG";
inline constexpr char Value_ImageFileFormat_BMP[] = "BMP";
inline constexpr char Value_ImageFileFormat_QMDP[] = "QMDP";
inline constexpr char const *Value_ImageFileFormat_Default = Value_ImageFileFormat_JPEG;
/// @}

/// @name string: file formats of volumes
/// @{
inline constexpr char Param_VolumeFileFormat[] = "VolumeFileFormat";
inline constexpr char Value_VolumeFileFormat_QMDP[] = "QMDP";
inline constexpr char const *Value_VolumeFileFormat_Default = Value_VolumeFileFormat_QMDP;
/// @}

} // namespace signal_codec_parameters

/// Adds to the parameters that a category of data has by default. It is lent for one call and never deleted through
/// this class.
class QUILLMARSH_API CodecParameterFactory
{
public:
    /// Inserts into `list`, which holds the initial parameters of encoders or decoders.
    virtual void FillParameterList(unsigned int dataCategory, bool forEncoder, NamedParameterList &list) const = 0;

protected:
    CodecParameterFactory() = default;
    CodecParameterFactory(CodecParameterFactory const &) = default;
    CodecParameterFactory &operator=(CodecParameterFactory const &) = default;
    ~CodecParameterFactory() = default;
};

/// Sets "OriginBottom" and "OriginBack", whatever category and direction.
class QUILLMARSH_API SignalCodecParamFactory final : public CodecParameterFactory
{
public:
    /// The values that it sets.
    SignalCodecParamFactory(bool originBottom, bool originBack);

    /// Replaces earlier values.
    void FillParameterList(unsigned int dataCategory, bool forEncoder, NamedParameterList &list) const override;

private:
    bool originBottom_;
    bool originBack_;
};

} // namespace quillmarsh

#endif
