// Files of signals, images and volumes: their types, inspection, loading, saving.
#ifndef QUILLMARSH_DATAOBJECTS_DATAFILES_H
#define QUILLMARSH_DATAOBJECTS_DATAFILES_H

#include <quillmarsh/basetools/namedparameter.h>
#include <quillmarsh/dataobjects/datacodecparameters.h>
#include <quillmarsh/dataobjects/inputfile.h>
#include <quillmarsh/dataobjects/packageinspection.h>
#include <quillmarsh/dataobjects/picturedesc.h>

#include <functional>
#include <optional>

/// Functions for files of sampled data. They use the codecs of the DataCodecManager, which the program has created and
/// filled; codecs of plug-ins are used like the library's own. A failure throws a DataException that names the file and
/// the reason. Any thread may call them, as far as the codecs allow it.
namespace quillmarsh::sampled_data
{

/// @name Types of files, by name or by content
/// @{

inline constexpr char s_szPackageContainer[] = "QMDP";

/// Type of a file.
struct FileType
{
    /// End of the file's name, with the dot.
    string extension;
    /// Name of the format in the codecs: "QMDP", "TIFF", "JPEG", "PNG", "BMP", or the format of a plug-in's codec.
    string container;
    /// Number of dimensions of the data; 0 when a file of this type may have any.
    std::size_t numDimensions;
};

/// True for packages.
QUILLMARSH_API bool IsPackage(FileType const &type);
/// Returns the type of a file by the extension of its name, in upper or lower case; nothing when no type has this
/// extension. Searches the types of the library, then those with an extension in the DataCodecManager.
QUILLMARSH_API std::optional<FileType> FindFileType(string const &fileName);
/// Returns the type with a name, which is its extension without the dot, in upper or lower case: "png", "qmdp.image".
QUILLMARSH_API std::optional<FileType> FindFileTypeByName(string const &name);
/// Returns the names of all types.
QUILLMARSH_API std::vector<string> GetFileTypeNames();
/// Returns the extensions of all types, separated by spaces.
QUILLMARSH_API string GetExtensions();
/// Recognises a format of the library's own codecs by the first bytes of a stream; null for any other stream. The
/// stream must be at its beginning, and is there again afterwards.
QUILLMARSH_API char const *RecogniseContainer(istream &in);

/// @}

/// Description of a file's contents.
struct DataFileDesc
{
    /// Format of the file, as in FileType.
    string container;
    Dimensions dimensions;
    eSampleFormat format = e_format_none;
    /// The fields of a package.
    std::optional<PackageDesc> package;
    /// What the file of a picture holds.
    std::optional<PictureDesc> picture;
};

/// Settings for loading files. Codecs ignore what their format does not have.
struct LoadSettings
{
    /// Page of a file with several pictures, counted from 0.
    unsigned int page = 0;
    /// True to turn and mirror pictures as their files ask for it.
    bool obeyOrientation = true;
    /// True to get pictures with more than eight bits for a component as FP32NormL, at full precision.
    bool deepLuminance = false;
};

/// Returns what loading a file leaves out, in words such as "16 bits become 8"; nothing when all of it is loaded.
QUILLMARSH_API std::vector<string> ListLoadingLosses(DataFileDesc const &desc);

/// A file that is opened only once, so that the inspected data are the loaded data. One thread at a time.
class QUILLMARSH_API DataFile : NoCopy
{
public:
    /// Opens the file and inspects its contents, whatever its name. Reads the samples only if the codec that knows the
    /// file cannot describe it otherwise.
    explicit DataFile(string const &fileName, LoadSettings const &settings = {});
    /// Opens a file that must be of a type: a package type requires a package with as many dimensions as the type has.
    DataFile(string const &fileName, FileType const &type, LoadSettings const &settings = {});
    /// Does the same with a copy of the rest of a stream; `name` stands for it in messages. A `type` of null allows any
    /// type. Decoders that need the name of a file are not asked.
    DataFile(istream &in, string const &name, FileType const *type, LoadSettings const &settings = {});
    ~DataFile();

    /// Returns the name of the file, as it was passed.
    string const &GetName() const { return file_.GetName(); }
    /// Returns the description of the file's contents.
    DataFileDesc const &GetDesc() const { return desc_; }

    /// Loads the data. Throws a DataException when the file is damaged.
    SampledData Load();
    /// Reads the whole file without keeping the data. Throws a DataException for any fault in it; in a package, bytes
    /// after the trailer are a fault, too. Calls `onRead` with the number of bytes of a package that have been read.
    void Verify(std::function<void(std::uint64_t)> const &onRead);

private:
    void Inspect(FileType const *type);
    void InspectPackageFile(std::size_t wantedDimensions);
    bool QueryCodecs(CodecFailure &failure);
    bool TryCodecsWithNames(CodecFailure &failure);

    /// Returns the parameters for decoders of a category.
    NamedParameterList MakeParameters(unsigned int category) const;

    InputFile file_;
    LoadSettings settings_;
    DataFileDesc desc_;
    /// The data, if the inspection had to load them.
    std::optional<SampledData> loaded_;
};

/// Loads a file of a type. Throws a DataException when that fails.
QUILLMARSH_API SampledData LoadFile(string const &fileName, FileType const &type, LoadSettings const &settings = {});

/// Settings for saving files.
struct SaveSettings
{
    bool bigEndian = data_codec_parameters::Value_ByteOrderBigEndian_Default;
    unsigned int id = data_codec_parameters::Value_PackageID_Default;
    bool originBottom = signal_codec_parameters::Value_OriginBottom_Default;
    bool originBack = signal_codec_parameters::Value_OriginBack_Default;
    bool useCompression = data_codec_parameters::Value_UseCompression_Default;
    unsigned int compressionLevel = data_codec_parameters::Value_CompressionLevel_Default;
    unsigned int quality = data_codec_parameters::Value_Quality_Default;
    bool overwrite = data_codec_parameters::Value_FileOverwrite_Default;
};

/// Throws a DataException when `data` cannot be saved under this name. Changes nothing.
QUILLMARSH_API void RequireSaveable(SampledData const &data, string const &fileName, FileType const &type,
                                    SaveSettings const &settings);
/// Returns what saving as a type leaves out, such as "alpha"; nothing when all of it is saved.
QUILLMARSH_API std::vector<string> ListSavingLosses(SampledData const &data, FileType const &type);
/// Saves a file completely or not at all. Replaces an existing file only if the settings allow it; otherwise the
/// failure of the exception is eCodecFailure::e_exists.
QUILLMARSH_API void SaveFile(SampledData const &data, string const &fileName, FileType const &type,
                             SaveSettings const &settings);
/// Writes to a stream what SaveFile() would write to a file. `name` stands for the stream in messages. Throws a
/// DataException when the data cannot be saved as this type, and when the stream fails.
QUILLMARSH_API void SaveToStream(SampledData const &data, ostream &out, string const &name, FileType const &type,
                                 SaveSettings const &settings);
/// Saves the levels of a chain as packages, "PREFIX.0.qmdp.image" and so on. Saves none when one of these files exists
/// and must not be replaced.
QUILLMARSH_API void SaveLevels(std::vector<SampledData> const &levels, string const &prefix,
                               SaveSettings const &settings);

/// Removes the temporary files of all saves that are in progress, for a program that is about to end. Any thread, but
/// not in a signal handler.
QUILLMARSH_API void RemoveUnfinishedFiles();

} // namespace quillmarsh::sampled_data

#endif
