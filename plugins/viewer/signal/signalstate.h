// What the signal room shows, and how.
#ifndef QUILLMARSH_PLUGINS_VIEWER_SIGNAL_SIGNALSTATE_H
#define QUILLMARSH_PLUGINS_VIEWER_SIGNAL_SIGNALSTATE_H

#include "workspace.h"

#include <viewer_model/signals/plot.h>

namespace viewer
{

/// Returns a value with at most seven digits.
string FormatValue(double value);
/// Returns a number as a word of a console line: a negative one stands in quotes.
string FormatWord(double value);

/// The current signal and its plot. View, inspector and commands share it. Frame thread only.
class SignalState : quillmarsh::NoCopy
{
public:
    explicit SignalState(Workspace &workspace) : workspace_(workspace) {}
    ~SignalState() { ++*request_; }

    Workspace &GetWorkspace() { return workspace_; }

    /// @name The signal
    /// @{
    /// Shows the signal of a document; null for none. A document begins with all of its samples, and later goes on where
    /// it was.
    void Show(DocumentPtr const &document, bool isOther);
    /// Null while there are none.
    SignalLevels const *GetLevels() const { return loaded_ != nullptr ? loaded_->signalLevels.get() : nullptr; }
    /// Throws a DataException if there are none.
    SignalLevels const &RequireLevels() const;
    std::uint64_t GetNumSamples() const { return GetLevels() != nullptr ? GetLevels()->GetNumSamples() : 0; }
    std::span<Channel const> GetChannels() const;
    /// Returns a place of the axis as text: the number of a sample, with its time if the rate is known.
    string FormatPlace(double sample) const;
    /// Returns a number of samples as text, with its time likewise.
    string FormatLength(std::uint64_t numSamples) const;
    /// @}

    /// @name Settings
    /// They refuse what is out of range by a DataException.
    /// @{
    PlotSettings const &GetSettings() const { return settings_; }
    /// Sets them, and asks for a frame. The span is measured anew if it is another one.
    void SetSettings(PlotSettings const &settings);
    void SetRange(double begin, double end);
    void SetValues(double low, double high);
    /// "auto", "visible" or "nominal".
    void SetValueRange(eValueRange range);
    void SetChannels(unsigned int channels);
    void SetRate(double rate);
    /// @}

    /// @name Span
    /// @{
    /// Marks samples. `isFinal` is false while the mouse does it: what takes long is measured at the end.
    void SetSpan(SampleSpan span, bool isFinal = true);
    /// Figures of all channels; none while they are computed, and without a span.
    std::vector<SpanFigures> const &GetFigures() const { return figures_; }
    /// True while figures are computed.
    bool IsMeasuring() const { return job_ != 0; }
    /// Writes length and figures, a line for each channel.
    void PrintSpan(quillmarsh::ostream &out) const;
    /// @}

    /// Counts changes of what is shown, for views and widgets.
    unsigned int GetRevision() const { return revision_; }

private:
    /// Where a document was when another one came.
    struct Place
    {
        std::weak_ptr<Document> document;
        PlotSettings settings;
    };

    void Change();
    void KeepPlace();
    void FindPlace();
    void MeasureByJob();

    Workspace &workspace_;
    std::weak_ptr<Document> document_;
    LoadedPtr loaded_;
    PlotSettings settings_;
    std::vector<Place> places_;
    std::vector<SpanFigures> figures_;
    unsigned int job_ = 0;
    /// Counts measurements. A job that ends late, maybe after this object, finds another number.
    std::shared_ptr<unsigned int> request_ = std::make_shared<unsigned int>(0);
    unsigned int revision_ = 1;
};

} // namespace viewer

#endif
