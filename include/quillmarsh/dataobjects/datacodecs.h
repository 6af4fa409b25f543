// Encoders and decoders of data files, for each category of data.
#ifndef QUILLMARSH_DATAOBJECTS_DATACODECS_H
#define QUILLMARSH_DATAOBJECTS_DATACODECS_H

#include <quillmarsh/basetools/heaptracked.h>
#include <quillmarsh/basetools/namedparameter.h>
#include <quillmarsh/dataobjects/codecfailure.h>
#include <quillmarsh/dataobjects/imagebase.h>
#include <quillmarsh/dataobjects/picturedesc.h>
#include <quillmarsh/dataobjects/signalbase.h>
#include <quillmarsh/dataobjects/volumebase.h>

#include <optional>
#include <vector>

namespace quillmarsh
{

namespace sampled_data
{

class InputFile;

} // namespace sampled_data

/// @name Categories of data
/// A program numbers its own from DataCategory_UserDefined.
/// @{
inline constexpr unsigned int DataCategory_Signal = 1;
inline constexpr unsigned int DataCategory_Image = 2;
inline constexpr unsigned int DataCategory_Volume = 3;
inline constexpr unsigned int DataCategory_UserDefined = 0x10000000;
/// @}

/// Common base of encoders and decoders: category, name and formats.
///
/// Codecs are created with `new`, and the DataCodecManager owns them once they are registered. Several threads may call
/// a codec at the same time. A codec that fails tells the reason (see TellCodecFailure) before it returns.
class QUILLMARSH_API DataCodecBase : public HeapTracked, NoCopy
{
public:
    ~DataCodecBase() override;

    /// Returns the category of the codec's data.
    unsigned int GetDataCategory() const { return dataCategory_; }
    /// Returns the name of the codec in its category, such as "ImageEncoder/QMDP".
    string const &GetCodecName() const { return codecName_; }
    /// Returns the formats of the codec, for the reader of a dump. The choice of a codec does not depend on it.
    string const &GetFormatList() const { return formatList_; }

protected:
    /// `codecName` is the full name of the codec in its category.
    DataCodecBase(unsigned int dataCategory, string const &codecName, string const &formatList);

private:
    unsigned int dataCategory_;
    string codecName_;
    string formatList_;
};

/// Saves data of a category.
class QUILLMARSH_API DataEncoder : public DataCodecBase
{
public:
    ~DataEncoder() override;

    /// Saves the object that `data` points to. It has exactly the type of the category: `SignalBase`, `ImageBase` or
    /// `VolumeBase`. Returns false if the codec does not know the format, or if saving fails; the manager then tries
    /// the next codec.
    virtual bool SaveData(void const *data, string const &fileName, string const &format,
                          NamedParameterList const &params) = 0;

protected:
    /// As DataCodecBase.
    DataEncoder(unsigned int dataCategory, string const &codecName, string const &formatList);
};

/// Loads data of a category.
class QUILLMARSH_API DataDecoder : public DataCodecBase
{
public:
    ~DataDecoder() override;

    /// Loads a new object of exactly the type of the category; the caller owns it. Returns null if the codec does not
    /// know the file, or if loading fails; the manager then tries the next codec.
    virtual void *LoadData(string const &fileName, NamedParameterList const &params) = 0;

protected:
    /// As DataCodecBase.
    DataDecoder(unsigned int dataCategory, string const &codecName, string const &formatList);
};

/// A decoder's description of a file that it has not loaded.
struct DataFileHead
{
    /// Format of the file, such as "TIFF".
    string container;
    eSampleFormat format = e_format_none;
    /// Number of samples; of rows and columns; or of layers, rows and columns.
    std::vector<unsigned int> dimensions;
    /// What the file of a picture holds; nothing for other data.
    std::optional<PictureDesc> picture = {};
};

/// Second base class of a decoder that can read an open file, so that inspection and loading use the same file. A
/// decoder without this base gets the name of the file.
///
/// Both operations read from the beginning of the file, and tell the reason of a failure (see TellCodecFailure).
class QUILLMARSH_API OpenFileDecoder
{
public:
    virtual ~OpenFileDecoder();

