#include "slices.h"

#include <quillmarsh/basetools/diagnostics.h>

#include <algorithm>
#include <cmath>
#include <cstring>
#include <type_traits>

namespace viewer
{

using namespace quillmarsh;
using namespace quillmarsh::sample_formats;

namespace
{

/// Rounds a positive number that becomes a whole one.
constexpr float s_half = 0.5F;

constexpr char const *s_projectionNames[] = {"slice", "maximum", "mean"};

/// Where a slice lies in the memory of a volume, in bytes.
struct SliceLayout
{
    unsigned int numRows;
    unsigned int numColumns;
    std::size_t rowStep;
    std::size_t columnStep;
    /// From a slice to the next one, and how many there are.
    std::size_t sliceStep;
    unsigned int numSlices;
};

SliceLayout MakeLayout(VolumeBase const &volume, eSliceAxis axis)
{
    std::size_t const column = volume.GetSampleByteSize();
    std::size_t const row = volume.GetRowByteSize();
    std::size_t const layer = volume.GetLayerByteSize();
    switch (axis)
    {
    case eSliceAxis::e_layer:
        return {volume.GetNumRows(), volume.GetNumColumns(), row, column, layer, volume.GetNumLayers()};
    case eSliceAxis::e_row:
        return {volume.GetNumLayers(), volume.GetNumColumns(), layer, column, row, volume.GetNumRows()};
    default:
        return {volume.GetNumLayers(), volume.GetNumRows(), layer, row, column, volume.GetNumColumns()};
    }
}

/// Four numbers that are computed at once.
/// @{
using Floats = float __attribute__((vector_size(16)));
using Words = std::int32_t __attribute__((vector_size(16)));
/// @}

/// @name Components of samples
/// Each kind reads and writes the components of a sample as numbers that can be added, and as lanes that can be mixed;
/// what lanes become is rounded.
/// @{
template<unsigned int count>
struct ByteComponents
{
    static constexpr unsigned int s_count = count;
    using Number = std::uint32_t;
    using Lanes = std::conditional_t<count == 1, float, Floats>;

    static Lanes Load(unsigned char const *sample)
    {
        if constexpr (count == 1)
            return sample[0];
        else if constexpr (count == 2)
            return __builtin_convertvector((Words{sample[0], sample[1], 0, 0}), Floats);
        else
            return __builtin_convertvector((Words{sample[0], sample[1], sample[2], sample[3]}), Floats);
    }
    static void Store(Lanes lanes, unsigned char *sample)
    {
        if constexpr (count == 1)
            sample[0] = static_cast<unsigned char>(lanes + s_half);
        else
        {
            Words const words = __builtin_convertvector(lanes + s_half, Words);
            for (unsigned int i = 0; i < count; ++i)
                sample[i] = static_cast<unsigned char>(words[i]);
        }
    }
    static void Read(unsigned char const *sample, Number *numbers)
    {
        for (unsigned int i = 0; i < count; ++i)
            numbers[i] = sample[i];
    }
    static void Write(Number const *numbers, unsigned char *sample)
    {
        for (unsigned int i = 0; i < count; ++i)
            sample[i] = static_cast<unsigned char>(numbers[i]);
    }
};

template<typename Packed>
struct FieldComponents
{
    static constexpr unsigned int s_count = 4;
    using Number = std::uint32_t;
    using Lanes = Floats;

