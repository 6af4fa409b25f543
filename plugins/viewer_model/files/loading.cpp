#include "loading.h"

#include "failures.h"
#include <viewer_model/images/imagelevels.h>
#include <viewer_model/signals/signallevels.h>

#include <quillmarsh/basetools/serializer_parameters.h>
#include <quillmarsh/basetools/texttools.h>
#include <quillmarsh/dataobjects/signalbase.h>
#include <quillmarsh/platform/mappedfile.h>

#include <istream>
#include <streambuf>

namespace viewer
{

using namespace quillmarsh;
using namespace quillmarsh::sampled_data;

namespace
{

/// Lets a stream read bytes in memory.
class ByteBuffer : public std::streambuf
{
public:
    ByteBuffer(unsigned char const *bytes, std::uint64_t byteSize)
    {
        char *const begin = const_cast<char *>(reinterpret_cast<char const *>(bytes));
        setg(begin, begin, begin + byteSize);
    }

protected:
    pos_type seekoff(off_type offset, std::ios_base::seekdir direction, std::ios_base::openmode) override
    {
        off_type const from = direction == std::ios_base::beg   ? 0
                              : direction == std::ios_base::cur ? gptr() - eback()
                                                                : egptr() - eback();
        off_type const to = from + offset;
        if (to < 0 || to > egptr() - eback())
            return pos_type(off_type(-1));
        setg(eback(), eback() + to, egptr());
        return pos_type(to);
    }