    /// Describes the data that LoadOpened would load, as far as possible without loading. False if the codec does not
    /// know the file, or cannot load it.
    virtual bool QueryOpened(sampled_data::InputFile &file, DataFileHead &head) = 0;
    /// Describes the data that LoadOpened would load with these parameters. The base class ignores them and calls
    /// QueryOpened().
    virtual bool QueryOpenedWith(sampled_data::InputFile &file, NamedParameterList const &params, DataFileHead &head);
    /// Loads the file as DataDecoder::LoadData does.
    virtual void *LoadOpened(sampled_data::InputFile &file, NamedParameterList const &params) = 0;
};

/// Encoder of signals. Its codec name is "SignalEncoder/" and the given name.
class QUILLMARSH_API SignalEncoder : public DataEncoder
{
public:
    /// `formatList` is for people to read.
    SignalEncoder(string const &name, string const &formatList);
    ~SignalEncoder() override;

    bool SaveData(void const *data, string const &fileName, string const &format,
                  NamedParameterList const &params) override;
    /// False passes the request on to the next encoder.
    virtual bool SaveSignal(SignalBase const &signal, string const &fileName, string const &format,
                            NamedParameterList const &params) = 0;
};

/// Decoder of signals. Its codec name is "SignalDecoder/" and the given name.
class QUILLMARSH_API SignalDecoder : public DataDecoder
{
public:
    /// `formatList` is for people to read.
    SignalDecoder(string const &name, string const &formatList);
    ~SignalDecoder() override;

    void *LoadData(string const &fileName, NamedParameterList const &params) override;
    /// The caller owns the signal; null passes the request on to the next decoder.
    virtual SignalBase *LoadSignal(string const &fileName, NamedParameterList const &params) = 0;
};

/// Encoder of images. Its codec name is "ImageEncoder/" and the given name.
class QUILLMARSH_API ImageEncoder : public DataEncoder
{
public:
    /// `formatList` is for people to read.
    ImageEncoder(string const &name, string const &formatList);
    ~ImageEncoder() override;

    bool SaveData(void const *data, string const &fileName, string const &format,
                  NamedParameterList const &params) override;
    /// False passes the request on to the next encoder.
    virtual bool SaveImage(ImageBase const &image, string const &fileName, string const &format,
                           NamedParameterList const &params) = 0;
};

/// Decoder of images. Its codec name is "ImageDecoder/" and the given name.
class QUILLMARSH_API ImageDecoder : public DataDecoder
{
public:
    /// `formatList` is for people to read.
    ImageDecoder(string const &name, string const &formatList);
    ~ImageDecoder() override;

    void *LoadData(string const &fileName, NamedParameterList const &params) override;
    /// The caller owns the image; null passes the request on to the next decoder.
    virtual ImageBase *LoadImageA(string const &fileName, NamedParameterList const &params) = 0;
};

/// Encoder of volumes. Its codec name is "VolumeEncoder/" and the given name.
class QUILLMARSH_API VolumeEncoder : public DataEncoder
{
public:
    /// `formatList` is for people to read.
    VolumeEncoder(string const &name, string const &formatList);
    ~VolumeEncoder() override;

    bool SaveData(void const *data, string const &fileName, string const &format,
                  NamedParameterList const &params) override;
    /// False passes the request on to the next encoder.
    virtual bool SaveVolume(VolumeBase const &volume, string const &fileName, string const &format,
                            NamedParameterList const &params) = 0;
};

/// Decoder of volumes. Its codec name is "VolumeDecoder/" and the given name.
class QUILLMARSH_API VolumeDecoder : public DataDecoder
{
public:
    /// `formatList` is for people to read.
    VolumeDecoder(string const &name, string const &formatList);
    ~VolumeDecoder() override;

    void *LoadData(string const &fileName, NamedParameterList const &params) override;
    /// The caller owns the volume; null passes the request on to the next decoder.
    virtual VolumeBase *LoadVolume(string const &fileName, NamedParameterList const &params) = 0;
};

} // namespace quillmarsh

#endif
