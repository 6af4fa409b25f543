// Components that place other components: in rows of cells, or in one line.
#ifndef QUILLMARSH_GUI_GUI_LAYOUTERS_H
#define QUILLMARSH_GUI_GUI_LAYOUTERS_H

#include <quillmarsh/gui/gui_component.h>
#include <quillmarsh/gui/gui_watch.h>

#include <vector>

namespace quillmarsh::gui
{

/// Components that place other components. They are ghosts and draw nothing.
namespace layouters
{

/// How a cell gets its width, and a row its height. The extent of a target that is null or invisible is 0.
enum eSizeFlag : unsigned int
{
    e_size_target = 0,   ///< the target's
    e_size_target_scale, ///< the target's, times the parameter
    e_size_target_add,   ///< the target's, plus the parameter
    e_size_fixed,        ///< the parameter, in pixels
    e_size_fraction,     ///< the parameter times what the kinds above leave, also if that is negative
    e_size_auto          ///< an equal share of what the fractions leave
};

/// Where a component stands in its cell or row, along one axis.
enum eAlignFlag : unsigned int
{
    e_align_start = 0,
    e_align_end,
    e_align_center,
    e_align_target ///< at the position of another component; at the start without one
};

/// Cell of a row: a component, or empty room. A value type. Components are borrowed; one that is destroyed becomes null.
struct QUILLMARSH_API Cell
{
    /// Component in the cell; null for empty room.
    Watch<Component> Target;
    eSizeFlag WidthMode;
    /// With e_size_fraction, the component gets this fraction of the row's height, unless the row takes its height from
    /// this very component. In all other modes the component keeps its height.
    eSizeFlag HeightMode;
    float WidthParameter;
    float HeightParameter;
    eAlignFlag HorizontalAlignment;
    eAlignFlag VerticalAlignment;
    /// Components for e_align_target; may be null.
    Watch<Component> AlignTargetX;
    Watch<Component> AlignTargetY;
    /// Place in the row, in pixels, as of the last layout.
    float X = 0;
    float Width = 0;

    Cell(Component *target, eSizeFlag widthMode, float widthParameter, eAlignFlag horizontalAlignment,
         Component *alignTargetX, eSizeFlag heightMode, float heightParameter, eAlignFlag verticalAlignment,
         Component *alignTargetY);
    /// Compares all fields but the computed ones.
    bool operator==(Cell const &other) const;
};

/// Row of cells. A value type. Operations that change the row return it. Those with an index or a cell that the row does
/// not have leave it as it is.
class QUILLMARSH_API Row
{
public:
    /// The height comes from `target`, which is borrowed and may be null, by mode and parameter.
    explicit Row(Component *target = nullptr, eSizeFlag heightMode = e_size_auto, float heightParameter = 1);

    /// @name Height
    /// @{

    /// Returns the component that the height comes from; null for none, and after it was destroyed.
    Component *GetTarget() const { return target_; }
    eSizeFlag GetHeightMode() const { return heightMode_; }
    float GetHeightParameter() const { return heightParameter_; }
    /// Returns place and height in the layouter, in pixels, as of the last layout.
    float GetY() const { return y_; }
    float GetHeight() const { return height_; }
    /// Compares heights and cells, without the computed values.
    bool operator==(Row const &other) const;
    /// @}

    /// @name Changes
    /// @{
    Row &Clear();
    /// Removes the first equal cell.
    Row &Remove(Cell const &cell);
    Row &Remove(unsigned int index);
    Row &Append(Cell const &cell);
    Row &Prepend(Cell const &cell);
    Row &InsertBefore(Cell const &before, Cell const &cell);
    Row &InsertBefore(unsigned int before, Cell const &cell);
    Row &InsertAfter(Cell const &after, Cell const &cell);
    Row &InsertAfter(unsigned int after, Cell const &cell);
    /// Adds the cells of another row, in their order.
    Row &Append(Row const &row);
    Row &Prepend(Row const &row);
    /// Appends a cell for a component, which keeps its height.
    Row &Target(Component &component, eSizeFlag widthMode, float widthParameter, eAlignFlag horizontalAlignment,
                Component *alignTargetX, eAlignFlag verticalAlignment, Component *alignTargetY);
    /// Appends empty room.
    Row &Spacer(float widthParameter, eSizeFlag widthMode);
    /// Appends empty room that takes its share of what is left.
    Row &AutoSpacer();
    /// @}

    /// @name Cells
    /// @{
    unsigned int NumCells() const { return static_cast<unsigned int>(cells_.size()); }
    /// Returns a cell by index, which is below NumCells(). Valid until the row changes, like all cells below.
    Cell &operator[](unsigned int index) { return cells_[index]; }
    Cell const &operator[](unsigned int index) const { return cells_[index]; }
    /// Returns the first cell of a component; null if there is none.
    Cell *FindCell(Component &component);
    /// Returns a cell by index. Past the end it appends one AutoSpacer(), and returns that.
    Cell &GetCell(unsigned int index);
    /// Returns the last cell; an empty row gets an AutoSpacer().
    Cell &LastCell();
    /// @}

private:
    friend class RowLayouter;

