// Files of signals, images and volumes: their types by name, loading, saving.
#ifndef QUILLMARSH_DATAOBJECTS_DATAFILES_H
#define QUILLMARSH_DATAOBJECTS_DATAFILES_H

#include <quillmarsh/dataobjects/packageinspection.h>

#include <quillmarsh/basetools/namedparameter.h>
#include <quillmarsh/dataobjects/datacodecparameters.h>

#include <filesystem>
#include <fstream>

namespace quillmarsh::sampled_data
{

/// Type of a file, which its name tells.
struct FileType
{
    /// End of the name, dot and all.
    char const *extension;
    /// "QMDP", "TIFF", "JPEG", "PNG" or "BMP".
    char const *container;
    /// Of what it holds; 0 when that may be anything.
    std::size_t numDimensions;
};

inline constexpr char s_szPackageContainer[] = "QMDP";

/// Whether files of the type are packages.
QUILLMARSH_API bool IsPackage(FileType const &type);
/// Type of a file by its name; letters of either case count as equal. Null for any other name.
QUILLMARSH_API FileType const *FindFileType(string const &fileName);
/// All extensions, separated by blanks.
QUILLMARSH_API string GetExtensions();

/// Name of the container that the file's first bytes tell; null when they tell none.
QUILLMARSH_API char const *RecogniseContainer(istream &in);

/// A plain file, opened for reading. Throws a DataException that names the file and the cause.
class QUILLMARSH_API InputFile : NoCopy
{
public:
    explicit InputFile(string const &fileName);

    istream &GetStream() { return stream_; }
    std::uint64_t GetByteSize() const { return byteSize_; }

private:
    std::ifstream stream_;
    std::uint64_t byteSize_ = 0;
};

/// How files are saved.
struct SaveSettings
{
    bool bigEndian = data_codec_parameters::Value_ByteOrderBigEndian_Default;
    unsigned int id = 0;
    bool originBottom = signal_codec_parameters::Value_OriginBottom_Default;
    bool originBack = signal_codec_parameters::Value_OriginBack_Default;
    bool useCompression = data_codec_parameters::Value_UseCompression_Default;
    unsigned int compressionLevel = data_codec_parameters::Value_CompressionLevel_Default;
    unsigned int quality = data_codec_parameters::Value_Quality_Default;
    bool overwrite = data_codec_parameters::Value_FileOverwrite_Default;
};

/// Loads a file of a type. Throws a DataException that names the file, and in a package the field.
QUILLMARSH_API SampledData LoadFile(string const &fileName, FileType const &type);
/// Loads a picture, whatever its name.
QUILLMARSH_API AutoPtr<ImageBase> LoadPicture(string const &fileName);
/// What LoadPicture gives, as far as the header tells.
QUILLMARSH_API void QueryPicture(string const &fileName, eSampleFormat &format, Dimensions &dimensions);

/// Throws a DataException, which names the file, when `data` cannot be saved there, without touching anything.
QUILLMARSH_API void RequireSaveable(SampledData const &data, string const &fileName, FileType const &type,
                                    SaveSettings const &settings);
/// Saves a file, which appears whole or not at all, and takes the place of another only if that is asked for. Throws a
/// DataException that names the file.
QUILLMARSH_API void SaveFile(SampledData const &data, string const &fileName, FileType const &type,
                             SaveSettings const &settings);
/// Saves the levels of a chain as packages, "PREFIX.0.qmdp.image" and so on. Nothing is saved when one of the names is
/// in the way.
QUILLMARSH_API void SaveLevels(std::vector<SampledData> const &levels, string const &prefix,
                               SaveSettings const &settings);

} // namespace quillmarsh::sampled_data

#endif
