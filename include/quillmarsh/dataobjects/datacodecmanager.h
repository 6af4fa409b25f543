// Registry of codecs, through which a program saves and loads data without knowing file formats.
#ifndef QUILLMARSH_DATAOBJECTS_DATACODECMANAGER_H
#define QUILLMARSH_DATAOBJECTS_DATACODECMANAGER_H

#include <quillmarsh/dataobjects/datacodecparameters.h>
#include <quillmarsh/dataobjects/datacodecs.h>

#include <map>
#include <vector>

namespace quillmarsh
{

/// Passes each request to the codecs of a category, one after the other in the order of their registration, until one
/// accepts it.
///
/// A singleton: the host creates it, registers categories and codecs, and destroys it. Nothing is registered
/// automatically. Register at start-up; afterwards any thread may save and load.
class QUILLMARSH_API DataCodecManager : NoCopy
{
public:
    /// Becomes the singleton. Asserts "DataCodecManager singleton already created.".
    DataCodecManager();
    /// Deletes all codecs. Asserts "Destructing non-existent DataCodecManager singleton.".
    ~DataCodecManager();

    /// @name The singleton
    /// Both assert "DataCodecManager singleton is not created.".
    /// @{
    static DataCodecManager &Instance();
    static DataCodecManager *InstancePtr();
    /// @}

    /// @name Categories
    /// A new category starts with copies of the initial parameter lists; registering it again does nothing.
    /// @{
    void RegisterDataCategory(unsigned int category);
    bool IsDataCategoryRegistered(unsigned int category) const;
    /// @}

    /// @name Registration
    /// The manager then owns the codec. Throws InvalidUsageException, and leaves the codec to the caller, if it was not
    /// created with `new`, if its category is not registered, or if the category has a codec with this name. Asserts
    /// "Invalid argument." for null.
    /// @{
    void RegisterEncoder(DataEncoder *encoder);
    void RegisterDecoder(DataDecoder *decoder);
    bool IsEncoderRegistered(unsigned int category, string const &codecName) const;
    bool IsDecoderRegistered(unsigned int category, string const &codecName) const;
    /// @}

    /// @name Removal, which deletes the codec
    /// These do nothing for an unknown name or category. Categories stay registered.
    /// @{
    void UnregisterEncoder(unsigned int category, string const &codecName);
    void UnregisterDecoder(unsigned int category, string const &codecName);
    void UnregisterAllEncoders(unsigned int category);
    void UnregisterAllDecoders(unsigned int category);
    void UnregisterAllEncoders();
    void UnregisterAllDecoders();
    /// @}

    /// @name Order
    /// Exchange two codecs if both are registered and `other` comes before `preferred`.
    /// @{
    void PrioritizeEncoders(unsigned int category, string const &preferred, string const &other);
    void PrioritizeDecoders(unsigned int category, string const &preferred, string const &other);
    /// @}

    /// @name Codecs of a category, in their order
    /// Access by index asserts "Unregistered data-category." and "Index out of range.", and then returns null. Access
    /// by name returns null when no codec has the name. The list of a category is null when the category is not
    /// registered. Pointers are valid until the codec or the manager is deleted.
    /// @{
    unsigned int GetNumEncoders(unsigned int category) const;
    DataEncoder *GetEncoder(unsigned int category, unsigned int index) const;
    unsigned int GetNumDecoders(unsigned int category) const;
    DataDecoder *GetDecoder(unsigned int category, unsigned int index) const;
    DataEncoder *FindEncoder(unsigned int category, string const &codecName) const;
    DataDecoder *FindDecoder(unsigned int category, string const &codecName) const;
    std::vector<DataEncoder *> const *FindEncoders(unsigned int category) const;
    std::vector<DataDecoder *> const *FindDecoders(unsigned int category) const;
    /// @}

    /// @name Dumps
    /// Print one line for each codec: its name, and its list of formats.
    /// @{
    void DumpRegisteredEncoders(unsigned int category, ostream &out, unsigned int indent) const;
    void DumpRegisteredDecoders(unsigned int category, ostream &out, unsigned int indent) const;
    /// @}

    /// @name File-name extensions of formats
    /// For callers that build file names. The choice of a codec does not depend on them.
    /// @{

    /// Sets the extension of a format; an empty one removes it.
    void SetDefaultFileFormatExtension(unsigned int category, string const &format, string const &extension);
    /// Gets the extension of a format. If it has none, returns false and sets `extension` to the fallback.
    bool GetDefaultFileFormatExtension(unsigned int category, string const &format, string &extension,
                                       string const &fallback) const;
    /// Returns the formats of the category with their extensions; empty when there are none.
    std::map<string, string> GetDefaultFileFormatExtensions(unsigned int category) const;
    void ClearDefaultFileFormatExtensions(unsigned int category);
    void ClearDefaultFileFormatExtensions();
    /// @}

