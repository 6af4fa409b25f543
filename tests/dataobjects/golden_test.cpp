// Results have the same bits on every system and with every set of vector instructions: one system wrote the files in
// golden/, and every system must produce the same content. With QUILLMARSH_WRITE_GOLDEN in the environment, the test
// writes them again.
#include <quillmarsh/basetools/serializer.h>
#include <quillmarsh/basetools/texttools.h>
#include <quillmarsh/dataobjects/imageio.h>
#include <quillmarsh/dataobjects/mipmapchains.h>
#include <quillmarsh/dataobjects/signalio.h>
#include <quillmarsh/dataobjects/volumeio.h>
#include <quillmarsh/dataobjects/volumeoperations.h>
#include <quillmarsh/mathtools/outputforms.h>
#include <quillmarsh/mathtools/transforms.h>

#include "source/dataobjects/transfer/samplekernels.h"
#include "tests/support/scratch_directory.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <cstring>
#include <random>
#include <sstream>

namespace quillmarsh
{
namespace
{

constexpr eSampleFormat s_formats[] = {e_format_L8,       e_format_A8,        e_format_A8L8,
                                       e_format_A4R4G4B4, e_format_A1R5G5B5,  e_format_X8R8G8B8,
                                       e_format_A8R8G8B8, e_format_FP32NormL, e_format_FP32NormA};

/// Records results with the names of their parts, and reads the same parts from a file.
struct Golden
{
    explicit Golden(string const &bytes = "") : file(bytes) {}

    /// Records any value that can be written to a binary stream.
    template<typename Value>
    void Add(string const &name, Value const &value)
    {
        names.emplace_back(made.tellp(), name);
        made <= value;
        Value read{};
        if (file >= read)
            copy <= read;
    }

    template<typename Package, typename Container>
    void AddPackage(string const &name, Container const &container, bool bigEndian = false)
    {
        names.emplace_back(made.tellp(), name);
        Package package;
        package.SetPackageByteOrderOnWrite(bigEndian);
        package.SetPayload(&container);
        package.Serialize(made);
        if (file.str().empty())
            return;
        package.Deserialize(file);
        // Samples in the other byte order are read without conversion.
        if (bigEndian)
            ProcessSamples_FlipByteOrder(*package.GetPayload(false));
        package.Serialize(copy);
    }
    void Add(string const &name, SignalBase const &signal) { AddPackage<DataPackageSignal>(name, signal); }
    void Add(string const &name, ImageBase const &image) { AddPackage<DataPackageImage>(name, image); }
    void Add(string const &name, VolumeBase const &volume) { AddPackage<DataPackageVolume>(name, volume); }

    /// Returns the part and the byte at which the bytes differ from the wanted ones; empty when they are equal.
    string Compare(string const &bytes, string const &wanted) const
    {
        auto const at = std::mismatch(bytes.begin(), bytes.end(), wanted.begin(), wanted.end()).first - bytes.begin();
        auto part = names.rbegin();
        while (part->first > at)
            ++part;
        return bytes == wanted ? "" : part->second + " differs at byte " + std::to_string(at);
    }

