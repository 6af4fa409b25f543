#include <quillmarsh/dataobjects/datacodecmanager.h>

#include "tests/support/failures.h"
#include "tests/support/package_bytes.h"
#include "tests/support/scratch_directory.h"
#include "tests/support/scripted_dialogs.h"
#include <quillmarsh/dataobjects/datapackage.h>
#include <quillmarsh/dataobjects/sampletransfer.h>

#include <gtest/gtest.h>

#include <sstream>

namespace quillmarsh
{
namespace
{

using tests::PackageBytes;
using Texts = std::vector<string>;

/// Returns how a use is refused.
string TellRefusal(auto const &use)
{
    return tests::MessageOf<InvalidUsageException>(use);
}

constexpr unsigned int s_category = DataCategory_UserDefined + 1;

/// Records in a log when it is tried and when it is deleted.
class LoggingEncoder : public DataEncoder
{
public:
    LoggingEncoder(string const &name, Texts &newLog, bool newAccepts = false)
        : DataEncoder(s_category, name, "formats of " + name),
          log(newLog),
          accepts(newAccepts)
    {
    }
    ~LoggingEncoder() override { log.push_back("~" + GetCodecName()); }
    bool SaveData(void const *, string const &, string const &, NamedParameterList const &params) override
    {
        log.push_back(GetCodecName() + std::to_string(params.GetNumParameters()));
        return accepts;
    }

    Texts &log;
    bool accepts;
};

struct LoggingDecoder : DataDecoder
{
    LoggingDecoder(string const &name, Texts &newLog, void *newData = nullptr)
        : DataDecoder(s_category, name, ""),
          log(newLog),
          data(newData)
    {
    }
    void *LoadData(string const &, NamedParameterList const &params) override
    {
        log.push_back(GetCodecName() + std::to_string(params.GetNumParameters()));
        return data;
    }

