// The widgets beside the plot of a signal.
#ifndef QUILLMARSH_PLUGINS_VIEWER_SIGNAL_SIGNALINSPECTOR_H
#define QUILLMARSH_PLUGINS_VIEWER_SIGNAL_SIGNALINSPECTOR_H

#include "signalstate.h"

#include <quillmarsh/widgets/label.h>
#include <quillmarsh/widgets/stack.h>
#include <quillmarsh/widgets/textbutton.h>
#include <quillmarsh/widgets/textfield.h>

#include <array>

namespace viewer
{

/// Makes widgets and keeps them up to date. What they do goes through the console. The widgets belong to the column.
/// Frame thread only.
class SignalInspector : quillmarsh::NoCopy
{
public:
    SignalInspector(quillmarsh::widgets::Stack &column, SignalState &state);

    /// Follows the state. Once a frame.
    void Update();

private:
    static constexpr unsigned int s_maxChannels = 5;
    static constexpr unsigned int s_numFigures = 5;

    void MakeSignal(quillmarsh::widgets::Stack &column);
    void MakeChannels(quillmarsh::widgets::Stack &column);
    void MakeAxes(quillmarsh::widgets::Stack &column);
    void MakeSpan(quillmarsh::widgets::Stack &column);
    void UpdateSignal();
    void UpdateChannels();
    void UpdateSpan();
    quillmarsh::widgets::TextButton &MakeButton(quillmarsh::gui::Component &parent, char const *text, char const *line,
                                                char const *tip);
    quillmarsh::widgets::RadioButton &MakeChoice(quillmarsh::gui::Component &parent, char const *text,
                                                 unsigned int group, char const *line, char const *tip);

    SignalState &state_;
    unsigned int revision_ = 0;
    quillmarsh::widgets::Label *size_ = nullptr;
    quillmarsh::widgets::Label *range_ = nullptr;
    std::array<quillmarsh::widgets::CheckBox *, s_maxChannels> channels_ = {};
    quillmarsh::widgets::RadioButton *stacked_ = nullptr;
    quillmarsh::widgets::RadioButton *together_ = nullptr;
    std::array<quillmarsh::widgets::RadioButton *, 3> valueRanges_ = {};
    quillmarsh::widgets::Label *values_ = nullptr;
    quillmarsh::widgets::TextField *rate_ = nullptr;
    double shownRate_ = -1;
    quillmarsh::widgets::Label *span_ = nullptr;
    quillmarsh::widgets::Grid *figures_ = nullptr;
    /// By row, then by column; the first ones have the names.
    std::array<std::array<quillmarsh::widgets::Label *, s_maxChannels + 1>, s_numFigures> cells_ = {};
    quillmarsh::widgets::Stack *spanButtons_ = nullptr;
};

} // namespace viewer

#endif
