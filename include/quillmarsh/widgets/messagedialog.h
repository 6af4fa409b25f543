// Modal panel with a message and buttons.
#ifndef QUILLMARSH_WIDGETS_MESSAGEDIALOG_H
#define QUILLMARSH_WIDGETS_MESSAGEDIALOG_H

#include <quillmarsh/widgets/panel.h>

#include <vector>

namespace quillmarsh::widgets
{

class Label;

/// Message box: a modal panel with a sign, a text and buttons. Left and right move the focus between the buttons.
/// Nothing waits for it: an action gets the answer. Dialogs about failures of the program itself stay outside of the
/// GUI.
///
/// \code
/// widgets::MessageDialog::Show({.title = "Delete", .text = "Delete 3 files?", .sign = widgets::e_mark_question,
///                               .buttons = {"Delete", "Cancel"}, .action = [](unsigned int button)
///                               { GetConOut() << (button == 0 ? "Deleted." : "Kept.") << std::endl; }});
/// \endcode
/// Frame thread only.
class QUILLMARSH_API MessageDialog : public Panel
{
public:
    /// What it shows, all in UTF-8. A plain record.
    struct Params
    {
        /// Shown in the title bar.
        string title = string();
        /// Lines are broken where they are too wide.
        string text = string();
        eMark sign = e_mark_information;
        /// Texts of the buttons; "OK" if there are none.
        std::vector<string> buttons = {};
        /// Index of the button that Enter presses.
        unsigned int defaultButton = 0;
        /// Index of the button that Escape and the cross press; the last one if there is no such button.
        unsigned int cancelButton = ~0U;
        /// Gets the index of the button, after the dialog was deleted. May be null.
        std::function<void(unsigned int)> action = nullptr;
    };

    /// Makes a dialog that deletes itself when it was answered, and opens it. Returns it for a program that may have to
    /// close it earlier; that answers with the cancel button.
    static MessageDialog &Show(Params params);

    ~MessageDialog() override;
    string const &GetText() const { return params_.text; }
    /// Answers, as if the button was pressed: closes and deletes the dialog, and calls the action. Asserts "Index out of
    /// range." for a button that it does not have.
    void Answer(unsigned int button);

    void RecalcSize() override;
    using Panel::OnKeyboardKey;
    bool OnKeyboardKey(bool down, eKey key, unsigned int repeatCount, char character) override;

private:
    // It deletes itself by that.
    using Panel::SetCloseAction;

    explicit MessageDialog(Params params);
    void AddButtons(gui::Component &row);
    /// Deletes the dialog, once it has been closed, and calls the action.
    void Finish();

    Params params_;
    /// What the action gets.
    unsigned int answer_;
    Label *label_;
    float wrapWidth_ = 0;
    std::vector<TextButton *> buttons_;
};

} // namespace quillmarsh::widgets

#endif
