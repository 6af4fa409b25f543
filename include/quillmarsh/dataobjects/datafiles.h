// Files of signals, images and volumes: their types, inspection, loading, saving.
#ifndef QUILLMARSH_DATAOBJECTS_DATAFILES_H
#define QUILLMARSH_DATAOBJECTS_DATAFILES_H

#include <quillmarsh/basetools/namedparameter.h>
#include <quillmarsh/dataobjects/datacodecparameters.h>
#include <quillmarsh/dataobjects/inputfile.h>
#include <quillmarsh/dataobjects/packageinspection.h>

#include <functional>
#include <optional>

/// Everything here works through the codecs of the DataCodecManager, which the program has created and filled: a codec
/// that a plug-in registers is used as the library's own. Failures are DataExceptions that name the file and the cause.
/// Any thread may call, as far as the codecs allow it.
namespace quillmarsh::sampled_data
{

/// @name Types of files, by name or by content
/// @{

inline constexpr char s_szPackageContainer[] = "QMDP";

/// Type of a file.
struct FileType
{
    /// End of the name, dot and all.
    string extension;
    /// Format by which the codecs know it: "QMDP", "TIFF", "JPEG", "PNG", "BMP", or one that a plug-in has registered.
    string container;
    /// Number of dimensions of what it holds; 0 when that may be anything.
    std::size_t numDimensions;
};

/// True for packages.
QUILLMARSH_API bool IsPackage(FileType const &type);
/// Type of a file by the end of its name, in letters of either case; none when no type has that ending. The types are
/// those of the library, and then those whose extensions are entered into the DataCodecManager.
QUILLMARSH_API std::optional<FileType> FindFileType(string const &fileName);
/// The extensions of all types, separated by blanks.
QUILLMARSH_API string GetExtensions();
/// Format of a package or picture of the library's own codecs, which the first bytes of a stream tell; null when they
/// tell none. The stream is at its beginning before and after.
QUILLMARSH_API char const *RecogniseContainer(istream &in);

/// @}

/// What a file holds.
struct DataFileDesc
{
    /// Format of the file, as in FileType.
    string container;
    Dimensions dimensions;
    eSampleFormat format = e_format_none;
    /// The fields of a package.
    std::optional<PackageDesc> package;
};

/// A file that is opened once: what was inspected is what is loaded. One thread at a time.
class QUILLMARSH_API DataFile : NoCopy
{
public:
    /// Opens the file, and finds out by its contents, whatever its name, what it holds. The samples are not read, unless
    /// the only codec that knows the file cannot tell without them.
    explicit DataFile(string const &fileName);
    /// The same for a file that has to be of a type: a package type expects a package, with as many dimensions as the
    /// type has.
    DataFile(string const &fileName, FileType const &type);
    ~DataFile();

    string const &GetName() const { return file_.GetName(); }
    DataFileDesc const &GetDesc() const { return desc_; }

    /// Loads the data.
    SampledData Load();
    /// Reads the whole file, and keeps nothing. Throws when anything is wrong in it; of a package also when bytes follow
    /// its trailer. `onRead` is told how many bytes of a package are read.
    void Verify(std::function<void(std::uint64_t)> const &onRead);

private:
    void Inspect(FileType const *type);
    void InspectPackageFile(std::size_t wantedDimensions);
    bool QueryCodecs(CodecFailure &failure);
    bool TryCodecsWithNames(CodecFailure &failure);

    InputFile file_;
    DataFileDesc desc_;
    /// The data, when inspection had to load them.
    std::optional<SampledData> loaded_;
};

/// Loads a file of a type.
QUILLMARSH_API SampledData LoadFile(string const &fileName, FileType const &type);

/// How files are saved.
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

/// Throws when `data` cannot be saved there, without touching anything.
QUILLMARSH_API void RequireSaveable(SampledData const &data, string const &fileName, FileType const &type,
                                    SaveSettings const &settings);
/// Saves a file, which appears whole or not at all, and takes the place of another only if the settings say so. The
/// failure of the exception is eCodecFailure::e_exists where they do not.
QUILLMARSH_API void SaveFile(SampledData const &data, string const &fileName, FileType const &type,
                             SaveSettings const &settings);
/// Saves the levels of a chain as packages, "PREFIX.0.qmdp.image" and so on. Nothing is saved when one of the names is
/// in the way.
QUILLMARSH_API void SaveLevels(std::vector<SampledData> const &levels, string const &prefix,
                               SaveSettings const &settings);

/// Removes the temporary files of all saving that is going on in the process; for a program that is about to end
/// meanwhile. Any thread, but no signal handler.
QUILLMARSH_API void RemoveUnfinishedFiles();

} // namespace quillmarsh::sampled_data

#endif