    /// @name Default parameters of a category
    /// A request without parameters uses them. A category that is not registered has the initial list, and ignores
    /// changes. A factory adds to the initial list.
    /// @{
    void SetEncoderDefaultParamList(unsigned int category, NamedParameterList const &list);
    void SetDecoderDefaultParamList(unsigned int category, NamedParameterList const &list);
    void SetEncoderDefaultParamList(unsigned int category, CodecParameterFactory const &factory);
    void SetDecoderDefaultParamList(unsigned int category, CodecParameterFactory const &factory);
    NamedParameterList const &GetEncoderDefaultParamList(unsigned int category) const;
    NamedParameterList const &GetDecoderDefaultParamList(unsigned int category) const;
    /// @}

    /// @name Initial parameters of new categories
    /// A change has no effect on categories that are already registered. A reset gives encoders "FileOverwrite",
    /// "ByteOrderBigEndian", "UseCompression", "CompressionLevel" and "Quality" with their defaults, and decoders an
    /// empty list.
    /// @{
    void ResetEncoderInitialParamList();
    void ResetDecoderInitialParamList();
    void SetEncoderInitialParamList(NamedParameterList const &list);
    void SetDecoderInitialParamList(NamedParameterList const &list);
    NamedParameterList const &GetEncoderInitialParamList() const { return encoderInitialParams_; }
    NamedParameterList const &GetDecoderInitialParamList() const { return decoderInitialParams_; }
    /// @}

    /// @name Saving and loading
    /// A call that returns false or null tells the reason (see CodecFailureSentry). Of the codecs' reasons, it is the
    /// first one other than eCodecFailure::e_otherFormat.
    /// @{

    /// Saves an object of the category (see DataEncoder::SaveData). Null `params` stand for the category's defaults.
    /// False when no encoder saves it. Throws InvalidUsageException for a category that is not registered, and the
    /// exceptions of the codecs.
    bool SaveData(unsigned int category, void const *data, string const &fileName, string const &format,
                  NamedParameterList const *params);
    /// Loads an object of the category (see DataDecoder::LoadData), which the caller owns. Null when the file does not
    /// exist or no decoder loads it. If the file exists, throws as SaveData does.
    void *LoadData(unsigned int category, string const &fileName, NamedParameterList const *params);
    /// Loads an object from an open file. Decoders that are not an OpenFileDecoder get the file's name.
    void *LoadData(unsigned int category, sampled_data::InputFile &file, NamedParameterList const *params);
    /// Asks the decoders of the category, in their order, for a description of the file. Skips decoders that are not an
    /// OpenFileDecoder. False when none knows the file.
    bool QueryData(unsigned int category, sampled_data::InputFile &file, DataFileHead &head,
                   NamedParameterList const *params = nullptr) const;
    /// @}

private:
    std::map<unsigned int, std::vector<DataEncoder *>> encoders_;
    std::map<unsigned int, std::vector<DataDecoder *>> decoders_;
    std::map<unsigned int, NamedParameterList> encoderDefaultParams_;
    std::map<unsigned int, NamedParameterList> decoderDefaultParams_;
    std::map<unsigned int, std::map<string, string>> fileFormatExtensions_;
    NamedParameterList encoderInitialParams_;
    NamedParameterList decoderInitialParams_;

    static DataCodecManager *s_pInstance;
};

/// @name Saving and loading through the manager
/// Null `params` stand for the defaults of the category. The caller owns the loaded object, which is null when no
/// decoder loads the file. The functions ending in "As" keep the format of `dst` and give it the size in the file. They
/// also return false when the samples cannot be transferred into that format.
/// @{
QUILLMARSH_API bool SaveSignal(SignalBase const &signal, string const &fileName, string const &format,
                               NamedParameterList const *params = nullptr);
QUILLMARSH_API SignalBase *LoadSignal(string const &fileName, NamedParameterList const *params = nullptr);
QUILLMARSH_API bool LoadSignalAs(SignalBase &dst, string const &fileName, NamedParameterList const *params = nullptr);
QUILLMARSH_API bool SaveImage(ImageBase const &image, string const &fileName, string const &format,
                              NamedParameterList const *params = nullptr);
QUILLMARSH_API ImageBase *LoadImageA(string const &fileName, NamedParameterList const *params = nullptr);
QUILLMARSH_API bool LoadImageAs(ImageBase &dst, string const &fileName, NamedParameterList const *params = nullptr);
QUILLMARSH_API bool SaveVolume(VolumeBase const &volume, string const &fileName, string const &format,
                               NamedParameterList const *params = nullptr);
QUILLMARSH_API VolumeBase *LoadVolume(string const &fileName, NamedParameterList const *params = nullptr);
QUILLMARSH_API bool LoadVolumeAs(VolumeBase &dst, string const &fileName, NamedParameterList const *params = nullptr);
/// @}

/// @name File-name extensions of the library's formats
/// Set the extensions in the DataCodecManager, which must exist.
/// @{
QUILLMARSH_API void RegisterDefaultSignalFileExtensions();
QUILLMARSH_API void RegisterDefaultImageFileExtensions();
QUILLMARSH_API void RegisterDefaultVolumeFileExtensions();
/// @}

/// Registers the categories of signals, images and volumes in the DataCodecManager, and all the library's codecs for
/// them, beginning with those of packages.
QUILLMARSH_API void RegisterDefaultDataCodecs();

} // namespace quillmarsh

#endif