    std::istringstream file;
    std::ostringstream made, copy;
    std::vector<std::pair<std::streamoff, string>> names;
};

/// Returns a number from -0.25 to 1.25.
float NextReal(std::minstd_rand &numbers)
{
    return static_cast<float>(numbers() >> 7) / 11184810.0f - 0.25f;
}

/// Fills a container with bytes or floats of a sequence. Some floats are special values; the last of these only for
/// operations that define a result for them.
template<typename Container>
AutoPtr<Container> Fill(Container *container, bool withAll = false)
{
    constexpr float odd[] = {0.0f,  -0.0f,  1.0f,   1e-45f,   -1e-40f,  1.2e-38f,
                             1e30f, -1e10f, 383.5f, 0.00196f, INFINITY, std::numeric_limits<float>::quiet_NaN()};
    eSampleFormat const format = container->GetSampleFormat();
    bool const isFloat = format == e_format_FP32NormL || format == e_format_FP32NormA;
    std::minstd_rand numbers(container->GetTotalByteSize());
    for (unsigned int i = 0; i < container->GetTotalByteSize(); i += isFloat ? 4 : 1)
    {
        float const real = i % 12 == 8 ? odd[i / 12 % (withAll ? 12 : 10)] : NextReal(numbers);
        auto const byte = static_cast<unsigned char>(numbers() >> 13);
        std::memcpy(container->GetSamplesB() + i, isFloat ? static_cast<void const *>(&real) : &byte, isFloat ? 4 : 1);
    }
    return AutoPtr<Container>(container);
}

/// Uses the numbers of formats, because some formats have no name.
string Name(char const *what, unsigned int first, unsigned int second = 0)
{
    std::ostringstream name;
    name << what << std::hex << ' ' << first << ' ' << second;
    return name.str();
}

void MakePackages(Golden &golden)
{
    for (eSampleFormat const format : s_formats)
    {
        for (bool const order : {false, true})
        {
            string const name = Name("package", format, order);
            golden.AddPackage<DataPackageSignal>(name, *Fill(ManufactureSignal(format, 37), true), order);
            golden.AddPackage<DataPackageImage>(name, *Fill(ManufactureImage(format, 3, 13), true), order);
            golden.AddPackage<DataPackageVolume>(name, *Fill(ManufactureVolume(format, 2, 3, 5), true), order);
        }
    }
}

void MakeConversions(Golden &golden)
{
    for (eSampleFormat const to : s_formats)
    {
        AutoPtr<SignalBase> const target = Fill(ManufactureSignal(to, 69));
        if (GradientFill(*target, color4f(0.1f, 0.9f, 0.3f, 1.0f), color4f(1.2f, 0.0f, 0.7f, 0.2f), 1, 67))
            golden.Add(Name("gradient", to), *target);
        for (eSampleFormat const from : s_formats)
        {
            AutoPtr<SignalBase> const source = Fill(ManufactureSignal(from, 69), true);
            if (TransferSamples1D(*target, *source, false))
                golden.Add(Name("transfer", to, from), *target);
            if (to != from && ConvertSamples(*source, to))
                golden.Add(Name("conversion in place", to, from), *source);
        }
    }
}

void MakeResampled(Golden &golden)
{
    for (unsigned int i = 0; i < 2 * std::size(s_formats); ++i)
    {
        eSampleFormat const format = s_formats[i / 2];
        eResampleFilter const filter = i % 2 == 0 ? e_resample_nearest : e_resample_linear;
        for (auto const &[to, from] : {std::pair(67u, 37u), std::pair(37u, 101u), std::pair(5u, 3u)})
        {
            AutoPtr<SignalBase> const target = Fill(ManufactureSignal(format, to));
            Resample1D(*target, *Fill(ManufactureSignal(format, from)), filter);
            golden.Add(Name("resampled signal", format, filter), *target);
        }
        for (auto const &[rows, columns] : {std::pair(3u, 41u), std::pair(7u, 5u)})
        {
            AutoPtr<ImageBase> const target = Fill(ManufactureImage(format, rows, columns));
            Resample2D(*target, *Fill(ManufactureImage(format, 5, 37)), filter);
            golden.Add(Name("resampled image", format, filter), *target);
        }
        AutoPtr<VolumeBase> const target = Fill(ManufactureVolume(format, 2, 3, 21));
        Resample3D(*target, *Fill(ManufactureVolume(format, 3, 4, 19)), filter);
        golden.Add(Name("resampled volume", format, filter), *target);
    }
    // These rows are so wide that the resampling splits them into runs of columns.
    for (eSampleFormat const format : {e_format_L8, e_format_A8R8G8B8})
    {
        for (auto const &[rows, columns] : {std::pair(1u, 2101u), std::pair(4u, 530u)})
        {
            AutoPtr<ImageBase> const target = Fill(ManufactureImage(format, rows, columns));
            Resample2D(*target, *Fill(ManufactureImage(format, 2, 2600)), e_resample_linear);
            golden.Add(Name("resampled wide image", format, columns), *target);
        }
    }
}

template<typename Chain, typename Container>
void AddLevels(Golden &golden, eSampleFormat format, AutoPtr<Container> const &source)
{
    Chain chain(format);
    chain.Build(*source, false);
    for (unsigned int i = 1; i < chain.GetNumLevels(); ++i)
        golden.Add(Name("level of mipmap chain", format, i), chain.GetLevel(i));
}

void MakeMipmaps(Golden &golden)
{
    for (eSampleFormat const format : s_formats)
    {
        AddLevels<SignalMipmapChain>(golden, format, Fill(ManufactureSignal(format, 64)));
        AddLevels<ImageMipmapChain>(golden, format, Fill(ManufactureImage(format, 16, 32)));
        AddLevels<VolumeMipmapChain>(golden, format, Fill(ManufactureVolume(format, 4, 8, 16)));
    }
    AddLevels<ImageMipmapChain>(golden, e_format_L8, Fill(ManufactureImage(e_format_A8R8G8B8, 32, 32)));
}

template<typename Value>
Value Next(std::minstd_rand &numbers)
{
    Value value;
    std::generate_n(value.ToPtr(), sizeof value / sizeof(float), [&numbers] { return NextReal(numbers); });
    return value;
}

void MakeMath(Golden &golden)
{
    std::minstd_rand numbers(11);
    for (bool const bigEndian : {false, true})
    {
        serializer_parameters::OutputStreamByteOrderSentry const out(bigEndian);
        serializer_parameters::InputStreamByteOrderSentry const in(bigEndian);
        auto const a = Next<mat4>(numbers), b = Next<mat4>(numbers);
        auto const p = Next<quat>(numbers), q = Next<quat>(numbers);
        golden.Add("vector", q.Rotate(Next<vec3>(numbers)).Unit());
        golden.Add("vector", a.Row2() / 3.0f);
        golden.Add("matrix", a * b.Inverse());
        golden.Add("quaternion", p * q.Inverse());
        golden.Add("quaternion", quat().FromRotationMatrixMV(a));
        golden.Add("colour", color4f(color4b(1, 77, 200, 255)) * 1.1f);
        golden.Add("colour", color4b(color4f(-0.3f, 0.77f, 1.1f, 1e30f)));
    }
    // Every other matrix has elements of equal size in its first column, where the choice of the pivot matters.
    for (int i = 0; i < 32; ++i)
    {
        auto m = Next<mat4>(numbers);
        for (int row = 0; i % 2 == 0 && row < 4; ++row)
            m[row][0] = std::copysign(0.5f, m[row][0]);
        golden.Add("inverse", m.Inverse());
    }
    for (float const angle : {0.0f, 1e-30f, 30.0f, 45.0f, 90.0f, -180.0f, 359.9f, 540.0f, 7.2e6f, 1e9f, -3e38f})
    {
        mat3 rotation;
        GenerateEulerHPR_MV(rotation, angle, angle / 3, 1.0f - angle);
        golden.Add("rotation by " + MakeString(angle), rotation);
        vec3 angles;
        FactorEulerHPR_MV(rotation, angles.x, angles.y, angles.z);
        golden.Add("angles of rotation by " + MakeString(angle), angles);
    }
}

void MakeTexts(Golden &golden)
{
    using Limits = std::numeric_limits<double>;
    for (double const value : {0.0, -0.0, 1.0 / 3, 2.5, -1e-7, 123456789.0, 1e16, 8.5e300, Limits::max(),
                               Limits::denorm_min(), static_cast<double>(0.1f), 1e-45, Limits::infinity()})
    {
        string texts[] = {MakeString(value), "", "", ""};
        for (unsigned int const precision : {0u, 1u, 7u, 17u, 40u})
        {
            ToString(texts[1], value, 12, precision);
            ToStringFix(texts[2], value, 3, precision, true, true);
            ToStringSci(texts[3], value, 20, precision, true, true);
            for (string const &text : texts)
                golden.Add("text " + text, text);
        }
        double wide = 0.0;
        float narrow = 0.0f;
        ToValue(texts[3], wide);
        ToValue(texts[3], narrow);
        golden.Add("double of " + texts[3], wide);
        golden.Add("float of " + texts[3], narrow);
    }
    std::ostringstream forms;
    forms << VectorOutputForm()(vec3(0.1f, -1e-8f, 1e20f)) << MatrixOutputForm()(mat2(1.0f / 3, 2.0f, -0.0f, 4e9f));
    golden.Add("output forms", forms.str());
}

void CheckGolden(string const &name, void make(Golden &))
{
    SignalOperationsManager const manager;
    string const file = QUILLMARSH_TEST_GOLDEN + name + ".bin";
    for (long long const target : GetKernelTargets())
    {
        SetKernelTarget(target);
        Golden golden;
        make(golden);
        if (std::getenv("QUILLMARSH_WRITE_GOLDEN") != nullptr)
            std::ofstream(file, std::ios::binary) << golden.made.str();
        EXPECT_EQ(golden.Compare(golden.made.str(), tests::ReadFile(file)), "") << file << " by vectors " << target;
    }
    SetKernelTarget(0);
    if (testing::Test::HasFailure())
        return;
    Golden golden(tests::ReadFile(file));
    make(golden);
    EXPECT_EQ(golden.Compare(golden.copy.str(), golden.made.str()), "") << file << " read and written again";
}

TEST(Golden, ResultsAreTheSameOnEverySystem)
{
    CheckGolden("packages", MakePackages);
    CheckGolden("conversions", MakeConversions);
    CheckGolden("resampled", MakeResampled);
    CheckGolden("mipmaps", MakeMipmaps);
    CheckGolden("math", MakeMath);
    CheckGolden("texts", MakeTexts);
}

} // namespace
} // namespace quillmarsh
