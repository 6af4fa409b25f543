// Registry of codecs, through which a program saves and loads data without knowing file formats.
#ifndef QUILLMARSH_DATAOBJECTS_DATACODECMANAGER_H
#define QUILLMARSH_DATAOBJECTS_DATACODECMANAGER_H

#include <quillmarsh/dataobjects/datacodecparameters.h>
#include <quillmarsh/dataobjects/datacodecs.h>

#include <map>
#include <vector>

namespace quillmarsh
{

/// Offers each request to the codecs of a category, one after the other in the order of their registration; the first
/// that accepts it wins.
///
/// A singleton: the host makes it, registers the categories and the codecs that it wants, and destroys it with them.
/// Nothing is registered by itself. Registration belongs to start-up; afterwards any thread may save and load.
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
    /// The manager owns the codec from then on. Throws InvalidUsageException, and leaves it with the caller, if it was
    /// not made with `new`, if its category is not registered, or if the category has a codec of that name. Asserts
    /// "Invalid argument." for null.
    /// @{
    void RegisterEncoder(DataEncoder *encoder);
    void RegisterDecoder(DataDecoder *decoder);
    bool IsEncoderRegistered(unsigned int category, string const &codecName) const;
    bool IsDecoderRegistered(unsigned int category, string const &codecName) const;
    /// @}

    /// @name Removal, which deletes the codec
    /// A name or category that is not there is nothing to remove. Categories stay registered.
    /// @{
    void UnregisterEncoder(unsigned int category, string const &codecName);
    void UnregisterDecoder(unsigned int category, string const &codecName);
    void UnregisterAllEncoders(unsigned int category);
    void UnregisterAllDecoders(unsigned int category);
    void UnregisterAllEncoders();
    void UnregisterAllDecoders();
    /// @}

    /// @name Order
    /// Exchanges two codecs when both are there and `other` stands before `preferred`.
    /// @{
    void PrioritizeEncoders(unsigned int category, string const &preferred, string const &other);
    void PrioritizeDecoders(unsigned int category, string const &preferred, string const &other);
    /// @}

    /// @name Codecs of a category, in their order
    /// By index they assert "Unregistered data-category." and "Index out of range.", and are null then. By name they
    /// are null when there is no such codec, and all of a category is null when it is not registered. Pointers hold
    /// until the codec, or the manager, goes.
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
    /// One line for each codec: its name, and the formats that it knows.
    /// @{
    void DumpRegisteredEncoders(unsigned int category, ostream &out, unsigned int indent) const;
    void DumpRegisteredDecoders(unsigned int category, ostream &out, unsigned int indent) const;
    /// @}

    /// @name File-name extensions of formats
    /// For callers that build file names; they take no part in choosing a codec.
    /// @{

    /// An empty extension removes that of the format.
    void SetDefaultFileFormatExtension(unsigned int category, string const &format, string const &extension);
    /// False, with the fallback as the extension, when none is known for the format.
    bool GetDefaultFileFormatExtension(unsigned int category, string const &format, string &extension,
                                       string const &fallback) const;
    /// Formats of the category with their extensions; empty when there are none.
    std::map<string, string> GetDefaultFileFormatExtensions(unsigned int category) const;
    void ClearDefaultFileFormatExtensions(unsigned int category);
    void ClearDefaultFileFormatExtensions();
    /// @}

    /// @name Default parameters of a category
    /// They count when a request brings none. A category that is not registered has the initial list, and takes none.
    /// A factory adds to the initial list.
    /// @{
    void SetEncoderDefaultParamList(unsigned int category, NamedParameterList const &list);
    void SetDecoderDefaultParamList(unsigned int category, NamedParameterList const &list);
    void SetEncoderDefaultParamList(unsigned int category, CodecParameterFactory const &factory);
    void SetDecoderDefaultParamList(unsigned int category, CodecParameterFactory const &factory);
    NamedParameterList const &GetEncoderDefaultParamList(unsigned int category) const;
    NamedParameterList const &GetDecoderDefaultParamList(unsigned int category) const;
    /// @}

    /// @name Initial parameters, which a category starts with
    /// A change has no effect on categories that are registered already. Reset, that of encoders holds
    /// "FileOverwrite", "ByteOrderBigEndian", "UseCompression", "CompressionLevel" and "Quality" with their defaults,
    /// and that of decoders is empty.
    /// @{
    void ResetEncoderInitialParamList();
    void ResetDecoderInitialParamList();
    void SetEncoderInitialParamList(NamedParameterList const &list);
    void SetDecoderInitialParamList(NamedParameterList const &list);
    NamedParameterList const &GetEncoderInitialParamList() const { return encoderInitialParams_; }
    NamedParameterList const &GetDecoderInitialParamList() const { return decoderInitialParams_; }
    /// @}

    /// @name Saving and loading
    /// A call that returns false or null tells why (see CodecFailureSentry): of what the codecs have told, the first that
    /// is more than eCodecFailure::e_otherFormat.
    /// @{

    /// Saves an object of the category (see DataEncoder::SaveData). Null parameters stand for the category's default.
    /// False when no encoder takes it. Throws InvalidUsageException for a category that is not registered, and whatever
    /// a codec throws.
    bool SaveData(unsigned int category, void const *data, string const &fileName, string const &format,
                  NamedParameterList const *params);
    /// Loads an object of the category (see DataDecoder::LoadData), which the caller owns; null when there is no file
    /// or no decoder takes it. Throws as SaveData does, if there is a file.
    void *LoadData(unsigned int category, string const &fileName, NamedParameterList const *params);
    /// The same from a file that is open. Codecs that are no OpenFileDecoder get its name.
    void *LoadData(unsigned int category, sampled_data::InputFile &file, NamedParameterList const *params);
    /// Asks the decoders of the category, in their order, what they would load. Those that are no OpenFileDecoder are
    /// passed over. False when none knows the file.
    bool QueryData(unsigned int category, sampled_data::InputFile &file, DataFileHead &head) const;
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
/// Null parameters stand for the default ones of the category. The caller owns what is loaded, null when no decoder
/// takes the file. Loading "as" keeps the format of the destination and takes the size of the file; it is false as well
/// when the samples cannot be transferred into that format.
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

/// @name File-name extensions of the library's formats, entered into the manager
/// @{
QUILLMARSH_API void RegisterDefaultSignalFileExtensions();
QUILLMARSH_API void RegisterDefaultImageFileExtensions();
QUILLMARSH_API void RegisterDefaultVolumeFileExtensions();
/// @}

/// Registers the categories of signals, images and volumes with the manager, and all codecs that the library has for
/// them, those of packages first.
QUILLMARSH_API void RegisterDefaultDataCodecs();

} // namespace quillmarsh

#endif
