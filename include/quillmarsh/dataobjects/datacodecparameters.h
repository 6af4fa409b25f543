// Names, types and defaults of the parameters of codecs, and factories of parameter lists.
#ifndef QUILLMARSH_DATAOBJECTS_DATACODECPARAMETERS_H
#define QUILLMARSH_DATAOBJECTS_DATACODECPARAMETERS_H

#include <quillmarsh/basetools/namedparameter.h>

namespace quillmarsh
{

/// Parameters of all codecs. A codec ignores parameters that its format does not use.
namespace data_codec_parameters
{

/// @name bool: true allows replacing an existing file
/// @{
inline constexpr char Param_FileOverwrite[] = "FileOverwrite";
inline constexpr bool Value_FileOverwrite_Default = false;
/// @}

/// @name bool: true selects big-endian byte order, in formats with a choice
/// @{
inline constexpr char Param_ByteOrderBigEndian[] = "ByteOrderBigEndian";
inline constexpr bool Value_ByteOrderBigEndian_Default = false;
/// @}

/// @name bool: true compresses, in formats with a choice
/// @{
inline constexpr char Param_UseCompression[] = "UseCompression";
inline constexpr bool Value_UseCompression_Default = true;
/// @}

/// @name unsigned int: effort of lossless compression
/// @{
inline constexpr char Param_CompressionLevel[] = "CompressionLevel";
inline constexpr unsigned int Value_CompressionLevel_Min = 0;
inline constexpr unsigned int Value_CompressionLevel_Max = 100;
inline constexpr unsigned int Value_CompressionLevel_Default = 100;
/// @}

/// @name unsigned int: quality of lossy compression
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

/// @name bool: true when the first row in memory is the bottom one
/// @{
inline constexpr char Param_OriginBottom[] = "OriginBottom";
inline constexpr bool Value_OriginBottom_Default = false;
/// @}

/// @name bool: true when the first layer in memory is the one at the back
/// @{
inline constexpr char Param_OriginBack[] = "OriginBack";
inline constexpr bool Value_OriginBack_Default = false;
/// @}

/// @name unsigned int: page of a file with several pictures, counted from 0
/// @{
inline constexpr char Param_Page[] = "Page";
inline constexpr unsigned int Value_Page_Default = 0;
/// @}

/// @name bool: true when a picture is turned and mirrored as its file asks for it
/// @{
inline constexpr char Param_ObeyOrientation[] = "ObeyOrientation";
inline constexpr bool Value_ObeyOrientation_Default = false;
/// @}

/// @name bool: true when a picture with more than eight bits for a component gives FP32NormL, if its codec can do that
/// @{
inline constexpr char Param_DeepLuminance[] = "DeepLuminance";
inline constexpr bool Value_DeepLuminance_Default = false;
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

/// Adds parameters to the defaults of a category of data. The manager borrows it for one call, and never deletes it.
class QUILLMARSH_API CodecParameterFactory
{
public:
    /// Adds parameters to `list`, which already has the initial parameters of encoders or decoders.
    virtual void FillParameterList(unsigned int dataCategory, bool forEncoder, NamedParameterList &list) const = 0;

protected:
    CodecParameterFactory() = default;
    CodecParameterFactory(CodecParameterFactory const &) = default;
    CodecParameterFactory &operator=(CodecParameterFactory const &) = default;
    ~CodecParameterFactory() = default;
};

/// Sets "OriginBottom" and "OriginBack" for every category, for encoders and decoders.
class QUILLMARSH_API SignalCodecParamFactory final : public CodecParameterFactory
{
public:
    /// Stores the values to set.
    SignalCodecParamFactory(bool originBottom, bool originBack);

    /// Replaces earlier values.
    void FillParameterList(unsigned int dataCategory, bool forEncoder, NamedParameterList &list) const override;

private:
    bool originBottom_;
    bool originBack_;
};

} // namespace quillmarsh

#endif
