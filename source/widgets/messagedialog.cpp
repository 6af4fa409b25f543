#include <quillmarsh/widgets/messagedialog.h>

#include "source/widgets/inputhelp.h"

#include <quillmarsh/basetools/diagnostics.h>
#include <quillmarsh/widgets/label.h>
#include <quillmarsh/widgets/measures.h>
#include <quillmarsh/widgets/stack.h>
#include <quillmarsh/widgets/textbutton.h>

#include <algorithm>
#include <utility>

namespace quillmarsh::widgets
{

namespace
{

/// Greatest and least width at which the text is wrapped, in units.
constexpr float s_maxWrapWidth = 400;
constexpr float s_minWrapWidth = 80;

/// Width that all but the text takes, in units.
constexpr float s_restWidth = 2 * Measures::MarkSize + 3 * Measures::Margin;

} // namespace

MessageDialog &MessageDialog::Show(Params params)
{
    auto *const dialog = new MessageDialog(std::move(params));
    gui::Watch<MessageDialog> const watch(*dialog);
    dialog->Open();
    if (watch.Get() != nullptr)
        watch->RunModal();
    if (watch.Get() != nullptr && watch->IsVisible())
        watch->buttons_[watch->params_.defaultButton]->RequestKeyboardFocus();
    return *dialog;
}

MessageDialog::MessageDialog(Params params) : Panel(params.title), params_(std::move(params))
{
    if (params_.buttons.empty())
        params_.buttons.emplace_back("OK");
    auto const lastButton = static_cast<unsigned int>(params_.buttons.size() - 1);
    params_.cancelButton = std::min(params_.cancelButton, lastButton);
    if (params_.defaultButton > lastButton)
        params_.defaultButton = 0;
    answer_ = params_.cancelButton;

    auto *const column = new Stack(true, &GetContent(), Measures::Margin);
    column->SetAlignment(e_stack_stretch);
    column->SetFitToParent(true);
    auto *const message = new Stack(false, column, Measures::Margin);
    if (params_.sign != e_mark_none)
        new Sign(message, params_.sign);
    label_ = new Label(message, params_.text);
    column->SetFill(*message);
    auto *const row = new Stack(false, column);
    row->SetFill(*new Stack(false, row));
    AddButtons(*row);
    SetDefaultButton(buttons_[params_.defaultButton]);
    SetCancelButton(buttons_[params_.cancelButton]);
    SetCloseAction([this] { Finish(); });
    FitToContent();
}

MessageDialog::~MessageDialog() = default;

void MessageDialog::AddButtons(gui::Component &row)
{
    for (unsigned int i = 0; i < params_.buttons.size(); ++i)
    {
        buttons_.push_back(new TextButton(&row, params_.buttons[i]));
        buttons_.back()->SetAction([this, i] { Answer(i); });
    }
}

void MessageDialog::Answer(unsigned int button)
{
    bool const exists = button < buttons_.size();
    QUILLMARSH_ASSERT(exists, "Index out of range.");
    if (!exists)
        return;
    answer_ = button;
    Close();
}

void MessageDialog::Finish()
{
    auto const action = std::move(params_.action);
    unsigned int const answer = answer_;
    delete this;
    if (action)
        action(answer);
}

void MessageDialog::RecalcSize()
{
    float const room = GetParentSize().x / Measures::GetScale() - s_restWidth;
    float const width = std::clamp(room, s_minWrapWidth, s_maxWrapWidth);
    if (width != wrapWidth_)
    {
        wrapWidth_ = width;
        label_->SetWrapWidth(width);
        GetContent().PropagateRecalcSize();
        FitToContent();
    }
    Panel::RecalcSize();
}

bool MessageDialog::OnKeyboardKey(bool down, eKey key, unsigned int repeatCount, char character)
{
    bool const moves = key == e_key_arrow_left || key == e_key_arrow_right;
    if (down && moves && !IsControlPressed() && !IsAltPressed())
        return MoveFocus(*this, key == e_key_arrow_right);
    return Panel::OnKeyboardKey(down, key, repeatCount, character);
}

} // namespace quillmarsh::widgets