    Texts &log;
    void *data;
};

TEST(DataCodecManager, TriesCodecsInTheirOrderUntilOneAccepts)
{
    tests::ScratchDirectory const directory;
    Texts log;
    int datum = 0;
    DataCodecManager manager;
    manager.RegisterDataCategory(s_category);
    manager.RegisterEncoder(new LoggingEncoder("a", log));
    manager.RegisterEncoder(new LoggingEncoder("b", log));
    manager.RegisterEncoder(new LoggingEncoder("c", log, true));
    manager.RegisterDecoder(new LoggingDecoder("d", log));
    manager.RegisterDecoder(new LoggingDecoder("e", log, &datum));
    manager.RegisterDecoder(new LoggingDecoder("f", log, &log));

    EXPECT_TRUE(manager.SaveData(s_category, &datum, "file", "any", nullptr));
    EXPECT_EQ(std::exchange(log, {}), (Texts{"a5", "b5", "c5"}));
    NamedParameterList const none;
    manager.PrioritizeEncoders(s_category, "c", "a");
    EXPECT_TRUE(manager.SaveData(s_category, &datum, "file", "any", &none));
    EXPECT_EQ(std::exchange(log, {}), (Texts{"c0"}));
    // A pair that has this order already, or an encoder that is missing, changes nothing.
    manager.PrioritizeEncoders(s_category, "c", "b");
    manager.PrioritizeEncoders(s_category, "a", "z");
    manager.PrioritizeEncoders(s_category + 1, "a", "b");
    std::ostringstream dump;
    manager.DumpRegisteredEncoders(s_category, dump, 2);
    manager.DumpRegisteredEncoders(s_category + 1, dump, 2);
    EXPECT_EQ(dump.str(), "\t\tc: formats of c\n\t\tb: formats of b\n\t\ta: formats of a\n");

    string const file = directory.Write("file", "");
    EXPECT_EQ(manager.LoadData(s_category, file, nullptr), &datum);
    EXPECT_EQ(std::exchange(log, {}), (Texts{"d0", "e0"}));

    EXPECT_FALSE(manager.SaveData(s_category, nullptr, "file", "any", nullptr));
    EXPECT_FALSE(manager.SaveData(s_category, &datum, "", "any", nullptr));
    EXPECT_FALSE(manager.SaveData(s_category, &datum, "file", "", nullptr));
    EXPECT_EQ(manager.LoadData(s_category, "", nullptr), nullptr);
    EXPECT_EQ(log, Texts{});
    // The file is checked before the category.
    EXPECT_EQ(manager.LoadData(77, directory / "missing", nullptr), nullptr);
    EXPECT_EQ(TellRefusal([&] { manager.LoadData(77, file, nullptr); }), "Loading unregistered data-category data.");
    EXPECT_EQ(TellRefusal([&] { manager.SaveData(77, &datum, "file", "any", nullptr); }),
              "Saving unregistered data-category data.");
}

TEST(DataCodecManager, OwnsTheCodecsThatItAccepted)
{
    Texts log;
    {
        DataCodecManager manager;
        LoggingEncoder onStack("stack", log);
        EXPECT_EQ(TellRefusal([&] { manager.RegisterEncoder(&onStack); }), "Encoder is not created on heap: stack");
        auto refused = std::make_unique<LoggingEncoder>("a", log);
        EXPECT_EQ(TellRefusal([&] { manager.RegisterEncoder(refused.get()); }),
                  "Encoder category is not registered: a");
        manager.RegisterDataCategory(s_category);
        manager.RegisterEncoder(new LoggingEncoder("a", log));
        EXPECT_EQ(TellRefusal([&] { manager.RegisterEncoder(refused.get()); }), "Encoder is already registered: a");
        LoggingDecoder decoder("d", log);
        EXPECT_EQ(TellRefusal([&] { manager.RegisterDecoder(&decoder); }), "Decoder is not created on heap: d");

        manager.RegisterEncoder(new LoggingEncoder("b", log));
        manager.RegisterEncoder(new LoggingEncoder("c", log));
        manager.RegisterDataCategory(s_category);
        EXPECT_EQ(manager.GetNumEncoders(s_category), 3u);
        manager.UnregisterEncoder(s_category, "b");
        manager.UnregisterEncoder(s_category, "b");
        manager.UnregisterEncoder(77, "a");
        EXPECT_EQ(std::exchange(log, {}), (Texts{"~b"}));
        EXPECT_EQ(manager.GetEncoder(s_category, 1)->GetCodecName(), "c");
        EXPECT_TRUE(manager.IsEncoderRegistered(s_category, "a"));

        tests::ScriptedDialogs dialogs;
        EXPECT_EQ(manager.GetEncoder(s_category, 2), nullptr);
        EXPECT_EQ(manager.GetDecoder(77, 0), nullptr);
        manager.RegisterEncoder(nullptr);
        EXPECT_EQ(dialogs.TakeTexts(),
                  (Texts{"Index out of range.", "Unregistered data-category.", "Invalid argument."}));
    }
    EXPECT_EQ(log, (Texts{"~a", "~stack", "~a", "~c"}));
}

template<typename Manager>
void ExpectOnlyOne(string const &name)
{
    tests::ScriptedDialogs dialogs(platform::eDialogAnswer::e_retry);
    {
        Manager first;
        EXPECT_EQ(&Manager::Instance(), Manager::InstancePtr());
        Manager second;
        EXPECT_EQ(dialogs.TakeTexts(), Texts{name + " singleton already created."});
    }
    EXPECT_EQ(dialogs.TakeTexts(), Texts{"Destructing non-existent " + name + " singleton."});
    EXPECT_EQ(Manager::InstancePtr(), nullptr);
    EXPECT_EQ(dialogs.TakeTexts(), Texts{name + " singleton is not created."});
}

TEST(DataManagers, AssertWhenTheyExistTwiceOrNotAtAll)
{
    ExpectOnlyOne<DataCodecManager>("DataCodecManager");
    ExpectOnlyOne<SignalOperationsManager>("SignalOperationsManager");
}

TEST(DataCodecManager, CategoriesStartWithTheInitialParameters)
{
    DataCodecManager manager;
    manager.RegisterDataCategory(s_category);
    manager.SetEncoderInitialParamList({});
    EXPECT_EQ(manager.GetEncoderDefaultParamList(s_category).GetNumParameters(), 5u);
    EXPECT_EQ(manager.GetEncoderDefaultParamList(77).GetNumParameters(), 0u);
    EXPECT_EQ(manager.GetEncoderDefaultParamList(s_category).GetValueUInteger("CompressionLevel", 0), 100u);

    manager.ResetEncoderInitialParamList();
    SignalCodecParamFactory const factory(true, false);
    manager.SetEncoderDefaultParamList(s_category, factory);
    manager.SetDecoderDefaultParamList(s_category, factory);
    manager.SetDecoderDefaultParamList(77, factory);
    NamedParameterList const &params = manager.GetEncoderDefaultParamList(s_category);
    EXPECT_EQ(params.GetNumParameters(), 7u);
    EXPECT_TRUE(params.GetValueBool("OriginBottom", false));
    EXPECT_FALSE(params.GetValueBool("OriginBack", true));
    EXPECT_EQ(manager.GetDecoderDefaultParamList(s_category).GetNumParameters(), 2u);
    EXPECT_EQ(manager.GetDecoderDefaultParamList(77).GetNumParameters(), 0u);
}

TEST(DataCodecManager, KnowsExtensionsOfFormats)
{
    DataCodecManager manager;
    RegisterDefaultSignalFileExtensions();
    RegisterDefaultImageFileExtensions();
    string extension;
    manager.SetDefaultFileFormatExtension(DataCategory_Image, "BMP", "");
    constexpr std::tuple<unsigned int, char const *, bool, char const *> cases[] = {
        {DataCategory_Image, "JPEG", true, "jpeg"},
        {DataCategory_Signal, "QMDP", true, "qmdp.signal"},
        {DataCategory_Image, "BMP", false, "dat"}};
    for (auto const &[category, format, isKnown, expected] : cases)
    {
        EXPECT_EQ(manager.GetDefaultFileFormatExtension(category, format, extension, "dat"), isKnown) << format;
        EXPECT_EQ(extension, expected);
    }
}

class PackageCodecs : public testing::Test
{
protected:
    PackageCodecs() { RegisterDefaultDataCodecs(); }

