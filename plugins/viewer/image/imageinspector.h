// The widgets beside the view of images.
#ifndef QUILLMARSH_PLUGINS_VIEWER_IMAGE_IMAGEINSPECTOR_H
#define QUILLMARSH_PLUGINS_VIEWER_IMAGE_IMAGEINSPECTOR_H

#include "imagestate.h"
#include "valuerow.h"

#include <quillmarsh/widgets/label.h>
#include <quillmarsh/widgets/textbutton.h>

namespace viewer
{

/// Makes the widgets, which belong to their column, and brings them up to date. Frame thread only.
class ImageInspector : quillmarsh::NoCopy
{
public:
    ImageInspector(quillmarsh::widgets::Stack &column, std::shared_ptr<ImageState> state);

    /// Once a frame.
    void Update();

private:
    using Stack = quillmarsh::widgets::Stack;
    using Grid = quillmarsh::widgets::Grid;
    using Label = quillmarsh::widgets::Label;
    using TextButton = quillmarsh::widgets::TextButton;
    using CheckBox = quillmarsh::widgets::CheckBox;

    /// Texts of the figures: a grid of labels, a row for each channel.
    struct FiguresTable
    {
        Grid *grid = nullptr;
        std::vector<Label *> cells;
    };

    /// @name Parts of the column
    /// @{
    void MakePlace(Stack &column);
    void MakeColours(Stack &column);
    void MakeHistogram(Stack &column);
    void MakeMeasure(Stack &column);
    void MakeComparison(Stack &column);
    /// @}

    /// @name Pieces
    /// @{
    TextButton *AddButton(quillmarsh::gui::Component &parent, char const *text, char const *tip, string const &line);
    TextButton *AddChoice(Grid &grid, char const *title, char const *tip, std::function<void(TextButton &)> open);
    /// Adds buttons of which one is selected. Each runs the command with its name.
    std::vector<TextButton *> AddSwitches(quillmarsh::gui::Component &parent, std::span<char const *const> names,
                                          string const &command);
    static FiguresTable AddFigures(Stack &column);
    static void ShowFigures(FiguresTable const &table, Figures const *figures);
    void Run(string const &line) { state_->GetWorkspace().Run(line); }
    /// Opens a menu of names below a button. Each runs the command with its name.
    void OpenNames(TextButton const &button, string const &command, std::vector<string> const &names,
                   std::size_t current);
    void OpenChannels(TextButton const &button);
    void OpenLevels(TextButton const &button);
    void OpenImages(TextButton const &button);
    /// @}

    /// @name Update
    /// @{
    void UpdatePlace();
    void UpdateColours();
    void UpdateFigures();
    void UpdateMeasure();
    void UpdateComparison();
    /// @}

    std::shared_ptr<ImageState> state_;
    /// @name Widgets
    /// @{
    Label *zoom_ = nullptr;
    TextButton *level_ = nullptr;
    TextButton *channel_ = nullptr;
    TextButton *palette_ = nullptr;
    CheckBox *alpha_ = nullptr;
    std::vector<ValueRow> settings_;
    Stack *histogram_ = nullptr;
    CheckBox *showsHistogram_ = nullptr;
    CheckBox *isLogarithmic_ = nullptr;
    CheckBox *isOfView_ = nullptr;
    FiguresTable figures_;
    std::vector<TextButton *> tools_;
    Label *measured_ = nullptr;
    FiguresTable measuredFigures_;
    TextButton *other_ = nullptr;
    TextButton *endComparison_ = nullptr;
    Stack *comparison_ = nullptr;
    std::vector<TextButton *> modes_;
    Stack *difference_ = nullptr;
    TextButton *differenceKind_ = nullptr;
    std::vector<ValueRow> scale_;
    Label *differenceFigures_ = nullptr;
    /// @}
};

} // namespace viewer

#endif
