#include <quillmarsh/basetools/controlledoutputstream.h>
#include <quillmarsh/basetools/outputstream.h>
#include <quillmarsh/basetools/streamsentries.h>

#include <gtest/gtest.h>

#include <sstream>

namespace quillmarsh
{
namespace
{

/// Notes each change of the type in the midst of the text.
class TypeRecorder : public OutputStream
{
public:
    TypeRecorder() : OutputStream(nullptr) { rdbuf(&text_); }
    ~TypeRecorder() override { rdbuf(nullptr); }

    void SetCurrentOutputType(unsigned int type) override { *this << '<' << type << '>'; }
    string GetText() const { return text_.str(); }

private:
    std::stringbuf text_;
};

/// Throws whatever is written to it.
class ThrowingBuffer : public std::streambuf
{
protected:
    std::streamsize xsputn(char const *, std::streamsize) override { throw 7; }
};

template<typename T>
string Print(T const &effector)
{
    std::ostringstream out;
    out << effector;
    return out.str();
}

TEST(StreamEffectors, WriteTheirShapes)
{
    EXPECT_EQ(Print(FillEffector(3, '*')), "***");
    EXPECT_EQ(Print(FillEffector(0, '*')), "");
    EXPECT_EQ(Print(FillEffector(1000, 'x')), string(1000, 'x'));
    EXPECT_EQ(Print(TabEffector(2)), "\t\t");
    EXPECT_EQ(Print(SeparatorLineEffector(4, '-')), "----\n");
    EXPECT_EQ(Print(SeparatorLineEffector(0, '-')), "\n");
    EXPECT_EQ(Print(TitleEffector("abc", 8, '=', true)), "========\n  abc\n========\n");
    EXPECT_EQ(Print(TitleEffector("abc", 8, '=', false)), "========\nabc\n========\n");
    EXPECT_EQ(Print(TitleEffector("abcdef", 4, '=', true)), "====\nabcdef\n====\n");
    EXPECT_EQ(Print(CaptionEffector("Command-help", 5, '-', 1)), "----- Command-help -----\n");

    CaptionEffector caption("one", 1, '-', 0);
    EXPECT_EQ(Print(caption("two")), "-two-\n");
}

TEST(StreamEffectors, SelectTheTypeOfTypedStreamsOnly)
{
    TypeRecorder typed;
    std::ostringstream plain;
    for (ostream *const out : {static_cast<ostream *>(&typed), static_cast<ostream *>(&plain)})
        *out << e_info << e_warning << e_error << e_attention << e_query << e_echo << e_debug << nl;
    EXPECT_EQ(typed.GetText(), "<0><1><2><3><4><5><6>\n");
    EXPECT_EQ(plain.str(), "\n");
}

TEST(StreamSentries, RestoreMaskAndFlags)
{
    std::ostringstream out;
    {
        StreamExceptionSentry const mask(out, std::ios_base::failbit);
        StreamFormatFlagsSentry const flags(out);
        out << std::hex << 255;
        EXPECT_THROW(out.setstate(std::ios_base::failbit), std::ios_base::failure);
    }
    EXPECT_EQ(out.exceptions(), std::ios_base::goodbit);
    out.clear();
    out << 255;
    EXPECT_EQ(out.str(), "ff255");

    out.setstate(std::ios_base::failbit);
    EXPECT_THROW(StreamExceptionSentry(out, std::ios_base::failbit), std::ios_base::failure);
    EXPECT_EQ(out.exceptions(), std::ios_base::goodbit);
}

TEST(ControlledOutputStream, FeedsEachTargetOnceAtAFlush)
{
    std::ostringstream first, second;
    ControlledOutputStream out;
    out << "lost" << std::flush;
    out.AddOutputTarget(first);
    out.AddOutputTarget(first);
    out << "a";
    EXPECT_EQ(first.str(), "");
    out.AddOutputTarget(second);
    EXPECT_EQ(first.str(), "a");
    out << "b" << std::endl;
    out.RemoveOutputTarget(first);
    out.RemoveOutputTarget(first);
    out << "c";
    out.RemoveAllOutputTargets();
    out << "d" << std::flush;
    EXPECT_EQ(first.str(), "ab\n");
    EXPECT_EQ(second.str(), "b\nc");
    EXPECT_TRUE(out.GetOutputTargets().empty());

    // The standard's own doors lead to the same buffer.
    out.AddOutputTarget(first);
    static_cast<ostream &>(out).rdbuf()->sputn("e", 1);
    out.rdbuf()->pubsync();
    EXPECT_EQ(first.str(), "ab\ne");
}

TEST(ControlledOutputStream, PassesTheTypeOnBetweenTextsAndFlushesAtItsEnd)
{
    TypeRecorder typed;
    std::ostringstream plain;
    {
        ControlledOutputStream out;
        out << e_error << "dropped" << std::flush;
        out.AddOutputTarget(plain);
        out.AddOutputTarget(typed);
        out << "a" << e_error << "b" << e_info;
    }
    EXPECT_EQ(typed.GetText(), "a<2>b<0>");
    EXPECT_EQ(plain.str(), "ab");
}

TEST(ControlledOutputStream, TargetThatThrowsKeepsNothingFromTheOthers)
{
    ThrowingBuffer buffer;
    ostream broken(&buffer);
    broken.exceptions(std::ios_base::badbit);
    std::ostringstream sound;
    ControlledOutputStream out;
    out.AddOutputTarget(broken);
    out.AddOutputTarget(sound);
    out << "text" << std::flush;
    EXPECT_TRUE(out.bad());
    EXPECT_EQ(sound.str(), "text");

    broken.clear();
    out.clear();
    out.exceptions(std::ios_base::badbit);
    out << "more";
    EXPECT_THROW(out.flush(), int);
    EXPECT_EQ(sound.str(), "textmore");
    out.clear();
    out << "last";
}

} // namespace
} // namespace quillmarsh
