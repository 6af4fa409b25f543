#include <quillmarsh/dataobjects/datafiles.h>

#include <quillmarsh/basetools/filesystem.h>
#include <quillmarsh/basetools/texttools.h>
#include <quillmarsh/dataobjects/datacodecmanager.h>

#include "source/dataobjects/codecs/codecregistry.h"
#include "source/dataobjects/codecs/filereplacement.h"
#include "source/dataobjects/codecs/openfailures.h"
#include "source/dataobjects/packages/packagefault.h"

#include <algorithm>
#include <cerrno>
#include <exception>
#include <fstream>
#include <iterator>
#include <new>
#include <string_view>
#include <utility>

namespace quillmarsh::sampled_data
{
namespace
{

struct KnownFileType
{
    char const *extension;
    char const *container;
    std::size_t numDimensions;
};

// The packages of single kinds come first, by the number of dimensions.
constexpr KnownFileType s_fileTypes[] = {
    {".qmdp.signal", s_szPackageContainer, 1},
    {".qmdp.image", s_szPackageContainer, 2},
    {".qmdp.volume", s_szPackageContainer, 3},
    {".qmdp", s_szPackageContainer, 0},
    {".tif", "TIFF", 2},
    {".tiff", "TIFF", 2},
    {".jpg", "JPEG", 2},
    {".jpeg", "JPEG", 2},
    {".png", "PNG", 2},
    {".bmp", "BMP", 2},
};

/// Categories of the codecs, indexed by the number of dimensions of their data minus one.
constexpr unsigned int s_categories[] = {DataCategory_Signal, DataCategory_Image, DataCategory_Volume};
/// Images come first, because a file of an unknown kind is most likely a picture.
constexpr std::size_t s_dimensionsTried[] = {2, 1, 3};

struct FirstBytes
{
    std::string_view bytes;
    char const *container;
};

constexpr FirstBytes s_firstBytes[] = {
    {"<QuillMarsh", s_szPackageContainer},  {std::string_view("II*\0", 4), "TIFF"},
    {std::string_view("MM\0*", 4), "TIFF"}, {std::string_view("II+\0", 4), "TIFF"},
    {std::string_view("MM\0+", 4), "TIFF"}, {"\xFF\xD8\xFF", "JPEG"},
    {"\x89PNG\r\n\x1A\n", "PNG"},           {"BM", "BMP"},
};

DataCodecManager &RequireManager()
{
    if (DataCodecManager *const manager = DataCodecManager::InstancePtr())
        return *manager;
    throw DataException("no codecs are registered");
}

bool HasExtension(FileType const &type, string const &extension)
{
    string known = type.extension;
    UpperCase(known);
    return known == extension;
}

/// Returns the types of the library, then those of other extensions in the manager.
std::vector<FileType> ListFileTypes()
{
    std::vector<FileType> types;
    for (KnownFileType const &known : s_fileTypes)
        types.push_back({known.extension, known.container, known.numDimensions});
    for (std::size_t i = 0; i < std::size(s_categories); ++i)
    {
        for (auto const &[format, extension] : RequireManager().GetDefaultFileFormatExtensions(s_categories[i]))
        {
            FileType type = {'.' + extension, format, i + 1};
            string upper = type.extension;
            UpperCase(upper);
            if (std::none_of(types.begin(), types.end(), [&](FileType const &t) { return HasExtension(t, upper); }))
                types.push_back(std::move(type));
        }
    }
    return types;
}

/// Runs work on a file. Failures get the file's name.
template<typename Work>
auto NameFile(string const &fileName, Work const &work)
{
    try
    {
        return work();
    }
    catch (NoMemoryException const &thrown)
    {
        throw DataException(fileName, DescribeNoMemory(thrown.GetMessage()));
    }
    catch (PackageFault const &thrown)
    {
        throw DataException(fileName, thrown.GetPlace());
    }
    catch (DataException const &thrown)
    {
        if (thrown.GetFailure())
            throw;
        throw DataException(fileName, {eCodecFailure::e_damaged, thrown.GetMessage()});
    }
    catch (std::bad_alloc const &)
    {
        throw DataException(fileName, DescribeNoMemory(""));
    }
    // Exceptions of other codecs.
    catch (Exception const &thrown)
    {
        throw DataException(fileName, {eCodecFailure::e_system, thrown.GetMessage()});
    }
    catch (std::exception const &thrown)
    {
        throw DataException(fileName, {eCodecFailure::e_system, thrown.what()});
    }
}

bool StartsAsPackage(InputFile &file)
{
    char const *const container = RecogniseContainer(file.GetStream());
    return container && container == std::string_view(s_szPackageContainer);
}

SampledData AdoptData(std::size_t numDimensions, void *data)
{
    if (numDimensions == 1)
        return SampledData(AutoPtr<SignalBase>(static_cast<SignalBase *>(data)));
    return numDimensions == 2 ? SampledData(AutoPtr<ImageBase>(static_cast<ImageBase *>(data)))
                              : SampledData(AutoPtr<VolumeBase>(static_cast<VolumeBase *>(data)));
}

NamedParameterList MakeParameters(SaveSettings const &settings)
{
    using namespace data_codec_parameters;
    using namespace signal_codec_parameters;
    NamedParameterList list;
    list.Insert(NamedParameter(Param_FileOverwrite, settings.overwrite), true);
    list.Insert(NamedParameter(Param_ByteOrderBigEndian, settings.bigEndian), true);
    list.Insert(NamedParameter(Param_PackageID, settings.id), true);
    list.Insert(NamedParameter(Param_UseCompression, settings.useCompression), true);
    list.Insert(NamedParameter(Param_CompressionLevel, settings.compressionLevel), true);
    list.Insert(NamedParameter(Param_Quality, settings.quality), true);
    list.Insert(NamedParameter(Param_OriginBottom, settings.originBottom), true);
    list.Insert(NamedParameter(Param_OriginBack, settings.originBack), true);
    return list;
}

/// True for failures of the system, whose text does not say that the program tried to write.
bool IsOfWriting(eCodecFailure kind)
{
    return kind == eCodecFailure::e_notFound || kind == eCodecFailure::e_noPermission ||
           kind == eCodecFailure::e_noMemory || kind == eCodecFailure::e_system;
}

/// Returns the container as codecs expect it: a pointer to exactly the type of its category.
void const *ToCodecData(SampledData const &data)
{
    return data.Visit([](auto &container) -> void const * { return &container; });
}

} // namespace

std::optional<FileType> FindFileType(string const &fileName)
{
    string name = fileName;
    UpperCase(name);
    for (FileType const &type : ListFileTypes())
    {
        string extension = type.extension;
        UpperCase(extension);
        if (name.ends_with(extension))
            return type;
    }
    return std::nullopt;
}

std::optional<FileType> FindFileTypeByName(string const &name)
{
    string extension = '.' + name;
    UpperCase(extension);
    for (FileType const &type : ListFileTypes())
    {
        if (HasExtension(type, extension))
            return type;
    }
    return std::nullopt;
}

std::vector<string> GetFileTypeNames()
{
    std::vector<string> names;
    for (FileType const &type : ListFileTypes())
        names.push_back(type.extension.substr(1));
    return names;
}

string GetExtensions()
{
    string extensions;
    for (FileType const &type : ListFileTypes())
        extensions += (extensions.empty() ? "" : " ") + type.extension;
    return extensions;
}

bool IsPackage(FileType const &type)
{
    return type.container == s_szPackageContainer;
}

char const *RecogniseContainer(istream &in)
{
    char read[16] = {};
    in.read(read, sizeof(read));
    std::string_view const begin(read, static_cast<std::size_t>(in.gcount()));
    in.clear();
    in.seekg(0);
    for (FirstBytes const &first : s_firstBytes)
    {
        if (begin.starts_with(first.bytes))
            return first.container;
    }
    return nullptr;
}

DataFile::DataFile(string const &fileName, LoadSettings const &settings) : file_(fileName), settings_(settings)
{
    NameFile(fileName, [&] { Inspect(nullptr); });
}

DataFile::DataFile(string const &fileName, FileType const &type, LoadSettings const &settings)
    : file_(fileName),
      settings_(settings)
{
    NameFile(fileName, [&] { Inspect(&type); });
}

DataFile::DataFile(istream &in, string const &name, FileType const *type, LoadSettings const &settings)
    : file_(in, name),
      settings_(settings)
{
    NameFile(name, [&] { Inspect(type); });
}

DataFile::~DataFile() = default;

NamedParameterList DataFile::MakeParameters(unsigned int category) const
{
    using namespace signal_codec_parameters;
    NamedParameterList list = RequireManager().GetDecoderDefaultParamList(category);
    list.Insert(NamedParameter(Param_Page, settings_.page), true);
    list.Insert(NamedParameter(Param_ObeyOrientation, settings_.obeyOrientation), true);
    list.Insert(NamedParameter(Param_DeepLuminance, settings_.deepLuminance), true);
    return list;
}

void DataFile::Inspect(FileType const *type)
{
    bool const wantsPackage = type && IsPackage(*type);
    if (wantsPackage || StartsAsPackage(file_))
        return InspectPackageFile(wantsPackage ? type->numDimensions : 0);
    CodecFailure failure = {eCodecFailure::e_otherFormat,
                            file_.GetByteSize() == 0
                                ? "is empty"
                                : "byte 0: opening magic-sequence: neither that of a package nor of a picture"};
    if (!QueryCodecs(failure) && !TryCodecsWithNames(failure))
        throw DataException(GetName(), failure);
}

void DataFile::InspectPackageFile(std::size_t wantedDimensions)
{
    desc_.package = InspectPackage(file_.GetStream(), file_.GetByteSize());
    if (settings_.page > 0)
        throw DataException("is a package, which has no pages");
    desc_.container = s_szPackageContainer;
    desc_.dimensions = desc_.package->dimensions;
    desc_.format = static_cast<eSampleFormat>(desc_.package->format);
    std::size_t const numDimensions = desc_.dimensions.size();
    if (wantedDimensions != 0 && numDimensions != wantedDimensions)
        throw DataException("payload type: " + GetKindPhrase(numDimensions) + ", and the name tells of " +
                            GetKindPhrase(wantedDimensions));
}

bool DataFile::QueryCodecs(CodecFailure &failure)
{
    DataCodecManager const &manager = RequireManager();
    for (std::size_t const numDimensions : s_dimensionsTried)
    {
        unsigned int const category = s_categories[numDimensions - 1];
        CodecFailureSentry told;
        DataFileHead head;
        NamedParameterList const params = MakeParameters(category);
        if (manager.IsDataCategoryRegistered(category) && manager.QueryData(category, file_, head, &params))
        {
            desc_ = {head.container, head.dimensions, head.format, {}, head.picture};
            return true;
        }
        codec_registry::KeepBetter(failure, told.GetFailure());
    }
    return false;
}

bool DataFile::TryCodecsWithNames(CodecFailure &failure)
{
    DataCodecManager const &manager = RequireManager();
    for (std::size_t const numDimensions : s_dimensionsTried)
    {
        unsigned int const category = s_categories[numDimensions - 1];
        for (unsigned int i = 0; i < manager.GetNumDecoders(category); ++i)
        {
            DataDecoder *const decoder = manager.GetDecoder(category, i);
            if (decoder == nullptr || !file_.IsNamed() || dynamic_cast<OpenFileDecoder *>(decoder))
                continue;
            CodecFailureSentry told;
            if (void *const data = decoder->LoadData(GetName(), manager.GetDecoderDefaultParamList(category)))
            {
                loaded_ = AdoptData(numDimensions, data);
                string const &name = decoder->GetCodecName();
                desc_ = {name.substr(name.rfind('/') + 1), loaded_->GetDimensions(), loaded_->GetFormat(), {}, {}};
                return true;
            }
            codec_registry::KeepBetter(failure, told.GetFailure());
        }
    }
    return false;
}

SampledData DataFile::Load()
{
    if (std::optional<SampledData> loaded = std::exchange(loaded_, std::nullopt))
        return std::move(*loaded);
    return NameFile(GetName(),
                    [&]
                    {
                        CodecFailureSentry const reason;
                        std::size_t const numDimensions = desc_.dimensions.size();
                        unsigned int const category = s_categories[numDimensions - 1];
                        NamedParameterList const params = MakeParameters(category);
                        void *const data = RequireManager().LoadData(category, file_, &params);
                        if (!data)
                            throw DataException(GetName(), {reason.GetFailure().kind, reason.GetText()});
                        return AdoptData(numDimensions, data);
                    });
}

void DataFile::Verify(std::function<void(std::uint64_t)> const &onRead)
{
    if (desc_.package)
        NameFile(GetName(), [&] { ReadWholePackage(file_.GetStream(), file_.GetByteSize(), *desc_.package, onRead); });
    else
        static_cast<void>(Load());
}

SampledData LoadFile(string const &fileName, FileType const &type, LoadSettings const &settings)
{
    return DataFile(fileName, type, settings).Load();
}

void RequireSaveable(SampledData const &data, string const &fileName, FileType const &type,
                     SaveSettings const &settings)
{
    std::size_t const numDimensions = data.GetDimensions().size();
    if (type.numDimensions != 0 && type.numDimensions != numDimensions)
        throw DataException(fileName, {eCodecFailure::e_unsupported, "takes " + GetKindPhrase(type.numDimensions) +
                                                                         ", and no " + GetKindName(numDimensions)});
    if (CodecFailure const obstacle = FindWritingObstacle(fileName, settings.overwrite))
        throw DataException(fileName, obstacle);
}

void SaveFile(SampledData const &data, string const &fileName, FileType const &type, SaveSettings const &settings)
{
    RequireSaveable(data, fileName, type, settings);
    NamedParameterList const params = MakeParameters(settings);
    unsigned int const category = s_categories[data.GetDimensions().size() - 1];
    CodecFailureSentry const reason;
    bool const isSaved =
        NameFile(fileName, [&]
                 { return RequireManager().SaveData(category, ToCodecData(data), fileName, type.container, &params); });
    if (isSaved)
        return;
    CodecFailure failure = {reason.GetFailure().kind, reason.GetText()};
    if (IsOfWriting(failure.kind))
        failure.text = "cannot be written as " + type.container + ": " + failure.text;
    throw DataException(fileName, failure);
}

void SaveToStream(SampledData const &data, ostream &out, string const &name, FileType const &type,
                  SaveSettings const &settings)
{
    TemporaryFile const file;
    if (file.GetName().empty())
        throw DataException(name, DescribeTemporaryFailure());
    SaveSettings allowed = settings;
    allowed.overwrite = true;
    try
    {
        SaveFile(data, file.GetName(), type, allowed);
    }
    catch (DataException const &thrown)
    {
        throw DataException(name, thrown.GetFailure());
    }
    std::ifstream saved(file_system::GetStreamPath(file.GetName()), std::ios_base::binary);
    errno = 0;
    if (!saved || !(out << saved.rdbuf()) || !out.flush())
        throw DataException(name, {eCodecFailure::e_system, "cannot be written: " + DescribeWriteFailure().text});
}

void SaveLevels(std::vector<SampledData> const &levels, string const &prefix, SaveSettings const &settings)
{
    for (auto const work : {&RequireSaveable, &SaveFile})
    {
        for (std::size_t i = 0; i < levels.size(); ++i)
        {
            KnownFileType const &known = s_fileTypes[levels[i].GetDimensions().size() - 1];
            FileType const type = {known.extension, known.container, known.numDimensions};
            work(levels[i], prefix + '.' + MakeString(i) + type.extension, type, settings);
        }
    }
}

} // namespace quillmarsh::sampled_data
