#include <quillmarsh/basetools/controlledoutputstream.h>
#include <quillmarsh/basetools/outputstream.h>
#include <quillmarsh/basetools/sharedoutputstream.h>
#include <quillmarsh/basetools/streamsentries.h>
#include <quillmarsh/basetools/syncprimitives.h>

#include <gtest/gtest.h>

#include <iomanip>
#include <sstream>
#include <thread>

namespace quillmarsh
{
namespace
{

/// Records each change of the type within the text.
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

/// Throws on every write.
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

TEST(StreamEffectors, FixedTextsTakeNoWidth)
{
    std::ostringstream out;
    out << std::setw(9) << TitleEffector("t", 2, '=') << std::setw(9) << CaptionEffector("c", 1, '-', 0) << std::setw(9)
        << SeparatorLineEffector(2) << IndentEffector(1) << "label: " << 1 << nl;
    EXPECT_EQ(out.str(), "==\nt\n==\n-c-\n--\n\tlabel: 1\n");
    out << std::setw(3) << FillEffector(1, '.') << 1;
    EXPECT_TRUE(out.str().ends_with("\n.  1"));
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

TEST(ControlledOutputStream, WritesToEachTargetOnceAtAFlush)
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

    // The standard library's own functions use the same buffer.
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

TEST(ControlledOutputStream, TargetThatThrowsLeavesTheOthersWorking)
{
    ThrowingBuffer buffer;
    /// Throws on texts and on types while its buffer throws.
    class Broken : public OutputStream
    {
    public:
        using OutputStream::OutputStream;
        void SetCurrentOutputType(unsigned int) override { throw 8; }
    };
    Broken broken(&buffer);
    broken.exceptions(std::ios_base::badbit);
    TypeRecorder sound;
    ControlledOutputStream out;
    out.exceptions(std::ios_base::badbit);
    out.AddOutputTarget(broken);
    out.AddOutputTarget(sound);
    out << "text" << std::endl << e_error << "more" << std::flush << "last" << std::flush;
    EXPECT_TRUE(out.good() && broken.bad());
    EXPECT_EQ(sound.GetText(), "text\n<2>morelast");
    out.RemoveOutputTarget(broken);
}

/// Keeps the texts with their types, as "0:text|".
class TextLog : public TextSink
{
public:
    void OnText(std::string_view text, unsigned int type) override
    {
        texts += std::to_string(type) + ":" + string(text) + "|";
    }

    string texts;
};

TEST(SharedOutputStream, EachThreadHasItsFormatAndItsType)
{
    TextLog log;
    auto shared = std::make_unique<SharedOutputStream>(log);
    EXPECT_EQ(&shared->GetThreadStream(), shared.get());
    *shared << std::hex << std::setw(6);
    Event hasPrinted, isGone;
    std::thread thread(
        [&]
        {
            OutputStream &out = shared->GetThreadStream();
            EXPECT_TRUE(&out != shared.get() && &out == &shared->GetThreadStream());
            out << e_error << std::setw(4) << 31 << ' ' << 31 << "\nno end";
            hasPrinted.Set();
            // The stream of this thread ends after the stream that it belongs to.
            isGone.WaitInfinite();
        });
    hasPrinted.WaitInfinite();
    *shared << 31 << "\nrest";
    shared.reset();
    isGone.Set();
    thread.join();
    EXPECT_EQ(log.texts, "2:  31 31\n|0:    1f\n|0:rest|");
}

TEST(SharedOutputStream, SinkMayPrintToTheStreamWhoseTextItTakes)
{
    struct Echo : TextLog
    {
        void OnText(std::string_view text, unsigned int type) override
        {
            TextLog::OnText(text, type);
            *stream << "heard\n" << std::flush;
        }
        SharedOutputStream *stream = nullptr;
    } sink;
    SharedOutputStream shared(sink);
    sink.stream = &shared;
    shared << "one\ntw" << std::hex << 0xA << '\n';
    EXPECT_EQ(sink.texts, "0:one\n|0:heard\ntwa\n|");
}

} // namespace
} // namespace quillmarsh
