// Rows, columns and grids of widgets.
#ifndef QUILLMARSH_WIDGETS_STACK_H
#define QUILLMARSH_WIDGETS_STACK_H

#include <quillmarsh/gui/gui_component.h>
#include <quillmarsh/gui/gui_watch.h>
#include <quillmarsh/widgets/measures.h>

#include <vector>

namespace quillmarsh::widgets
{

/// Where the children of a stack stand across it.
enum eStackAlign : unsigned int
{
    e_stack_start = 0,
    e_stack_center,
    e_stack_end,
    /// They get the extent of the stack.
    e_stack_stretch
};

/// Column or row of its children, in their order. Its size comes from them, before its parent's does, so stacks nest to
/// any depth. A ghost; hidden children take no room.
///
/// \code
/// auto *column = new widgets::Stack(true, &panel.GetContent());
/// auto *row = new widgets::Stack(false, column);
/// new widgets::Label(row, "Name");
/// row->SetFill(*new widgets::TextField(row));
/// \endcode
/// Frame thread only.
class QUILLMARSH_API Stack : public gui::Component
{
public:
    /// Becomes a child of `parent`; stays top-level for null. The gap between two children is in units. Children of a
    /// row stand on its middle line, those of a column at its left edge.
    Stack(bool vertical, gui::Component *parent, float gap = Measures::Gap);
    ~Stack() override;

    /// Sets the gap in units.
    void SetGap(float gap);
    /// Sets the distance from the edges in units; 0 at first.
    void SetMargin(float margin);
    void SetAlignment(eStackAlign alignment);
    /// Gives the stack the size of its parent, if that is larger than the children need. They need not fit.
    void SetFitToParent(bool fit);
    /// Gives a child a share of the room that is left along the stack; 0 for none. A stack without such a child leaves
    /// the room at its end. Ignores a component that is no child.
    void SetFill(gui::Component &child, float weight = 1);
    bool IsVertical() const { return vertical_; }

    void RecalcSize() override;
    void RecalcLayout() override;
    /// Forgets the child.
    void OnDetachedChild(Component &child) override;

private:
    struct Fill
    {
        gui::Watch<gui::Component> child;
        float weight;
    };

    float FindWeight(gui::Component const &child) const;

    bool vertical_;
    float gap_;
    float margin_ = 0;
    eStackAlign alignment_;
    bool fitsToParent_ = false;
    /// Extent along the stack that its children need.
    float needed_ = 0;
    std::vector<Fill> fills_;
};

/// Table of its children, row by row, whose columns are as wide as their widest child. All stand at the left edge and on
/// the middle line of their cell. A ghost; hidden children leave their cell empty. Frame thread only.
class QUILLMARSH_API Grid : public gui::Component
{
public:
    /// Becomes a child of `parent`; stays top-level for null. It has at least one column. The gaps are in units.
    Grid(unsigned int numColumns, gui::Component *parent, vec2 const &gap = {Measures::Margin, Measures::Gap});
    ~Grid() override;

    unsigned int GetNumColumns() const { return numColumns_; }

    void RecalcSize() override;
    void RecalcLayout() override;

private:
    unsigned int numColumns_;
    vec2 gap_;
    std::vector<float> columnWidths_;
    std::vector<float> rowHeights_;
};

} // namespace quillmarsh::widgets

#endif
