// Damaged files through the loader: told, and everything else goes on.
#include "datafolder.h"

#include "tests/support/package_bytes.h"

namespace viewer
{
namespace
{

using namespace quillmarsh;
using namespace quillmarsh::sampled_data;

class ViewerDamagedFiles : public tests::DataFolder
{
protected:
    /// Loads a file to its end. Returns the failure; empty if there was none.
    string Load(string const &file)
    {
        loader_.Load(file);
        for (;;)
        {
            LoadResult const result = Take(loader_);
            EXPECT_EQ(result.fileName, file);
            if (result.part == LoadResult::ePart::e_failed)
            {
                EXPECT_TRUE(result.failure.starts_with(file + ": ")) << result.failure;
                EXPECT_GT(result.failure.size(), file.size() + 2);
                EXPECT_EQ(result.failure.find('\n'), string::npos) << result.failure;
                return result.failure;
            }
            EXPECT_TRUE(result.loaded && result.loaded->content);
            if (result.part == LoadResult::ePart::e_levels)
                return "";
        }
    }
};

TEST_F(ViewerDamagedFiles, OfTheCorpusAreToldOrLoaded)
{
    unsigned int count = 0;
    for (char const *const folder : {"dataformats", "datapackage", "imagefiles"})
    {
        for (auto const &entry :
             std::filesystem::directory_iterator(string(QUILLMARSH_TEST_SOURCES "fuzz/corpus/") + folder))
        {
            string const bytes = quillmarsh::tests::ReadFile(entry.path());
            for (char const *const extension : {".png", ".qmdp", ".tif"})
                Load(directory_.Write("file" + std::to_string(count++) + extension, bytes));
        }
    }
    EXPECT_GT(count, 30u);
    EXPECT_EQ(Load(Save("good.png", {3, 4}, 5)), "");
}

TEST_F(ViewerDamagedFiles, ThatEndAnywhereAreTold)
{
    for (char const *const name : {"a.qmdp.volume", "a.qmdp.signal", "a.png", "a.bmp", "a.tif", "a.jpg"})
    {
        std::size_t const numDimensions = FindFileType(name)->numDimensions;
        Dimensions const size = numDimensions == 1   ? Dimensions{60}
                                : numDimensions == 2 ? Dimensions{6, 10}
                                                     : Dimensions{2, 5, 6};
        string const file = Save(name, size, 77);
        string const bytes = quillmarsh::tests::ReadFile(file);
        EXPECT_EQ(Load(file), "");
        for (std::size_t length = 0; length < bytes.size(); length += 1 + bytes.size() / 40)
        {
            string const cut = directory_.Write(std::to_string(length) + name, bytes.substr(0, length));
            // Decoders may do without the last bytes of a picture.
            bool const isTold = !Load(cut).empty();
            EXPECT_TRUE(isTold || length >= bytes.size() / 2) << name << " of " << length << " bytes";
        }
    }
}

TEST_F(ViewerDamagedFiles, WithOneWrongBitAreToldOrLoaded)
{
    for (char const *const name : {"a.qmdp.image", "a.png", "a.bmp", "a.tif", "a.jpg"})
    {
        string const bytes = quillmarsh::tests::ReadFile(Save(name, {6, 10}, 77));
        std::size_t const numBits = 8 * std::min<std::size_t>(bytes.size(), 100);
        for (std::size_t bit = 0; bit < numBits; bit += 7)
            Load(directory_.Write(std::to_string(bit) + name, quillmarsh::tests::FlipBit(bytes, bit)));
        EXPECT_EQ(Load(directory_.Write(name, bytes)), "");
    }
}

TEST_F(ViewerDamagedFiles, OfAnotherKindThanTheirNameAreLoadedAsWhatTheyAre)
{
    string const volume = Save("a.qmdp", {2, 3, 4}, 1);
    std::filesystem::rename(volume, directory_ / "a.png");
    EXPECT_EQ(Load(directory_ / "a.png"), "");
    EXPECT_TRUE(quillmarsh::tests::Contains(Load(directory_.GetPath().string()), "directory"));
    EXPECT_NE(Load(directory_.Write("empty.png", "")), "");
    EXPECT_NE(Load(""), "");
}

} // namespace
} // namespace viewer