    static Lanes Load(unsigned char const *sample)
    {
        Number numbers[s_count];
        Read(sample, numbers);
        Words words = {};
        for (unsigned int i = 0; i < s_count; ++i)
            words[i] = static_cast<std::int32_t>(numbers[i]);
        return __builtin_convertvector(words, Floats);
    }
    static void Store(Lanes lanes, unsigned char *sample)
    {
        Words const words = __builtin_convertvector(lanes + s_half, Words);
        Number const numbers[s_count] = {static_cast<Number>(words[0]), static_cast<Number>(words[1]),
                                         static_cast<Number>(words[2]), static_cast<Number>(words[3])};
        Write(numbers, sample);
    }
    static void Read(unsigned char const *sample, Number *numbers)
    {
        Packed packed;
        std::memcpy(&packed.word, sample, sizeof(packed.word));
        numbers[0] = packed.GetA();
        numbers[1] = packed.GetB();
        numbers[2] = packed.GetC();
        numbers[3] = packed.GetD();
    }
    static void Write(Number const *numbers, unsigned char *sample)
    {
        Packed packed{};
        packed.SetA(numbers[0]);
        packed.SetB(numbers[1]);
        packed.SetC(numbers[2]);
        packed.SetD(numbers[3]);
        std::memcpy(sample, &packed.word, sizeof(packed.word));
    }
};

struct FloatComponents
{
    static constexpr unsigned int s_count = 1;
    using Number = double;
    using Lanes = float;

