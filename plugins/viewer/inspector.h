// The column at the right: settings of what is seen, and the panels that have no view.
#ifndef QUILLMARSH_PLUGINS_VIEWER_INSPECTOR_H
#define QUILLMARSH_PLUGINS_VIEWER_INSPECTOR_H

#include "room.h"
#include "scrollcolumn.h"

#include <quillmarsh/widgets/tabview.h>

namespace viewer
{

/// Tabs, and below them the widgets of a room: on the first tab those of the room whose view shows, on the others those
/// of a room without a view. Frame thread only.
class Inspector : public quillmarsh::gui::Component
{
public:
    explicit Inspector(quillmarsh::gui::Component &parent, Workspace &workspace);
    ~Inspector() override;

    /// Adds a room, and lets it make its widgets.
    void Add(Room &room);
    /// Sets the room of the first tab; null for none.
    void SetShown(Room const *room);
    /// Shows the tab of this title, without regard to case. False if there is none.
    bool ShowTab(string const &title);
    string const &GetTab() const { return titles_[tabs_->GetShownPage()]; }
    std::vector<string> const &GetTabs() const { return titles_; }
    /// Width that it needs, in pixels.
    static float CalcWidth();
    void Update();

    void RecalcLayout() override;

private:
    struct Column
    {
        Room const *room;
        ScrollColumn *column;
        /// Index of the tab.
        unsigned int page;
    };

    void ShowColumns();

    std::vector<Column> columns_;
    Room const *shown_ = nullptr;
    std::vector<string> titles_;
    /// Shown on the first tab while there is no room for it.
    Component *empty_;
    /// Covers what is scrolled above the columns.
    Component *header_;
    quillmarsh::widgets::TabView *tabs_;
};

} // namespace viewer

#endif
