// The data set that the build makes.
#include <quillmarsh/basetools/filesystem.h>
#include <quillmarsh/dataobjects/datacodecmanager.h>
#include <quillmarsh/dataobjects/datafiles.h>

#include <gtest/gtest.h>

#include <map>
#include <set>

namespace quillmarsh::tests
{
namespace
{

/// Names of the files of the data set, without their folder.
std::set<string> ListSamples(string const &folder)
{
    std::set<string> names;
    std::filesystem::path const root = file_system::GetStreamPath(folder);
    for (auto const &entry : std::filesystem::recursive_directory_iterator(root))
    {
        if (entry.is_regular_file())
            names.insert(entry.path().lexically_relative(root).generic_string());
    }
    return names;
}

/// A number that changes with each byte (FNV-1a).
std::uint64_t Hash(SignalBase const &signal)
{
    std::uint64_t hash = 0xCBF29CE484222325u;
    std::size_t const byteSize = std::size_t(signal.GetNumSamples()) * signal.GetSampleByteSize();
    for (std::size_t i = 0; i < byteSize; ++i)
        hash = (hash ^ signal.SampleB(0)[i]) * 0x100000001B3u;
    return hash;
}

TEST(Samples, OpenAndAreTheSameEverywhere)
{
    DataCodecManager const codecs;
    RegisterDefaultDataCodecs();
    string const folder = file_system::FindDataFile("samples");
    ASSERT_NE("", folder);
    // Codecs of systems may give pictures in other formats, so these files are packages, and one plain picture.
    std::map<string, std::uint64_t> const hashes = {
        {"body.qmdp.volume", 0x62C8D01CDC61A818u},
        {"waves.qmdp.volume", 0x1FE7263B21BE7955u},
        {"monitor-4-channels.qmdp.signal", 0x9585005164ADCC11u},
        {"peaks.qmdp.signal", 0x536732E1FB9979B7u},
        {"stereo.qmdp.signal", 0x2DF62A99797FAB6Fu},
        {"sweep.qmdp.signal", 0xBC7E4358EBAA3DECu},
        {"landscape-small.bmp", 0x4BB1681AA4279E9Fu},
        {"night-high-range.qmdp.image", 0xE1965AD2FF23F7E9u},
        {"formats/A4R4G4B4.qmdp.image", 0xBDA07E6D025BDB26u},
    };
    std::set<eSampleFormat> formats;
    std::set<std::size_t> kinds;
    std::size_t numData = 0, numCompared = 0;
    for (string const &name : ListSamples(folder))
    {
        SCOPED_TRACE(name);
        std::optional<sampled_data::FileType> const type = sampled_data::FindFileType(name);
        if (!type)
        {
            EXPECT_TRUE(name.ends_with(".txt")) << "a recording";
            continue;
        }
        sampled_data::SampledData const data = sampled_data::LoadFile(folder + "/" + name, *type);
        ++numData;
        kinds.insert(data.GetDimensions().size());
        if (data.GetDimensions().size() == 2)
            formats.insert(data.GetFormat());
        auto const wanted = hashes.find(name);
        if (wanted == hashes.end())
            continue;
        ++numCompared;
        EXPECT_EQ(wanted->second, Hash(data.GetSamples())) << std::hex << Hash(data.GetSamples());
    }
    EXPECT_EQ(3u, kinds.size());
    for (eSampleFormat const format : sampled_data::GetNamedFormats())
        EXPECT_TRUE(formats.count(format)) << sampled_data::GetFormatName(format);
    EXPECT_EQ(hashes.size(), numCompared);
    EXPECT_GE(numData, 20u);
}

} // namespace
} // namespace quillmarsh::tests
