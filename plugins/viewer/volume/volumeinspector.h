// Widgets beside the panes of a volume.
#ifndef QUILLMARSH_PLUGINS_VIEWER_VOLUME_VOLUMEINSPECTOR_H
#define QUILLMARSH_PLUGINS_VIEWER_VOLUME_VOLUMEINSPECTOR_H

#include "pane.h"

#include <quillmarsh/widgets/label.h>
#include <quillmarsh/widgets/slider.h>
#include <quillmarsh/widgets/stack.h>
#include <quillmarsh/widgets/textbutton.h>

#include <vector>

namespace viewer::volumes
{

/// Fills the column with sliders and buttons for the settings of the scene, and keeps them up to date. Owned by the
/// column. Frame thread only.
class VolumeInspector : public quillmarsh::widgets::Stack
{
public:
    VolumeInspector(PaneContext &context, quillmarsh::widgets::Stack &column);

    /// Shows what the scene has now.
    void Update();

private:
    /// A slider with a name ahead of it and its value behind it.
    struct Row
    {
        quillmarsh::widgets::Slider *slider;
        quillmarsh::widgets::Label *value;
        std::function<double()> read;
        /// Gives minimum and maximum; empty if they never change.
        std::function<quillmarsh::vec2()> range;
        float step;
    };
    /// Buttons of which one is selected.
    struct Choice
    {
        std::vector<quillmarsh::widgets::TextButton *> buttons;
        std::function<std::size_t()> read;
    };
    struct Switch
    {
        quillmarsh::widgets::CheckBox *box;
        bool VolumeSettings::*setting;
    };

    void AddHeading(char const *text);
    /// `change` sets a value while the slider moves, `makeLine` gives the line for it at the end.
    Row &AddRow(char const *name, char const *toolTip, float step, std::function<double()> read,
                std::function<void(double)> change, std::function<string()> makeLine);
    /// Each button runs the command with its own name in lower case.
    void AddChoice(char const *command, std::span<char const *const> names, unsigned int numColumns,
                   std::function<std::size_t()> read);
    void AddSwitch(char const *text, char const *command, char const *toolTip, bool VolumeSettings::*setting);
    void AddCut();
    void AddSlab();
    void AddFourth();
    void AddTones();

    PaneContext &context_;
    std::vector<Row> rows_;
    std::vector<Choice> choices_;
    std::vector<Switch> switches_;
    unsigned int numGroups_ = 0;
};

} // namespace viewer::volumes

#endif