    static Lanes Load(unsigned char const *sample)
    {
        float value;
        std::memcpy(&value, sample, sizeof(value));
        return value;
    }
    static void Store(Lanes value, unsigned char *sample) { std::memcpy(sample, &value, sizeof(value)); }
    static void Read(unsigned char const *sample, Number *numbers)
    {
        float value;
        std::memcpy(&value, sample, sizeof(value));
        numbers[0] = static_cast<double>(value);
    }
    static void Write(Number const *numbers, unsigned char *sample)
    {
        auto const value = static_cast<float>(numbers[0]);
        std::memcpy(sample, &value, sizeof(value));
    }
};
/// @}

/// Calls `work` with the components of a format. Returns false for a format that is not known.
template<typename Work>
bool WithComponents(eSampleFormat format, Work work)
{
    switch (format)
    {
    case e_format_L8:
    case e_format_A8:
        work(ByteComponents<1>());
        return true;
    case e_format_A8L8:
        work(ByteComponents<2>());
        return true;
    case e_format_A4R4G4B4:
        work(FieldComponents<PackedSample_UShort4444>());
        return true;
    case e_format_A1R5G5B5:
        work(FieldComponents<PackedSample_UShort1555>());
        return true;
    case e_format_X8R8G8B8:
    case e_format_A8R8G8B8:
        work(ByteComponents<4>());
        return true;
    case e_format_FP32NormL:
    case e_format_FP32NormA:
        work(FloatComponents());
        return true;
    default:
        return false;
    }
}

/// Rows of bytes are projected byte by byte, whatever the sample is.
bool AreRowsOfBytes(eSampleFormat format, SliceLayout const &layout)
{
    bool const areBytes = format == e_format_A8L8 || format == e_format_X8R8G8B8 || format == e_format_A8R8G8B8;
    return areBytes && layout.columnStep == ExtractByteSize(format);
}

/// Slices of a slab, from `begin` on.
struct Slab
{
    unsigned int begin;
    unsigned int count;
};

Slab CutSlab(unsigned int numSlices, unsigned int index, unsigned int thickness)
{
    unsigned int const wanted = std::max(thickness, 1U);
    unsigned int const ahead = std::min((wanted - 1) / 2, index);
    unsigned int const behind = std::min(wanted - 1 - (wanted - 1) / 2, numSlices - 1 - index);
    return {index - ahead, ahead + 1 + behind};
}

/// Leaves out rows and columns. Returns the distance of the first sample, in bytes.
std::size_t Thin(SliceLayout &layout, unsigned int step)
{
    auto const thin = [step](unsigned int &count, std::size_t &distance)
    {
        std::size_t const offset = std::min(step, count) / 2 * distance;
        count = std::max(count / step, 1U);
        distance *= step;
        return offset;
    };
    if (step <= 1)
        return 0;
    std::size_t const row = thin(layout.numRows, layout.rowStep);
    return row + thin(layout.numColumns, layout.columnStep);
}

using Progress = std::function<bool(double)>;

/// Asks now and then whether to go on.
bool GoesOn(Progress const &progress, unsigned int row, unsigned int numRows)
{
    return !progress || row % 16 != 0 || progress(static_cast<double>(row) / numRows);
}

/// Returns false if it was stopped.
bool CopySamples(SliceLayout const &layout, unsigned char const *source, ImageBase &image, Progress const &progress)
{
    std::size_t const sampleSize = image.GetSampleByteSize();
    unsigned char *to = image.GetSamplesB();
    for (unsigned int row = 0; row < layout.numRows; ++row, source += layout.rowStep, to += image.GetRowByteSize())
    {
        if (!GoesOn(progress, row, layout.numRows))
            return false;
        if (layout.columnStep == sampleSize)
        {
            std::memcpy(to, source, image.GetRowByteSize());
            continue;
        }
        for (unsigned int column = 0; column < layout.numColumns; ++column)
            std::memcpy(to + column * sampleSize, source + column * layout.columnStep, sampleSize);
    }
    return true;
}

struct Maximum
{
    template<typename Number>
    static void Add(Number &sum, Number value)
    {
        // A NaN gives way to any number.
        bool isNumber = true;
        if constexpr (std::is_floating_point_v<Number>)
            isNumber = !std::isnan(value);
        if (!(value <= sum) && isNumber)
            sum = value;
    }
    template<typename Number>
    static Number Finish(Number sum, unsigned int)
    {
        return sum;
    }
};

struct Mean
{
    template<typename Number>
    static void Add(Number &sum, Number value)
    {
        sum += value;
    }
    static std::uint32_t Finish(std::uint32_t sum, unsigned int count) { return (sum + count / 2) / count; }
    static double Finish(double sum, unsigned int count) { return sum / count; }
};

template<typename Components, typename Projection>
bool Project(SliceLayout const &layout, Slab const &slab, unsigned char const *source, ImageBase &image,
             Progress const &progress)
{
    using Number = typename Components::Number;
    constexpr unsigned int count = Components::s_count;
    std::vector<Number> sums(std::size_t(layout.numColumns) * count);
    Number numbers[count];
    for (unsigned int row = 0; row < layout.numRows; ++row, source += layout.rowStep)
    {
        if (!GoesOn(progress, row, layout.numRows))
            return false;
        for (unsigned int column = 0; column < layout.numColumns; ++column)
            Components::Read(source + column * layout.columnStep, &sums[column * count]);
        for (unsigned int slice = 1; slice < slab.count; ++slice)
        {
            unsigned char const *const from = source + slice * layout.sliceStep;
            for (unsigned int column = 0; column < layout.numColumns; ++column)
            {
                Components::Read(from + column * layout.columnStep, numbers);
                for (unsigned int i = 0; i < count; ++i)
                    Projection::Add(sums[column * count + i], numbers[i]);
            }
        }
        unsigned char *const to = image.SampleB(row, 0);
        std::size_t const step = image.GetRowByteSize() / layout.numColumns;
        for (unsigned int column = 0; column < layout.numColumns; ++column)
        {
            for (unsigned int i = 0; i < count; ++i)
                numbers[i] = Projection::Finish(sums[column * count + i], slab.count);
            Components::Write(numbers, to + column * step);
        }
    }
    return true;
}

/// Pixels of a row that lie inside of the volume: from `begin` to ahead of `end`.
struct Run
{
    int begin;
    int end;
};

/// Cuts a run to the pixels where a coordinate that starts at `start` and grows by `step` is within 0 and `size`.
void CutRun(Run &run, double start, double step, double size)
{
    if (step == 0)
    {
        if (!(start >= 0 && start < size))
            run.end = run.begin;
        return;
    }
    double const first = step > 0 ? -start / step : (size - start) / step;
    double const last = step > 0 ? (size - start) / step : -start / step;
    run.begin = static_cast<int>(std::clamp(std::ceil(first), double(run.begin), double(run.end)));
    run.end = static_cast<int>(std::clamp(std::ceil(last), double(run.begin), double(run.end)));
}

/// The two samples next to a coordinate, as distances in bytes, and the weight of the second one. A coordinate in the
/// middle of a sample touches no other one.
struct Neighbours
{
    Neighbours(float coordinate, unsigned int size, std::size_t step)
    {
        float const place = std::clamp(coordinate - 0.5F, 0.0F, static_cast<float>(size - 1));
        auto const index = static_cast<unsigned int>(place);
        weight = place - static_cast<float>(index);
        first = index * step;
        second = weight > 0 ? first + step : first;
    }

