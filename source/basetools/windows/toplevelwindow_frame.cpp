// The mouse in a top-level window, and the frame that the window draws itself.
#include <quillmarsh/basetools/windows/toplevelwindow.h>

#include <quillmarsh/basetools/diagnostics.h>

#include "source/basetools/windows/toplevelwindowstate.h"

#include <algorithm>
#include <cstdlib>
#include <iterator>
#include <utility>

namespace quillmarsh
{
namespace
{

using namespace win_utils;
using Area = TopLevelWindow::eWindowArea;

constexpr std::chrono::milliseconds s_doubleClickTime(500);
constexpr long s_doubleClickDistance = 4;

/// Edges of the window that an area moves, and the cursor that tells so.
struct SizingRow
{
    Area area;
    bool left;
    bool right;
    bool top;
    bool bottom;
    eStockCursor cursor;
};

constexpr SizingRow s_sizingRows[] = {
    {TopLevelWindow::e_area_left, true, false, false, false, eStockCursor::e_sizeWestEast},
    {TopLevelWindow::e_area_right, false, true, false, false, eStockCursor::e_sizeWestEast},
    {TopLevelWindow::e_area_top, false, false, true, false, eStockCursor::e_sizeNorthSouth},
    {TopLevelWindow::e_area_topLeft, true, false, true, false, eStockCursor::e_sizeNorthWestSouthEast},
    {TopLevelWindow::e_area_topRight, false, true, true, false, eStockCursor::e_sizeNorthEastSouthWest},
    {TopLevelWindow::e_area_bottom, false, false, false, true, eStockCursor::e_sizeNorthSouth},
    {TopLevelWindow::e_area_bottomLeft, true, false, false, true, eStockCursor::e_sizeNorthEastSouthWest},
    {TopLevelWindow::e_area_bottomRight, false, true, false, true, eStockCursor::e_sizeNorthWestSouthEast},
};

/// Returns the row of an area that sizes the window; null for any other.
SizingRow const *ExtractSizingStates(Area area)
{
    auto const found = std::find_if(std::begin(s_sizingRows), std::end(s_sizingRows),
                                    [area](SizingRow const &row) { return row.area == area; });
    return found != std::end(s_sizingRows) ? found : nullptr;
}

bool IsCommandArea(Area area)
{
    return area == TopLevelWindow::e_area_help || area == TopLevelWindow::e_area_command ||
           area == TopLevelWindow::e_area_menu;
}

} // namespace

void TopLevelWindow::State::ForgetButtons()
{
    buttons = clientButtons = frameButtons = 0;
    pressedArea = e_area_none;
    sizeMove.reset();
}

TopLevelWindow::eWindowArea TopLevelWindow::MouseHitTest(Point const &point, unsigned int &subCode)
{
    subCode = 0;
    unsigned int width, height;
    GetClientAreaSize(width, height);
    return point.HitTestRectangle(0, 0, static_cast<long>(width), static_cast<long>(height)) ? e_area_client
                                                                                             : e_area_none;
}

bool TopLevelWindow::HandleMouse(unsigned int message, unsigned int wParam, long lParam)
{
    Point const point(GetX(lParam), GetY(lParam));
    switch (message)
    {
    case e_message_mouseMove:
        if (state_->sizeMove)
            return ContinueSizeMove(point), true;
        return HandleMouseMove(point, wParam), true;
    case e_message_mouseLeave:
        if (!state_->sizeMove && state_->clientButtons == 0)
            SetMouseArea(e_area_none, 0);
        return true;
    case e_message_mouseWheel:
        return HandleMouseWheel(point, wParam), true;
    case e_message_leftButtonDown:
    case e_message_leftButtonUp:
        return HandleButton(e_mouseKeys_left, message == e_message_leftButtonDown, point, wParam), true;
    case e_message_middleButtonDown:
    case e_message_middleButtonUp:
        return HandleButton(e_mouseKeys_middle, message == e_message_middleButtonDown, point, wParam), true;
    case e_message_rightButtonDown:
    case e_message_rightButtonUp:
        return HandleButton(e_mouseKeys_right, message == e_message_rightButtonDown, point, wParam), true;
    default:
        return false;
    }
}

bool TopLevelWindow::IsMouseFree() const
{
    return state_->clientButtons == 0 && state_->pressedArea == e_area_none && !state_->sizeMove;
}

void TopLevelWindow::HandleMouseWheel(Point const &onDesktop, unsigned int wParam)
{
    std::weak_ptr<char> const life = state_->life;
    State::Position const origin = state_->window ? state_->window->GetPosition() : State::Position();
    Point const point = onDesktop - Point(origin.x, origin.y);
    if (IsMouseFree())
        UpdateMouseArea(point);
    if (!life.expired() && state_->dispatchesMouseWheel)
        OnMouseWheel(static_cast<short>(wParam >> 16), point, wParam & 0xffff);
}

void TopLevelWindow::HandleMouseMove(Point const &point, unsigned int keys)
{
    std::weak_ptr<char> const life = state_->life;
    // A button that went down in the client area keeps the mouse there.
    if (IsMouseFree())
        UpdateMouseArea(point);
    if (!life.expired() && state_->area == e_area_client && state_->dispatchesMouseMove)
        OnMouseMove(point, keys);
}

void TopLevelWindow::HandleButton(unsigned int button, bool isDown, Point const &point, unsigned int keys)
{
    std::weak_ptr<char> const life = state_->life;
    bool const isFree = IsMouseFree();
    if (isFree)
        UpdateMouseArea(point);
    if (life.expired())
        return;
    // A button goes up where it went down. One that went down elsewhere, for example in another window, goes up in the
    // area under the mouse.
    bool const wasInClient = (state_->clientButtons & button) != 0;
    bool const wasInFrame = (state_->frameButtons & button) != 0;
    state_->clientButtons &= ~button;
    state_->frameButtons &= ~button;
    bool const goesByArea = isDown || (isFree && !wasInClient && !wasInFrame);
    bool const isOfFrame = goesByArea ? state_->area != e_area_client : !wasInClient;
    if (isOfFrame)
    {
        if (isDown)
            state_->frameButtons |= button;
        if (button == e_mouseKeys_left)
            isDown ? PressFrame(point) : ReleaseFrame(point);
        else if (button == e_mouseKeys_right && !isDown && state_->area == e_area_caption)
            Send(e_message_sysCommand, e_command_mouseMenu,
                 MakePair(static_cast<int>(point.x), static_cast<int>(point.y)));
        return;
    }
    if (isDown)
        state_->clientButtons |= button;
    if (!state_->dispatchesMouseButtons)
        return;
    unsigned int const held = keys & 0xffff;
    if (button == e_mouseKeys_left)
        OnMouseButtonLeft(isDown, point, held);
    else if (button == e_mouseKeys_middle)
        OnMouseButtonMiddle(isDown, point, held);
    else
        OnMouseButtonRight(isDown, point, held);
}

// Areas and cursors.

void TopLevelWindow::UpdateMouseArea(Point const &point)
{
    unsigned int subCode = 0;
    eWindowArea const area = MouseHitTest(point, subCode);
    SetMouseArea(area, subCode);
}

void TopLevelWindow::SetMouseArea(eWindowArea area, unsigned int subCode)
{
    bool const isSame = area == state_->area && subCode == state_->subCode;
    state_->area = area;
    state_->subCode = subCode;
    if (isSame)
        return;
    ApplyMouseCursor();
    OnMouseEnter(area, subCode);
}

void TopLevelWindow::ApplyMouseCursor()
{
    if (!state_->window || state_->area >= e_area_numAreas)
        return;
    if (!state_->showsCursor)
        return state_->window->SetCursor(nullptr);
    HICON const shape = state_->cursorShapes[state_->area];
    SizingRow const *const sizing = CanSizeWindow() ? ExtractSizingStates(state_->area) : nullptr;
    state_->window->SetCursor(shape ? shape : LoadStockCursor(sizing ? sizing->cursor : eStockCursor::e_arrow));
}

void TopLevelWindow::ShowMouseCursor(bool show)
{
    state_->showsCursor = show;
    ApplyMouseCursor();
}

void TopLevelWindow::SetMouseCursorShape(eWindowArea area, HICON shape)
{
    QUILLMARSH_ASSERT(area < e_area_numAreas, "Invalid enumeration value.");
    if (area >= e_area_numAreas)
        return;
    state_->cursorShapes[area] = shape;
    if (area == state_->area)
        ApplyMouseCursor();
}

void TopLevelWindow::ResetMouseCursorShapes()
{
    std::fill(std::begin(state_->cursorShapes), std::end(state_->cursorShapes), nullptr);
    ApplyMouseCursor();
}

void TopLevelWindow::SynthesizeMouseMove()
{
    State::Position mouse;
    if (!state_->window || state_->area == e_area_none || !platform::FindMouse(mouse))
        return;
    State::Position const origin = state_->window->GetPosition();
    Send(e_message_mouseMove, state_->buttons, MakePair(mouse.x - origin.x, mouse.y - origin.y));
}

TopLevelWindow::eWindowArea TopLevelWindow::GetCurrentMouseArea() const
{
    return state_->area;
}

unsigned int TopLevelWindow::GetCurrentMouseAreaSubCode() const
{
    return state_->subCode;
}

bool TopLevelWindow::IsMouseInArea(eWindowArea area) const
{
    return state_->area == area;
}

bool TopLevelWindow::IsMouseInCommandArea(unsigned int subCode) const
{
    return IsCommandArea(state_->area) && state_->subCode == subCode;
}

// The frame.

void TopLevelWindow::PressFrame(Point const &point)
{
    eWindowArea const area = state_->area;
    if (area == e_area_caption)
    {
        auto const now = std::chrono::steady_clock::now();
        Point const moved = point - state_->lastClickPoint;
        bool const isDouble = now - state_->lastClick < s_doubleClickTime &&
                              std::abs(moved.x) <= s_doubleClickDistance && std::abs(moved.y) <= s_doubleClickDistance;
        // A third click begins a new pair.
        state_->lastClick = isDouble ? std::chrono::steady_clock::time_point() : now;
        state_->lastClickPoint = point;
        if (isDouble && (state_->style & e_style_maximizeBox) != 0)
            Send(e_message_sysCommand, state_->isMaximized ? e_command_restore : e_command_maximize, 0);
        else if (CanMoveWindow())
            EnterSizeMove(area, point);
    }
    else if (ExtractSizingStates(area))
    {
        if (CanSizeWindow())
            EnterSizeMove(area, point);
    }
    else
    {
        state_->pressedArea = area;
        state_->pressedSubCode = state_->subCode;
    }
}

void TopLevelWindow::ReleaseFrame(Point const &point)
{
    if (state_->sizeMove)
        return ExitSizeMove();
    eWindowArea const pressed = std::exchange(state_->pressedArea, e_area_none);
    unsigned int const subCode = state_->pressedSubCode;
    if (pressed == e_area_none)
        return;
    std::weak_ptr<char> const life = state_->life;
    UpdateMouseArea(point);
    if (life.expired() || state_->area != pressed || state_->subCode != subCode)
        return;
    if (IsCommandArea(pressed))
        return OnCommandAreaActivated(subCode);
    long const position = MakePair(static_cast<int>(point.x), static_cast<int>(point.y));
    switch (pressed)
    {
    case e_area_close:
        return static_cast<void>(Send(e_message_sysCommand, e_command_close, position));
    case e_area_minimize:
        return static_cast<void>(Send(e_message_sysCommand, e_command_minimize, position));
    case e_area_maximize:
        return static_cast<void>(
            Send(e_message_sysCommand, state_->isMaximized ? e_command_restore : e_command_maximize, position));
    case e_area_system:
        return static_cast<void>(Send(e_message_sysCommand, e_command_mouseMenu, position));
    default:
        return;
    }
}

bool TopLevelWindow::CanMoveWindow() const
{
    return state_->window && !state_->isMaximized && state_->window->GetState() == platform::eWindowState::e_normal;
}

bool TopLevelWindow::CanSizeWindow() const
{
    bool const isFixed = state_->maxSize.width > 0 && state_->maxSize.height > 0 &&
                         state_->maxSize.width <= state_->minSize.width &&
                         state_->maxSize.height <= state_->minSize.height;
    return CanMoveWindow() && !isFixed;
}

platform::Window::Position TopLevelWindow::ToDesktop(Point const &point) const
{
    State::Position const origin = state_->window->GetPosition();
    return {origin.x + static_cast<int>(point.x), origin.y + static_cast<int>(point.y)};
}

void TopLevelWindow::EnterSizeMove(eWindowArea area, Point const &point)
{
    CacheGeometryParameters();
    state_->sizeMove = State::SizeMove{area, ToDesktop(point), {state_->position, state_->size}};
    Send(e_message_enterSizeMove, 0, 0);
}

void TopLevelWindow::ContinueSizeMove(Point const &point)
{
    if (!state_->window)
        return;
    State::SizeMove const &begin = *state_->sizeMove;
    // The window may have moved since the desktop sent the message.
    State::Position mouse;
    if (!state_->isFromDesktop || !platform::FindMouse(mouse))
        mouse = ToDesktop(point);
    State::Position const moved = {mouse.x - begin.mouse.x, mouse.y - begin.mouse.y};
    State::Area area = begin.window;
    if (SizingRow const *const sizing = ExtractSizingStates(begin.area))
    {
        area.size.width += sizing->right ? moved.x : sizing->left ? -moved.x : 0;
        area.size.height += sizing->bottom ? moved.y : sizing->top ? -moved.y : 0;
        State::Size const limited = state_->Limit(area.size);
        // An edge that does not move keeps its size, whatever the limits are.
        area.size.width = sizing->left || sizing->right ? limited.width : area.size.width;
        area.size.height = sizing->top || sizing->bottom ? limited.height : area.size.height;
        area.position.x += sizing->left ? begin.window.size.width - area.size.width : 0;
        area.position.y += sizing->top ? begin.window.size.height - area.size.height : 0;
    }
    else
    {
        area.position.x += moved.x;
        area.position.y += moved.y;
    }
    bool const isMoved = area.position.x != state_->position.x || area.position.y != state_->position.y;
    bool const isSized = area.size.width != state_->size.width || area.size.height != state_->size.height;
    std::weak_ptr<char> const life = state_->life;
    if (isSized)
        SetSize(static_cast<unsigned int>(area.size.width), static_cast<unsigned int>(area.size.height));
    if (isMoved && !life.expired())
        SetPosition(area.position.x, area.position.y);
}

void TopLevelWindow::ExitSizeMove()
{
    if (state_->sizeMove)
    {
        state_->sizeMove.reset();
        Send(e_message_exitSizeMove, 0, 0);
    }
}

} // namespace quillmarsh
