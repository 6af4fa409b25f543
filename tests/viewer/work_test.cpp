// The work room as its users see it: buttons, keys and lines do the same work.
#include "tests/viewer/drive_viewer.h"

#include <quillmarsh/dataobjects/datacodecmanager.h>
#include <quillmarsh/dataobjects/datafiles.h>
#include <quillmarsh/dataobjects/sampletransfer.h>

#include <gtest/gtest.h>

namespace quillmarsh::tests
{
namespace
{

using namespace sampled_data;

class WorkRoom : public testing::Test
{
protected:
    WorkRoom()
    {
        RegisterDefaultDataCodecs();
        RegisterDefaultImageFileExtensions();
        SampledData const data(e_format_A8R8G8B8, {32, 64});
        SaveFile(data, file_, *FindFileType(file_), {});
    }

    SampledData Load(string const &name)
    {
        string const file = directory_ / name;
        return LoadFile(file, *FindFileType(file));
    }

    SignalOperationsManager operations_;
    DataCodecManager manager_;
    ScratchDirectory directory_;
    string const file_ = directory_ / "a.png";
};

TEST_F(WorkRoom, WorksByButtonsKeysAndLines)
{
    // The lines of the console follow each other without a wait: each begins with the work of the one before.
    string const out = DriveViewer(directory_, "open '" + file_ + "'\ntab work\nconvert -format=A8L8\nresize 16x8\n" +
                                                   "save '" + directory_ / "lines.png" + R"('
robot wait 'Label "16x8 A8L8"'
robot click 'TextButton "Rows"'
robot wait 'Label "16x8 A8L8, not saved"'
robot click 'TextButton "Undo"'
robot wait 'Label "16x8 A8L8"'
robot key Control+Z
robot wait 'Label "64x32 A8L8, not saved"'
robot key Control+Y
robot wait 'Label "16x8 A8L8"'
robot click 'Choice "A8R8G8B8"'
robot click Menu -y=16
robot click 'TextButton "Convert"'
robot wait 'Label "16x8 *, not saved"'
robot click 'TextField "16x8"[0]'
robot key Control+A
robot type '4x4'
robot key Enter
robot wait 'Label "4x4 *, not saved"'
robot key Control+S
robot wait FileDialog
robot key Control+A
robot type 'dialog.png'
robot key Enter
robot wait FileDialog -gone
robot wait 'Label "4x4 *"'
robot wait -frames=30
)");
    EXPECT_TRUE(HasPart(out, "\nflip rows\n")) << "a button runs a line";
    EXPECT_TRUE(HasPart(out, "resize 4x4 -filter=area"));
    EXPECT_EQ(Load("lines.png").GetDimensions(), (Dimensions{8, 16}));
    EXPECT_EQ(Load("dialog.png").GetDimensions(), (Dimensions{4, 4}));
    EXPECT_EQ(Load("a.png").GetDimensions(), (Dimensions{32, 64}));
}

TEST_F(WorkRoom, RefusesWithTheReason)
{
    string const out = DriveViewer(directory_, "convert -format=L8\nopen '" + file_ + R"('
robot wait 'Label "a.png"'
convert -format=L9
resize 0x5
resize 5
flip layers
crop 10x10 -at=60x0
undo
save 'a.txt'
save ')" + file_ + R"('
robot wait -frames=30
)",
                                   true);
    for (char const *const reason : {"nothing is open", "'L9' is not the name of a sample format",
                                     "'0x5' is not a size of N samples", "a size of 1 numbers does not fit an image",
                                     "an image has no layers", "10 columns from 60 on do not lie in 64 columns",
                                     "there is no step to take back", "ends in none of", "already exists"})
        EXPECT_TRUE(HasPart(out, reason));
}

} // namespace
} // namespace quillmarsh::tests
