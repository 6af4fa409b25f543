#include <quillmarsh/host/videooffers.h>

#include "catching.h"

#include <quillmarsh/host/hostkernel.h>

#include <quillmarsh/basetools/filesystem.h>

#include <algorithm>
#include <ostream>
#include <sstream>

namespace quillmarsh::host
{

namespace
{

string JoinNames(std::vector<PluginDescriptor *> const &descriptors)
{
    string joined;
    for (PluginDescriptor const *const descriptor : descriptors)
        joined += (joined.empty() ? "'" : ", '") + descriptor->GetPluginInfo().GetPluginName() + "'";
    return joined;
}

/// Returns the file of a subsystem's log; empty for none.
string MakeLogFileName(string const &directory, PluginInfo const &info)
{
    if (directory.empty() || !file_system::DirectoryExists(directory))
        return "";
    string name = directory;
    file_system::ForceTrailingPathSeparator(name);
    return name + info.GetPluginName() + ".profile.log";
}

/// Returns why a subsystem cannot tell all that it can do, in one line.
string CollectFaults(VideoSubsystem &subsystem)
{
    std::stringstream log;
    VideoProfile profile;
    subsystem.CollectVideoProfile(log, profile);
    string faults;
    for (string line; std::getline(log, line);)
        faults += (faults.empty() ? "" : "; ") + line;
    return faults.empty() ? "for an unknown reason" : faults;
}

bool IsWindowSize(unsigned int size)
{
    return size > 0 && size <= VideoOffers::s_maxWindowSize;
}

/// Gives a window the size that was wished for: a window needs no display mode.
void KeepWindowSize(VideoConfig const &wish, VideoConfig &config)
{
    DisplayModeConfig const &mode = wish.DisplayMode;
    if (config.FrameBuffer.Fullscreen || !IsWindowSize(mode.Width) || !IsWindowSize(mode.Height))
        return;
    config.DisplayMode.Width = mode.Width;
    config.DisplayMode.Height = mode.Height;
}

bool IsPossible(VideoConfig const &config, VideoProfile const &profile)
{
    DisplayModeConfig const &mode = config.DisplayMode;
    return profile.IsValid(config) &&
           (config.FrameBuffer.Fullscreen || (IsWindowSize(mode.Width) && IsWindowSize(mode.Height)));
}

void Describe(ostream &out, VideoConfig const &config)
{
    FrameBufferConfig const &buffer = config.FrameBuffer;
    out << (buffer.Fullscreen ? "fullscreen " : "a window of ") << config.DisplayMode.MakeDesc(" x ", " @ ") << ", "
        << (buffer.HardwareRasterizer ? "hardware" : "software") << " rasterizer, back buffers "
        << buffer.BackBufferCount << " of " << buffer.MakeBackBufferDesc(".") << ", depth and stencil "
        << buffer.MakeDepthStencilDesc(".") << ", accumulation " << buffer.MakeAccumulationDesc(".");
}

/// Writes a number with its noun, "no" for 0.
void Count(ostream &out, unsigned int count, char const *noun)
{
    if (count == 0)
        out << "no " << noun << "s";
    else
        out << count << ' ' << noun << (count == 1 ? "" : "s");
}

void DescribeProfile(ostream &out, VideoProfile const &profile)
{
    Count(out, profile.GetNumDisplayModeProperties(), "display mode");
    out << " and ";
    Count(out, profile.GetNumFrameBufferConfigs(), "frame-buffer configuration");
}

} // namespace

VideoOffers::VideoOffers(HostKernel &kernel) : kernel_(kernel) {}

VideoOffers::~VideoOffers() = default;

VideoOffer *VideoOffers::Get(unsigned int index) const
{
    return index < offers_.size() ? offers_[index].get() : nullptr;
}

VideoOffer *VideoOffers::Find(string const &pluginName) const
{
    auto const isMeant = [&pluginName](AutoPtr<VideoOffer> const &offer)
    { return offer->GetPluginName() == pluginName; };
    auto const found = std::find_if(offers_.begin(), offers_.end(), isMeant);
    return found != offers_.end() ? found->get() : nullptr;
}

// Collection

VideoOffers::Descriptors VideoOffers::FindDescriptors(ePluginType type) const
{
    Descriptors found;
    for (PluginSet::Entry const &entry : kernel_.GetPlugins().GetEntries())
    {
        if (entry.descriptor->GetPluginInfo().GetPluginType() == type)
            found.push_back(entry.descriptor);
    }
    return found;
}

template<typename Call>
bool VideoOffers::Try(string const &name, Call &&call)
{
    std::exception_ptr thrown;
    auto const keep = [&]
    {
        try
        {
            call();
        }
        catch (...)
        {
            thrown = std::current_exception();
            throw;
        }
    };
    std::optional<string> const reason = Catch(keep);
    if (reason)
        misses_.push_back({"The video renderer '" + name + "' is left out: " + *reason, thrown});
    return !reason;
}

void VideoOffers::Collect(string const &logDirectory)
{
    Descriptors const subsystems = FindDescriptors(e_plugin_video_subsystem);
    for (PluginDescriptor *const descriptor : FindDescriptors(e_plugin_video_renderer))
        CollectOne(*descriptor, subsystems, logDirectory);
    ReportMisses();
}

void VideoOffers::CollectOne(PluginDescriptor &descriptor, Descriptors const &subsystems, string const &logDirectory)
{
    PluginInfo const &plugin = descriptor.GetPluginInfo();
    auto offer = std::make_unique<VideoOffer>();
    string interfaceName;
    auto const create = [&]
    {
        offer->renderer = kernel_.GetPlugins().CreateAs<VideoRenderer>(descriptor);
        if (offer->renderer == nullptr)
            QUILLMARSH_THROW(VideoRendererException, "The plug-in created no renderer.");
        interfaceName = offer->renderer->GetVideoRendererInterfaceName();
    };
    if (!Try(plugin.GetPluginName(), create))
        return;
    bool confirmed = false;
    kernel_.CallHook("ConfirmVideoRenderer", [&](Application &application)
                     { confirmed = application.ConfirmVideoRenderer(plugin.GetPluginName(), interfaceName); });
    if (kernel_.GetAutoInit().LogPlugins)
        kernel_.GetLog() << "Video renderer" << (confirmed ? ": " : " not wanted: ") << plugin.GetPluginName() << ", "
                         << interfaceName << std::endl;
    if (!confirmed)
        return;
    VideoProfile profile;
    auto const collect = [&]
    {
        offer->subsystem = CreateSubsystem(*offer->renderer, subsystems);
        PluginInfo const &info = offer->subsystem->GetPluginInfo();
        if (offer->subsystem->BuildVideoProfile(MakeLogFileName(logDirectory, info), info.GetPluginName(), profile))
            return;
        offer->faults = CollectFaults(*offer->subsystem);
        kernel_.GetLog() << "The profile of '" << info.GetPluginName() << "' is not complete: " << offer->faults
                         << std::endl;
    };
    if (!Try(plugin.GetPluginName(), collect))
        return;
    offer->info = VideoRendererInfo(plugin, interfaceName, profile);
    offer->accepted = profile;
    kernel_.CallHook("FilterVideoProfile",
                     [&](Application &application) { application.FilterVideoProfile(profile, offer->accepted); });
    offers_.push_back(std::move(offer));
}

AutoPtr<VideoSubsystem> VideoOffers::CreateSubsystem(VideoRenderer const &renderer, Descriptors const &subsystems) const
{
    for (PluginDescriptor *const descriptor : subsystems)
    {
        AutoPtr<VideoSubsystem> subsystem = kernel_.GetPlugins().CreateAs<VideoSubsystem>(*descriptor);
        if (subsystem != nullptr && renderer.IsCompatibleWith(*subsystem))
            return subsystem;
    }
    QUILLMARSH_THROW(VideoRendererException, subsystems.empty() ? "No plug-in brings a video subsystem."
                                                                : "It is compatible with none of the subsystems " +
                                                                      JoinNames(subsystems) + ".");
}

void VideoOffers::ReportMisses()
{
    std::vector<Miss> const misses = std::exchange(misses_, {});
    // What ends the run is reported where it is caught.
    bool const endsRun = offers_.empty() && !misses.empty();
    for (Miss const &miss : misses)
    {
        if (!endsRun || &miss != &misses.front())
            kernel_.GetFailures().Warn(miss.message);
    }
    if (endsRun)
        std::rethrow_exception(misses.front().thrown);
}

void VideoOffers::Release()
{
    for (; !offers_.empty(); offers_.pop_back())
    {
    }
}

// Choice

VideoChoice VideoOffers::Choose(string const &pluginName, VideoConfig const &asked) const
{
    VideoConfig wish = asked;
    if (wish.DisplayMode.Width == 0 || wish.DisplayMode.Height == 0)
        wish.DisplayMode = DisplayModeConfig(false);
    VideoChoice choice{Find(pluginName), wish};
    if (choice.offer != nullptr && IsPossible(wish, choice.offer->accepted))
        return choice;
    if (!TakeClosest(choice.offer, wish, choice))
        QUILLMARSH_THROW(KernelException, DescribeMisfit(pluginName, wish));
    KeepWindowSize(wish, choice.config);
    if (!(choice.config == wish))
    {
        std::ostringstream text;
        Describe(text, choice.config);
        kernel_.GetLog() << "The closest video configuration is " << text.str() << std::endl;
    }
    return choice;
}

bool VideoOffers::TakeClosest(VideoOffer *wanted, VideoConfig const &wish, VideoChoice &choice) const
{
    if (wanted != nullptr && wanted->accepted.ConstructClosestValidVideoConfig(wish, choice.config))
        return true;
    string const interfaceName = wanted != nullptr ? wanted->info.GetVideoRendererInterfaceName() : "";
    string name;
    bool const isFound =
        kernel_.ConstructClosestSafeVideoConfig(interfaceName, wish, name, choice.config) ||
        (!interfaceName.empty() && kernel_.ConstructClosestSafeVideoConfig("", wish, name, choice.config));
    choice.offer = Find(name);
    return isFound && choice.offer != nullptr;
}

string VideoOffers::DescribeMisfit(string const &pluginName, VideoConfig const &wish) const
{
    std::ostringstream text;
    text << "No video configuration fits. Wanted: ";
    if (!pluginName.empty())
        text << "renderer '" << pluginName << "', ";
    Describe(text, wish);
    for (AutoPtr<VideoOffer> const &offer : offers_)
    {
        text << ". Offered by '" << offer->GetPluginName() << "': ";
        DescribeProfile(text, offer->info.GetVideoProfile());
        if (!offer->faults.empty())
            text << " (" << offer->faults << ')';
    }
    text << '.';
    return text.str();
}

} // namespace quillmarsh::host
