// The whole window: list of sections with a search line, switches of the look, and the page of a section.
#ifndef QUILLMARSH_PLUGINS_GALLERY_DESK_H
#define QUILLMARSH_PLUGINS_GALLERY_DESK_H

#include "sections.h"

#include <quillmarsh/widgets/listbox.h>
#include <quillmarsh/widgets/panel.h>
#include <quillmarsh/widgets/stack.h>
#include <quillmarsh/widgets/textbutton.h>
#include <quillmarsh/widgets/textfield.h>

namespace gallery
{

/// Fills the window. The manager owns it.
class Desk : public quillmarsh::widgets::Panel
{
public:
    Desk();

    /// Shows the section of this title, without regard to case. Returns false if there is none.
    bool ShowSection(quillmarsh::string const &title);
    quillmarsh::string GetShownTitle() const { return shown_->title; }
    /// Gives the switches the state of the look.
    void ShowLook(quillmarsh::string const &theme, float scale);

    void RecalcSize() override;
    void OnWindowResize(unsigned int width, unsigned int height) override;

private:
    void MakeSwitches(quillmarsh::gui::Component &parent);
    void ListSections(quillmarsh::string const &words);
    void Show(Section const &section);

    quillmarsh::widgets::TextField *search_;
    quillmarsh::widgets::ListBox *list_;
    quillmarsh::widgets::Stack *page_;
    std::vector<quillmarsh::widgets::TextButton *> themes_;
    std::vector<quillmarsh::widgets::TextButton *> scales_;
    /// Sections that the list shows.
    std::vector<Section const *> listed_;
    Section const *shown_;
};

} // namespace gallery

#endif
