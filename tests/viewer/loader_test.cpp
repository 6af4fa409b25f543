// The loader's threads: results, what is kept, files that change or are damaged.
#include "viewer_model/files/loading.h"
#include "viewer_model/images/imagelevels.h"
#include "viewer_model/samples/channels.h"

#include "datafolder.h"

#include <cstring>

namespace viewer
{
namespace
{

using namespace quillmarsh;
using namespace quillmarsh::sampled_data;
using ePart = LoadResult::ePart;
using ViewerLoader = tests::DataFolder;

TEST_F(ViewerLoader, GivesSamplesThenLevelsAndOnceMoreAtOnce)
{
    string const file = Save("a.png", {30, 50}, 7);
    loader_.Load(file);
    LoadResult const content = Take(loader_);
    ASSERT_EQ(content.part, ePart::e_content) << content.failure;
    EXPECT_EQ(content.loaded->desc.container, "PNG");
    EXPECT_EQ(content.loaded->imageLevels->GetNumLevels(), 1u);
    LoadResult const levels = Take(loader_);
    ASSERT_EQ(levels.part, ePart::e_levels);
    EXPECT_EQ(levels.loaded->content, content.loaded->content);
    EXPECT_EQ(levels.loaded->imageLevels->GetNumLevels(), 7u);
    EXPECT_EQ(levels.stamp, GetFileStamp(file));
    EXPECT_FALSE(loader_.IsBusy());
    EXPECT_GE(numWakes_, 2);

    loader_.Load(file);
    LoadResult const again = Take(loader_);
    EXPECT_EQ(again.part, ePart::e_levels);
    EXPECT_EQ(again.loaded, levels.loaded);
}

TEST_F(ViewerLoader, ReadsAheadAndLoadsWhatHasChangedSince)
{
    string const a = Save("a.qmdp", {4, 4}, 1);
    string const b = Save("b.qmdp", {4, 4}, 2);
    string const other = Save("c.qmdp", {4, 4}, 3);
    loader_.ReadAhead({a, b, directory_ / "missing.png"});
    // Previews are made first, and this thread reads ahead then.
    loader_.MakePreviews({other});
    EXPECT_EQ(Take(loader_).part, ePart::e_preview);
    Save("b.qmdp", {5, 4}, 4);
    loader_.Load(a);
    while (Take(loader_).part != ePart::e_levels)
    {
    }
    loader_.Load(b);
    LoadResult const changed = Take(loader_);
    ASSERT_TRUE(changed.loaded) << changed.failure;
    EXPECT_EQ(changed.loaded->desc.dimensions, (Dimensions{5, 4}));
}

TEST_F(ViewerLoader, CancelledRequestsHaveNoResult)
{
    string const big = Save("big.bmp", {1000, 1000}, 1, e_format_X8R8G8B8);
    string const small = Save("small.qmdp", {1}, 2);
    loader_.Load(big);
    loader_.Load(small);
    loader_.Cancel(big);
    LoadResult const result = Take(loader_);
    EXPECT_EQ(result.fileName, small);
    while (loader_.IsBusy())
    {
    }
    for (LoadResult const &more : loader_.Poll())
        EXPECT_EQ(more.fileName, small);
}

TEST_F(ViewerLoader, PreviewsShowEachKindOfData)
{
    string const image = Save("a.png", {100, 200}, 200, e_format_X8R8G8B8);
    string const volume = Save("b.qmdp.volume", {3, 10, 20}, 100);
    string const signal = Save("c.qmdp.signal", {1000}, 50);
    string const broken = directory_.Write("d.png", "\x89PNG\r\n\x1A\n");
    loader_.MakePreviews({image, volume, signal, broken});
    struct
    {
        string file;
        unsigned int numRows, numColumns;
    } const wanted[] = {{image, 32, 64}, {volume, 10, 20}, {signal, 40, 64}};
    for (auto const &row : wanted)
    {
        LoadResult const result = Take(loader_);
        ASSERT_EQ(result.part, ePart::e_preview) << result.failure;
        EXPECT_EQ(result.fileName, row.file);
        EXPECT_EQ(result.preview->picture->GetNumRows(), row.numRows);
        EXPECT_EQ(result.preview->picture->GetNumColumns(), row.numColumns);
    }
    LoadResult const failed = Take(loader_);
    EXPECT_EQ(failed.part, ePart::e_failed);
    EXPECT_TRUE(failed.failure.starts_with(broken + ": ")) << failed.failure;
}

/// What a mapped file has in common with a file that was read.
void ExpectSame(Content const &a, Content const &b)
{
    SignalBase const &first = a.GetData().GetSamples();
    SignalBase const &second = b.GetData().GetSamples();
    EXPECT_EQ(a.GetData().GetDimensions(), b.GetData().GetDimensions());
    EXPECT_EQ(first.GetSampleFormat(), second.GetSampleFormat());
    ASSERT_EQ(first.GetTotalByteSize(), second.GetTotalByteSize());
    EXPECT_EQ(std::memcmp(first.GetSamplesB(), second.GetSamplesB(), first.GetTotalByteSize()), 0);
}

TEST_F(ViewerLoader, MapsPackagesWhoseSamplesLieAsTheyAreUsed)
{
    constexpr std::uint64_t always = 0;
    constexpr std::uint64_t never = ~std::uint64_t(0);
    struct
    {
        char const *name;
        Dimensions dimensions;
        eSampleFormat format;
        SaveSettings settings;
        bool isMapped;
    } const rows[] = {
        {"a.qmdp.signal", {999}, e_format_A8L8, {}, true},
        {"b.qmdp.image", {20, 30}, e_format_FP32NormL, {}, true},
        {"c.qmdp.volume", {4, 5, 6}, e_format_L8, {}, true},
        {"d.qmdp.volume", {4, 5, 6}, e_format_L8, {.bigEndian = true}, true},
        {"e.qmdp.image", {20, 30}, e_format_FP32NormL, {.bigEndian = true}, false},
        {"f.qmdp.image", {20, 30}, e_format_L8, {.originBottom = true}, false},
        {"g.png", {20, 30}, e_format_L8, {}, false},
    };
    for (auto const &row : rows)
    {
        string const file = Save(row.name, row.dimensions, 33, row.format, row.settings);
        LoadedPtr const mapped = LoadContent(file, always);
        EXPECT_EQ(mapped->content->IsMapped(), row.isMapped) << row.name;
        LoadedPtr const read = LoadContent(file, never);
        EXPECT_FALSE(read->content->IsMapped());
        ExpectSame(*mapped->content, *read->content);
        EXPECT_EQ(mapped->desc.dimensions, row.dimensions);
    }
}

TEST_F(ViewerLoader, LeavesLevelsOfLargeMappedImagesOut)
{
    string const file = Save("a.qmdp.image", {64, 64}, 1);
    LoadedPtr const mapped = LoadContent(file, 0);
    LoadedPtr const without = Complete(*mapped, {}, 100);
    EXPECT_EQ(without->imageLevels->GetNumLevels(), 1u);
    ASSERT_EQ(without->losses.size(), 1u);
    EXPECT_TRUE(without->losses[0].starts_with("no smaller levels: ")) << without->losses[0];
    LoadedPtr const with = Complete(*without, {}, 64 * 64);
    EXPECT_EQ(with->imageLevels->GetNumLevels(), 7u);
    EXPECT_TRUE(with->losses.empty());
    EXPECT_EQ(Complete(*mapped, [](double) { return false; }), nullptr);
}

TEST_F(ViewerLoader, DropsFilesThatNobodyShows)
{
    Loader small([] {}, 10000);
    std::vector<std::weak_ptr<Content const>> contents;
    // Pictures of Windows' own codecs would have more bytes.
    for (char const *const name : {"a.qmdp", "b.qmdp", "c.qmdp"})
    {
        small.Load(Save(name, {60, 100}, 1));
        LoadResult result = Take(small);
        while (result.part == ePart::e_content)
            result = Take(small);
        contents.push_back(result.loaded->content);
    }
    // One of them has room; the oldest goes first.
    EXPECT_TRUE(quillmarsh::tests::WaitUntil([&] { return contents[0].expired() && contents[1].expired(); }));
    EXPECT_FALSE(contents[2].expired());
}

} // namespace
} // namespace viewer
