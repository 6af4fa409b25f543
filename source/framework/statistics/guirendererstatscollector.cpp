#include <quillmarsh/framework/guirendererstatscollector.h>

#include <quillmarsh/basetools/diagnostics.h>
#include <quillmarsh/framework/kernel.h>
#include <quillmarsh/framework/videorenderer.h>

#include <limits>

namespace quillmarsh
{

GUIRendererStatsCollector::GUIRendererStatsCollector()
{
    Reset();
}

GUIRendererStatsCollector::~GUIRendererStatsCollector() = default;

void GUIRendererStatsCollector::Reset()
{
    frameCount_ = 0;
    statsAccum_.Clear(0);
    statsMin_.Clear(std::numeric_limits<unsigned int>::max());
    statsMax_.Clear(0);
    statsAverage_.Clear(0);
}

void GUIRendererStatsCollector::Run()
{
    if (isRunning_)
        return;
    isRunning_ = true;
    Kernel::Instance().AddFrameObserver(this);
}

void GUIRendererStatsCollector::Stop()
{
    if (!isRunning_)
        return;
    isRunning_ = false;
    Kernel::Instance().RemoveFrameObserver(this);
    CalcAverage();
}

void GUIRendererStatsCollector::CalcAverage()
{
    statsAverage_.Average(statsAccum_, frameCount_);
}

void GUIRendererStatsCollector::OnFrame(bool &, unsigned int, double)
{
    VideoRenderer const *const renderer = Kernel::Instance().GetActiveVideoRendererPtr();
    QUILLMARSH_ASSERT(renderer != nullptr, "No active video-renderer.");
    if (renderer == nullptr)
        return;
    gui::Renderer::Statistics const &stats = renderer->GetGUIRenderer().Stats();
    statsAccum_.Accum(stats);
    statsMin_.Min(statsMin_, stats);
    statsMax_.Max(statsMax_, stats);
    ++frameCount_;
}

} // namespace quillmarsh
