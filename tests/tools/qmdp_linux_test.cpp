#include "tests/support/package_bytes.h"
#include "tests/support/process.h"
#include "tests/support/scratch_directory.h"
#include "tests/support/terminal_linux.h"
#include "tests/support/tiff_bytes.h"
#include "tests/support/waiting.h"

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include <cstring>
#include <filesystem>
#include <sstream>

#include <sys/stat.h>

namespace quillmarsh::tests
{
namespace
{

using Words = std::vector<std::string>;

constexpr unsigned int s_L8 = 0x01000001;
constexpr unsigned int s_A8L8 = 0x02000001;
constexpr unsigned int s_A1R5G5B5 = 0x02000020;
constexpr unsigned int s_X8R8G8B8 = 0x04000001;
constexpr unsigned int s_A8R8G8B8 = 0x04000002;

ProcessResult RunTool(Words const &words)
{
    return RunProcess(QUILLMARSH_TEST_QMDP, words);
}

string Signal(unsigned int format, string const &samples)
{
    return PackageBytes({1}, {static_cast<unsigned int>(samples.size()) / (format >> 24), format, 0, 0}, samples);
}

string Image(unsigned int rows, unsigned int columns, unsigned int format, string const &samples)
{
    return PackageBytes({2}, {rows, columns, format, 0, 0}, samples);
}

string Volume(unsigned int layers, unsigned int rows, unsigned int columns, unsigned int format, string const &samples)
{
    return PackageBytes({3}, {layers, rows, columns, format, 0, 0}, samples);
}

/// Makes a package with two rows of three samples. The samples begin at byte 64, and the trailer at byte 70.
string SmallImage()
{
    return PackageBytes({2, 7}, {2, 3, s_L8, 0, 0}, "abcdef");
}

long CountLines(string const &text)
{
    return std::count(text.begin(), text.end(), '\n');
}

class Qmdp : public testing::Test
{
protected:
    /// Converts a package and returns the bytes of the result, or the text of the failure.
    string Convert(string const &package, Words const &options, string const &extension = ".qmdp")
    {
        Words words = {"convert", directory_.Write("in.qmdp", package), directory_ / ("out" + extension),
                       "--overwrite"};
        words.insert(words.end(), options.begin(), options.end());
        ProcessResult const result = RunTool(words);
        EXPECT_EQ(result.status == 0, result.err.empty());
        return result.status == 0 ? ReadFile(words[2]) : result.err;
    }

