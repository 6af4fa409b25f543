// Conversions and changes of size, and their order as jobs.
#include "viewer_model/files/documentwork.h"
#include "viewer_model/images/imagelevels.h"

#include "datafolder.h"
#include "images.h"

#include <quillmarsh/dataobjects/imageoperations.h>

namespace viewer
{
namespace
{

using namespace quillmarsh;
using namespace quillmarsh::sampled_data;

/// Returns the message of the failure.
string Fail(Content const &content, Edit const &edit)
{
    try
    {
        Apply(content, edit, {});
        return "";
    }
    catch (DataException const &thrown)
    {
        return thrown.GetMessage();
    }
}

bool HasBytesOf(Loaded const &loaded, SignalBase const &wanted)
{
    SignalBase const &samples = loaded.content->GetData().GetSamples();
    return samples.GetTotalByteSize() == wanted.GetTotalByteSize() &&
           std::memcmp(samples.GetSamplesB(), wanted.GetSamplesB(), wanted.GetTotalByteSize()) == 0;
}

class ViewerEdits : public tests::DataFolder
{
protected:
    /// Many blocks, and a rest.
    ContentPtr const content_ = tests::MakeRandomContent(e_format_A8R8G8B8, 1500, 1501);
    ImageBase const &image_ = *content_->Get<ImageBase>();
};

TEST_F(ViewerEdits, DoWhatTheLibraryDoesToTheWhole)
{
    // Two formats on the way, and one.
    for (eSampleFormat const format : {e_format_L8, e_format_FP32NormL, e_format_A4R4G4B4})
    {
        SampledData whole{AutoPtr<ImageBase>(CloneImage(image_))};
        ChangeFormat(whole, format);
        double last = 0;
        auto const follow = [&](double part)
        {
            EXPECT_GE(part, last);
            last = part;
            return true;
        };
        LoadedPtr const converted = Apply(*content_, {.kind = Edit::eKind::e_convert, .format = format}, follow);
        EXPECT_TRUE(HasBytesOf(*converted, whole.GetSamples()));
        EXPECT_EQ(converted->desc.format, format);
        EXPECT_EQ(converted->imageLevels->GetNumLevels(), 12u);
        EXPECT_GT(last, 0.9);
    }
    AutoPtr<ImageBase> const flipped(CloneImage(image_));
    FlipColumns(*flipped);
    EXPECT_TRUE(
        HasBytesOf(*Apply(*content_, {.kind = Edit::eKind::e_flip, .axis = eSampleAxis::e_columns}, {}), *flipped));
    AutoPtr<ImageBase> const part(ManufactureImage(e_format_A8R8G8B8, 7, 1400));
    CopySamples2D(*part, image_, 7, 1400, 0, 0, 3, 101, false);
    Edit const crop = {.kind = Edit::eKind::e_crop, .size = {7, 1400}, .origin = {3, 101}};
    EXPECT_TRUE(HasBytesOf(*Apply(*content_, crop, {}), *part));
    Edit const resize = {.kind = Edit::eKind::e_resize, .size = {10, 20}, .filter = eSizeFilter::e_area};
    EXPECT_TRUE(HasBytesOf(*Apply(*content_, resize, {}),
                           Resample(content_->GetData(), {10, 20}, eSizeFilter::e_area).GetSamples()));

    SampledData const volume(e_format_L8, {3, 4, 5});
    for (unsigned int i = 0; i < 60; ++i)
        volume.GetSamples().GetSamplesB()[i] = static_cast<unsigned char>(i);
    SampledData copy(e_format_L8, {3, 4, 5});
    std::memcpy(copy.GetSamples().GetSamplesB(), volume.GetSamples().GetSamplesB(), 60);
    Content const cube(std::move(copy));
    LoadedPtr const cut = Apply(cube, {.kind = Edit::eKind::e_crop, .size = {2, 1, 3}, .origin = {1, 2, 2}}, {});
    unsigned char const wanted[] = {32, 33, 34, 52, 53, 54};
    EXPECT_EQ(std::memcmp(cut->content->GetData().GetSamples().GetSamplesB(), wanted, sizeof(wanted)), 0);
}

TEST_F(ViewerEdits, RefuseWhatDoesNotFitAndStop)
{
    using enum Edit::eKind;
    EXPECT_EQ(Fail(*content_, {.kind = e_crop, .size = {10, 10}, .origin = {1491, 0}}),
              "10 rows from 1491 on do not lie in 1500 rows");
    EXPECT_EQ(Fail(*content_, {.kind = e_crop, .size = {10, 10}, .origin = {0, ~0U}}),
              "10 columns from 4294967295 on do not lie in 1501 columns");
    EXPECT_EQ(Fail(*content_, {.kind = e_crop, .size = {10, 0}, .origin = {0, 0}}),
              "0 columns from 0 on do not lie in 1501 columns");
    EXPECT_EQ(Fail(*content_, {.kind = e_resize, .size = {10}}), "a size of 1 numbers does not fit an image");
    EXPECT_EQ(Fail(*content_, {.kind = e_flip, .axis = eSampleAxis::e_layers}), "an image has no layers");
    EXPECT_TRUE(Fail(*content_, {.kind = e_convert, .format = e_format_none}).starts_with("no transfer leads"));
    // Stopped at each of its reports, the work has no result.
    for (int limit = 0; limit < 4; ++limit)
    {
        int count = 0;
        auto const stop = [&](double) { return ++count <= limit; };
        EXPECT_EQ(Apply(*content_, {.kind = e_convert, .format = e_format_L8}, stop), nullptr);
        EXPECT_EQ(count, limit + 1);
    }
}

/// A document with work on it.
class ViewerDocumentWork : public tests::DataFolder
{
protected:
    bool Await()
    {
        return quillmarsh::tests::WaitUntil(
            [&]
            {
                documents_.Poll();
                work_.Update();
                jobs_.Poll();
                return !work_.IsBusy(documents_.GetCurrent());
            });
    }
    void Convert(eSampleFormat format)
    {
        work_.Change(documents_.GetCurrent(), {.kind = Edit::eKind::e_convert, .format = format},
                     "convert " + GetFormatName(format));
    }
    void Crop(unsigned int size)
    {
        work_.Change(documents_.GetCurrent(), {.kind = Edit::eKind::e_crop, .size = {1, size}, .origin = {0, 0}},
                     "crop");
    }

