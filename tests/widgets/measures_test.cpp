#include <quillmarsh/widgets/measures.h>

#include "tests/support/plain_look.h"

#include <quillmarsh/widgets/label.h>
#include <quillmarsh/widgets/textencoding.h>

#include <gtest/gtest.h>

#include <limits>

namespace quillmarsh::widgets
{
namespace
{

struct Conversion
{
    char const *utf8;
    char const *glyphs;
};

TEST(TextEncoding, FindsAGlyphForEverything)
{
    constexpr Conversion conversions[] = {
        {"Gr\xC3\xBC\xC3\x9F"
         "e\t\n",
         "Gr\xFC\xDF"
         "e\t\n"},
        {"\xC2\xA0\xC3\xBF", "\xA0\xFF"},
        {"\xE2\x80\x9CHi\xE2\x80\x9D \xE2\x80\x93 \xE2\x80\x99", "\"Hi\" - '"},
        {"Open\xE2\x80\xA6", "Open..."},
        {"\xE2\x80\xA2", "\xB7"},
        {"\xE6\x97\xA5\xF0\x9F\x98\x80", "\x7f\x7f"},
        {"a\rb\x1b\xC2\x85", "a\x7f"
                             "b\x7f\x7f"},
        {"\xC0\xAFx", "\x7f\x7fx"},               // an overlong form
        {"\xED\xA0\x80", "\x7f\x7f\x7f"},         // half of a pair of UTF-16
        {"x\xE2\x80", "x\x7f\x7f"},               // cut off
        {"\xF4\x90\x80\x80", "\x7f\x7f\x7f\x7f"}, // above the last character
    };
    for (Conversion const &conversion : conversions)
        EXPECT_EQ(ToGlyphs(conversion.utf8), conversion.glyphs) << conversion.utf8;
    EXPECT_EQ(ToGlyphs(string("a\0b", 3)), "a\x7f"
                                           "b");
}

TEST(TextEncoding, TellsWhatItWouldLose)
{
    string latin1;
    for (unsigned int code = 0x20; code <= 0xFF; ++code)
        latin1 += code < 0x7F || code >= 0xA0 ? static_cast<char>(code) : ' ';
    EXPECT_EQ(ToGlyphs(FromGlyphs(latin1)), latin1);
    EXPECT_TRUE(HasAllGlyphs(FromGlyphs(latin1)));
    EXPECT_FALSE(HasAllGlyphs("\xE2\x80\xA6"));
    EXPECT_FALSE(HasAllGlyphs("\xFF"));
}

/// Sets the scale back.
struct MeasuresDesk : tests::WidgetDesk
{
    ~MeasuresDesk() { Measures::SetScale(1); }

    Label &label = *new Label(nullptr, "");
};

TEST(Measures, ScaleStaysWithinItsLimitsAndLaysOutAnew)
{
    MeasuresDesk desk;
    auto &sign = *new Sign(nullptr, e_mark_error, 10);
    desk.Frame();
    Measures::SetScale(std::numeric_limits<float>::quiet_NaN());
    EXPECT_EQ(Measures::GetScale(), 1);
    Measures::SetScale(100);
    desk.Frame();
    EXPECT_EQ(sign.GetSize(), vec2(40, 40));
    Measures::SetScale(-1);
    desk.Frame();
    EXPECT_EQ(sign.GetSize(), vec2(5, 5));
    EXPECT_EQ(Measures::Pixels(0.1F), 1) << "what is there can be seen";
    EXPECT_EQ(Measures::Pixels(0), 0);
    EXPECT_EQ(Measures::Pixels(-9), -5);
}

struct Wrapping
{
    char const *text;
    float width;
    char const *wrapped;
};

TEST(Measures, WrapsBetweenWords)
{
    MeasuresDesk desk;
    desk.Frame();
    constexpr Wrapping wrappings[] = {
        {"aa bb cc", 50, "aa bb\ncc"},
        {"aa bb cc", 59.9F, "aa bb\ncc"},
        {"aa bb cc", 80, "aa bb cc"},
        {"a longword b", 40, "a\nlong\nword\nb"},
        {"aaa   bbb", 40, "aaa\nbbb"},
        {"  indented", 60, "  inde\nnted"},
        {"a\n\nb c", 20, "a\n\nb\nc"},
        {"aa bb ", 50, "aa bb"},
        {"abc", 0, "a\nb\nc"},
        {"", 50, ""},
        {"a b", std::numeric_limits<float>::infinity(), "a b"},
    };
    for (Wrapping const &wrapping : wrappings)
        EXPECT_EQ(WrapText(desk.label, wrapping.text, wrapping.width), wrapping.wrapped) << wrapping.text;
    EXPECT_EQ(CalcTextSize(desk.label, "aa\nb\n"), vec2(20, 60));
    EXPECT_EQ(CalcTextSize(desk.label, ""), vec2(0, 20));
}

TEST(Measures, FindsTheNearestPlaceBetweenGlyphs)
{
    MeasuresDesk desk;
    desk.Frame();
    constexpr std::pair<float, unsigned int> places[] = {{-5, 0}, {4, 0}, {5, 1}, {14, 1}, {16, 2}, {26, 3}, {1e9F, 3}};
    for (auto const &[x, place] : places)
        EXPECT_EQ(FindTextPosition(desk.label, "abc", x), place) << x;
    EXPECT_EQ(FindTextPosition(desk.label, "abc", std::numeric_limits<float>::quiet_NaN()), 0U);
}

TEST(Label, IsAsLargeAsItsText)
{
    MeasuresDesk desk;
    desk.label.SetText("Gr\xC3\xBC\xC3\x9F"
                       "e aus Ulm");
    desk.Frame();
    EXPECT_EQ(desk.label.GetSize(), vec2(130, 20));
    desk.label.SetWrapWidth(70);
    desk.Frame();
    EXPECT_EQ(desk.label.GetGlyphs(), "Gr\xFC\xDF"
                                      "e\naus Ulm");
    EXPECT_EQ(desk.label.GetSize(), vec2(70, 40));
}

TEST(Label, EndsWithDotsWhereItsWidthIsFixed)
{
    MeasuresDesk desk;
    desk.label.SetText("abcdefgh");
    desk.label.SetFixedWidth(true);
    constexpr std::pair<float, char const *> cuts[] = {
        {80, "abcdefgh"}, {79, "abcd..."}, {30, "..."}, {29, ""}, {0, ""}};
    for (auto const &[width, shown] : cuts)
    {
        desk.label.SetSize(width, 3);
        desk.label.UpdateGeometry(true);
        desk.Frame();
        desk.label.UpdateGeometry(true);
        EXPECT_EQ(desk.label.GetGlyphs(), shown);
        EXPECT_EQ(desk.label.GetSize(), vec2(width, 20));
    }
    desk.label.SetText("one\ntwo");
    desk.label.SetSizeX(200);
    desk.Frame();
    EXPECT_EQ(desk.label.GetGlyphs(), "one...");
}

} // namespace
} // namespace quillmarsh::widgets
