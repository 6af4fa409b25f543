// Devices that sample at full rate on their threads, while a frame loop reads, starts, stops and reconfigures them at
// random: "quillmarsh-hid-soak [--seconds N]". Runs for five minutes; the exit status says whether all counts add up.
#include <quillmarsh/basetools/exception.h>
#include <quillmarsh/basetools/sharedoutputstream.h>
#include <quillmarsh/framework/samplereadsentry.h>
#include <quillmarsh/host/hostkernel.h>

#include "tests/support/controller_device.h"

#include <atomic>
#include <cstdlib>
#include <iostream>
#include <random>
#include <thread>

namespace quillmarsh::tests
{
namespace
{

using Clock = std::chrono::steady_clock;

/// Discards the log, to which the threads print.
class Sink : public TextSink
{
    void OnText(std::string_view, unsigned int) override {}
};

struct SoakMouse : PlainMouse
{
    using Mouse::AccumDelta;
    using Mouse::AccumWheelDelta;
};

/// Moves its mouse by one in each sample.
class SoakDevice : public ControllerDevice<SoakMouse>
{
public:
    explicit SoakDevice(unsigned int id) { DeviceInfo().SetCreationID(id); }
    // Stops the thread before the destructor ends, because the thread calls this class.
    ~SoakDevice() override { StopAsyncSampling(); }

    void OnStartAsyncSampling(void *, unsigned int) override { isOnThread_ = true; }
    void OnStopAsyncSampling(void *, unsigned int) override { isOnThread_ = false; }
    void SampleDevice() override
    {
        if (failing)
            QUILLMARSH_THROW(HIDException, "gone");
        numSamples.fetch_add(1, std::memory_order_relaxed);
        int const before = mouse.GetDeltaX();
        Sample(
            [this]
            {
                mouse.AccumDelta(1, -1);
                mouse.AccumWheelDelta(2);
            });
        // A thread that is being stopped may take a last synchronous sample, which discards unread data.
        if (isOnThread_)
            numForgotten += static_cast<std::uint64_t>(before + 1 - mouse.GetDeltaX());
    }

    SoakMouse &mouse = controller;
    std::atomic<std::uint64_t> numSamples{0};
    std::atomic<bool> failing{false};
    std::uint64_t numForgotten = 0;

private:
    bool isOnThread_ = false;
};

/// The frame thread's side of one device, with its counts.
class Reader
{
public:
    Reader(unsigned int id, unsigned int seed) : device_(id), random_(seed) {}

    /// Releases a lock that was kept to the end of the last frame. All locks are released first, so that several are
    /// always taken in the same order.
    void BeginFrame()
    {
        if (isHeld_)
            device_.UnlockSampledData();
        isHeld_ = false;
    }

    void RunFrame()
    {
        if (device_.IsAsyncSamplingActive())
            ReadAsync();
        else
            ReadSync();
        unsigned int const dice = RollDice(1000);
        if (dice < 20)
            Toggle();
        else if (dice < 60)
            device_.EnableMaxSampleRate(dice % 2 == 0);
        else if (dice < 100)
            device_.SetMaxSampleRate(50.0 + RollDice(1000));
        else if (dice < 102 && device_.IsAsyncSamplingActive())
            device_.failing = true;
    }

    /// Stops the device, and adds its counts.
    void End(bool &isWell, std::uint64_t &numSamples, unsigned int &numToggles)
    {
        if (device_.IsAsyncSamplingActive())
            Toggle();
        Check(numCounted_ + device_.numForgotten == device_.numSamples, "samples were lost or counted twice");
        isWell = isWell && isWell_;
        numSamples += device_.numSamples;
        numToggles += numToggles_;
    }

private:
    unsigned int RollDice(unsigned int sides) { return static_cast<unsigned int>(random_() % sides); }

    void Check(bool holds, char const *what)
    {
        if (!holds && isWell_)
            std::cerr << "device " << device_.GetDeviceInfo().GetCreationID() << ": " << what << std::endl;
        isWell_ = isWell_ && holds;
    }

    void ReadSync()
    {
        SampleReadSentry const sentry(device_, true);
        Check(device_.mouse.GetDeltaX() == 1, "a sample on the spot is more than one");
        ++numCounted_;
    }

    void ReadAsync()
    {
        isHeld_ = RollDice(8) == 0;
        AsyncSampleReadSentry const sentry(device_, !isHeld_);
        CountMouse();
    }

    void CountMouse()
    {
        int const delta = device_.mouse.GetDeltaX();
        Check(device_.mouse.GetDeltaY() == -delta && device_.mouse.GetDeltaWheel() == 2 * delta, "a read is torn");
        numCounted_ += static_cast<std::uint64_t>(delta);
    }

    void Toggle()
    {
        ++numToggles_;
        if (!device_.IsAsyncSamplingActive())
        {
            device_.mouse.ResetInputReadings();
            device_.StartAsyncSampling();
            return;
        }
        device_.StopAsyncSampling();
        isHeld_ = false;
        Check(device_.GetAverageSampleRate() == 0, "a rate is left");
        if (device_.failing)
        {
            // Unread data is lost with the device, which reads as at rest, unless it was stopped first.
            device_.failing = false;
            numCounted_ = device_.numSamples - device_.numForgotten;
        }
        else
        {
            CountMouse();
        }
        Check(numCounted_ + device_.numForgotten == device_.numSamples, "samples were lost or counted twice");
    }

    SoakDevice device_;
    std::mt19937 random_;
    std::uint64_t numCounted_ = 0;
    /// `isHeld_`: the lock was kept at the end of the last frame.
    bool isHeld_ = false, isWell_ = true;
    unsigned int numToggles_ = 0;
};

int Run(double seconds)
{
    constexpr unsigned int numDevices = 10;
    Sink sink;
    SharedOutputStream log(sink);
    host::HostKernel const kernel(log, [](string const &) {});
    std::vector<AutoPtr<Reader>> readers;
    for (unsigned int id = 1; id <= numDevices; ++id)
        readers.push_back(std::make_unique<Reader>(id, id * 7919));
    unsigned int numFrames = 0;
    auto const end = Clock::now() + std::chrono::duration_cast<Clock::duration>(std::chrono::duration<double>(seconds));
    while (Clock::now() < end)
    {
        for (AutoPtr<Reader> const &reader : readers)
            reader->BeginFrame();
        for (AutoPtr<Reader> const &reader : readers)
            reader->RunFrame();
        ++numFrames;
        std::this_thread::yield();
    }
    bool isWell = true;
    std::uint64_t numSamples = 0;
    unsigned int numToggles = 0;
    for (AutoPtr<Reader> const &reader : readers)
        reader->End(isWell, numSamples, numToggles);
    std::cout << numDevices << " devices, " << numFrames << " frames, " << numSamples << " samples, " << numToggles
              << " starts and stops: " << (isWell ? "all counts add up" : "FAILED") << std::endl;
    return isWell ? EXIT_SUCCESS : EXIT_FAILURE;
}

} // namespace
} // namespace quillmarsh::tests

int main(int argc, char **argv)
{
    double seconds = 300;
    if (argc == 3 && std::string(argv[1]) == "--seconds")
        seconds = std::atof(argv[2]);
    if (argc != 1 && (argc != 3 || !(seconds > 0)))
    {
        std::cerr << "usage: quillmarsh-hid-soak [--seconds N]" << std::endl;
        return 2;
    }
    return quillmarsh::tests::Run(seconds);
}