    std::size_t first;
    std::size_t second;
    float weight;
};

/// Reads between samples of one volume.
template<typename Components>
class Interpolator
{
public:
    explicit Interpolator(VolumeBase const &volume)
        : samples_(volume.GetSamplesB()),
          volume_(volume),
          columnStep_(volume.GetSampleByteSize()),
          rowStep_(volume.GetRowByteSize()),
          layerStep_(volume.GetLayerByteSize())
    {
    }

    /// Reads the samples of a run of places from `start` on.
    void ReadRun(vec3 const &start, vec3 const &step, Run const &run, unsigned char *samples) const
    {
        samples += static_cast<std::size_t>(run.begin) * columnStep_;
        if (step.y == 0 && step.z == 0)
        {
            ReadAlongRow(start, step.x, run, samples);
            return;
        }
        for (int i = run.begin; i < run.end; ++i, samples += columnStep_)
        {
            vec3 const place = start + step * static_cast<float>(i);
            Neighbours const x(place.x, volume_.GetNumColumns(), columnStep_);
            Neighbours const y(place.y, volume_.GetNumRows(), rowStep_);
            Neighbours const z(place.z, volume_.GetNumLayers(), layerStep_);
            Read(x, y, z, samples);
        }
    }

private:
    using Lanes = typename Components::Lanes;

    /// Along a row of the volume, two neighbours stay the same.
    void ReadAlongRow(vec3 const &start, float step, Run const &run, unsigned char *samples) const
    {
        Neighbours const y(start.y, volume_.GetNumRows(), rowStep_);
        Neighbours const z(start.z, volume_.GetNumLayers(), layerStep_);
        for (int i = run.begin; i < run.end; ++i, samples += columnStep_)
        {
            float const place = start.x + step * static_cast<float>(i);
            Read(Neighbours(place, volume_.GetNumColumns(), columnStep_), y, z, samples);
        }
    }

    void Read(Neighbours const &x, Neighbours const &y, Neighbours const &z, unsigned char *sample) const
    {
        Lanes value = ReadLayer(samples_ + z.first, x, y);
        if (z.weight > 0)
            value = Mix(value, ReadLayer(samples_ + z.second, x, y), z.weight);
        Components::Store(value, sample);
    }

    static Lanes Mix(Lanes const &a, Lanes const &b, float weight) { return a + (b - a) * weight; }

    static Lanes ReadRow(unsigned char const *row, Neighbours const &x)
    {
        Lanes const value = Components::Load(row + x.first);
        return x.weight > 0 ? Mix(value, Components::Load(row + x.second), x.weight) : value;
    }

    static Lanes ReadLayer(unsigned char const *layer, Neighbours const &x, Neighbours const &y)
    {
        Lanes const value = ReadRow(layer + y.first, x);
        return y.weight > 0 ? Mix(value, ReadRow(layer + y.second, x), y.weight) : value;
    }

