#include <quillmarsh/dataobjects/volumeoperations.h>

#include "source/dataobjects/transfer/samplekernels.h"
#include "tests/support/sample_blocks.h"
#include "tests/support/scripted_dialogs.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <functional>
#include <vector>

namespace quillmarsh
{
namespace
{

using tests::Bytes;
using tests::BytesOf;
using tests::Shape;
using Texts = std::vector<string>;

/// A resampling mode in one to three dimensions.
struct Form
{
    char const *name;
    eSampleFormat format;
    std::function<void(unsigned int, unsigned char *, Shape const &, Bytes &, Shape const &)> run;
};

template<typename... Works>
struct Overloaded : Works...
{
    using Works::operator()...;
};
template<typename... Works>
Overloaded(Works...) -> Overloaded<Works...>;

Form MakeForm(char const *name, eSampleFormat format, auto... works)
{
    return {name, format,
            [format, work = Overloaded{works...}](unsigned int numDimensions, unsigned char *dst, Shape const &to,
                                                  Bytes &src, Shape const &from)
            { tests::WorkOnBlocks(numDimensions, format, dst, to, src.data(), from, work); }};
}

Form ByFormat(char const *name, eSampleFormat format, eResampleFilter filter)
{
    return MakeForm(
        name, format, [=](SignalBase &dst, SignalBase const &src) { EXPECT_TRUE(Resample1D(dst, src, filter)); },
        [=](ImageBase &dst, ImageBase const &src) { EXPECT_TRUE(Resample2D(dst, src, filter)); },
        [=](VolumeBase &dst, VolumeBase const &src) { EXPECT_TRUE(Resample3D(dst, src, filter)); });
}

Form PartOfBytes(unsigned int size, unsigned int offset, unsigned int n)
{
    return MakeForm(
        "bytes", sample_formats::UnknownSampleFormat(size),
        [=](SignalBase &dst, SignalBase const &src) { Resample1D_Linear_NBytes(dst, src, offset, n); },
        [=](ImageBase &dst, ImageBase const &src) { Resample2D_Linear_NBytes(dst, src, offset, n); },
        [=](VolumeBase &dst, VolumeBase const &src) { Resample3D_Linear_NBytes(dst, src, offset, n); });
}

Form PartOfFloats(unsigned int size, unsigned int offset, unsigned int n)
{
    return MakeForm(
        "floats", sample_formats::UnknownSampleFormat(size),
        [=](SignalBase &dst, SignalBase const &src) { Resample1D_Linear_NFloats(dst, src, offset, n); },
        [=](ImageBase &dst, ImageBase const &src) { Resample2D_Linear_NFloats(dst, src, offset, n); },
        [=](VolumeBase &dst, VolumeBase const &src) { Resample3D_Linear_NFloats(dst, src, offset, n); });
}

std::vector<Form> GetForms()
{
    std::vector<Form> forms = {
        PartOfBytes(2, 1, 1),  PartOfBytes(3, 0, 3),  PartOfBytes(6, 1, 4),   PartOfBytes(16, 0, 16),
        PartOfFloats(6, 0, 1), PartOfFloats(8, 1, 1), PartOfFloats(12, 0, 3),
    };
    for (eSampleFormat const format : {e_format_L8, e_format_A8L8, e_format_A4R4G4B4, e_format_A1R5G5B5,
                                       e_format_X8R8G8B8, e_format_A8R8G8B8, e_format_FP32NormL})
        forms.push_back(ByFormat("by format", format, e_resample_linear));
    for (unsigned int const size : {1, 2, 3, 4, 6, 8, 12, 16})
        forms.push_back(ByFormat("nearest", sample_formats::UnknownSampleFormat(size), e_resample_nearest));
    return forms;
}

Bytes RandomBytes(std::size_t size, bool areFloats)
{
    Bytes bytes = tests::RandomBytes(size);
    // Without infinities and NaN: for those, the compiler decides which operand's bits survive.
    for (std::size_t i = 3; areFloats && i < size; ++i)
        bytes[i] &= 0xBF;
    return bytes;
}

/// Checks, for each instruction set of this machine, that a block gets the same bits as without vectors, at any
/// alignment, and that the memory around it does not change.
void ExpectSameBits(Form const &form, unsigned int dimensions, Shape const &to, Shape const &from)
{
    unsigned int const size = sample_formats::ExtractByteSize(form.format);
    bool const areFloats = form.format == e_format_FP32NormL || string(form.name) == "floats";
    std::size_t const margin = 64 + to.columns % 5;
    Bytes src = RandomBytes(from.GetCount() * size, areFloats);
    Bytes const before = RandomBytes(to.GetCount() * size + 2 * margin, areFloats);
    Bytes expected = before;
    SetKernelTarget(GetKernelTargets().back());
    form.run(dimensions, expected.data() + margin, to, src, from);
    for (long long const target : GetKernelTargets())
    {
        SetKernelTarget(target);
        Bytes actual = before;
        form.run(dimensions, actual.data() + margin, to, src, from);
        ASSERT_TRUE(actual == expected) << form.name << " of " << size << " bytes, " << from.layers << '*' << from.rows
                                        << '*' << from.columns << " to " << to.layers << '*' << to.rows << '*'
                                        << to.columns << " by " << target;
    }
    SetKernelTarget(0);
}

TEST(Resampling, GivesTheSameBitsWithAnyVectors)
{
    using Sizes = std::initializer_list<std::pair<Shape, Shape>>;
    constexpr unsigned int lengths[][2] = {{1, 1},   {1, 9},   {9, 1},    {2, 3},    {16, 16},    {37, 21},
                                           {40, 80}, {80, 40}, {64, 300}, {300, 64}, {5003, 6007}};
    Sizes const areas = {{{1, 1, 1}, {1, 1, 1}},     {{1, 1, 7}, {1, 6, 1}},      {{1, 7, 1}, {1, 1, 9}},
                         {{1, 3, 33}, {1, 5, 17}},   {{1, 40, 61}, {1, 20, 31}},  {{1, 31, 20}, {1, 63, 41}},
                         {{1, 9, 77}, {1, 12, 100}}, {{1, 10, 64}, {1, 40, 256}}, {{1, 3, 2100}, {1, 4, 2700}}};
    Sizes const rooms = {{{1, 1, 1}, {1, 1, 1}},   {{3, 1, 1}, {1, 2, 5}},   {{1, 5, 33}, {1, 4, 40}},
                         {{5, 6, 35}, {7, 9, 50}}, {{9, 7, 30}, {4, 3, 15}}, {{2, 3, 1100}, {3, 2, 1500}}};
    for (Form const &form : GetForms())
    {
        for (auto const &[n, m] : lengths)
            ExpectSameBits(form, 1, {1, 1, n}, {1, 1, m});
        for (auto const &[to, from] : areas)
            ExpectSameBits(form, 2, to, from);
        for (auto const &[to, from] : rooms)
            ExpectSameBits(form, 3, to, from);
    }
}

TEST(Resampling, NeverReadsPastTheSamples)
{
    // A single sample is both taps, with any weights.
    Volume<Sample8> from(e_format_L8, 1, 1, 1), to(e_format_L8, 1, 2, 3);
    *from.GetSamplesB() = 255;
    EXPECT_TRUE(Resample3D(to, from, e_resample_linear));
    EXPECT_EQ(BytesOf(to), Bytes(6, 255));

    Signal<Sample8> src(e_format_L8, 4);
    *src.SampleB(3) = 50;
    // The steps of these samples add up to 1.0006, so the walk runs past the last sample.
    Signal<Sample8> many(e_format_L8, 70003);
    for (eResampleFilter const filter : {e_resample_nearest, e_resample_linear})
    {
        EXPECT_TRUE(Resample1D(many, src, filter));
        EXPECT_EQ(BytesOf(many).back(), BytesOf(src).back());
    }
}

TEST(Resampling, KnowsWhatItCanDo)
{
    for (eSampleFormat const format :
         {sample_formats::UnknownSampleFormat(1), sample_formats::UnknownSampleFormat(12), eSampleFormat(0x02000011)})
    {
        AutoPtr<ImageBase> const src(ManufactureImage(format, 2, 2)), dst(ManufactureImage(format, 3, 3));
        std::fill_n(src->GetSamplesB(), src->GetTotalByteSize(), 7);
        std::fill_n(dst->GetSamplesB(), dst->GetTotalByteSize(), 9);
        EXPECT_FALSE(Resample2D(*dst, *src, e_resample_linear));
        EXPECT_FALSE(Resample2D(*dst, *src, static_cast<eResampleFilter>(2)));
        EXPECT_EQ(*dst->GetSamplesB(), 9);
        EXPECT_TRUE(Resample2D(*dst, *src, e_resample_nearest));
        EXPECT_EQ(*dst->GetSamplesB(), 7);
    }
}

TEST(Resampling, AssertsInOrder)
{
    tests::ScriptedDialogs dialogs(platform::eDialogAnswer::e_retry);
    string const noDst = "Destination is empty.", noSrc = "Source is empty.", format = "Sample-format mismatch.";
    Signal<Sample8> const noBytes(e_format_L8, 0);
    Signal<Sample16> noWords(e_format_A8L8, 0);
    Resample1D_Nearest(noWords, noBytes);
    EXPECT_EQ(dialogs.TakeTexts(), (Texts{noDst, noSrc, format}));
    EXPECT_TRUE(Resample1D(noWords, noWords, e_resample_linear));
    EXPECT_EQ(dialogs.TakeTexts(), (Texts{noDst, noSrc, noDst, noSrc}));

    // If the sizes differ, nothing is written.
    Image<Sample32> colours(e_format_A8R8G8B8, 2, 2);
    Image<Sample8> bytes(e_format_L8, 2, 2);
    *bytes.GetSamplesB() = 5;
    Resample2D_Linear_NBytes(bytes, colours, 0, 1);
    EXPECT_EQ(dialogs.TakeTexts(), Texts{format});
    Resample2D_Linear_PackedSample_UShort4444(bytes, colours);
    EXPECT_EQ(dialogs.TakeTexts(), (Texts{"Invalid sample-format size.", format}));
    EXPECT_EQ(*bytes.GetSamplesB(), 5);

    Image<Sample32> others(e_format_A8R8G8B8, 3, 3);
    Resample2D_Linear_NBytes(others, colours, 0, 5);
    Resample2D_Linear_NBytes(others, colours, 2, 3);
    Resample2D_Linear_NFloats(others, colours, 0, 2);
    Resample2D_Linear_NFloats(others, colours, 1, 1);
    Resample2D_Linear_NFloats(others, colours, 1, 0);
    EXPECT_EQ(dialogs.TakeTexts(),
              (Texts{"Num-bytes-per-sample out of range.", "Byte-offset out of range.",
                     "Num-components-per-sample out of range.", "Component-offset out of range."}));

    Volume<Sample16> words(e_format_A4R4G4B4, 1, 1, 1), more(e_format_A1R5G5B5, 2, 2, 2);
    std::fill_n(words.GetSamplesB(), 2, 0xFF);
    Resample3D_Linear_PackedSample_UShort1555(more, words);
    EXPECT_EQ(dialogs.TakeTexts(), Texts{format});
    EXPECT_EQ(more.GetSamplesB()[15], 0xFF);
}

} // namespace
} // namespace quillmarsh
