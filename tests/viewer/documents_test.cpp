// Open documents, their steps, and files that others change.
#include "viewer_model/files/edits.h"

#include "datafolder.h"

namespace viewer
{
namespace
{

using namespace quillmarsh;
using namespace quillmarsh::sampled_data;

class ViewerDocuments : public tests::DataFolder
{
protected:
    /// Polls until the condition holds.
    template<typename Condition>
    bool Await(Condition condition)
    {
        return quillmarsh::tests::WaitUntil([&] { return documents_.Poll(), condition(); });
    }
    DocumentPtr Open(string const &file)
    {
        documents_.Open(file);
        EXPECT_TRUE(Await([&] { return !loader_.IsBusy() && !documents_.GetCurrent()->IsLoading(); }));
        return documents_.GetCurrent();
    }
    static unsigned char GetSample(Document const &document)
    {
        return *document.GetLoaded()->content->GetData().GetSamples().GetSamplesB();
    }
    /// A content whose samples have a value.
    static LoadedPtr Make(unsigned char value)
    {
        SampledData data(e_format_L8, {1});
        *data.GetSamples().GetSamplesB() = value;
        return Prepare(std::make_shared<Content const>(std::move(data)), {});
    }

    Documents documents_{loader_};
};

TEST_F(ViewerDocuments, OpenOnceAndCloseToTheOneBefore)
{
    string const a = Save("a.png", {2, 3}, 1);
    string const b = Save("b.png", {2, 3}, 2);
    string const broken = directory_.Write("c.png", "nothing");
    DocumentPtr const first = Open(a);
    EXPECT_EQ(first->GetTitle(), "a.png");
    DocumentPtr const second = Open(b);
    Open(broken);
    EXPECT_EQ(documents_.GetCurrent()->GetLoaded(), nullptr);
    EXPECT_TRUE(documents_.GetCurrent()->GetFailure().starts_with(broken + ": "));
    EXPECT_EQ(Open(a), first);
    EXPECT_EQ(documents_.GetAll().size(), 3u);

    // A file that could not be opened is tried again.
    Save("c.png", {1, 1}, 9);
    documents_.Open(broken);
    EXPECT_TRUE(Await([&] { return documents_.GetCurrent()->GetLoaded() != nullptr; }));
    unsigned int const revision = documents_.GetRevision();
    documents_.Close();
    EXPECT_EQ(documents_.GetCurrent(), second);
    EXPECT_GT(documents_.GetRevision(), revision);
    documents_.Close();
    documents_.Close();
    documents_.Close();
    EXPECT_EQ(documents_.GetCurrent(), nullptr);
}

TEST_F(ViewerDocuments, TakeTenStepsBack)
{
    Document document("result", Make(0));
    EXPECT_EQ(document.Undo(), "");
    for (unsigned char i = 1; i <= 12; ++i)
        document.Change(Make(i), "step " + std::to_string(i));
    for (unsigned char i = 12; i > 2; --i)
    {
        EXPECT_EQ(document.Undo(), "step " + std::to_string(i));
        EXPECT_EQ(GetSample(document), i - 1);
    }
    EXPECT_EQ(document.Undo(), "");
    EXPECT_EQ(document.Redo(), "step 3");
    EXPECT_EQ(GetSample(document), 3);
    document.Change(Make(50), "other");
    EXPECT_EQ(document.Redo(), "") << "another step was made";
    EXPECT_EQ(document.GetUndoName(), "other");
}

TEST_F(ViewerDocuments, KnowWhatIsSaved)
{
    DocumentPtr const document = Open(Save("a.png", {1, 1}, 1));
    EXPECT_FALSE(document->IsChanged());
    LoadedPtr const changed = Make(2);
    document->Change(changed, "step");
    EXPECT_TRUE(document->IsChanged());
    document->Undo();
    EXPECT_FALSE(document->IsChanged()) << "the content of the file is back";
    document->Redo();
    string const other = directory_ / "b.png";
    document->Change(Make(3), "while it was saved");
    document->SetSaved(other, GetFileStamp(other), changed->content);
    EXPECT_EQ(document->GetTitle(), "b.png");
    EXPECT_TRUE(document->IsChanged());
    document->Undo();
    EXPECT_FALSE(document->IsChanged());
}

TEST_F(ViewerDocuments, FollowTheirFiles)
{
    string const file = Save("a.qmdp", {300}, 1);
    DocumentPtr const document = Open(file);
    document->Change(Make(5), "step");
    document->Undo();
    Save("a.qmdp", {301}, 2);
    ASSERT_TRUE(Await([&] { return GetSample(*document) == 2; }));
    EXPECT_EQ(document->Redo(), "") << "steps belong to the old content";

    // Too short: it is told, and the content stays.
    std::filesystem::resize_file(file, 100);
    ASSERT_TRUE(Await([&] { return !document->GetFailure().empty(); }));
    EXPECT_TRUE(document->GetFailure().starts_with(file + ": byte ")) << document->GetFailure();
    EXPECT_EQ(GetSample(*document), 2);
    std::filesystem::remove(file);
    ASSERT_TRUE(Await([&] { return document->GetFailure() == file + ": is gone"; }));
    EXPECT_EQ(GetSample(*document), 2);

    // Steps that are not saved are not lost.
    document->Change(Make(7), "step");
    Save("a.qmdp", {300}, 3);
    ASSERT_TRUE(Await([&] { return GetSample(*document) == 3; }));
    EXPECT_EQ(document->GetFailure(), "");
    EXPECT_FALSE(document->IsChanged());
    EXPECT_EQ(document->Undo(), "reload");
    EXPECT_EQ(GetSample(*document), 7);
}

TEST_F(ViewerDocuments, LetGoOfWhatTheirFilesHave)
{
    // Two images with their levels, but not three.
    Documents documents(loader_, 30000);
    auto const open = [&](string const &file)
    {
        documents.Open(file);
        bool const isThere = quillmarsh::tests::WaitUntil(
            [&]
            {
                bool const isBusy = loader_.IsBusy();
                documents.Poll();
                return !isBusy && documents.GetCurrent()->GetLoaded();
            });
        EXPECT_TRUE(isThere);
        return documents.GetCurrent();
    };
    DocumentPtr const changed = open(Save("a.qmdp", {100, 100}, 1));
    changed->Change(Make(9), "step");
    string const file = Save("b.qmdp", {100, 100}, 2);
    DocumentPtr const first = open(file);
    DocumentPtr const held = open(Save("c.qmdp", {100, 100}, 3));
    LoadedPtr const holder = held->GetLoaded();
    DocumentPtr const last = open(Save("d.qmdp", {100, 100}, 4));
    open(Save("e.qmdp", {100, 100}, 5));
    EXPECT_FALSE(first->GetLoaded());
    EXPECT_TRUE(changed->GetLoaded());
    EXPECT_TRUE(held->GetLoaded());
    EXPECT_TRUE(last->GetLoaded());
    EXPECT_EQ(first->GetFailure(), "");
    EXPECT_EQ(open(file), first);
    EXPECT_EQ(GetSample(*first), 2);
    EXPECT_FALSE(first->IsChanged());
}

} // namespace
} // namespace viewer