    ScratchDirectory directory_;
};

TEST_F(Qmdp, InfoTellsWhatFilesHold)
{
    string const odd = directory_.Write("a \"b\" \xC3\xBC \xFF\x01.qmdp.image",
                                        PackageBytes({2, 7, true}, {2, 3, s_A8L8, 2, 0}, string(12, 'x')));
    string const volume = directory_.Write("v", Volume(1, 2, 3, 0x0C000000, string(72, 'x')));
    ProcessResult result = RunTool({"info", "--json", odd, directory_ / "none", volume});
    EXPECT_EQ(1, result.status);
    EXPECT_EQ("{\"file\":\"" + (directory_ / "a \\\"b\\\" \xC3\xBC \xEF\xBF\xBD\\u0001.qmdp.image") +
                  "\",\"kind\":\"image\",\"container\":\"QMDP\",\"format\":\"A8L8\",\"format_code\":33554433,"
                  "\"dimensions\":[2,3],\"byte_order\":\"big\",\"flags\":2,\"id\":7,\"payload_bytes\":32}\n"
                  "{\"file\":\"" +
                  volume +
                  "\",\"kind\":\"volume\",\"container\":\"QMDP\",\"format\":\"unknown\",\"format_code\":201326592,"
                  "\"dimensions\":[1,2,3],\"byte_order\":\"little\",\"flags\":0,\"id\":0,\"payload_bytes\":96}\n",
              result.out);
    EXPECT_EQ("qmdp: " + (directory_ / "none") + ": cannot be opened: No such file or directory\n", result.err);

    result = RunTool({"info", volume});
    EXPECT_EQ(volume + "\n    Kind.........: volume\n    Container....: QMDP\n    Sample format: unknown (0x0c000000)\n"
                       "    Dimensions...: 1 layers, 2 rows, 3 columns\n    Byte order...: little-endian\n"
                       "    Flags........: 0\n    Id...........: 0\n    Payload bytes: 96\n",
              result.out);
}

TEST_F(Qmdp, VerifyNamesTheByteAndTheField)
{
    constexpr std::tuple<unsigned int, char const *, char const *> cases[] = {
        {0, "x", "byte 0: opening magic-sequence: neither that of a package nor of a picture"},
        {23, "x", "byte 0: opening magic-sequence: not that of a package"},
        {24, "\x01", "byte 24: byte-order specifier: 1 stands for no byte order"},
        {28, "\x08", "byte 74: package id of the trailer: 7 instead of 8"},
        {32, "\x01", "byte 32: payload byte-size: 1 does not fit 2 rows, 3 columns"},
        {36, "\x04", "byte 36: payload type: 4 stands for no payload"},
        {43, "x", "byte 40: closing magic-sequence: not that of a package"},
        {47, "\x80", "byte 32: payload byte-size: 26 does not fit 2147483650 rows, 3 columns"},
        {55, "\x05", "byte 52: sample format: no samples of 5 bytes"},
        {56, "\x04", "byte 56: flags: 4 has unknown bits"},
        {60, "\x03", "byte 60: reserved field: 3 instead of 0"},
        {70, "x", "byte 70: opening magic-sequence of the trailer: not that of a package"},
        {101, "x", "byte 78: closing magic-sequence of the trailer: not that of a package"},
        {102, "xy", "byte 102: trailer: 2 bytes lie behind it"},
    };
    Words words = {"verify", directory_.Write("good", SmallImage())};
    string expected;
    for (auto const &[offset, wrong, message] : cases)
    {
        string const bytes = SmallImage().replace(offset, std::strlen(wrong), wrong);
        words.push_back(directory_.Write(std::to_string(words.size()), bytes));
        expected += words.back() + ": " + message + '\n';
    }
    words.push_back(directory_.Write("no-rows", Image(0, 3, s_L8, "")));
    expected += words.back() + ": byte 44: number of rows: 0\n";
    words.push_back(directory_.Write(
        "claim", PackageBytes({1}, {0xFFFFFF00, s_L8, 0, 0}, "").replace(32, 4, NumberBytes(0xFFFFFF10))));
    expected += words.back() + ": byte 60: samples: the file ends after 32 of 4294967040 bytes\n";
    words.push_back(directory_ / "");
    expected += words.back() + ": is a directory\n";
    words.push_back(directory_ / "pipe");
    mkfifo(words.back().c_str(), 0600);
    expected += words.back() + ": is a pipe\n";

    ProcessResult const result = RunTool(words);
    EXPECT_EQ(1, result.status);
    EXPECT_EQ(words[1] + ": ok\n", result.out);
    EXPECT_EQ(expected, result.err);
}

/// Checks a value against the parts of a schema that ours use.
void ExpectValid(nlohmann::json const &schema, nlohmann::json const &object)
{
    for (auto const &[name, value] : object.items())
    {
        ASSERT_TRUE(schema["properties"].contains(name)) << object;
        nlohmann::json const &rule = schema["properties"][name];
        if (rule.contains("enum"))
            EXPECT_NE(rule["enum"].end(), std::find(rule["enum"].begin(), rule["enum"].end(), value)) << object;
        else
            EXPECT_EQ(rule["type"], value.is_string()    ? "string"
                                    : value.is_boolean() ? "boolean"
                                                         : "integer")
                << object;
    }
    for (auto const &name : schema["required"])
        EXPECT_TRUE(object.contains(name)) << object;
    for (auto const &name : schema["then"]["required"])
        EXPECT_EQ(object["ok"] == false, object.contains(name)) << object;
    EXPECT_EQ(object.contains("byte"), object.contains("field")) << object;
}

TEST_F(Qmdp, VerifyFollowsItsSchema)
{
    string const wrong = directory_.Write("wrong", SmallImage().replace(28, 1, "\x08"));
    string const tooLarge = directory_ / "p.png";
    EXPECT_EQ(0, RunTool({"convert", directory_.Write("in.qmdp", SmallImage()), tooLarge}).status);
    ProcessResult const result =
        RunTool({"verify", "--json", "--max-pixels=5", directory_ / "in.qmdp", wrong, directory_ / "none",
                 directory_ / "", tooLarge, directory_.Write("junk \xFF", "junk")});
    EXPECT_EQ(1, result.status);
    EXPECT_EQ("", result.err);
    nlohmann::json const schema = nlohmann::json::parse(ReadFile(QUILLMARSH_TEST_VERIFY_SCHEMA));
    std::istringstream lines(result.out);
    std::vector<nlohmann::json> objects;
    for (string line; std::getline(lines, line);)
        ExpectValid(schema, objects.emplace_back(nlohmann::json::parse(line)));
    ASSERT_EQ(6u, objects.size());
    EXPECT_EQ(true, objects[0]["ok"]);
    EXPECT_EQ(74, objects[1]["byte"]);
    EXPECT_EQ("package id of the trailer", objects[1]["field"]);
    EXPECT_EQ("not_found", objects[2]["failure"]);
    EXPECT_EQ("is a directory", objects[3]["message"]);
    EXPECT_EQ("too_large", objects[4]["failure"]);
    EXPECT_EQ("qmdp: " + tooLarge + ": 2 rows of 3 pixels are more than the limit of 5 pixels (see --max-pixels)\n",
              RunTool({"info", "--max-pixels=5", tooLarge}).err);
    EXPECT_EQ("other_format", objects[5]["failure"]);
}

TEST_F(Qmdp, CutAndFlippedPackagesFailInOneLineEach)
{
    string const bytes = SmallImage();
    Words words = {"verify"};
    for (std::size_t i = 0; i < bytes.size(); ++i)
        words.push_back(directory_.Write("cut" + std::to_string(i), bytes.substr(0, i)));
    for (std::size_t i = 0; i < 64 * 8; ++i)
        words.push_back(directory_.Write("flipped" + std::to_string(i), FlipBit(bytes, i)));
    ProcessResult const result = RunTool(words);
    // Every layout of components has a format, and rows can have either order.
    EXPECT_EQ(24 + 1, CountLines(result.out));
    EXPECT_EQ(static_cast<long>(words.size()) - 1 - 24 - 1, CountLines(result.err));
}

TEST_F(Qmdp, WrongArgumentsAreNamed)
{
    string const image = directory_.Write("i.qmdp", SmallImage());
    string const volume = directory_.Write("v.qmdp", Volume(2, 1, 1, s_L8, "ab"));
    std::pair<Words, char const *> const cases[] = {
        {{}, "a command is missing"},
        {{"paint"}, "unknown command 'paint'"},
        {{"info"}, "info needs FILE..."},
        {{"convert", "a.png", "b.png", "c.png"}, "convert needs a folder for several files, and 'c.png' is none"},
        {{"mipmaps", "a.png", "b", "c"}, "mipmaps needs IN PREFIX, but not 'c'"},
        {{"convert", "a/1.png", "b/1.jpg", directory_ / "", "--to=bmp"},
         "'a/1.png' and 'b/1.jpg' would both become '1.bmp'"},
        {{"convert", "a.png", "--jobs=0"}, "--jobs must be a number above 0, not '0'"},
        {{"completion", "csh"}, "completion knows bash, zsh and fish, not 'csh'"},
        {{"convert", "a.gif", "b.png"},
         "'a.gif' ends in none of .qmdp.signal .qmdp.image .qmdp.volume .qmdp .tif .tiff "
         ".jpg .jpeg .png .bmp"},
        {{"info", "--size=3", "a"}, "info takes no --size"},
        {{"convert", "--overwrite=1"}, "--overwrite takes no value"},
        {{"convert", "--id"}, "--id needs a value: N"},
        {{"convert", "--id=-1"}, "--id must be a number below 4294967296, not '-1'"},
        {{"convert", "--quality", "101"}, "--quality must be a number from 0 to 100, not '101'"},
        {{"convert", "--filter=cubic"}, "--filter must be one of nearest, linear, area, lanczos, not 'cubic'"},
        {{"convert", "--size=1x2x"}, "--size must be N, WxH or WxHxD without zeros, not '1x2x'"},
        {{"convert", "--size=1x0"}, "--size must be N, WxH or WxHxD without zeros, not '1x0'"},
        {{"convert", "--size=20x20j"}, "--size must be N, WxH or WxHxD without zeros, not '20x20j'"},
        {{"compare", "--tolerance=-1"}, "--tolerance must be a number of 0 or more, not '-1'"},
        {{"info", "--max-pixels=0"}, "--max-pixels must be a number above 0, not '0'"},
        {{"mipmaps", "--format=R8"},
         "--format must be one of L8, A8, A8L8, A4R4G4B4, A1R5G5B5, X8R8G8B8, A8R8G8B8, "
         "FP32NormL, FP32NormA, not 'R8'"},
        {{"convert", image, "o.qmdp", "--flip-layers"}, "holds an image, so --flip-layers does not apply"},
        {{"convert", image, "o.qmdp", "--size=5"}, "holds an image, but --size is for a signal"},
        {{"slice", volume, "2", "o.qmdp"}, "slice needs a layer below 2, not 2"},
        {{"slice", volume, "first", "o.qmdp"}, "slice needs the number of a layer, not 'first'"},
    };
    for (auto const &[words, message] : cases)
    {
        ProcessResult const result = RunTool(words);
        EXPECT_EQ(2, result.status) << message;
        EXPECT_NE(string::npos, result.err.find(string(message) + " (see --help)\n")) << result.err;
        EXPECT_EQ(1, CountLines(result.err));
        EXPECT_EQ("", result.out);
    }
}

TEST_F(Qmdp, ConvertWorksInItsOwnOrder)
{
    string const samples = "abcdefghijkl";
    string const expected =
        Convert(Image(1, 3, s_A8R8G8B8, samples), {"--size=2x2", "--flip-rows", "--format=L8", "--id=3"});
    EXPECT_EQ(64u + 4 + 32, expected.size());
    EXPECT_EQ(expected, Convert(Image(1, 3, s_A8R8G8B8, samples),
                                {"--id=3", "--format=l8", "--flip-rows", "--filter", "linear", "--size", "2X2"}));
    EXPECT_EQ(PackageBytes({2, 9, true}, {2, 2, s_L8, 2, 0}, "badc"),
              Convert(Image(2, 2, s_L8, "abcd"), {"--origin-bottom", "--flip-columns", "--flip-rows", "--flip-columns",
                                                  "--big-endian", "--id=9"}));
    EXPECT_EQ(PackageBytes({3}, {2, 1, 2, s_L8, 4, 0}, "abcd"),
              Convert(Volume(2, 1, 2, s_L8, "abcd"), {"--flip-layers", "--flip-rows", "--origin-back"})
                  .replace(44 + 24, 4, "abcd"));
    EXPECT_EQ(Signal(s_L8, "cba"), Convert(Signal(s_L8, "abc"), {"--flip-columns"}));
}

TEST_F(Qmdp, BytesThatNothingIsKnownOfAreOpaque)
{
    EXPECT_EQ(Signal(s_A8R8G8B8, "aaa\xFF"), Convert(Signal(s_L8, "a"), {"--format", "A8R8G8B8"}));
    EXPECT_EQ(Signal(s_A8L8, "a\xFF"), Convert(Signal(s_L8, "a"), {"--format", "A8L8"}));
    EXPECT_EQ(Image(1, 2, s_X8R8G8B8, "aaa\377aaa\377"), Convert(Image(1, 1, s_X8R8G8B8, "aaab"), {"--size=2x1"}));
    EXPECT_EQ(Signal(s_A1R5G5B5, "ab"), Convert(Signal(s_A1R5G5B5, "ab"), {"--format", "A1R5G5B5"}));
}

TEST_F(Qmdp, FailuresOfDataLeaveNoFile)
{
    string const in = directory_ / "in.qmdp", out = directory_ / "out";
    std::tuple<string, Words, char const *, string> const cases[] = {
        {Signal(0x02000011, "ab"),
         {"--format=L8"},
         ".qmdp",
         in + ": no transfer leads from the sample format unknown to L8"},
        {Image(1, 1, 0x03000005, "abc"),
         {"--size=2x2"},
         ".qmdp",
         in + ": no filter supports the sample format unknown"},
        {Image(1, 1, s_L8, "a"), {"--size=4294967295x4294967295"}, ".qmdp", in + ": "},
        {Signal(s_L8, "a"), {}, ".png", out + ".png: takes an image, and no signal"},
        {Image(1, 1, 0x04001001, "abcd"), {}, ".bmp", out + ".bmp: BMP takes no samples of the format FP32NormL"},
        {"", {}, ".png", in + ": byte 0: opening magic-sequence: the file ends after 0 of 24 bytes"},
    };
    for (auto const &[package, options, extension, message] : cases)
    {
        string const shown = Convert(package, options, extension);
        EXPECT_EQ(0u, shown.find("qmdp: " + message)) << shown;
        EXPECT_EQ(1, CountLines(shown));
        EXPECT_FALSE(std::filesystem::exists(out + extension));
    }
}

TEST_F(Qmdp, FilesAreReplacedWholeAndOnlyWhenAskedFor)
{
    string const in = directory_.Write("in.qmdp.image", SmallImage());
    string const out = directory_.Write("o \xC3\xBC.qmdp.image", "old");
    string const full = directory_ / "full.qmdp";
    std::filesystem::create_symlink("/dev/full", full);
    EXPECT_EQ("qmdp: " + out + ": already exists, and overwriting must be allowed with --overwrite\n",
              RunTool({"convert", in, out}).err);
    EXPECT_EQ("old", ReadFile(out));
    EXPECT_EQ(0, RunTool({"convert", in, out, "--overwrite", "--id=7"}).status);
    EXPECT_EQ(SmallImage(), ReadFile(out));

    EXPECT_EQ("qmdp: " + full + ": cannot be written as QMDP: No space left on device\n",
              RunTool({"convert", in, full, "--overwrite"}).err);
    // Nothing else remains: two images and a link.
    EXPECT_EQ(3, directory_.CountEntries());
}

TEST_F(Qmdp, ManyFilesAreConvertedIntoAFolder)
{
    std::filesystem::create_directory(directory_ / "out");
    for (string const jobs : {"--jobs=1", "--jobs=3", "--overwrite"})
    {
        Words words = {"convert", "--overwrite", jobs, "--to=qmdp", "--flip-columns"};
        string failures;
        for (unsigned int i = 0; i < 20; ++i)
        {
            bool const isGood = i % 6 != 5;
            string const name = "f" + std::to_string(i) + ".qmdp.signal";
            words.push_back(directory_.Write(name, isGood ? Signal(s_L8, string(1, char('a' + i)) + "b") : "bad"));
            if (!isGood)
                failures += "qmdp: " + words.back() + ": byte 0: opening magic-sequence: not that of a package\n";
        }
        words.push_back(directory_ / "out");
        ProcessResult const result = RunTool(words);
        EXPECT_EQ(1, result.status);
        // In the order of the files, whichever failed first.
        EXPECT_EQ(failures, result.err);
        EXPECT_EQ(17, std::distance(std::filesystem::directory_iterator(directory_ / "out"), {}));
        EXPECT_EQ(Signal(s_L8, "bs"), ReadFile(directory_ / "out/f18.qmdp"));
    }
}

TEST_F(Qmdp, VolumesAreStacksOfSlices)
{
    string const first = directory_.Write("1.qmdp.image", Image(1, 2, s_A8L8, "abcd"));
    string const second = directory_.Write("2.qmdp.image", Image(1, 2, s_A8L8, "efgh"));
    string const other = directory_.Write("3.qmdp.image", Image(1, 4, s_L8, "efgh"));
    string const volume = directory_ / "v.qmdp.volume";
    EXPECT_EQ(0, RunTool({"volume", first, second, volume}).status);
    EXPECT_EQ(Volume(2, 1, 2, s_A8L8, "abcdefgh"), ReadFile(volume));
    EXPECT_EQ(0, RunTool({"slice", volume, "1", directory_ / "s.qmdp"}).status);
    EXPECT_EQ(ReadFile(second), ReadFile(directory_ / "s.qmdp"));
    EXPECT_EQ("qmdp: " + other + ": 1 rows, 4 columns of L8, but the first slice has 1 rows, 2 columns of A8L8\n",
              RunTool({"volume", first, other, directory_ / "w.qmdp"}).err);
    EXPECT_EQ("qmdp: " + volume + ": holds a volume, but a slice must be an image\n",
              RunTool({"volume", first, volume, directory_ / "w.qmdp"}).err);
    EXPECT_EQ("qmdp: " + first + ": holds an image, but only volumes have layers\n",
              RunTool({"slice", first, "0", directory_ / "w.qmdp"}).err);
}

TEST_F(Qmdp, MipmapsAreSavedLevelByLevel)
{
    string const in = directory_.Write("in.qmdp", Image(1, 4, s_X8R8G8B8, "aaa0aaa0aaa0aaa0"));
    string const prefix = directory_ / "m";
    EXPECT_EQ(0, RunTool({"mipmaps", in, prefix, "--format", "A8R8G8B8"}).status);
    EXPECT_EQ(Image(1, 4, s_A8R8G8B8, "aaa0aaa0aaa0aaa0"), ReadFile(prefix + ".0.qmdp.image"));
    EXPECT_EQ(Image(1, 2, s_A8R8G8B8, "aaa\377aaa\377"), ReadFile(prefix + ".1.qmdp.image"));
    EXPECT_EQ(Image(1, 1, s_A8R8G8B8, "aaa\xFF"), ReadFile(prefix + ".2.qmdp.image"));
    EXPECT_FALSE(std::filesystem::exists(prefix + ".3.qmdp.image"));

    // If one name exists, nothing is saved.
    std::filesystem::remove(prefix + ".0.qmdp.image");
    EXPECT_EQ("qmdp: " + prefix + ".1.qmdp.image: already exists, and overwriting must be allowed with --overwrite\n",
              RunTool({"mipmaps", in, prefix}).err);
    EXPECT_FALSE(std::filesystem::exists(prefix + ".0.qmdp.image"));

    string const halved = directory_.Write("h.qmdp", Image(2, 2, s_L8, "adfh"));
    EXPECT_EQ(0, RunTool({"mipmaps", halved, directory_ / "h", "--filter=area"}).status);
    EXPECT_EQ(Image(1, 1, s_L8, "e"), ReadFile(directory_ / "h.1.qmdp.image"));

    string const odd = directory_.Write("odd.qmdp", Signal(s_L8, "abc"));
    EXPECT_EQ("qmdp: " + odd + ": mipmaps need dimensions that are powers of two, but there are 3 samples\n",
              RunTool({"mipmaps", odd, prefix}).err);
    string const packed = directory_.Write("p.qmdp", Signal(0x02000011, "ab"));
    EXPECT_EQ(1, RunTool({"mipmaps", packed, prefix, "--format=A8"}).status);
}

TEST_F(Qmdp, MeasuresAndCompares)
{
    string const a = directory_.Write("a.qmdp", Image(1, 2, s_L8, "ac")),
                 b = directory_.Write("b", Image(1, 2, s_L8, "ad"));
    EXPECT_EQ(a + "\n    luminance: minimum 97, maximum 99, mean 98, deviation 1\n", RunTool({"stats", a}).out);
    string const json = RunTool({"stats", "--json", a}).out;
    EXPECT_NE(string::npos,
              json.find("\"maximum\":99.0,\"mean\":98.0,\"deviation\":1.0,\"not_a_number\":0,\"histogram\":[0,"));

    ProcessResult const differs = RunTool({"compare", a, b});
    EXPECT_EQ(1, differs.status);
    EXPECT_EQ(
        "difference: greatest 1, mean 0.5, PSNR 51.1411 dB\n    luminance: greatest 1, mean 0.5, PSNR 51.1411 dB\n",
        differs.out);
    EXPECT_EQ("", differs.err);
    string const picture = directory_ / "d.qmdp";
    ProcessResult const tolerated = RunTool({"compare", a, b, "--tolerance=1", "--json", "--difference", picture});
    EXPECT_EQ(0, tolerated.status);
    EXPECT_NE(string::npos, tolerated.out.find("\"within_tolerance\":true,\"greatest\":1.0")) << tolerated.out;
    EXPECT_EQ(Image(1, 2, s_L8, string("\0\xFF", 2)), ReadFile(picture));
    EXPECT_NE(string::npos, RunTool({"compare", a, a, "--json"}).out.find("\"psnr\":null"));

    string const other = directory_.Write("o", Image(2, 1, s_L8, "ac"));
    EXPECT_EQ("qmdp: " + a + " and " + other + ": the sizes differ: 1 rows, 2 columns and 2 rows, 1 columns\n",
              RunTool({"compare", a, other}).err);
}

TEST_F(Qmdp, PicturesGoThereAndBack)
{
    string const package =
        Image(2, 2, s_A8R8G8B8, string("\x10\x20\x30\x40\x50\x60\x70\x80\xFF\0\0\xFF\0\xFF\0\xFF", 16));
    Convert(package, {"--no-compression"}, ".TIFF");
    string const picture = directory_ / "out.TIFF", back = picture + ".qmdp.image";
    EXPECT_TRUE(Contains(RunTool({"info", "--json", picture}).out,
                         "\"TIFF\",\"format\":\"A8R8G8B8\",\"format_code\":67108866,\"dimensions\":[2,2],\"picture\":{"
                         "\"colours\":\"colours\",\"alpha\":true,\"bits\":8,"));
    EXPECT_EQ(0, RunTool({"convert", picture, back}).status);
    EXPECT_EQ(package, ReadFile(back));
    string const bytes = Convert(package, {"--quality=50", "--quiet"}, ".jpg");
    string const cut = directory_.Write("cut", bytes.substr(0, bytes.size() / 2));
    ProcessResult const result = RunTool({"verify", directory_ / "out.jpg", cut});
    EXPECT_EQ(directory_ / "out.jpg" + ": ok\n", result.out);
    EXPECT_EQ(cut + ": libjpeg-turbo: Invalid JPEG file structure: missing SOS marker\n", result.err);
}

TEST_F(Qmdp, PicturesTellWhatTheyHoldAndWhatIsLost)
{
    string const tiff = directory_.Write(
        "a.tif", TiffBytes({{1, 2, 16, string("\1\2\3\4")},
                            {.numRows = 2, .numColumns = 1, .bits = 8, .components = "ad", .orientation = 6}}));
    string const out = directory_ / "o.png";
    ProcessResult result = RunTool({"convert", tiff, out});
    EXPECT_EQ(0, result.status);
    EXPECT_EQ("qmdp: " + tiff + ": lost in loading: 16 bits become 8, page 0 alone of 2\n", result.err);
    EXPECT_EQ("", RunTool({"convert", tiff, out, "--overwrite", "-q"}).err);
    EXPECT_NE(string::npos, RunTool({"info", out}).out.find("    Stored as....: grey, 8 bits\n"));

    EXPECT_NE(string::npos, RunTool({"info", tiff, "--page=1"})
                                .out.find("    Dimensions...: 1 rows, 2 columns\n    Stored as....: grey, 8 bits\n"
                                          "    Page.........: 1 of 2, counted from 0\n    Orientation..: 6, obeyed\n"));
    EXPECT_NE(string::npos,
              RunTool({"info", "--json", tiff, "--page=1", "--raw-orientation"})
                  .out.find("\"dimensions\":[2,1],\"picture\":{\"colours\":\"grey\",\"alpha\":false,\"bits\":8,"
                            "\"floats\":false,\"palette_size\":0,\"pages\":2,\"page\":1,"));
    EXPECT_EQ("qmdp: " + tiff + ": has no page 2, but 2 pages, counted from 0\n",
              RunTool({"info", tiff, "--page=2"}).err);
    string const package = directory_ / "o.qmdp";
    EXPECT_EQ("", RunTool({"convert", tiff, package, "--page=1", "--format=L8", "--quiet"}).err);
    EXPECT_EQ(Image(1, 2, s_L8, "da"), ReadFile(package));

    // Floats cannot become bytes, and that is said; looking at them needs no option.
    string const floats = directory_.Write(
        "f.tif",
        TiffBytes(
            {{.numRows = 1, .numColumns = 1, .bits = 32, .components = string("\0\0\0?", 4), .areFloats = true}}));
    EXPECT_EQ("qmdp: " + floats + ": floating-point TIFF is not supported as bytes (see --format FP32NormL)\n",
              RunTool({"convert", floats, package, "--overwrite"}).err);
    EXPECT_NE(string::npos, RunTool({"info", floats})
                                .out.find("FP32NormL (0x04001001)\n    Dimensions...: 1 rows, 1 columns\n"
                                          "    Stored as....: grey, 32 bits, floating-point\n"));
    EXPECT_EQ(floats + ": ok\n", RunTool({"verify", floats}).out);
    EXPECT_EQ("", RunTool({"convert", floats, package, "--overwrite", "--format=FP32NormL"}).err);
    EXPECT_EQ(Image(1, 1, 0x04001001, string("\0\0\0?", 4)), ReadFile(package));
    string const alpha = directory_.Write("a.qmdp", Image(1, 1, s_A8L8, "ab"));
    EXPECT_EQ("qmdp: " + (directory_ / "a.jpg") + ": lost in saving: no alpha\n",
              RunTool({"convert", alpha, directory_ / "a.jpg"}).err);
}

TEST_F(Qmdp, PluginsBringCodecs)
{
    string const in = directory_.Write("in.qmdp", SmallImage());
    string const dots = directory_ / "o.dot";
    EXPECT_EQ(2, RunTool({"convert", in, dots}).status);
    EXPECT_EQ("", RunTool({"convert", "--plugin", QUILLMARSH_TEST_DOTCODEC, in, dots}).err);
    EXPECT_EQ("DOT\2\3abcdef", ReadFile(dots));
    ProcessResult const info = RunTool({"info", "--json", dots, "--plugin=" QUILLMARSH_TEST_DOTCODEC});
    EXPECT_NE(string::npos, info.out.find("\"container\":\"DOT\",\"format\":\"L8\"")) << info.out << info.err;
    EXPECT_EQ(
        "qmdp: " + (directory_ / "p.dot") + ": dots are luminance\n",
        RunTool({"convert", "--plugin=" QUILLMARSH_TEST_DOTCODEC, in, directory_ / "p.dot", "--format=A8L8"}).err);
    EXPECT_EQ(1, RunTool({"info", "--plugin", in, in}).status);
}

TEST_F(Qmdp, InterruptedSavingLeavesNothingAndTellsTheSignal)
{
    string noise;
    for (unsigned int i = 0; i < 64 * 64; ++i)
        noise += static_cast<char>(i * i * 2654435761u >> 13);
    string const in = directory_.Write("in.qmdp", Image(64, 64, s_L8, noise));
    for (int const number : {SIGINT, SIGTERM, SIGHUP})
    {
        pid_t const process = fork();
        if (process == 0)
            Execute(QUILLMARSH_TEST_QMDP, {"convert", in, directory_ / "out.png", "--size=5000x5000"});
        EXPECT_TRUE(WaitUntil([&] { return directory_.CountEntries() > 1; }));
        kill(process, number);
        EXPECT_EQ(-number, WaitForExit(process));
        EXPECT_EQ(1, directory_.CountEntries());
    }
}

TEST_F(Qmdp, ControlCharactersReachNoTerminal)
{
    string const name = directory_.Write("a\x1B[31m\xC2\x9B\x7F", SmallImage());
    Terminal terminal("/bin/sh", {"-c", "\"$0\" verify \"$1\"; \"$0\" info \"$1\" --json; \"$0\" info \"$1\" \"$1-\"",
                                  QUILLMARSH_TEST_QMDP, name});
    terminal.Wait();
    string shown = terminal.GetShown();
    // The line that shows the progress has one sequence of its own.
    for (std::size_t at; (at = shown.find("\x1B[K")) != string::npos;)
        shown.erase(at, 3);
    EXPECT_EQ(string::npos, shown.find_first_of("\x1B\x7F\x9B")) << shown;
    EXPECT_NE(string::npos, shown.find(": ok")) << shown;
    EXPECT_NE(string::npos, shown.find("\\u001b[31m\\u009b\\u007f")) << shown;
    EXPECT_NE(string::npos, shown.find("-: cannot be opened: ")) << shown;
}

TEST_F(Qmdp, MinusIsAStandardStream)
{
    string const in = directory_.Write("in.qmdp", SmallImage());
    auto const run = [](Words const &words, string const &input)
    { return RunProcess(QUILLMARSH_TEST_QMDP, words, input); };
    ProcessResult const picture = run({"convert", "-", "-", "--to=png"}, SmallImage());
    EXPECT_EQ("", picture.err);
    EXPECT_EQ(0, run({"convert", "-", directory_ / "p.png"}, SmallImage()).status);
    EXPECT_EQ(ReadFile(directory_ / "p.png"), picture.out);
    EXPECT_EQ("-: ok\n", run({"verify", "-"}, picture.out).out);
    EXPECT_NE(string::npos, run({"info", "--json", "-"}, picture.out).out.find("{\"file\":\"-\",\"kind\":\"image\""));
    EXPECT_EQ(SmallImage(), run({"convert", in, "-", "--to", "qmdp", "--id=7"}, "").out);

    std::tuple<Words, string, string> const cases[] = {
        {{"convert", "-", "-"}, "", "'-' for standard output needs --to with a type of files (see --help)"},
        {{"volume", "-", "-", "o.qmdp"}, "", "'-' names standard input, which can be read only once (see --help)"},
        {{"convert", "-", "o.qmdp", "--from=qmdp.volume"},
         SmallImage(),
         "standard input: payload type: an image, and the name tells of a volume"},
        {{"info", "-"}, "", "standard input: is empty"},
        {{"convert", "-", "-", "--to=png"},
         "junk",
         "standard input: byte 0: opening magic-sequence: neither that of a package nor of a picture"},
    };
    for (auto const &[words, input, message] : cases)
    {
        ProcessResult const result = run(words, input);
        EXPECT_NE(0, result.status);
        EXPECT_EQ("qmdp: " + message + '\n', result.err);
        EXPECT_EQ("", result.out);
    }
    string const command = QUILLMARSH_TEST_QMDP " convert '" + in + "' - --to=png";
    EXPECT_EQ("qmdp: standard output: cannot be written: No space left on device\n",
              RunProcess("/bin/sh", {"-c", command + " >/dev/full"}).err);
    // The reader has gone before the tool writes.
    EXPECT_EQ("qmdp: standard output: cannot be written: Broken pipe\n",
              RunProcess("/bin/bash", {"-c", "(sleep 0.3; exec " + command + ") | true; wait"}).err);
}

TEST_F(Qmdp, ShellsCompleteWhatTheTablesHold)
{
    auto const complete = [](string const &words)
    {
        return RunProcess("/bin/bash", {"-c",
                                        "source <(\"$0\" completion bash); COMP_WORDS=(qmdp " + words +
                                            "); COMP_CWORD=$((${#COMP_WORDS[@]} - 1)); _qmdp; echo ${COMPREPLY[@]}",
                                        QUILLMARSH_TEST_QMDP})
            .out;
    };
    EXPECT_EQ("compare completion\n", complete("comp"));
    EXPECT_EQ("area\n", complete("convert a.png --filter ar"));
    EXPECT_EQ("linear lanczos\n", complete("convert --filter = l"));
    EXPECT_EQ("--json\n", complete("stats --j"));
    EXPECT_EQ("\n", complete("volume --j"));
    EXPECT_EQ("slice stats\n", complete("help s"));
    string const zsh = RunTool({"completion", "zsh"}).out, fish = RunTool({"completion", "fish"}).out;
    EXPECT_EQ(0u, zsh.find("#compdef qmdp\n"));
    EXPECT_NE(string::npos,
              zsh.find("'--filter=[filter: nearest, linear (default), area (mean; best for smaller data), "
                       "lanczos (sharper)]:NAME:(nearest linear area lanczos)'"));
    EXPECT_NE(string::npos, fish.find("complete -c qmdp -n '__fish_seen_subcommand_from mipmaps' -l filter -x -a "
                                      "'nearest linear area lanczos' -d"));
}

TEST_F(Qmdp, ProgressIsShownOnATerminalOnly)
{
    // Each takes some hundredths of a second, so the line appears before the end.
    Words words = {"convert", "--to=qmdp", "--size=2600x2600", "--filter=lanczos", "--jobs=1"};
    for (int i = 0; i < 30; ++i)
        words.push_back(directory_.Write("f" + std::to_string(i) + ".qmdp", SmallImage()));
    std::filesystem::create_directory(directory_ / "out");
    words.push_back(directory_ / "out");
    Terminal terminal(QUILLMARSH_TEST_QMDP, words);
    EXPECT_TRUE(terminal.Expect("Converting [")) << terminal.GetShown();
    EXPECT_TRUE(terminal.Expect(" of 30 files")) << terminal.GetShown();
    terminal.Wait();
    EXPECT_TRUE(terminal.GetShown().ends_with("\r\x1B[K")) << terminal.GetShown();

    words.push_back("--overwrite");
    ProcessResult const redirected = RunTool(words);
    EXPECT_EQ("", redirected.out + redirected.err);
}

TEST_F(Qmdp, HelpAndOutput)
{
    EXPECT_NE(string::npos, RunTool({"--help"}).out.find("\nCommands:\n  info "));
    EXPECT_NE(string::npos, RunTool({"slice", "--help"}).out.find("usage: qmdp slice [OPTION...] IN LAYER OUT\n"));
    EXPECT_EQ(0u, RunTool({"--version"}).out.find("qmdp 1."));
    EXPECT_EQ(RunTool({"--version"}).out, RunTool({"-V"}).out);
    EXPECT_EQ(RunTool({"--help"}).out, RunTool({"help"}).out);
    EXPECT_EQ(RunTool({"slice", "-h"}).out, RunTool({"help", "slice"}).out);
    EXPECT_EQ("qmdp: unknown command 'paint' (see --help)\n", RunTool({"help", "paint"}).err);
    string const dashed = directory_.Write("-a", SmallImage());
    EXPECT_EQ(dashed + ": ok\n", RunTool({"verify", "--", dashed}).out);
    EXPECT_EQ("qmdp: cannot write to standard output: No space left on device\n",
              RunProcess("/bin/sh", {"-c", QUILLMARSH_TEST_QMDP " --help >/dev/full"}).err);
}

} // namespace
} // namespace quillmarsh::tests
