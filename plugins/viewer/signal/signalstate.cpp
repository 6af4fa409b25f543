#include "signalstate.h"

#include <quillmarsh/basetools/texttools.h>
#include <quillmarsh/dataobjects/dataexception.h>

#include <algorithm>
#include <cmath>
#include <ostream>

namespace viewer
{

using namespace quillmarsh;
using sampled_data::DataException;

namespace
{

/// Values that are measured within a frame.
constexpr std::uint64_t s_quickValues = 500'000;
constexpr double s_maxRate = 1e12;

/// Returns a time with about six digits.
string FormatTime(double seconds)
{
    return seconds >= 1 ? FormatTick(seconds, seconds >= 1000 ? 0.01 : 0.001) + " s"
                        : FormatTick(seconds * 1000, 0.001) + " ms";
}

} // namespace

string FormatValue(double value)
{
    string text;
    ToString(text, value, 0, 7);
    return text == "-0" ? "0" : text;
}

string FormatWord(double value)
{
    string text;
    ToString(text, value, 0, 12);
    return value < 0 ? '\'' + text + '\'' : text;
}

void SignalState::Show(DocumentPtr const &document, bool isOther)
{
    bool const isFirst = isOther || GetLevels() == nullptr;
    if (isOther)
        KeepPlace();
    document_ = document;
    loaded_ = document != nullptr ? document->GetLoaded() : nullptr;
    if (GetLevels() != nullptr && isFirst)
        FindPlace();
    if (GetLevels() != nullptr)
        viewer::SetRange(settings_, settings_.begin, settings_.end, GetNumSamples());
    SetSpan(settings_.span);
}

void SignalState::KeepPlace()
{
    std::erase_if(places_, [this](Place const &place)
                  { return place.document.expired() || place.document.lock() == document_.lock(); });
    if (GetLevels() != nullptr && !document_.expired())
        places_.push_back({document_, settings_});
}

void SignalState::FindPlace()
{
    bool const isStacked = settings_.isStacked;
    double const rate = settings_.rate;
    eValueRange const valueRange = settings_.valueRange;
    auto const found = std::find_if(places_.begin(), places_.end(),
                                    [this](Place const &place) { return place.document.lock() == document_.lock(); });
    if (found != places_.end())
        settings_ = found->settings;
    else
    {
        settings_ = PlotSettings();
        settings_.end = static_cast<double>(GetNumSamples());
        settings_.valueRange = valueRange == eValueRange::e_fixed ? eValueRange::e_auto : valueRange;
    }
    // These are the same for all documents.
    settings_.isStacked = isStacked;
    settings_.rate = rate;
}

SignalLevels const &SignalState::RequireLevels() const
{
    if (GetLevels() == nullptr)
        throw DataException("no signal is shown");
    return *GetLevels();
}

std::span<Channel const> SignalState::GetChannels() const
{
    return GetLevels() != nullptr ? GetLevels()->GetSignalChannels() : std::span<Channel const>();
}

string SignalState::FormatPlace(double sample) const
{
    string number = FormatSampleNumber(sample);
    if (settings_.rate <= 0)
        return number;
    return number + " (" + FormatTime(sample / settings_.rate) + ')';
}

string SignalState::FormatLength(std::uint64_t numSamples) const
{
    auto const count = static_cast<double>(numSamples);
    string text = FormatSampleNumber(count) + (numSamples == 1 ? " sample" : " samples");
    if (settings_.rate <= 0)
        return text;
    return text + ", " + FormatTime(count / settings_.rate);
}

void SignalState::SetSettings(PlotSettings const &settings)
{
    SampleSpan const span = settings.span;
    if (settings == settings_)
        return;
    SampleSpan const before = settings_.span;
    settings_ = settings;
    settings_.span = before;
    if (span != before)
        SetSpan(span);
    Change();
}

void SignalState::SetRange(double begin, double end)
{
    std::uint64_t const count = RequireLevels().GetNumSamples();
    if (!std::isfinite(begin) || !std::isfinite(end) || begin < 0 || end > static_cast<double>(count) || end <= begin)
        throw DataException("a range begins at 0 or later, and ends behind its begin, at " + MakeString(count) +
                            " at most: " + FormatValue(begin) + " to " + FormatValue(end));
    viewer::SetRange(settings_, begin, end, count);
    Change();
}

void SignalState::SetValues(double low, double high)
{
    constexpr double limit = 1e37;
    if (!(low < high) || !(std::abs(low) <= limit) || !(std::abs(high) <= limit) || low + (high - low) / 1e4 == low)
        throw DataException("values go from a smaller number to a greater one, within -1e37 and 1e37: " +
                            FormatValue(low) + " to " + FormatValue(high));
    settings_.valueRange = eValueRange::e_fixed;
    settings_.low = low;
    settings_.high = high;
    Change();
}

void SignalState::SetValueRange(eValueRange range)
{
    settings_.valueRange = range;
    Change();
}

void SignalState::SetChannels(unsigned int channels)
{
    settings_.channels = channels;
    Change();
}

void SignalState::SetRate(double rate)
{
    if (!(rate >= 0 && rate <= s_maxRate))
        throw DataException("a rate is within 0 and 1e12 samples of a second: " + FormatValue(rate));
    settings_.rate = rate;
    Change();
}

void SignalState::SetSpan(SampleSpan span, bool isFinal)
{
    span.end = std::min(span.end, GetNumSamples());
    if (span.IsEmpty())
        span = {};
    settings_.span = span;
    figures_.clear();
    ++*request_;
    if (job_ != 0)
        workspace_.GetJobs().Stop(std::exchange(job_, 0));
    if (!span.IsEmpty() && (span.end - span.begin) * GetChannels().size() <= s_quickValues)
        figures_ = MeasureSpan(*GetLevels(), span);
    else if (!span.IsEmpty() && isFinal)
        MeasureByJob();
    Change();
}

void SignalState::MeasureByJob()
{
    std::shared_ptr<unsigned int> const request = request_;
    unsigned int const number = *request;
    job_ = workspace_.GetJobs().Start(
        "Measure a span",
        [this, request, number, loaded = loaded_, span = settings_.span](Jobs::Progress const &progress) -> Jobs::Finish
        {
            std::vector<SpanFigures> figures = MeasureSpan(*loaded->signalLevels, span, progress);
            return [this, request, number, figures = std::move(figures)]
            {
                if (*request != number)
                    return;
                job_ = 0;
                figures_ = figures;
                Change();
            };
        },
        [this, request, number](string const &reason)
        {
            if (*request != number)
                return;
            job_ = 0;
            workspace_.Say("The span was not measured: " + reason, reason != Jobs::s_szStopped);
        });
}

void SignalState::PrintSpan(ostream &out) const
{
    SampleSpan const &span = settings_.span;
    if (span.IsEmpty())
    {
        out << "no span is marked" << std::endl;
        return;
    }
    out << FormatLength(span.end - span.begin) << " from " << FormatPlace(static_cast<double>(span.begin)) << std::endl;
    if (figures_.empty())
        out << (IsMeasuring() ? "its figures are being computed" : "it was not measured") << std::endl;
    for (SpanFigures const &figures : figures_)
    {
        out << figures.name << ": minimum " << FormatValue(figures.minimum) << ", maximum "
            << FormatValue(figures.maximum) << ", mean " << FormatValue(figures.mean) << ", deviation "
            << FormatValue(figures.deviation);
        if (figures.numNaN != 0)
            out << ", " << figures.numNaN << " not a number";
        out << std::endl;
    }
}

void SignalState::Change()
{
    ++revision_;
    workspace_.Invalidate();
}

} // namespace viewer