    pos_type seekpos(pos_type position, std::ios_base::openmode mode) override
    {
        return seekoff(off_type(position), std::ios_base::beg, mode);
    }
};

/// True when the samples in the file are those in memory, in the same order.
bool IsMappable(PackageDesc const &package)
{
    bool const isInOrder = package.bigEndian == serializer_parameters::IsMachineBigEndian() ||
                           sample_formats::ExtractByteSize(package.format) == 1;
    return isInOrder && package.flags == 0;
}

/// Gives the samples of a package the interface of a container. The bytes are not written to.
SampledData Borrow(unsigned char const *bytes, PackageDesc const &package)
{
    auto *const samples = const_cast<unsigned char *>(bytes);
    auto const format = static_cast<eSampleFormat>(package.format);
    Dimensions const &size = package.dimensions;
    if (size.size() == 1)
    {
        auto signal = std::make_unique<SignalBaseFromExternalStorageAdapter>(format);
        signal->SetExternalStorage(samples, size[0]);
        return SampledData(AutoPtr<SignalBase>(std::move(signal)));
    }
    if (size.size() == 2)
    {
        auto image = std::make_unique<ImageBaseFromExternalStorageAdapter>(format);
        image->SetExternalStorage(samples, size[0], size[1]);
        return SampledData(AutoPtr<ImageBase>(std::move(image)));
    }
    auto volume = std::make_unique<VolumeBaseFromExternalStorageAdapter>(format);
    volume->SetExternalStorage(samples, size[0], size[1], size[2]);
    return SampledData(AutoPtr<VolumeBase>(std::move(volume)));
}

/// Maps a package; null if it has to be read. Another file may have got the name since it was inspected, so that the
/// mapped bytes are inspected once more.
ContentPtr MapPackage(string const &fileName, DataFileDesc &desc)
{
    string reason;
    std::shared_ptr<platform::MappedFile const> const file = platform::MappedFile::Open(fileName, reason);
    if (!file || file->GetByteSize() == 0)
        return nullptr;
    ByteBuffer buffer(file->GetBytes(), file->GetByteSize());
    std::istream stream(&buffer);
    PackageDesc const package = InspectPackage(stream, file->GetByteSize());
    if (file->IsDamaged() || !IsMappable(package))
        return nullptr;
    desc.package = package;
    desc.dimensions = package.dimensions;
    desc.format = static_cast<eSampleFormat>(package.format);
    return std::make_shared<Content const>(Borrow(file->GetBytes() + package.samplesOffset, package), file);
}

/// Opens a file. Grey pictures with more than eight bits keep all of them, as floats.
std::unique_ptr<DataFile> OpenFile(string const &fileName)
{
    auto file = std::make_unique<DataFile>(fileName);
    std::optional<PictureDesc> const &picture = file->GetDesc().picture;
    bool const isDeepGrey =
        picture && picture->colours == ePictureColours::e_grey && picture->bits > 8 && !picture->hasAlpha;
    return isDeepGrey ? std::make_unique<DataFile>(fileName, LoadSettings{.deepLuminance = true}) : std::move(file);
}

std::uint64_t CountSampleBytes(Content const &content)
{
    return content.GetData().GetSamples().GetTotalByteSize();
}

std::uint64_t CountLevelBytes(Content const &content)
{
    if (content.Get<ImageBase>())
        return CountSampleBytes(content) / 3;
    if (!content.Get<SignalBase>())
        return 0;
    std::uint64_t const numValues = std::uint64_t(content.GetData().GetSamples().GetNumSamples()) *
                                    GetChannels(content.GetData().GetFormat()).size();
    return numValues * sizeof(Extent) / (SignalLevels::s_factor - 1);
}

/// Begins the line about levels that were left out.
constexpr char s_szNoLevels[] = "no smaller levels: ";

string DescribeBytes(std::uint64_t bytes)
{
    return "they take " + MakeString(bytes >> 20) + " MiB";
}

} // namespace

LoadedPtr LoadContent(string const &fileName, std::uint64_t mapFrom)
{
    std::unique_ptr<DataFile> const file = OpenFile(fileName);
    auto loaded = std::make_shared<Loaded>();
    loaded->desc = file->GetDesc();
    if (auto const &package = loaded->desc.package; package && package->byteSize >= mapFrom && IsMappable(*package))
        loaded->content = MapPackage(fileName, loaded->desc);
    if (!loaded->content)
    {
        loaded->content = std::make_shared<Content const>(file->Load());
        loaded->desc.dimensions = loaded->content->GetData().GetDimensions();
        loaded->desc.format = loaded->content->GetData().GetFormat();
    }
    loaded->losses = ListLoadingLosses(loaded->desc);
    if (loaded->content->Get<ImageBase>())
        loaded->imageLevels = std::make_shared<ImageLevels const>(loaded->content);
    return loaded;
}

LoadedPtr MakeLoaded(ContentPtr content)
{
    auto loaded = std::make_shared<Loaded>();
    loaded->desc.dimensions = content->GetData().GetDimensions();
    loaded->desc.format = content->GetData().GetFormat();
    if (content->Get<ImageBase>())
        loaded->imageLevels = std::make_shared<ImageLevels const>(content);
    loaded->content = std::move(content);
    return loaded;
}

bool IsComplete(Loaded const &loaded)
{
    if (auto const *const image = loaded.content->Get<ImageBase>())
        return loaded.imageLevels->GetNumLevels() > 1 || image->GetNumSamples() == 1;
    if (loaded.content->Get<SignalBase>())
        return loaded.signalLevels || GetChannels(loaded.content->GetData().GetFormat()).empty();
    return true;
}

LoadedPtr Complete(Loaded const &loaded, std::function<bool(double)> const &progress, std::uint64_t levelsLimit)
{
    auto complete = std::make_shared<Loaded>(loaded);
    std::erase_if(complete->losses, [](string const &line) { return line.starts_with(s_szNoLevels); });
    std::uint64_t const byteSize = CountLevelBytes(*loaded.content);
    if (loaded.content->IsMapped() && loaded.imageLevels && byteSize > levelsLimit)
    {
        complete->losses.push_back(s_szNoLevels + DescribeBytes(byteSize) +
                                   " of memory; the command levels makes them");
        return complete;
    }
    try
    {
        if (loaded.content->Get<ImageBase>())
            complete->imageLevels = ImageLevels::Build(loaded.content, progress);
        else if (!IsComplete(loaded))
            complete->signalLevels = SignalLevels::Build(loaded.content, progress);
    }
    catch (...)
    {
        complete->losses.push_back(s_szNoLevels + DescribeException());
        return complete;
    }
    bool const isStopped = loaded.content->Get<ImageBase>() ? !complete->imageLevels : !IsComplete(*complete);
    return isStopped ? nullptr : complete;
}

std::uint64_t CountBytes(Loaded const &loaded)
{
    bool const hasLevels = (loaded.imageLevels && loaded.imageLevels->GetNumLevels() > 1) || loaded.signalLevels;
    return (loaded.content->IsMapped() ? 0 : CountSampleBytes(*loaded.content)) +
           (hasLevels ? CountLevelBytes(*loaded.content) : 0);
}

} // namespace viewer