    unsigned char const *samples_;
    VolumeBase const &volume_;
    std::size_t columnStep_;
    std::size_t rowStep_;
    std::size_t layerStep_;
};

/// Place of pixels on a plane: of the first one of a row, and the step to the next one.
struct PlaneRow
{
    vec3 start;
    vec3 step;
    Run run;
};

PlaneRow MakeRow(VolumeBase const &volume, ImageBase const &picture, Plane const &plane, unsigned int y)
{
    float const middleX = 0.5F - static_cast<float>(picture.GetNumColumns()) / 2;
    float const middleY = 0.5F - static_cast<float>(picture.GetNumRows()) / 2;
    PlaneRow row;
    row.start = plane.origin + plane.right * middleX + plane.down * (middleY + static_cast<float>(y));
    row.step = plane.right;
    row.run = {0, static_cast<int>(picture.GetNumColumns())};
    CutRun(row.run, double(row.start.x), double(row.step.x), volume.GetNumColumns());
    CutRun(row.run, double(row.start.y), double(row.step.y), volume.GetNumRows());
    CutRun(row.run, double(row.start.z), double(row.step.z), volume.GetNumLayers());
    return row;
}

bool IsFinite(Plane const &plane)
{
    for (vec3 const &v : {plane.origin, plane.right, plane.down})
    {
        if (!std::isfinite(v.x) || !std::isfinite(v.y) || !std::isfinite(v.z))
            return false;
    }
    return true;
}

template<typename Components>
void ComposeRows(ImageBase &picture, VolumeBase const &volume, Plane const &plane, ToneMap const &tones,
                 Pixel background)
{
    Interpolator<Components> const interpolator(volume);
    std::size_t const sampleSize = volume.GetSampleByteSize();
    std::vector<unsigned char> samples(picture.GetNumColumns() * sampleSize);
    for (unsigned int y = 0; y < picture.GetNumRows(); ++y)
    {
        auto *const pixels = reinterpret_cast<Pixel *>(picture.SampleB(y, 0));
        PlaneRow const row = MakeRow(volume, picture, plane, y);
        std::fill(pixels, pixels + row.run.begin, background);
        std::fill(pixels + row.run.end, pixels + picture.GetNumColumns(), background);
        if (row.run.begin >= row.run.end)
            continue;
        interpolator.ReadRun(row.start, row.step, row.run, samples.data());
        auto const first = static_cast<std::size_t>(row.run.begin);
        tones.Map(&samples[first * sampleSize], static_cast<unsigned int>(row.run.end - row.run.begin), pixels + first,
                  row.run.begin, static_cast<int>(y));
    }
}

} // namespace

std::span<char const *const> GetProjectionNames()
{
    return s_projectionNames;
}

AutoPtr<ImageBase> ExtractSlice(VolumeBase const &volume, eSliceAxis axis, unsigned int index, eProjection projection,
                                unsigned int thickness, unsigned int step, std::function<bool(double)> const &progress)
{
    SliceLayout layout = MakeLayout(volume, axis);
    QUILLMARSH_ASSERT(index < layout.numSlices, "Slice-index out of range.");
    if (layout.numSlices == 0)
        return nullptr;
    unsigned int const middle = std::min(index, layout.numSlices - 1);
    unsigned char const *const samples = volume.GetSamplesB() + Thin(layout, step);
    AutoPtr<ImageBase> image(ManufactureImage(volume.GetSampleFormat(), layout.numRows, layout.numColumns));
    Slab const slab = CutSlab(layout.numSlices, middle, thickness);
    bool const isProjected = projection != eProjection::e_slice && slab.count > 1;
    unsigned char const *const first = samples + slab.begin * layout.sliceStep;
    bool const areBytes = AreRowsOfBytes(volume.GetSampleFormat(), layout);
    if (areBytes && isProjected)
    {
        layout.numColumns *= volume.GetSampleByteSize();
        layout.columnStep = 1;
    }
    bool isDone = true;
    auto const project = [&]<typename Components>(Components)
    {
        isDone = projection == eProjection::e_maximum
                     ? Project<Components, Maximum>(layout, slab, first, *image, progress)
                     : Project<Components, Mean>(layout, slab, first, *image, progress);
    };
    eSampleFormat const format = areBytes ? e_format_L8 : volume.GetSampleFormat();
    if (!isProjected || !WithComponents(format, project))
        isDone = CopySamples(layout, samples + middle * layout.sliceStep, *image, progress);
    return isDone ? std::move(image) : nullptr;
}

void ComposePlane(ImageBase &picture, VolumeBase const &volume, Plane const &plane, ToneMap const &tones,
                  Pixel background)
{
    auto const compose = [&]<typename Components>(Components)
    { ComposeRows<Components>(picture, volume, plane, tones, background); };
    bool const cutsVolume = volume.GetNumSamples() != 0 && IsFinite(plane);
    if (cutsVolume && WithComponents(volume.GetSampleFormat(), compose))
        return;
    auto *const pixels = reinterpret_cast<Pixel *>(picture.GetSamplesB());
    std::fill(pixels, pixels + picture.GetNumSamples(), background);
}

} // namespace viewer
