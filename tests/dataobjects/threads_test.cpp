// Threads that load, save, print and profile at the same time; most useful under the thread sanitizer.
#include <quillmarsh/basetools/profiler.h>
#include <quillmarsh/basetools/serializer_parameters.h>
#include <quillmarsh/basetools/sharedoutputstream.h>
#include <quillmarsh/dataobjects/datacodecmanager.h>
#include <quillmarsh/dataobjects/signaloperations.h>

#include "tests/support/sample_blocks.h"
#include "tests/support/scratch_directory.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <atomic>
#include <cstring>
#include <iomanip>
#include <thread>

namespace quillmarsh
{
namespace
{

class LineSink : public TextSink
{
public:
    void OnText(std::string_view text, unsigned int) override
    {
        numLines += static_cast<int>(std::count(text.begin(), text.end(), '\n'));
        isWhole = isWhole && text.ends_with('\n') && text.starts_with("0x");
    }

    std::atomic<int> numLines = 0;
    std::atomic<bool> isWhole = true;
};

class Worker
{
public:
    Worker(unsigned int number, tests::ScratchDirectory const &directory, ostream &out)
        : number_(number),
          name_(directory / ("file" + std::to_string(number))),
          damaged_(directory.Write("damaged" + std::to_string(number), string("\x89PNG\r\n\x1A\n", 8))),
          image_(e_format_A8R8G8B8, 4 + number, 9),
          out_(out)
    {
        tests::CountUp(image_, static_cast<unsigned char>(number));
        params_.Insert(NamedParameter(data_codec_parameters::Param_FileOverwrite, true), true);
        params_.Insert(NamedParameter(data_codec_parameters::Param_ByteOrderBigEndian, number % 2 != 0), true);
    }

    bool Run()
    {
        Profiler profiler;
        profiler.Enable(true);
        bool succeeded = true;
        for (int i = 0; i < s_numTurns; ++i)
        {
            profiler.EnterRootNode();
            profiler.EnterNode("turn");
            succeeded = KeepsPackages() && KeepsPictures() && KnowsItsFailure() && succeeded;
            profiler.ExitNode();
            profiler.ExitRootNode();
            SharedOutputStream::GetThreadStream(out_) << "0x" << std::hex << std::setw(4) << number_ << std::endl;
        }
        return succeeded && profiler.GetIterationCount() != 0;
    }

    static constexpr int s_numTurns = 20;

private:
    /// Saves and loads a package, whose fields must be in the package's own byte order.
    bool KeepsPackages()
    {
        if (!SaveImage(image_, name_, "QMDP", &params_))
            return false;
        string const rows = tests::ReadFile(name_).substr(44, 4);
        AutoPtr<ImageBase> const loaded(LoadImageA(name_));
        return rows[number_ % 2 != 0 ? 3 : 0] == static_cast<char>(image_.GetNumRows()) && loaded &&
               loaded->CheckDimensionMatch(image_) && !serializer_parameters::IsFlippingInput() &&
               !serializer_parameters::IsFlippingOutput();
    }

    bool KeepsPictures()
    {
        for (char const *format : {"PNG", "TIFF", "JPEG", "BMP"})
        {
            bool const isSaved = SaveImage(image_, name_, format, &params_);
            AutoPtr<ImageBase> const loaded(isSaved ? LoadImageA(name_) : nullptr);
            bool const keepsAll = string(format) == "PNG";
            if (!loaded || !loaded->CheckDimensionMatch(image_) ||
                (keepsAll && std::memcmp(loaded->GetSamplesB(), image_.GetSamplesB(), image_.GetTotalByteSize()) != 0))
                return false;
        }
        return true;
    }

    bool KnowsItsFailure()
    {
        CodecFailureSentry const reason;
        bool const isPicture = number_ % 3 == 0;
        AutoPtr<ImageBase> const loaded(LoadImageA(isPicture ? damaged_ : name_ + "/none"));
        eCodecFailure const kind = reason.GetFailure().kind;
        bool const isOfPicture = kind == eCodecFailure::e_damaged || kind == eCodecFailure::e_unsupported;
        return !loaded && (isPicture ? isOfPicture : kind == eCodecFailure::e_notFound);
    }

    unsigned int number_;
    string name_;
    string damaged_;
    Image<Sample32> image_;
    NamedParameterList params_;
    ostream &out_;
};

TEST(Threads, LoadSavePrintAndProfileAtOnce)
{
    constexpr unsigned int numThreads = 8;
    SignalOperationsManager const operations;
    DataCodecManager const codecs;
    RegisterDefaultDataCodecs();
    tests::ScratchDirectory const directory;
    LineSink sink;
    {
        SharedOutputStream out(sink);
        std::atomic<unsigned int> numSucceeded = 0;
        std::vector<std::thread> threads;
        for (unsigned int i = 0; i < numThreads; ++i)
            threads.emplace_back([&, i] { numSucceeded += Worker(i, directory, out).Run() ? 1 : 0; });
        for (std::thread &thread : threads)
            thread.join();
        EXPECT_EQ(numSucceeded, numThreads);
    }
    EXPECT_EQ(sink.numLines, static_cast<int>(numThreads) * Worker::s_numTurns);
    EXPECT_TRUE(sink.isWhole);
}

} // namespace
} // namespace quillmarsh