    tests::ScratchDirectory directory_;
    DataCodecManager manager_;
    SignalOperationsManager operations_;
};

TEST_F(PackageCodecs, SaveAndLoadByTheParameters)
{
    EXPECT_NE(manager_.FindEncoder(DataCategory_Signal, "SignalEncoder/QMDP"), nullptr);
    Image<Sample8> image(e_format_L8, 2, 1);
    image.Sample(0).bytes[0] = 'a';
    image.Sample(1).bytes[0] = 'b';
    string const file = directory_ / "a file";
    EXPECT_FALSE(SaveImage(image, file, "PACKAGE"));
    EXPECT_TRUE(SaveImage(image, file, "QMDP"));
    EXPECT_EQ(tests::ReadFile(file), PackageBytes({e_payload_image}, {2, 1, e_format_L8, 0, 0}, "ab"));

    NamedParameterList params;
    params.Insert(NamedParameter("OriginBottom", true), true);
    params.Insert(NamedParameter("ByteOrderBigEndian", true), true);
    EXPECT_FALSE(SaveImage(image, file, "QMDP", &params));
    params.Insert(NamedParameter("FileOverwrite", true), true);
    EXPECT_TRUE(SaveImage(image, file, "QMDP", &params));
    EXPECT_EQ(tests::ReadFile(file), PackageBytes({e_payload_image, 0, true}, {2, 1, e_format_L8, 2, 0}, "ba"));

    AutoPtr<ImageBase> const upright(LoadImageA(file));
    ASSERT_TRUE(upright);
    EXPECT_EQ(*upright->GetSamplesB(), 'a');
    AutoPtr<ImageBase> const turned(LoadImageA(file, &params));
    ASSERT_TRUE(turned);
    EXPECT_EQ(*turned->GetSamplesB(), 'b');

    Volume<Sample8> volume(e_format_L8, 2, 1, 1);
    volume.Sample(0).bytes[0] = 'a';
    volume.Sample(1).bytes[0] = 'b';
    params.Insert(NamedParameter("OriginBack", true), true);
    EXPECT_TRUE(SaveVolume(volume, file, "QMDP", &params));
    EXPECT_EQ(tests::ReadFile(file), PackageBytes({e_payload_volume, 0, true}, {2, 1, 1, e_format_L8, 6, 0}, "ba"));
    AutoPtr<VolumeBase> const loaded(LoadVolume(file));
    ASSERT_TRUE(loaded);
    EXPECT_EQ(*loaded->GetSamplesB(), 'a');

    EXPECT_FALSE(SaveSignal(Signal<Sample8>(e_format_L8, 0), directory_ / "empty", "QMDP"));
    EXPECT_EQ(LoadSignal(file), nullptr);
}

TEST_F(PackageCodecs, LoadIntoTheFormatOfTheDestination)
{
    Image<Sample16> packed(e_format_A1R5G5B5, 1, 2);
    string const file = directory_ / "file";
    EXPECT_TRUE(SaveImage(packed, file, "QMDP"));
    Image<Sample32> colour(e_format_A8R8G8B8, 0, 0);
    EXPECT_TRUE(LoadImageAs(colour, file));
    EXPECT_EQ(colour.GetNumColumns(), 2u);
    EXPECT_EQ(colour.GetSampleFormat(), e_format_A8R8G8B8);
    Image<Sample8> luminance(e_format_L8, 0, 0);
    EXPECT_FALSE(LoadImageAs(luminance, file) || LoadImageAs(colour, directory_ / "missing"));
}

} // namespace
} // namespace quillmarsh
