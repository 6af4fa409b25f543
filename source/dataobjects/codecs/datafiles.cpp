#include <quillmarsh/dataobjects/datafiles.h>

#include <quillmarsh/basetools/filesystem.h>
#include <quillmarsh/basetools/texttools.h>
#include <quillmarsh/dataobjects/imagecodecs_gdiplus.h>
#include <quillmarsh/dataobjects/imageio.h>
#include <quillmarsh/dataobjects/signalio.h>
#include <quillmarsh/dataobjects/volumeio.h>

#include <cerrno>
#include <random>
#include <string_view>

namespace quillmarsh::sampled_data
{
namespace
{

using std::filesystem::file_type;
using std::filesystem::path;

// The packages of single kinds come first, by the number of dimensions.
constexpr FileType s_fileTypes[] = {
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

[[noreturn]] void FailFile(string const &fileName, string const &what)
{
    throw DataException(fileName + ": " + what);
}

path MakePath(string const &fileName)
{
    path name = file_system::GetStreamPath(fileName);
    if (name.empty())
        FailFile(fileName, "no name of a file");
    return name;
}

/// What stands under a name and is no file to read from or to replace; null for a file or a device.
char const *NameOddity(file_type type)
{
    switch (type)
    {
    case file_type::directory:
        return "is a directory";
    case file_type::fifo:
        return "is a pipe";
    case file_type::socket:
        return "is a socket";
    default:
        return nullptr;
    }
}

/// Does work on a file. What it throws is told with the file's name.
template<typename Work>
auto NameFile(string const &fileName, Work const &work)
{
    try
    {
        return work();
    }
    catch (Exception const &thrown)
    {
        FailFile(fileName, thrown.GetMessage());
    }
    catch (std::ios_base::failure const &failure)
    {
        FailFile(fileName, failure.what());
    }
}

/// Loads a package that was found to be whole.
template<typename Package, typename Container>
SampledData LoadPackageAs(string const &fileName)
{
    Package package;
    package.LoadFromFile(fileName, true);
    return SampledData(AutoPtr<Container>(package.GetPayload(true)));
}

SampledData LoadPackage(string const &fileName, std::size_t wantedDimensions)
{
    InputFile file(fileName);
    return NameFile(fileName,
                    [&]
                    {
                        PackageDesc const desc = InspectPackage(file.GetStream(), file.GetByteSize());
                        std::size_t const numDimensions = desc.dimensions.size();
                        if (wantedDimensions != 0 && numDimensions != wantedDimensions)
                            throw DataException("payload type: " + GetKindPhrase(numDimensions) +
                                                ", and the name tells of " + GetKindPhrase(wantedDimensions));
                        if (numDimensions == 1)
                            return LoadPackageAs<DataPackageSignal, SignalBase>(fileName);
                        return numDimensions == 2 ? LoadPackageAs<DataPackageImage, ImageBase>(fileName)
                                                  : LoadPackageAs<DataPackageVolume, VolumeBase>(fileName);
                    });
}

void SetUp(DataPackageSignal &, SaveSettings const &) {}

void SetUp(DataPackageImage &package, SaveSettings const &settings)
{
    package.SetRowOrderOnWrite(settings.originBottom);
}

void SetUp(DataPackageVolume &package, SaveSettings const &settings)
{
    package.SetLayerOrderOnWrite(settings.originBack);
    package.SetRowOrderOnWrite(settings.originBottom);
}

template<typename Package, typename Container>
void WritePackageAs(Container const &data, string const &fileName, SaveSettings const &settings)
{
    Package package;
    SetUp(package, settings);
    package.SetPackageByteOrderOnWrite(settings.bigEndian);
    package.SetPackageID(settings.id);
    package.SetPayload(&data);
    package.SaveToFile(fileName, true);
}

void WritePackage(SampledData const &data, string const &fileName, SaveSettings const &settings)
{
    if (auto const *const image = data.Get<ImageBase>())
        WritePackageAs<DataPackageImage>(*image, fileName, settings);
    else if (auto const *const volume = data.Get<VolumeBase>())
        WritePackageAs<DataPackageVolume>(*volume, fileName, settings);
    else
        WritePackageAs<DataPackageSignal>(data.GetSamples(), fileName, settings);
}

NamedParameterList MakeParameters(SaveSettings const &settings)
{
    using namespace data_codec_parameters;
    NamedParameterList list;
    list.Insert(NamedParameter(Param_FileOverwrite, settings.overwrite), true);
    list.Insert(NamedParameter(Param_UseCompression, settings.useCompression), true);
    list.Insert(NamedParameter(Param_CompressionLevel, settings.compressionLevel), true);
    list.Insert(NamedParameter(Param_Quality, settings.quality), true);
    list.Insert(NamedParameter(signal_codec_parameters::Param_OriginBottom, settings.originBottom), true);
    return list;
}

/// Whether the container takes the data, which may depend on its limits and on the system.
bool Write(SampledData const &data, string const &fileName, FileType const &type, SaveSettings const &settings)
{
    if (!IsPackage(type))
        return ImageEncoderGdiplus().SaveImage(*data.Get<ImageBase>(), fileName, type.container,
                                               MakeParameters(settings));
    try
    {
        WritePackage(data, fileName, settings);
        return true;
    }
    catch (SerializationException const &)
    {
        return false;
    }
    catch (std::ios_base::failure const &)
    {
        return false;
    }
}

string HiddenNameBeside(string const &fileName)
{
    std::random_device random;
    path const name =
        MakePath(fileName).parent_path() / (".qmdp-" + MakeString(random()) + '-' + MakeString(random()) + ".tmp");
    std::u8string const text = name.u8string();
    return string(text.begin(), text.end());
}

/// Removes a file at the end, if it is still there.
class FileRemover : NoCopy
{
public:
    explicit FileRemover(string const &name) : name_(name) {}
    ~FileRemover() { file_system::DeleteFileA(name_); }

private:
    string const name_;
};

[[noreturn]] void FailWritten(string const &fileName, FileType const &type)
{
    FailFile(fileName, "cannot be written as " + string(type.container) +
                           (errno != 0 ? ": " + file_system::GetLastFailureReason() : string()));
}

constexpr char s_szNoPicture[] = "no picture that can be read, or one that is cut short or damaged";
constexpr char s_szExists[] = "is there already, and overwriting has to be asked for";

} // namespace

FileType const *FindFileType(string const &fileName)
{
    string name = fileName;
    UpperCase(name);
    for (FileType const &type : s_fileTypes)
    {
        string extension = type.extension;
        UpperCase(extension);
        if (name.ends_with(extension))
            return &type;
    }
    return nullptr;
}

string GetExtensions()
{
    string extensions;
    for (FileType const &type : s_fileTypes)
        extensions += (extensions.empty() ? "" : " ") + string(type.extension);
    return extensions;
}

bool IsPackage(FileType const &type)
{
    return type.container == string(s_szPackageContainer);
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

InputFile::InputFile(string const &fileName)
{
    path const name = MakePath(fileName);
    file_type const type = file_system::GetFileType(fileName, true);
    if (char const *const oddity = NameOddity(type))
        FailFile(fileName, oddity);
    if (type == file_type::character || type == file_type::block)
        FailFile(fileName, "is a device");
    errno = 0;
    stream_.open(name, std::ios_base::in | std::ios_base::binary);
    stream_.seekg(0, std::ios_base::end);
    std::streamoff const size = stream_.tellg();
    stream_.seekg(0);
    if (!stream_)
        FailFile(fileName, "cannot be opened: " + file_system::GetLastFailureReason());
    byteSize_ = static_cast<std::uint64_t>(size);
}

AutoPtr<ImageBase> LoadPicture(string const &fileName)
{
    InputFile const file(fileName);
    AutoPtr<ImageBase> image(ImageDecoderGdiplus().LoadImageA(fileName, {}));
    if (!image)
        FailFile(fileName, s_szNoPicture);
    return image;
}

void QueryPicture(string const &fileName, eSampleFormat &format, Dimensions &dimensions)
{
    InputFile const file(fileName);
    dimensions.resize(2);
    if (!ImageDecoderGdiplus::QueryImage(fileName, format, dimensions[0], dimensions[1]))
        FailFile(fileName, s_szNoPicture);
}

SampledData LoadFile(string const &fileName, FileType const &type)
{
    return IsPackage(type) ? LoadPackage(fileName, type.numDimensions) : SampledData(LoadPicture(fileName));
}

void RequireSaveable(SampledData const &data, string const &fileName, FileType const &type,
                     SaveSettings const &settings)
{
    std::size_t const numDimensions = data.GetDimensions().size();
    if (type.numDimensions != 0 && type.numDimensions != numDimensions)
        FailFile(fileName, "takes " + GetKindPhrase(type.numDimensions) + ", and no " + GetKindName(numDimensions));
    bool const isNamed = sample_formats::MapNameToSampleFormat(GetFormatName(data.GetFormat())) != e_format_none;
    if (!IsPackage(type) && !isNamed)
        FailFile(fileName,
                 string(type.container) + " takes no samples of the format " + GetFormatName(data.GetFormat()));
    static_cast<void>(MakePath(fileName));
    if (char const *const oddity = NameOddity(file_system::GetFileType(fileName, true)))
        FailFile(fileName, oddity);
    file_type const entry = file_system::GetFileType(fileName, false);
    if (!settings.overwrite && entry != file_type::not_found && entry != file_type::none)
        FailFile(fileName, s_szExists);
}

void SaveFile(SampledData const &data, string const &fileName, FileType const &type, SaveSettings const &settings)
{
    RequireSaveable(data, fileName, type, settings);
    if (settings.overwrite)
    {
        errno = 0;
        if (!Write(data, fileName, type, settings))
            FailWritten(fileName, type);
        return;
    }
    // Another process may save under the same name meanwhile: the file gets its name only where there is none.
    string const beside = HiddenNameBeside(fileName);
    FileRemover const remover(beside);
    errno = 0;
    if (!Write(data, beside, type, settings))
        FailWritten(fileName, type);
    errno = 0;
    if (!file_system::MoveFileA(beside, fileName, false))
        errno == EEXIST ? FailFile(fileName, s_szExists) : FailWritten(fileName, type);
}

void SaveLevels(std::vector<SampledData> const &levels, string const &prefix, SaveSettings const &settings)
{
    for (auto const work : {&RequireSaveable, &SaveFile})
    {
        for (std::size_t i = 0; i < levels.size(); ++i)
        {
            FileType const &type = s_fileTypes[levels[i].GetDimensions().size() - 1];
            work(levels[i], prefix + '.' + MakeString(i) + type.extension, type, settings);
        }
    }
}

} // namespace quillmarsh::sampled_data
