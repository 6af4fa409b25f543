// The list of a folder.
#include "viewer_model/files/folder.h"

#include "datafolder.h"

namespace viewer
{
namespace
{

using namespace quillmarsh;

class ViewerFolder : public tests::DataFolder
{
protected:
    void Read()
    {
        string reason;
        ASSERT_TRUE(folder_.Read(directory_.GetPath().string(), reason)) << reason;
    }

    std::vector<string> GetNames() const
    {
        std::vector<string> names;
        for (FolderEntry const &entry : folder_.GetEntries())
            names.push_back(entry.name);
        return names;
    }

    Folder folder_;
};

TEST_F(ViewerFolder, ListsFoldersThenKnownFilesByNumber)
{
    for (string const name : {"b10.png", "B9.PNG", "b010.png", "a.qmdp.volume", "x.qmdp", "c.qmdp.signal", "notes.txt",
                              ".hidden.png", "png", "b9.jpeg.bak"})
        directory_.Write(name, name);
    std::filesystem::create_directory(directory_.GetPath() / "z folder.png");
    Read();
    EXPECT_EQ(GetNames(), (std::vector<string>{"z folder.png", "a.qmdp.volume", "B9.PNG", "b010.png", "b10.png",
                                               "c.qmdp.signal", "x.qmdp"}));
    EXPECT_TRUE(folder_.GetEntries()[0].isFolder);
    EXPECT_EQ(folder_.GetEntries()[1].numDimensions, 3u);
    EXPECT_EQ(folder_.GetEntries()[1].byteSize, 13u);
    EXPECT_EQ(folder_.GetEntries()[2].numDimensions, 2u);
    EXPECT_EQ(folder_.GetEntries()[5].numDimensions, 1u);
    EXPECT_EQ(folder_.GetEntries()[6].numDimensions, 0u);
}

TEST_F(ViewerFolder, FindsWordsAndNeighbours)
{
    for (string const name : {"sky 1.png", "sky 2.png", "sea 10.png"})
        directory_.Write(name, "");
    std::filesystem::create_directory(directory_.GetPath() / "folder");
    Read();
    EXPECT_EQ(folder_.FindNeighbour(directory_ / "sky 2.png", true), directory_ / "sea 10.png") << "around";
    EXPECT_EQ(folder_.FindNeighbour(directory_ / "sea 10.png", false), directory_ / "sky 2.png") << "around, no folder";
    EXPECT_EQ(folder_.FindNeighbour(directory_ / "sky 1.png", true), directory_ / "sky 2.png");
    EXPECT_EQ(folder_.FindNeighbour(directory_ / "sky 1a.png", true), directory_ / "sky 2.png") << "gone";
    EXPECT_EQ(folder_.FindNeighbour(directory_ / "sky 1a.png", false), directory_ / "sky 1.png") << "gone";

    folder_.SetFilter("  PNG sk ");
    EXPECT_EQ(GetNames(), (std::vector<string>{"sky 1.png", "sky 2.png"}));
    EXPECT_EQ(folder_.FindNeighbour(directory_ / "sky 2.png", true), directory_ / "sky 1.png");
    folder_.SetFilter("1");
    EXPECT_EQ(GetNames(), (std::vector<string>{"sea 10.png", "sky 1.png"}));
    folder_.SetFilter("sky 1");
    EXPECT_EQ(folder_.FindNeighbour(directory_ / "sky 1.png", true), "") << "the only one";
    folder_.SetFilter("nothing");
    EXPECT_EQ(folder_.FindNeighbour(directory_ / "sky 1.png", true), "");
}

TEST_F(ViewerFolder, KeepsFailuresOfFilesThatHaveNotChanged)
{
    directory_.Write("a.png", "1");
    directory_.Write("b.png", "1");
    Read();
    folder_.SetFailure("a.png", "bad");
    folder_.SetFailure("b.png", "bad");
    unsigned int const revision = folder_.GetRevision();
    folder_.SetFailure("b.png", "bad");
    EXPECT_EQ(folder_.GetRevision(), revision);
    directory_.Write("b.png", "12");
    Read();
    EXPECT_EQ(folder_.GetEntries()[0].failure, "bad");
    EXPECT_EQ(folder_.GetEntries()[1].failure, "");
    EXPECT_GT(folder_.GetRevision(), revision);

    string reason;
    EXPECT_FALSE(folder_.Read(directory_ / "missing", reason));
    EXPECT_EQ(reason, directory_ / "missing" + ": is no folder");
    EXPECT_FALSE(folder_.Read(directory_ / "a.png", reason));
    EXPECT_EQ(GetNames().size(), 2u) << "nothing has changed";
}

TEST_F(ViewerFolder, OfTenThousandFilesTellsWhichCannotBeOpened)
{
    constexpr unsigned int count = 10000;
    string const good = quillmarsh::tests::ReadFile(Save("good.png", {2, 3}, 5));
    std::vector<string> files;
    for (unsigned int i = 0; i < count; ++i)
        files.push_back(directory_.Write("f" + std::to_string(i) + ".png", i % 100 == 7 ? good.substr(0, 40) : good));
    Read();
    ASSERT_EQ(folder_.GetEntries().size(), count + 1);
    EXPECT_EQ(folder_.GetEntries()[count - 1].name, "f9999.png");
    loader_.MakePreviews({files.begin(), files.begin() + 200});
    for (unsigned int i = 0; i < 200; ++i)
    {
        LoadResult const result = Take(loader_);
        ASSERT_EQ(result.fileName, files[i]);
        ASSERT_EQ(result.part == LoadResult::ePart::e_failed, i % 100 == 7) << result.failure;
        if (!result.failure.empty())
            folder_.SetFailure("f" + std::to_string(i) + ".png", result.failure);
    }
    auto const hasFailure = [](FolderEntry const &entry) { return !entry.failure.empty(); };
    Read();
    EXPECT_EQ(std::count_if(folder_.GetEntries().begin(), folder_.GetEntries().end(), hasFailure), 2);
}

} // namespace
} // namespace viewer
