#include <quillmarsh/basetools/exception.h>
#include <quillmarsh/basetools/filesystem.h>
#include <quillmarsh/dataobjects/imageio.h>
#include <quillmarsh/dataobjects/signalio.h>
#include <quillmarsh/dataobjects/volumeio.h>

#include "tests/support/package_bytes.h"
#include "tests/support/sample_blocks.h"
#include "tests/support/scratch_directory.h"
#include "tests/support/scripted_dialogs.h"

#include <gtest/gtest.h>

#include <cstring>
#include <sstream>

namespace quillmarsh
{
namespace
{

using tests::NumberBytes;
using tests::PackageBytes;
using tests::ScratchDirectory;

/// Fills a container so that neighbouring samples differ.
template<typename Container>
Container &Fill(Container &container)
{
    return tests::CountUp(container, 'a');
}

string SamplesOf(SignalBase const &container)
{
    return string(reinterpret_cast<char const *>(container.GetSamplesB()), container.GetTotalByteSize());
}

string Written(DataPackage const &package)
{
    std::ostringstream out;
    package.Serialize(out);
    return out.str();
}

/// Returns the message that an action throws; for a stream that ended, without the standard library's addition.
template<typename Action>
string FailureOf(Action const &action)
{
    try
    {
        action();
    }
    catch (Exception const &exception)
    {
        EXPECT_TRUE(exception.ContainsFileLine());
        return exception.GetClassName() + " " + exception.GetMessage();
    }
    catch (std::ios_base::failure const &failure)
    {
        string const text = failure.what();
        return "failure " + text.substr(0, text.find(".:") + 1);
    }
    return "";
}

string ReadFailure(DataPackage &package, string const &bytes)
{
    std::istringstream in(bytes);
    return FailureOf([&] { package.Deserialize(in); });
}

string const s_image = PackageBytes({e_payload_image, 7}, {2, 3, e_format_L8, 0, 0}, "abcdef");

TEST(DataPackage, WritesHeaderPayloadAndTrailerInEitherByteOrder)
{
    Signal<Sample16> signal(e_format_A8L8, 3);
    DataPackageSignal signalPackage;
    signalPackage.SetPayload(&Fill(signal));
    EXPECT_EQ(Written(signalPackage), PackageBytes({e_payload_signal}, {3, e_format_A8L8, 0, 0}, "abcdef"));
    signalPackage.SetPackageID(0x01020304);
    signalPackage.SetPackageByteOrderOnWrite(true);
    EXPECT_EQ(Written(signalPackage),
              PackageBytes({e_payload_signal, 0x01020304, true}, {3, e_format_A8L8, 0, 0}, "badcfe"));

    Image<Sample8> image(e_format_L8, 2, 3);
    DataPackageImage imagePackage;
    imagePackage.SetPackageID(7);
    imagePackage.SetPayload(&Fill(image));
    EXPECT_EQ(Written(imagePackage), s_image);
    imagePackage.SetRowOrderOnWrite(true);
    EXPECT_EQ(Written(imagePackage), PackageBytes({e_payload_image, 7}, {2, 3, e_format_L8, 2, 0}, "defabc"));

    // The twelve bytes of a sample are reversed as a whole, not component by component.
    Volume<Sample96> volume(sample_formats::UnknownSampleFormat(12), 1, 1, 2);
    DataPackageVolume volumePackage;
    volumePackage.SetPackageByteOrderOnWrite(true);
    volumePackage.SetPayload(&Fill(volume));
    EXPECT_EQ(Written(volumePackage),
              PackageBytes({e_payload_volume, 0, true}, {1, 1, 2, 0x0C000000, 0, 0}, "lkjihgfedcbaxwvutsrqponm"));
}

TEST(DataPackage, WalksLayersAndRowsOfAVolumeInAllFourOrders)
{
    constexpr std::tuple<bool, bool, char const *> orders[] = {{false, false, "abcdefghijkl"},
                                                               {false, true, "efcdabklijgh"},
                                                               {true, false, "ghijklabcdef"},
                                                               {true, true, "klijghefcdab"}};
    Volume<Sample8> volume(e_format_A8, 2, 3, 2);
    Fill(volume);
    for (auto const &[layers, rows, samples] : orders)
    {
        unsigned int const flags = (layers ? 4 : 0) | (rows ? 2 : 0);
        string const expected = PackageBytes({e_payload_volume}, {2, 3, 2, e_format_A8, flags, 0}, samples);
        DataPackageVolume package;
        package.SetLayerOrderOnWrite(layers);
        package.SetRowOrderOnWrite(rows);
        package.SetPayload(&volume);
        EXPECT_EQ(Written(package), expected);

        EXPECT_EQ(ReadFailure(package, expected), "");
        EXPECT_EQ(SamplesOf(*package.GetPayload(false)), "abcdefghijkl");
        package.SetLayerOrderOnRead(layers);
        package.SetRowOrderOnRead(rows);
        EXPECT_EQ(ReadFailure(package, PackageBytes({e_payload_volume}, {2, 3, 2, e_format_A8, 0, 0}, "abcdefghijkl")),
                  "");
        EXPECT_EQ(SamplesOf(*package.GetPayload(false)), samples);
    }
}

TEST(DataPackage, NumbersComeBackInEitherOrderAndSamplesAsTheyLieInTheFile)
{
    DataPackageImage package;
    unsigned int const format = sample_formats::UnknownSampleFormat(3);
    EXPECT_EQ(ReadFailure(package, PackageBytes({e_payload_image, 0x0A000001, true}, {1, 2, format, 0, 0}, "abcdef")),
              "");
    EXPECT_EQ(package.GetPackageID(), 0x0A000001u);
    ImageBase const &image = *package.GetPayload(false);
    EXPECT_EQ(image.GetNumRows(), 1u);
    EXPECT_EQ(image.GetNumColumns(), 2u);
    EXPECT_EQ(image.GetSampleFormat(), format);
    EXPECT_EQ(SamplesOf(image), "abcdef");
    // The order of written data is a separate setting.
    EXPECT_EQ(Written(package), PackageBytes({e_payload_image, 0x0A000001}, {1, 2, format, 0, 0}, "abcdef"));
    EXPECT_FALSE(serializer_parameters::IsInputStreamByteOrderBigEndian());
    EXPECT_FALSE(serializer_parameters::IsOutputStreamByteOrderBigEndian());
}

TEST(DataPackage, ReadsAfterAHeaderThatWasConsumed)
{
    std::istringstream in(s_image + "more");
    DataPackageHeader header;
    header.Deserialize(in);
    EXPECT_EQ(header.GetPayloadType(), e_payload_image);
    DataPackageImage package;
    package.SetSkipHeaderOnRead(true, &header);
    package.Deserialize(in);
    EXPECT_EQ(SamplesOf(*package.GetPayload(false)), "abcdef");
    EXPECT_EQ(in.tellg(), static_cast<std::streamoff>(s_image.size()));

    tests::ScriptedDialogs dialogs({platform::eDialogAnswer::e_retry, platform::eDialogAnswer::e_retry});
    package.SetSkipHeaderOnRead(true, nullptr);
    package.SetSkipHeaderOnRead(false, &header);
    EXPECT_EQ(dialogs.TakeTexts(), (std::vector<string>{"Invalid argument.", "Invalid argument."}));
    EXPECT_EQ(ReadFailure(package, s_image), "");
}

TEST(DataPackage, OwnsThePayloadUntilItIsTaken)
{
    Signal<Sample8> mine(e_format_L8, 1);
    DataPackageSignal package;
    package.SetPayload(&mine);
    EXPECT_EQ(package.GetPayload(true), &mine);

    ASSERT_EQ(ReadFailure(package, PackageBytes({e_payload_signal}, {1, e_format_L8, 0, 0}, "a")), "");
    SignalBase *const read = package.GetPayload(false);
    package.SetPayload(read);
    AutoPtr<SignalBase> const taken(package.GetPayload(true));
    EXPECT_EQ(taken.get(), read);
    EXPECT_EQ(package.GetPayload(true), read);
    package.SetPayload(nullptr);
    EXPECT_EQ(SamplesOf(*taken), "a");
}

TEST(DataPackage, WithoutSamplesIsNotReady)
{
    DataPackageSignal package;
    string const notReady = "SerializationException DataPackageSignal: Payload not ready.";
    EXPECT_EQ(FailureOf([&] { Written(package); }), notReady);
    Signal<Sample8> empty(e_format_L8, 0);
    package.SetPayload(&empty);
    EXPECT_EQ(FailureOf([&] { Written(package); }), notReady);
    // More than a package can store in its fields.
    SignalBaseFromExternalStorageAdapter huge(e_format_L8);
    unsigned char byte = 0;
    huge.SetExternalStorage(&byte, 0xFFFFFFF0);
    package.SetPayload(&huge);
    EXPECT_EQ(FailureOf([&] { Written(package); }),
              "SerializationException DataPackageSignal: Payload byte-size mismatch.");
}

struct Change
{
    char const *name;
    std::size_t offset;
    string bytes;
    char const *failure;
};

void ExpectFailures(DataPackage &package, string const &good, std::initializer_list<Change> changes)
{
    for (Change const &change : changes)
    {
        string bytes = good;
        bytes.replace(change.offset, change.bytes.size(), change.bytes);
        EXPECT_EQ(ReadFailure(package, bytes), change.failure) << change.name;
    }
}

TEST(DataPackage, NamesWhatIsWrong)
{
    char const *const corrupted = "DeserializationException DataPackageImage: Corrupted field.";
    char const *const unsupported = "DeserializationException DataPackageImage: Unsupported sample-byte-size.";
    char const *const mismatch = "DeserializationException DataPackageImage: Payload byte-size mismatch.";
    DataPackageImage package;
    ExpectFailures(
        package, s_image,
        {{"opening magic", 23, "?", "DeserializationException DataPackageHeader: Invalid opening magic-sequence."},
         {"byte order", 24, NumberBytes(1),
          "DeserializationException DataPackageHeader: Invalid byte-order specifier."},
         {"payload size", 32, NumberBytes(25), mismatch},
         {"payload type", 36, NumberBytes(1), "DeserializationException DataPackageImage: Payload-type mismatch."},
         {"closing magic", 40, "?", "DeserializationException DataPackageHeader: Invalid closing magic-sequence."},
         {"no rows", 44, NumberBytes(0), corrupted},
         {"no columns", 48, NumberBytes(0), corrupted},
         {"rows", 44, NumberBytes(0x80000000), mismatch},
         {"sizes that wrap to that of the payload", 44, NumberBytes(0x80000002) + NumberBytes(0x80000003), mismatch},
         {"format without a size", 52, NumberBytes(0x00000001), corrupted},
         {"format of five bytes", 52, NumberBytes(0x05000001), unsupported},
         {"flag of bit 0", 56, NumberBytes(1), corrupted},
         {"flag of layers", 56, NumberBytes(4), corrupted},
         {"reserved", 60, NumberBytes(1), corrupted},
         {"opening of trailer", 70, "?",
          "DeserializationException DataPackageTrailer: Invalid opening magic-sequence."},
         {"id of trailer", 74, NumberBytes(8), "DeserializationException DataPackageImage: Package-id mismatch."},
         {"end", 101, "?", "DeserializationException DataPackageTrailer: Invalid closing magic-sequence."}});
    EXPECT_EQ(ReadFailure(package, s_image), "");

    DataPackageSignal signal;
    EXPECT_EQ(ReadFailure(signal, s_image), "DeserializationException DataPackageSignal: Payload-type mismatch.");
    ExpectFailures(signal, PackageBytes({e_payload_signal}, {1, e_format_L8, 0, 0}, "a"),
                   {{"flag", 52, NumberBytes(2), "DeserializationException DataPackageSignal: Corrupted field."}});
    DataPackageVolume volume;
    ExpectFailures(volume, PackageBytes({e_payload_volume}, {1, 1, 1, e_format_L8, 6, 0}, "a"),
                   {{"flag", 60, NumberBytes(1), "DeserializationException DataPackageVolume: Corrupted field."}});
}

TEST(DataPackage, TruncatedAnywhereItNamesTheFieldAndHasNoPayload)
{
    constexpr std::pair<std::size_t, char const *> fields[] = {
        {24, "failure DataPackageHeader: Cannot read opening magic-sequence."},
        {28, "failure DataPackageHeader: Cannot read byte-order specifier."},
        {32, "failure DataPackageHeader: Cannot read package id."},
        {36, "failure DataPackageHeader: Cannot read payload byte-size."},
        {40, "failure DataPackageHeader: Cannot read payload type."},
        {44, "failure DataPackageHeader: Cannot read closing magic-sequence."},
        {48, "failure DataPackageImage: Cannot read number of rows."},
        {52, "failure DataPackageImage: Cannot read number of columns."},
        {56, "failure DataPackageImage: Cannot read sample format."},
        {60, "failure DataPackageImage: Cannot read flags."},
        {64, "failure DataPackageImage: Cannot read reserved field."},
        {70, "failure DataPackageImage: Cannot read samples."},
        {74, "failure DataPackageTrailer: Cannot read opening magic-sequence."},
        {78, "failure DataPackageTrailer: Cannot read package id."},
        {102, "failure DataPackageTrailer: Cannot read closing magic-sequence."}};
    std::size_t length = 0;
    for (auto const &[end, failure] : fields)
        for (; length < end; ++length)
        {
            DataPackageImage package;
            ASSERT_EQ(ReadFailure(package, s_image), "");
            EXPECT_EQ(ReadFailure(package, s_image.substr(0, length)), failure) << length;
            EXPECT_EQ(package.GetPayload(false), nullptr) << length;
        }
    EXPECT_EQ(length, s_image.size());
}

TEST(DataPackage, EveryBitOfTheHeaderIsChecked)
{
    for (std::size_t bit = 0; bit < 44 * 8; ++bit)
    {
        DataPackageImage package;
        EXPECT_NE(ReadFailure(package, tests::FlipBit(s_image, bit)), "") << bit;
    }
}

TEST(DataPackage, ClaimOfMoreThanTheStreamHoldsIsATruncatedStream)
{
    // Sizes of nearly 4 GiB that agree with each other.
    string bytes = s_image;
    bytes.replace(32, 4, NumberBytes(0xFFFE0001u + 20));
    bytes.replace(44, 8, NumberBytes(0xFFFF) + NumberBytes(0xFFFF));
    DataPackageImage package;
    EXPECT_EQ(ReadFailure(package, bytes), "failure DataPackageImage: Cannot read samples.");
}

/// Reports its position but cannot seek, like a compressed stream or one from a network.
class ForwardBuffer : public std::stringbuf
{
public:
    using std::stringbuf::stringbuf;

protected:
    pos_type seekoff(off_type offset, std::ios_base::seekdir direction, std::ios_base::openmode) override
    {
        bool const tells = offset == 0 && direction == std::ios_base::cur;
        return tells ? pos_type(gptr() - eback()) : pos_type(off_type{-1});
    }
    pos_type seekpos(pos_type, std::ios_base::openmode) override { return off_type{-1}; }
};

TEST(DataPackage, ReadsStreamsThatCannotSeek)
{
    // More than two steps, the last of which is a short one, and rows of three bytes across their borders; then one step.
    for (unsigned int const numRows : {1000u, 1u})
    {
        Image<Sample24> image(sample_formats::UnknownSampleFormat(3), numRows, 12001);
        for (unsigned int i = 0; i < image.GetTotalByteSize(); ++i)
            image.GetSamplesB()[i] = static_cast<unsigned char>(i * 2654435761u >> 24);
        DataPackageImage written;
        written.SetPayload(&image);
        written.SetRowOrderOnWrite(true);
        std::ostringstream out;
        written.Serialize(out);

        for (std::size_t const cut : {0, 33})
        {
            ForwardBuffer buffer(out.str().substr(0, out.str().size() - cut));
            std::istream in(&buffer);
            DataPackageImage package;
            string const failure = FailureOf([&] { package.Deserialize(in); });
            EXPECT_EQ(failure, cut == 0 ? "" : "failure DataPackageImage: Cannot read samples.");
            ImageBase const *const read = package.GetPayload(false);
            EXPECT_EQ(read != nullptr, cut == 0);
            if (read)
            {
                EXPECT_EQ(std::memcmp(read->GetSamplesB(), image.GetSamplesB(), image.GetTotalByteSize()), 0);
            }
        }
    }
}

TEST(DataPackage, FilesKeepTheirContentsUntilTheNewOnesAreWhole)
{
    ScratchDirectory const directory;
    string const name = directory / "two words \xC3\xA4\xE2\x82\xAC.qmdp.image";
    Image<Sample8> image(e_format_L8, 2, 3);
    DataPackageImage package;
    package.SetPackageID(7);
    package.SetPayload(&Fill(image));
    EXPECT_TRUE(package.SaveToFile(name, true));
    EXPECT_EQ(tests::ReadFile(file_system::GetStreamPath(name)), s_image);

    package.SetPayload(nullptr);
    EXPECT_FALSE(package.SaveToFile(name, false));
    EXPECT_EQ(FailureOf([&] { package.SaveToFile(name, true); }),
              "SerializationException DataPackageImage: Payload not ready.");
    EXPECT_EQ(tests::ReadFile(file_system::GetStreamPath(name)), s_image);
    EXPECT_EQ(directory.CountEntries(), 1);
    EXPECT_TRUE(package.LoadFromFile(name, true));
    EXPECT_EQ(SamplesOf(*package.GetPayload(false)), "abcdef");

    string const nowhere = directory / "missing/file";
    EXPECT_EQ(FailureOf([&] { package.LoadFromFile(nowhere, true); }),
              "DeserializationException Cannot open file: " + nowhere);
    EXPECT_EQ(FailureOf([&] { package.SaveToFile(nowhere, true); }),
              "SerializationException Cannot open file: " + nowhere);
    EXPECT_FALSE(package.LoadFromFile("", false) || package.SaveToFile("", false));
    EXPECT_FALSE(package.LoadFromFile(directory.GetPath().string(), false));
    EXPECT_FALSE(package.SaveToFile(directory.GetPath().string(), false));
}

} // namespace
} // namespace quillmarsh