    Documents documents_{loader_};
    Jobs jobs_{[] {}};
    std::vector<string> said_;
    DocumentWork work_{jobs_,
                       [this](string const &line, bool isFailure) { said_.push_back((isFailure ? "! " : "") + line); }};
};

TEST_F(ViewerDocumentWork, IsALineThatBeginsWithTheFile)
{
    string const saved = directory_ / "b.png";
    documents_.Open(Save("a.png", {4, 6}, 100, e_format_X8R8G8B8));
    Convert(e_format_L8);
    Crop(3);
    work_.Save(documents_.GetCurrent(), saved, *FindFileType(saved), {});
    EXPECT_TRUE(work_.IsBusy(documents_.GetCurrent()));
    EXPECT_THROW(work_.Undo(documents_.GetCurrent()), DataException);
    ASSERT_TRUE(Await());
    EXPECT_EQ(said_, (std::vector<string>{"a.png: convert L8", "a.png: crop", saved + ": saved"}));
    EXPECT_EQ(LoadFile(saved, *FindFileType(saved)).GetDimensions(), (Dimensions{1, 3}));
    EXPECT_FALSE(documents_.GetCurrent()->IsChanged());
    EXPECT_EQ(work_.Undo(documents_.GetCurrent()), "crop");
    EXPECT_EQ(work_.Undo(documents_.GetCurrent()), "convert L8");
    EXPECT_THROW(work_.Undo(documents_.GetCurrent()), DataException);
}

TEST_F(ViewerDocumentWork, EndsWithAFailureAndLosesNothing)
{
    string const old = directory_.Write("old.png", "old");
    documents_.Open(Save("a.png", {4, 6}, 100));
    // What does not fit is known once the file is there.
    Crop(7);
    work_.Save(documents_.GetCurrent(), old, *FindFileType(old), {.overwrite = true});
    ASSERT_TRUE(Await());
    ASSERT_EQ(said_.size(), 2u);
    EXPECT_EQ(said_[0], "! a.png: crop: 7 columns from 0 on do not lie in 6 columns");
    EXPECT_EQ(said_[1], "! save " + old + ": the work ahead of it was not done");
    EXPECT_EQ(quillmarsh::tests::ReadFile(old), "old");

    EXPECT_THROW(work_.Save(documents_.GetCurrent(), old, *FindFileType(old), {}), DataException) << "it exists";
    EXPECT_FALSE(work_.IsBusy(documents_.GetCurrent()));
    Crop(2);
    jobs_.StopAll();
    ASSERT_TRUE(Await());
    Crop(1);
    ASSERT_TRUE(Await());
    EXPECT_EQ(said_.back(), "a.png: crop");
    EXPECT_EQ(documents_.GetCurrent()->GetLoaded()->desc.dimensions, (Dimensions{1, 1}));

    documents_.Open(directory_ / "missing.png");
    Crop(1);
    ASSERT_TRUE(Await());
    EXPECT_TRUE(quillmarsh::tests::Contains(said_.back(), "missing.png")) << said_.back();
    EXPECT_THROW(Crop(1), DataException);
    EXPECT_THROW(work_.Redo(nullptr), DataException);
}

TEST_F(ViewerDocumentWork, SavesMipmapsAllOrNone)
{
    string const prefix = directory_ / "m";
    documents_.Open(Save("a.png", {4, 8}, 100));
    directory_.Write("m.2.qmdp.image", "old");
    work_.SaveMipmaps(documents_.GetCurrent(), prefix, e_format_L8, eSizeFilter::e_area, {});
    ASSERT_TRUE(Await());
    EXPECT_TRUE(said_.back().starts_with("! " + prefix + ".2.qmdp.image: ")) << said_.back();
    EXPECT_FALSE(std::filesystem::exists(prefix + ".0.qmdp.image"));
    work_.SaveMipmaps(documents_.GetCurrent(), prefix, {}, eSizeFilter::e_area, {.overwrite = true});
    ASSERT_TRUE(Await());
    EXPECT_EQ(said_.back(), prefix + ": saved 4 levels");
    EXPECT_EQ(LoadFile(prefix + ".3.qmdp.image", *FindFileType("a.qmdp.image")).GetDimensions(), (Dimensions{1, 1}));
}

} // namespace
} // namespace viewer
