// The sections of the gallery: a table of titles and the functions that build their pages.
#ifndef QUILLMARSH_PLUGINS_GALLERY_SECTIONS_H
#define QUILLMARSH_PLUGINS_GALLERY_SECTIONS_H

#include <quillmarsh/widgets/stack.h>

#include <span>

namespace gallery
{

/// Section of the gallery. A plain record.
struct Section
{
    char const *title;
    /// One line below the title.
    char const *hint;
    /// Further words for the search.
    char const *keywords;
    /// Attaches the widgets of the page to a column.
    void (*build)(quillmarsh::widgets::Stack &page);
};

/// Returns all sections in their order.
std::span<Section const> GetSections();

/// @name Pages
/// @{
void BuildButtons(quillmarsh::widgets::Stack &page);
void BuildChoices(quillmarsh::widgets::Stack &page);
void BuildSliders(quillmarsh::widgets::Stack &page);
void BuildFields(quillmarsh::widgets::Stack &page);
void BuildLists(quillmarsh::widgets::Stack &page);
void BuildTabs(quillmarsh::widgets::Stack &page);
void BuildPanels(quillmarsh::widgets::Stack &page);
void BuildMenus(quillmarsh::widgets::Stack &page);
void BuildTexts(quillmarsh::widgets::Stack &page);
void BuildMarks(quillmarsh::widgets::Stack &page);
void BuildConsole(quillmarsh::widgets::Stack &page);
/// @}

/// @name States of a sample
/// A sample shows a state that otherwise needs a hand: it keeps it until the mouse comes over it.
/// @{
struct State
{
    char const *title;
    void (*apply)(quillmarsh::gui::Component &component);
};
/// At rest, hot, focused, disabled.
std::span<State const> GetStates();
/// Adds a row of titles to a grid whose first column names the kind.
void AddStateTitles(quillmarsh::widgets::Grid &grid, bool withPressed);
/// @}

} // namespace gallery

#endif
