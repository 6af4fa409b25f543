#include "formulas.h"
#include "samples.h"

#include <cmath>
#include <cstring>

namespace makesamples
{

namespace
{

using namespace quillmarsh;

/// Fills a signal; `fill` writes the sample with an index.
template<typename Fill>
SampledData Make(eSampleFormat format, unsigned int size, Fill const &fill)
{
    SampledData data(format, {size});
    SignalBase &signal = data.GetSamples();
    for (unsigned int i = 0; i < size; ++i)
        fill(i, signal.SampleB(i));
    return data;
}

unsigned char ToByte(double value)
{
    return static_cast<unsigned char>(std::clamp(value * 255 + 0.5, 0.0, 255.0));
}

/// A bump about `middle`.
double Bump(double x, double middle, double width)
{
    double const distance = (x - middle) / width;
    return distance * distance < 30 ? Exponential(-distance * distance) : 0;
}

/// A beat of a heart, from 0 to 1, with a pace that changes a little.
double Beat(double seconds)
{
    double const beats = 1.2 * seconds + 0.12 * Sine(0.09 * seconds);
    double const x = beats - std::floor(beats);
    return 0.3 + 0.1 * Bump(x, 0.2, 0.035) - 0.1 * Bump(x, 0.335, 0.012) + 0.62 * Bump(x, 0.36, 0.014) -
           0.17 * Bump(x, 0.39, 0.014) + 0.16 * Bump(x, 0.6, 0.06) + 0.02 * Sine(0.21 * seconds);
}

/// Four channels of a monitor: heart, breath, pressure, and a noisy sensor.
void FillMonitor(unsigned int index, unsigned char *sample)
{
    double const seconds = index / 250.0;
    double const breath = 0.5 + 0.38 * Sine(0.24 * seconds) * (0.8 + 0.2 * Noise(seconds / 9));
    double const saw = 0.9 * seconds - std::floor(0.9 * seconds);
    double const pressure = 0.25 + 0.5 * (Step(0, 0.12, saw) * (1 - 0.75 * saw)) + 0.1 * Bump(saw, 0.45, 0.05);
    double const sensor = 0.2 + 0.45 * Fractal(4, seconds / 3) + 0.1 * (Hash(index, 1) - 0.5);
    double const channels[] = {pressure, breath, Beat(seconds), sensor};
    // Blue, green, red, alpha.
    for (unsigned int i = 0; i < std::size(channels); ++i)
        sample[i] = ToByte(channels[i]);
}

/// A sound that rises over nine octaves, and its loudness.
void FillSweep(unsigned int index, unsigned char *sample)
{
    double const part = index / 65536.0;
    double const phase = 3 * (Exponential(6.2 * part) - 1);
    double const loudness = Step(0, 0.03, part) * Step(1, 0.9, part) * (0.75 + 0.25 * Sine(3 * part));
    float const value = static_cast<float>(loudness * Sine(phase));
    std::memcpy(sample, &value, sizeof value);
}

/// Almost nothing, and every few ten thousand samples a single one that matters.
void FillPeaks(unsigned int index, unsigned char *sample)
{
    double const rest = 0.3 + 0.05 * Sine(index / 40000.0) + 0.03 * (Hash(index) - 0.5);
    bool const isPeak = index % 27449 == 15000;
    *sample = ToByte(isPeak ? 0.75 + 0.25 * Hash(index, 2) : rest);
}

/// A carrier in luminance whose strength follows alpha.
void FillStereo(unsigned int index, unsigned char *sample)
{
    double const seconds = index / 2000.0;
    double const envelope = 0.15 + 0.8 * Step(0.3, 0.7, Fractal(2, seconds * 0.7));
    sample[0] = ToByte(0.5 + 0.5 * envelope * Sine(40 * seconds));
    sample[1] = ToByte(envelope);
}

constexpr Sample s_signals[] = {
    {"monitor-4-channels.qmdp.signal", [] { return Make(e_format_A8R8G8B8, 30000, &FillMonitor); }},
    {"peaks.qmdp.signal", [] { return Make(e_format_L8, 300000, &FillPeaks); }},
    {"stereo.qmdp.signal", [] { return Make(e_format_A8L8, 40000, &FillStereo); }},
    {"sweep.qmdp.signal", [] { return Make(e_format_FP32NormL, 65536, &FillSweep); }},
};

} // namespace

std::span<Sample const> GetSignals()
{
    return s_signals;
}

} // namespace makesamples
