// A number that is dragged or typed.
#ifndef QUILLMARSH_PLUGINS_VIEWER_IMAGE_VALUEROW_H
#define QUILLMARSH_PLUGINS_VIEWER_IMAGE_VALUEROW_H

#include <quillmarsh/widgets/label.h>
#include <quillmarsh/widgets/slider.h>
#include <quillmarsh/widgets/stack.h>
#include <quillmarsh/widgets/textfield.h>

namespace viewer
{

using quillmarsh::string;

/// Label ahead of a widget, as wide as all others of its kind. Frame thread only.
class TitleLabel : public quillmarsh::widgets::Label
{
public:
    TitleLabel(quillmarsh::gui::Component &parent, char const *text);
    ~TitleLabel() override;

    void RecalcSize() override;
};

/// Title, slider and field of one number: three cells of a grid of three columns. A plain record that borrows its
/// widgets.
class ValueRow
{
public:
    /// What the number is.
    struct Params
    {
        char const *title;
        /// Tool tip of both widgets.
        char const *tip;
        float minimum;
        float maximum;
        float step;
        /// Sets the number while the slider is dragged.
        std::function<void(double)> drag;
        /// Called with the number at the end of a drag.
        std::function<void(double)> dragEnd;
        /// Called with the text that was typed.
        std::function<void(string const &)> type;
    };

    ValueRow(quillmarsh::widgets::Grid &grid, Params const &params);
    /// Shows a number, unless the user is just changing it.
    void Show(double value);
    /// Sets the ends of the slider.
    void SetRange(double minimum, double maximum);

private:
    quillmarsh::widgets::Slider *slider_;
    quillmarsh::widgets::TextField *field_;
    double shown_;
    float step_;
};

} // namespace viewer

#endif
