// What the console window draws on Linux, where fonts and drawing are the same on every machine.
#include "source/gui/consolewindowview.h"
#include "tests/support/pictures.h"

#include <quillmarsh/dataobjects/signaloperations.h>

#include <gtest/gtest.h>

namespace quillmarsh::console_window
{
namespace
{

using platform::PixelRows;
using platform::drawing::Canvas;
using platform::drawing::Font;

PixelRows GetRows(ImageBase &image)
{
    return {image.SampleB(0, 0), static_cast<std::ptrdiff_t>(image.GetRowByteSize()), image.GetNumRows(),
            image.GetNumColumns(), false};
}

unsigned int CountDifferent(ImageBase const &a, ImageBase const &b)
{
    unsigned int numDifferent = 0;
    for (unsigned int i = 0; i < a.GetNumSamples(); ++i)
        numDifferent += tests::pictures::GetDifference(static_cast<SignalBase const &>(a).SampleB(i),
                                                       static_cast<SignalBase const &>(b).SampleB(i)) != 0;
    return numDifferent;
}

/// The slow twin of the cache of tiles: the drawing service draws the whole row at once.
TEST(ConsoleCells, HaveThePixelsOfTextThatIsDrawnDirectly)
{
    win_utils::GdiplusGuard const guard;
    platform::drawing::FontFace const face = platform::drawing::HasFace({"Courier New"})
                                                 ? platform::drawing::FontFace{"Courier New"}
                                                 : platform::drawing::GetMonospaceFace();
    Font font(face, 16);
    ASSERT_TRUE(font.IsValid());
    CellPainter cells(font, s_paper);
    int const width = 80 * cells.GetCellWidth(), height = cells.GetCellHeight();
    AutoPtr<ImageBase> const direct(ManufactureImage(e_format_X8R8G8B8, static_cast<unsigned int>(height) + 7,
                                                     static_cast<unsigned int>(width) + 13));
    AutoPtr<ImageBase> const tiled(ManufactureImage(e_format_X8R8G8B8, direct->GetNumRows(), direct->GetNumColumns()));
    string const text = "The quick brown fox 0123456789 <{[(|/\\)]}> ffi.. -> == \u00c4\u00d6\u00dc\u00e9 @#%&";
    wstring wide;
    std::string_view rest = text;
    for (wstring cluster; !rest.empty(); wide += cluster)
        TakeCluster(rest, cluster);
    for (Color const color : {s_typeColors[0], s_typeColors[2], s_typeColors[0]})
    {
        Canvas canvas(GetRows(*direct));
        canvas.Clear(s_paper);
        canvas.DrawText(wide, font, {13, 7, static_cast<float>(width), static_cast<float>(height)}, false, color);
        Canvas(GetRows(*tiled)).Clear(s_paper);
        cells.DrawRow(GetRows(*tiled), {13, 7, width, height}, text, color);
        EXPECT_EQ(0u, CountDifferent(*direct, *tiled));
    }
}

/// Fills a buffer with what a program writes, and makes a picture of it.
class ConsoleWindowPictures : public testing::Test
{
protected:
    void SetUp() override
    {
        state.title = "Harbour simulation";
        state.status = "running, 60 frames per second";
        state.isActive = true;
        Append("quillmarsh-host 1.0.0\n", OutputStream::e_typeInfo);
        Append("> load-scene harbour.qmdp\n", OutputStream::e_typeEcho);
        Append("Reading harbour.qmdp: 3 images, 1 volume\n", OutputStream::e_typeInfo);
        Append("texture 'quay': 4096 x 4096 is larger than the device takes, loaded at 2048 x 2048\n",
               OutputStream::e_typeWarning);
        Append("texture 'gull': file gull.tif not found\n", OutputStream::e_typeError);
        Append("Shader set compiled in 41 ms\n", OutputStream::e_typeDebug);
        Append("The tracker has lost its base. Hold still for a moment.\n", OutputStream::e_typeAttention);
        Append("Overwrite 'harbour.log'? [yes/no]\n", OutputStream::e_typeQuery);
        Append("> yes\n", OutputStream::e_typeEcho);
    }
    void Append(string const &text, OutputStream::eOutputType type)
    {
        ConsoleOutputBufferSentry const lock(buffer);
        buffer.Append(text, type);
    }
    AutoPtr<ImageBase> Draw(unsigned int width, unsigned int height, int line = 1000, int column = 0)
    {
        int const w = static_cast<int>(width), h = static_cast<int>(height);
        state.vertical.SetVisibleSize(view.GetNumVisibleLines(w, h));
        state.horizontal.SetVisibleSize(view.GetNumVisibleColumns(w, h));
        ConsoleOutputBufferSentry const lock(buffer);
        state.vertical.SetTotalSize(buffer.GetNumLines());
        state.horizontal.SetTotalSize(buffer.GetMaxColumns());
        state.vertical.SetPosition(line);
        state.horizontal.SetPosition(column);
        ConsoleWindowView::PlaceBars(state.horizontal, state.vertical, w, h);
        state.CopyLines(&buffer);
        AutoPtr<ImageBase> image(ManufactureImage(e_format_X8R8G8B8, height, width));
        view.Render(GetRows(*image), state);
        return image;
    }

    SignalOperationsManager const operations;
    ConsoleOutputBuffer buffer;
    ConsoleWindowView view;
    ViewState state;
};

TEST_F(ConsoleWindowPictures, AreAsStored)
{
    EXPECT_TRUE(tests::MatchesPicture(*Draw(800, 400), "console_plain"));
    state.hasCloseGadget = true;
    EXPECT_TRUE(tests::MatchesPicture(*Draw(s_splashWidth, s_splashHeight), "console_splash"));
    for (int i = 0; i < 200; ++i)
        Append("frame " + std::to_string(i) + ": " + std::to_string(16 + i * 7 % 5) + " ms\n",
               i % 37 == 5 ? OutputStream::e_typeWarning : OutputStream::e_typeInfo);
    state.isActive = false;
    EXPECT_TRUE(tests::MatchesPicture(*Draw(640, 360, 6), "console_scrolled"));
    Append("A long line: " + string(60, '=') +
               " and its end, which no window of this width shows at once: " + string(40, '-') + "|\n",
           OutputStream::e_typeInfo);
    Append("Gr\u00fc\u00dfe, \u03ba\u03cc\u03c3\u03bc\u03b5, \u043f\u0440\u0438\u0432\u0435\u0442, na\u0069\u0308ve, "
           "\x80\xff and \x1b[31m\r\n",
           OutputStream::e_typeEcho);
    state.isActive = true;
    state.isMaximized = true;
    state.hotArea = TopLevelWindow::e_area_close;
    state.title = "A title that is much longer than the room that this window has for it in its upper band";
    EXPECT_TRUE(tests::MatchesPicture(*Draw(640, 280, 1000, 3), "console_long_lines"));
}

TEST_F(ConsoleWindowPictures, AreTheSameForTheSameStateAndTakeAnySize)
{
    AutoPtr<ImageBase> const first = Draw(500, 300);
    for (auto const &[width, height] : {std::pair(1u, 1u), {3u, 97u}, {96u, 20u}, {97u, 129u}, {2000u, 40u}})
        Draw(width, height);
    EXPECT_EQ(0u, CountDifferent(*first, *Draw(500, 300)));
    buffer.Clear();
    EXPECT_NE(0u, CountDifferent(*first, *Draw(500, 300)));
}

} // namespace
} // namespace quillmarsh::console_window
