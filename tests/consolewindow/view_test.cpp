// Colours and cells of the console window.
#include "source/gui/consolewindowview.h"

#include <quillmarsh/dataobjects/imagebase.h>

#include <gtest/gtest.h>

#include <cmath>

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

double GetLuminance(Color color)
{
    auto const linear = [](unsigned char channel)
    {
        double const part = channel / 255.0;
        return part <= 0.04045 ? part / 12.92 : std::pow((part + 0.055) / 1.055, 2.4);
    };
    return 0.2126 * linear(color.red) + 0.7152 * linear(color.green) + 0.0722 * linear(color.blue);
}

double GetContrast(Color a, Color b)
{
    double const first = GetLuminance(a), second = GetLuminance(b);
    return (std::max(first, second) + 0.05) / (std::min(first, second) + 0.05);
}

TEST(ConsoleWindowColors, CanBeRead)
{
    for (Color const &color : s_typeColors)
        EXPECT_GE(GetContrast(color, s_paper), 4.5) << int(color.red) << " " << int(color.green);
    for (Color const &color : {s_title, s_inactiveTitle, s_powered})
        EXPECT_GE(GetContrast(color, s_upperBandTop), 4.5) << int(color.red);
    EXPECT_GE(GetContrast(s_status, s_lowerBandTop), 4.5);
}

TEST(ConsoleCells, TakesColumnsAndClustersOfAnyBytes)
{
    struct Row
    {
        char const *name;
        string text;
        std::size_t begin, length;
        string columns;
    };
    string const umlauts = "\u00e4\u00f6\u00fc\u20ac";
    Row const rows[] = {
        {"within ASCII", "0123456789abcdef", 3, 10, "3456789abc"},
        {"past the end", "abc", 7, 2, ""},
        {"up to the end", "abc", 1, 700, "bc"},
        {"characters of two and three bytes", umlauts + umlauts + umlauts, 3, 6, "\u20ac" + umlauts + "\u00e4"},
        {"nothing but continuations", string(400, '\x80'), 0, 5, string(20, '\x80')},
        {"all of a greatest number", "abc", 0, ~std::size_t{0}, "abc"},
    };
    for (Row const &row : rows)
        EXPECT_EQ(row.columns, GetColumns(row.text, row.begin, row.length)) << row.name;

    // Past the 16384th character a byte counts as one, but none is torn apart.
    string line;
    for (int i = 0; i < 70000; ++i)
        line += "\u00e4";
    std::string_view const far = GetColumns(line, 16384 + 101, 2);
    EXPECT_EQ(std::size_t{16384 + 51} * 2, static_cast<std::size_t>(far.data() - line.data()));
    EXPECT_EQ("\u00e4\u00e4", far);

    std::string_view text = "a\u0301b\r\xff\xc3(\xf0\x9f\x98\x80\xc0\x80\x1b\xe2\x82";
    std::vector<wstring> clusters;
    wstring cluster;
    while (!text.empty())
    {
        TakeCluster(text, cluster);
        clusters.push_back(cluster);
    }
    wstring const none = {0x25a1};
    EXPECT_EQ((std::vector<wstring>{{'a', 0x301}, {'b'}, {}, none, none, {'('}, none, none, none, none, none}),
              clusters);
}

TEST(ConsoleCells, KeepWithinTheirRow)
{
    win_utils::GdiplusGuard const guard;
    Font font(platform::drawing::GetMonospaceFace(), 16);
    ASSERT_TRUE(font.IsValid());
    CellPainter cells(font, s_paper);
    int const cell = cells.GetCellWidth(), height = cells.GetCellHeight();
    AutoPtr<ImageBase> const image(ManufactureImage(e_format_X8R8G8B8, static_cast<unsigned int>(height) + 2,
                                                    static_cast<unsigned int>(5 * cell) + 2));
    Canvas(GetRows(*image)).Clear({255, 0, 0});
    // Many clusters and colours: the cache begins anew.
    for (int i = 0; i < 40; ++i)
    {
        string text;
        for (unsigned int code = 0x4e00u + unsigned(i) * 100, k = 0; k < 100; ++k, ++code)
            text += {static_cast<char>(0xe0 | code >> 12), static_cast<char>(0x80 | (code >> 6 & 0x3f)),
                     static_cast<char>(0x80 | (code & 0x3f))};
        for (std::size_t at = 0; at < text.size(); at += 9)
            cells.DrawRow(GetRows(*image), {1, 1, 5 * cell - 1, height}, std::string_view(text).substr(at),
                          {static_cast<unsigned char>(i), 200, 200});
    }
    for (unsigned int row = 0; row < image->GetNumRows(); ++row)
    {
        for (unsigned int column = 0; column < image->GetNumColumns(); ++column)
        {
            bool const isInside =
                row > 0 && row + 1 < image->GetNumRows() && column > 0 && column < static_cast<unsigned int>(5 * cell);
            unsigned char const *const pixel = image->SampleB(row, column);
            EXPECT_EQ(!isInside, pixel[2] == 255 && pixel[1] == 0) << row << ", " << column;
        }
    }
}

} // namespace
} // namespace quillmarsh::console_window