    /// Computes place and width of all cells for a row of this width.
    void ProcessX(float width);
    /// Gives the components of the cells their sizes and positions.
    void PlaceCells() const;

    Watch<Component> target_;
    eSizeFlag heightMode_;
    float heightParameter_;
    float y_ = 0;
    float height_ = 0;
    std::vector<Cell> cells_;
};

/// Places components in rows of cells. The components need not be its children. See Row for the operations on rows.
///
/// \code
/// using namespace gui::layouters;
/// auto *layouter = new RowLayouter(&panel);
/// layouter->TargetHeightRow(ok, e_size_target, 1).AutoSpacer().Target(ok, e_size_target, 1, e_align_start, nullptr,
///                                                                     e_align_start, nullptr);
/// \endcode
class QUILLMARSH_API RowLayouter : public Component
{
public:
    /// Size of the layouter. A plain record.
    struct GeomParams
    {
        vec2 Size = {200, 200};
        /// Takes the size of the parent without the margins instead, and stands at the top left margin.
        bool FitToParent = false;
        vec2 MarginTopLeft = {20, 20};
        vec2 MarginBottomRight = {20, 20};
    };

    /// Becomes a child of `parent`; stays top-level for null.
    explicit RowLayouter(Component *parent);
    ~RowLayouter() override;

    void RecalcSize() override;
    void RecalcLayout() override;

    /// Sets the size, and reports the geometry dirty.
    void SetGeomParams(GeomParams const &params);
    GeomParams const &GetGeomParams() const { return geomParams_; }

    /// @name Changes
    /// They return the layouter, and leave it as it is for an index or row that it does not have.
    /// @{
    RowLayouter &Clear();
    /// Removes the first equal row.
    RowLayouter &Remove(Row const &row);
    RowLayouter &Remove(unsigned int index);
    RowLayouter &Append(Row const &row);
    RowLayouter &Prepend(Row const &row);
    RowLayouter &InsertBefore(Row const &before, Row const &row);
    RowLayouter &InsertBefore(unsigned int before, Row const &row);
    RowLayouter &InsertAfter(Row const &after, Row const &row);
    RowLayouter &InsertAfter(unsigned int after, Row const &row);
    /// @}

    /// @name New rows
    /// They append a row and return it. Valid until the layouter's rows change, like all rows below.
    /// @{
    Row &TargetHeightRow(Component &component, eSizeFlag heightMode, float heightParameter);
    /// Height in pixels.
    Row &FixedHeightRow(float height);
    /// Height as a fraction.
    Row &VariableHeightRow(float fraction);
    Row &AutoHeightRow();
    /// @}

    /// @name Rows
    /// @{
    unsigned int NumRows() const { return static_cast<unsigned int>(rows_.size()); }
    /// Returns a row by index, which is below NumRows().
    Row &operator[](unsigned int index) { return rows_[index]; }
    Row const &operator[](unsigned int index) const { return rows_[index]; }
    /// Returns the first row with a cell of the component; null if there is none.
    Row *FindRow(Component &component);
    /// Returns a row by index. Past the end it appends one AutoHeightRow(), and returns that.
    Row &GetRow(unsigned int index);
    /// Returns the last row; an empty layouter gets an AutoHeightRow().
    Row &LastRow();
    /// @}

private:
    /// Computes places and sizes of all rows and cells.
    void Process(float width, float height);
    void ProcessY(float height);

    GeomParams geomParams_;
    std::vector<Row> rows_;
};

/// Extra distance ahead of a child of an ArrayLayouter. A value type. The component is borrowed; one that is destroyed
/// becomes null.
struct Spacer
{
    Watch<Component> Target;
    /// In pixels.
    float Distance;
};

/// Places its own children in one line, visible or not, and takes its size from them.
class QUILLMARSH_API ArrayLayouter : public Component
{
public:
    /// Direction and distances. A plain record.
    struct GeomParams
    {
        bool Vertical = true;
        /// Gives all children the extent of the largest one across the line; otherwise they are centred.
        bool Stretch = false;
        /// Between two children, in pixels.
        float Spacing = 2;
        float MarginStart = 0;
        float MarginEnd = 0;
    };

    /// Becomes a child of `parent`; stays top-level for null.
    explicit ArrayLayouter(Component *parent);
    ~ArrayLayouter() override;

    void RecalcLayout() override;

    /// Sets direction and distances, and reports the geometry dirty.
    void SetGeomParams(GeomParams const &params);
    GeomParams const &GetGeomParams() const { return geomParams_; }

    /// @name Spacers
    /// At most one for each child.
    /// @{

    /// Adds a spacer, in place of a former one of that component.
    void AddSpacer(Spacer const &spacer);
    void RemoveSpacer(Component const *component);
    void ClearSpacers();
    /// Returns the spacer of a child; null if there is none. Valid until spacers change.
    Spacer const *FindSpacer(Component const &component) const;
    /// @}

private:
    /// Places the children, and sets the size.
    void Process();

    GeomParams geomParams_;
    std::vector<Spacer> spacers_;
};

} // namespace layouters

} // namespace quillmarsh::gui

#endif
