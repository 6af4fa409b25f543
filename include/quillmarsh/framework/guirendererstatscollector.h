// Statistics of the GUI renderer over many frames.
#ifndef QUILLMARSH_FRAMEWORK_GUIRENDERERSTATSCOLLECTOR_H
#define QUILLMARSH_FRAMEWORK_GUIRENDERERSTATSCOLLECTOR_H

#include <quillmarsh/framework/frameobserver.h>
#include <quillmarsh/gui/gui_renderer.h>

namespace quillmarsh
{

/// Sums up the counters of the active video renderer's GUI renderer, frame by frame, while it runs. Needs a kernel,
/// which outlives it. Frame thread only.
class QUILLMARSH_API GUIRendererStatsCollector : public FrameObserver, NoCopy
{
public:
    GUIRendererStatsCollector();
    ~GUIRendererStatsCollector() override;

    /// @name Control
    /// @{

    /// Forgets everything that was counted.
    void Reset();
    /// Starts counting; harmless while it runs.
    void Run();
    /// Stops counting, and calculates the average; harmless unless it runs.
    void Stop();
    /// Calculates the average of the frames so far.
    void CalcAverage();
    bool IsRunning() const { return isRunning_; }
    /// @}

    /// @name Statistics
    /// Counted since the last reset.
    /// @{
    unsigned int GetFrameCount() const { return frameCount_; }
    /// Returns the sums.
    gui::Renderer::Statistics const &GetStatsAccum() const { return statsAccum_; }
    /// Returns the smallest counters of a frame; the largest number there is before the first frame.
    gui::Renderer::Statistics const &GetStatsMin() const { return statsMin_; }
    gui::Renderer::Statistics const &GetStatsMax() const { return statsMax_; }
    /// Returns the average as of the last CalcAverage().
    gui::Renderer::Statistics const &GetStatsAverage() const { return statsAverage_; }
    /// @}

    /// Counts a frame. Asserts "No active video-renderer." while there is none.
    void OnFrame(bool &removeObserver, unsigned int frameNumber, double frameTime) override;

private:
    bool isRunning_ = false;
    unsigned int frameCount_ = 0;
    gui::Renderer::Statistics statsAccum_;
    gui::Renderer::Statistics statsMin_;
    gui::Renderer::Statistics statsMax_;
    gui::Renderer::Statistics statsAverage_;
};

} // namespace quillmarsh

#endif
