// The video renderers of a run, and the choice among their configurations.
#ifndef QUILLMARSH_HOST_VIDEOOFFERS_H
#define QUILLMARSH_HOST_VIDEOOFFERS_H

#include <quillmarsh/framework/videoconfig.h>
#include <quillmarsh/framework/videorenderer.h>
#include <quillmarsh/framework/videorendererinfo.h>
#include <quillmarsh/framework/videosubsystem.h>

#include <exception>
#include <vector>

namespace quillmarsh::host
{

class HostKernel;

/// A video renderer with the subsystem that it draws with.
struct VideoOffer
{
    /// Outlives the renderer.
    AutoPtr<VideoSubsystem> subsystem;
    AutoPtr<VideoRenderer> renderer;
    /// Contains everything that the subsystem can do on this machine.
    VideoRendererInfo info;
    /// The part of it that the application accepts.
    VideoProfile accepted;
    /// Why the profile is not complete; empty when it is.
    string faults = {};

    string const &GetPluginName() const { return info.GetPluginInfo().GetPluginName(); }
};

/// One of the offers, and a configuration that it can be opened with.
struct VideoChoice
{
    VideoOffer *offer;
    VideoConfig config;
};

/// The video renderers of a run: creates them with their subsystems, asks the application about them, and chooses one
/// with a configuration for a wish. Frame thread only.
class VideoOffers : NoCopy
{
public:
    /// Largest width and height of a window, in pixels.
    static constexpr unsigned int s_maxWindowSize = 16384;

    /// Borrows `kernel`, which must outlive this object.
    explicit VideoOffers(HostKernel &kernel);
    ~VideoOffers();

    /// Creates the renderers that the plug-ins bring, each with the first subsystem that it is compatible with, and
    /// calls ConfirmVideoRenderer() and FilterVideoProfile() for it. Each subsystem writes what it can do to a log file
    /// in `logDirectory`; to none when that is empty. A renderer that fails is reported and left out; when none is
    /// left, throws what the first one has thrown. Throws what a hook throws.
    void Collect(string const &logDirectory);
    /// Deletes the renderers, then their subsystems.
    void Release();

    bool IsEmpty() const { return offers_.empty(); }
    unsigned int GetSize() const { return static_cast<unsigned int>(offers_.size()); }
    /// Returns a renderer by index; null past the end.
    VideoOffer *Get(unsigned int index) const;

    /// Chooses the renderer of a plug-in, with the wish if it accepts that, and otherwise with the closest
    /// configuration that it accepts. For an empty or unknown name, and when that renderer accepts nothing, takes what
    /// Kernel::ConstructClosestSafeVideoConfig() finds. A window keeps its wished size up to s_maxWindowSize; a size of 0
    /// is the default one. Throws a KernelException when there is nothing, with a message that tells the wish and the
    /// offers.
    VideoChoice Choose(string const &pluginName, VideoConfig const &asked) const;

private:
    using Descriptors = std::vector<PluginDescriptor *>;

    /// A renderer that was left out.
    struct Miss
    {
        string message;
        std::exception_ptr thrown;
    };

    Descriptors FindDescriptors(ePluginType type) const;
    void CollectOne(PluginDescriptor &descriptor, Descriptors const &subsystems, string const &logDirectory);
    /// Runs a plug-in's code. False when it throws; the renderer of `name` is then among the misses.
    template<typename Call>
    bool Try(string const &name, Call &&call);
    AutoPtr<VideoSubsystem> CreateSubsystem(VideoRenderer const &renderer, Descriptors const &subsystems) const;
    void ReportMisses();
    VideoOffer *Find(string const &pluginName) const;
    bool TakeClosest(VideoOffer *wanted, VideoConfig const &wish, VideoChoice &choice) const;
    string DescribeMisfit(string const &pluginName, VideoConfig const &wish) const;

    HostKernel &kernel_;
    std::vector<AutoPtr<VideoOffer>> offers_;
    std::vector<Miss> misses_;
};

} // namespace quillmarsh::host

#endif
