#include "source/widgets/movefocus.h"

#include "source/widgets/inputhelp.h"

#include <quillmarsh/gui/gui_component.h>
#include <quillmarsh/widgets/panel.h>
#include <quillmarsh/widgets/textfield.h>

#include <vector>

namespace quillmarsh::widgets
{

namespace
{

/// Components that can have the focus, in order, and the place of the present one among them.
struct FocusOrder
{
    std::vector<gui::Watch<gui::Component>> stops;
    /// Index of the present one, or of the first one behind its place.
    std::size_t place = 0;
    bool isStop = false;
    bool isFound = false;
};

bool IsStop(gui::Component const &component)
{
    bool const isEmpty = !(component.GetSize().x > 0 && component.GetSize().y > 0);
    return component.CanFocus() && component.IsEnabled() && !isEmpty;
}

/// Returns the component behind another one in the order of the branch; null at the end.
gui::Component *FindNext(gui::Component &component, gui::Component const &branch, std::vector<std::size_t> &path)
{
    if (!component.IsLeaf())
    {
        path.push_back(0);
        return component.GetChild(0);
    }
    gui::Component *at = &component;
    while (at != &branch)
    {
        gui::Component &parent = *at->GetParent();
        if (++path.back() < parent.GetNumChildren())
            return parent.GetChild(static_cast<unsigned int>(path.back()));
        path.pop_back();
        at = &parent;
    }
    return nullptr;
}

/// Selects the text of a field that the focus moved to, for new text to take its place.
void SelectText(gui::Component *component)
{
    if (auto *const field = dynamic_cast<TextField *>(component))
        field->SelectAll();
}

FocusOrder FindOrder(gui::Component &branch, gui::Component const *current)
{
    FocusOrder order;
    // Indices of the component's ancestors and of itself, below the branch.
    std::vector<std::size_t> path;
    std::size_t hiddenDepth = 0;
    for (gui::Component *at = FindNext(branch, branch, path); at != nullptr; at = FindNext(*at, branch, path))
    {
        if (path.size() <= hiddenDepth)
            hiddenDepth = 0;
        if (hiddenDepth == 0 && !at->IsVisible())
            hiddenDepth = path.size();
        bool const isStop = hiddenDepth == 0 && IsStop(*at);
        if (at == current)
        {
            order.place = order.stops.size();
            order.isStop = isStop;
            order.isFound = true;
        }
        if (isStop)
            order.stops.emplace_back(*at);
    }
    return order;
}

} // namespace

bool MoveFocusFrom(gui::Component &branch, gui::Component const *current, bool forward)
{
    FocusOrder const order = FindOrder(branch, current);
    std::size_t const count = order.stops.size();
    if (count == 0)
        return false;
    gui::Manager const &manager = gui::Manager::Instance();
    gui::Component const *const former = manager.GetKeyboardFocusTarget();
    std::size_t index = order.isFound ? order.place : 0;
    if (forward)
        index += order.isFound && order.isStop ? 1 : 0;
    else
        index += count - 1;
    for (std::size_t tried = 0; tried < count; ++tried)
    {
        gui::Watch<gui::Component> const &stop = order.stops[index % count];
        index += forward ? 1 : count - 1;
        if (stop.Get() == nullptr)
            continue;
        stop->RequestKeyboardFocus();
        // A handler may have passed it on.
        gui::Component *const target = manager.GetKeyboardFocusTarget();
        if (target == stop.Get())
            SelectText(target);
        if (target != former || target == stop.Get())
            return true;
    }
    return false;
}

bool MoveFocus(gui::Component &branch, bool forward)
{
    return MoveFocusFrom(branch, gui::Manager::Instance().GetKeyboardFocusTarget(), forward);
}

bool MoveFocusByKey(gui::Component &branch, bool down, eKey key)
{
    if (!down || key != e_key_tab || IsControlPressed() || IsAltPressed())
        return false;
    return MoveFocus(branch, !IsShiftPressed());
}

} // namespace quillmarsh::widgets
