#include "signalinspector.h"

#include <quillmarsh/basetools/texttools.h>
#include <quillmarsh/widgets/looknames.h>

namespace viewer
{

using namespace quillmarsh;
using namespace quillmarsh::widgets;

namespace
{

constexpr unsigned int s_laneGroup = 1;
constexpr unsigned int s_valueGroup = 2;
/// Names of all channels, in the order of the boxes.
constexpr char const *s_channelNames[] = {"red", "green", "blue", "luminance", "alpha"};
constexpr char const *s_figureNames[] = {"", "Minimum", "Maximum", "Mean", "Deviation"};

string FormatShort(double value)
{
    string text;
    ToString(text, value, 0, 5);
    return text == "-0" ? "0" : text;
}

} // namespace

SignalInspector::SignalInspector(Stack &column, SignalState &state) : state_(state)
{
    MakeSignal(column);
    MakeChannels(column);
    MakeAxes(column);
    MakeSpan(column);
}

TextButton &SignalInspector::MakeButton(gui::Component &parent, char const *text, char const *line, char const *tip)
{
    auto *const button = new TextButton(&parent, text);
    button->SetMinWidth(0);
    button->SetToolTipText(tip);
    button->SetAction([this, line] { state_.GetWorkspace().Run(line); });
    return *button;
}

RadioButton &SignalInspector::MakeChoice(gui::Component &parent, char const *text, unsigned int group, char const *line,
                                         char const *tip)
{
    auto *const button = new RadioButton(&parent, text, group);
    button->SetToolTipText(tip);
    button->SetAction([this, line] { state_.GetWorkspace().Run(line); });
    return *button;
}

void SignalInspector::MakeSignal(Stack &column)
{
    new Label(&column, "Signal", ShaderName_Section);
    size_ = new Label(&column, string());
    size_->SetWrapWidth(240);
    range_ = new Label(&column, string(), ShaderName_Hint);
    range_->SetWrapWidth(240);
    auto *const row = new Stack(false, &column, Measures::Grid);
    MakeButton(*row, "All", "range all", "Show all samples (0)");
    MakeButton(*row, "Zoom in", "stretch 2", "Show half as many samples (+)");
    MakeButton(*row, "Zoom out", "stretch 0.5", "Show twice as many samples (-)");
}

void SignalInspector::MakeChannels(Stack &column)
{
    new Label(&column, "Channels", ShaderName_Section);
    for (unsigned int i = 0; i < s_maxChannels; ++i)
    {
        channels_[i] = new CheckBox(&column, s_channelNames[i], true);
        channels_[i]->SetToolTipText("Show this channel");
        channels_[i]->SetAction([this, i](bool)
                                { state_.GetWorkspace().Run(string("channels -toggle=") + s_channelNames[i]); });
    }
    auto *const row = new Stack(false, &column);
    stacked_ = &MakeChoice(*row, "Stacked", s_laneGroup, "lanes stacked", "A lane for each channel (T)");
    together_ = &MakeChoice(*row, "Together", s_laneGroup, "lanes together", "All channels in one lane (T)");
}

void SignalInspector::MakeAxes(Stack &column)
{
    new Label(&column, "Values", ShaderName_Section);
    auto *const row = new Stack(false, &column);
    valueRanges_[0] = &MakeChoice(*row, "Auto", s_valueGroup, "values auto",
                                  "From the least to the greatest value of the whole signal (A)");
    valueRanges_[1] = &MakeChoice(*row, "Visible", s_valueGroup, "values visible",
                                  "From the least to the greatest value that shows (V)");
    valueRanges_[2] =
        &MakeChoice(*row, "Nominal", s_valueGroup, "values nominal", "All values that the sample format means (N)");
    values_ = new Label(&column, string(), ShaderName_Hint);
    new Label(&column, "Samples a second", ShaderName_Section);
    rate_ = new TextField(&column, string(), 120);
    rate_->SetPlaceholder("unknown");
    rate_->SetToolTipText("Rate of the samples in hertz; empty counts samples instead of seconds");
    rate_->SetEnterAction(
        [this](string const &text)
        {
            double rate = 0;
            bool const isNumber = text.empty() || ToValue(text, rate);
            rate_->SetWrong(!isNumber);
            if (isNumber)
                state_.GetWorkspace().Run("rate " + FormatWord(rate));
        });
}

void SignalInspector::MakeSpan(Stack &column)
{
    new Label(&column, "Span", ShaderName_Section);
    span_ = new Label(&column, string(), ShaderName_Hint);
    span_->SetWrapWidth(240);
    figures_ = new Grid(s_maxChannels + 1, &column, {Measures::Gap, Measures::Grid});
    for (unsigned int row = 0; row < s_numFigures; ++row)
    {
        for (unsigned int i = 0; i <= s_maxChannels; ++i)
            cells_[row][i] = new Label(figures_, i == 0 ? s_figureNames[row] : "",
                                       row == 0 || i == 0 ? ShaderName_Hint : ShaderName_Label);
    }
    spanButtons_ = new Stack(false, &column, Measures::Grid);
    MakeButton(*spanButtons_, "Zoom to it", "range span", "Show the samples of the span (Z)");
    MakeButton(*spanButtons_, "Clear", "span none", "Mark no span (Delete)");
}

void SignalInspector::Update()
{
    if (revision_ == state_.GetRevision())
        return;
    revision_ = state_.GetRevision();
    UpdateSignal();
    UpdateChannels();
    UpdateSpan();
    span_->ReportDirtyGeometry();
}

void SignalInspector::UpdateSignal()
{
    PlotSettings const &settings = state_.GetSettings();
    SignalLevels const *const levels = state_.GetLevels();
    size_->SetText(levels == nullptr ? string()
                                     : state_.FormatLength(levels->GetNumSamples()) + ", " +
                                           sampled_data::GetFormatName(levels->GetContent()->GetData().GetFormat()));
    range_->SetText(levels == nullptr
                        ? string()
                        : "Shown: " + state_.FormatLength(static_cast<std::uint64_t>(settings.end - settings.begin)) +
                              " from " + state_.FormatPlace(std::floor(settings.begin)));
    for (unsigned int i = 0; i < valueRanges_.size(); ++i)
        valueRanges_[i]->SetSelected(settings.valueRange == static_cast<eValueRange>(i), false, false);
    values_->SetText(settings.valueRange == eValueRange::e_fixed
                         ? FormatShort(settings.low) + " to " + FormatShort(settings.high)
                         : string());
    values_->SetVisible(!values_->GetText().empty());
    if (settings.rate != shownRate_)
    {
        shownRate_ = settings.rate;
        rate_->SetText(settings.rate > 0 ? FormatValue(settings.rate) : string());
    }
}

void SignalInspector::UpdateChannels()
{
    PlotSettings const &settings = state_.GetSettings();
    std::span<Channel const> const channels = state_.GetChannels();
    for (unsigned int i = 0; i < s_maxChannels; ++i)
    {
        unsigned int index = 0;
        while (index < channels.size() && string(channels[index].name) != s_channelNames[i])
            ++index;
        channels_[i]->SetVisible(index < channels.size());
        channels_[i]->SetOn((settings.channels >> index & 1) != 0, false);
    }
    stacked_->SetSelected(settings.isStacked, false, false);
    together_->SetSelected(!settings.isStacked, false, false);
    stacked_->GetParent()->SetVisible(channels.size() > 1);
}

void SignalInspector::UpdateSpan()
{
    SampleSpan const &span = state_.GetSettings().span;
    std::vector<SpanFigures> const &figures = state_.GetFigures();
    if (span.IsEmpty())
        span_->SetText("Mark samples with the right button of the mouse, or with Shift.");
    else
        span_->SetText(state_.FormatLength(span.end - span.begin) + " from " +
                       state_.FormatPlace(static_cast<double>(span.begin)) +
                       (state_.IsMeasuring() ? "; its figures follow." : "."));
    figures_->SetVisible(!figures.empty());
    spanButtons_->SetVisible(!span.IsEmpty());
    for (unsigned int i = 0; i < s_maxChannels; ++i)
    {
        bool const isShown = i < figures.size();
        for (auto const &row : cells_)
            row[i + 1]->SetVisible(isShown);
        if (!isShown)
            continue;
        double const values[] = {figures[i].minimum, figures[i].maximum, figures[i].mean, figures[i].deviation};
        cells_[0][i + 1]->SetText(figures[i].name);
        for (unsigned int row = 1; row < s_numFigures; ++row)
            cells_[row][i + 1]->SetText(FormatShort(values[row - 1]));
    }
}

} // namespace viewer
