// The loader's threads: results, what is kept, files that change or are damaged.
#include "viewer_model/imagelevels.h"
#include "viewer_model/loader.h"
#include "viewer_model/loading.h"

#include <quillmarsh/dataobjects/datacodecmanager.h>
#include <quillmarsh/dataobjects/sampletransfer.h>

#include "tests/support/package_bytes.h"
#include "tests/support/scratch_directory.h"
#include "tests/support/waiting.h"

#include <gtest/gtest.h>

#include <atomic>

namespace viewer
{
namespace
{

using namespace quillmarsh;
using namespace quillmarsh::sampled_data;
using ePart = LoadResult::ePart;

class ViewerLoader : public testing::Test
{
protected:
    ViewerLoader()
    {
        RegisterDefaultDataCodecs();
        RegisterDefaultImageFileExtensions();
    }

    /// Writes an image with one value in all bytes.
    string Save(string const &name, Dimensions const &dimensions, unsigned char value,
                eSampleFormat format = e_format_L8)
    {
        SampledData const data(format, dimensions);
        SignalBase &samples = data.GetSamples();
        std::fill_n(samples.GetSamplesB(), samples.GetTotalByteSize(), value);
        SaveSettings settings;
        settings.overwrite = true;
        string const file = directory_ / name;
        SaveFile(data, file, *FindFileType(file), settings);
        return file;
    }

    /// Waits for the next result.
    LoadResult Take(Loader &loader)
    {
        tests::WaitUntil(
            [&]
            {
                for (LoadResult &result : loader.Poll())
                    results_.push_back(std::move(result));
                return !results_.empty();
            });
        if (results_.empty())
            return {ePart::e_failed, "", nullptr, {}, "no result came"};
        LoadResult result = std::move(results_.front());
        results_.erase(results_.begin());
        return result;
    }

    SignalOperationsManager operations_;
    DataCodecManager manager_;
    tests::ScratchDirectory directory_;
    std::vector<LoadResult> results_;
    std::atomic<int> numWakes_ = 0;
    Loader loader_{[this] { ++numWakes_; }};
};

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

} // namespace
} // namespace viewer
