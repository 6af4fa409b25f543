// Encoders and decoders of data files, by the category of data that they work on.
#ifndef QUILLMARSH_DATAOBJECTS_DATACODECS_H
#define QUILLMARSH_DATAOBJECTS_DATACODECS_H

#include <quillmarsh/basetools/heaptracked.h>
#include <quillmarsh/basetools/namedparameter.h>
#include <quillmarsh/dataobjects/codecfailure.h>
#include <quillmarsh/dataobjects/imagebase.h>
#include <quillmarsh/dataobjects/signalbase.h>
#include <quillmarsh/dataobjects/volumebase.h>

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

/// What encoders and decoders have in common: category, name, and the formats that they know.
///
/// Codecs are made with `new` and belong to the DataCodecManager once they are registered. Any number of threads may
/// call a codec at a time. A codec that fails tells why (see TellCodecFailure) before it returns.
class QUILLMARSH_API DataCodecBase : public HeapTracked, NoCopy
{
public:
    ~DataCodecBase() override;

    unsigned int GetDataCategory() const { return dataCategory_; }
    /// Name by which the codec is registered in its category, such as "ImageEncoder/QMDP".
    string const &GetCodecName() const { return codecName_; }
    /// Formats of the codec, for people to read. It takes no part in choosing a codec.
    string const &GetFormatList() const { return formatList_; }

protected:
    /// `codecName` is the full name by which the codec is registered.
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

    /// Saves the object that `data` points to: exactly the type that the category stands for, a `SignalBase`, an
    /// `ImageBase` or a `VolumeBase`. False if the format is none of this codec's, or if saving failed: the next codec
    /// gets its try.
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

    /// A new object of exactly the type that the category stands for, which the caller owns; null if the file is none
    /// of this codec's, or if loading failed: the next codec gets its try.
    virtual void *LoadData(string const &fileName, NamedParameterList const &params) = 0;

protected:
    /// As DataCodecBase.
    DataDecoder(unsigned int dataCategory, string const &codecName, string const &formatList);
};

/// What a decoder tells of a file that it has not loaded.
struct DataFileHead
{
    /// Format of the file, such as "TIFF".
    string container;
    eSampleFormat format = e_format_none;
    /// Number of samples; of rows and columns; or of layers, rows and columns.
    std::vector<unsigned int> dimensions;
};

/// Further base of a decoder that can read a file which is open already, so that the file that was inspected is the one
/// that is loaded. A decoder without this base gets the name of the file.
///
/// Both operations start reading at the beginning of the file, and tell why they fail (see TellCodecFailure).
class QUILLMARSH_API OpenFileDecoder
{
public:
    virtual ~OpenFileDecoder();

    /// Tells what LoadOpened gives, as far as that is known without loading. False if the file is none of this codec's,
    /// or one that it cannot load.
    virtual bool QueryOpened(sampled_data::InputFile &file, DataFileHead &head) = 0;
    /// As DataDecoder::LoadData.
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
