#include "source/gui/consoleoutputwindowstate.h"

#include <quillmarsh/basetools/diagnostics.h>

#include <algorithm>

namespace quillmarsh
{

using namespace console_window;

// Life.

ConsoleOutputWindow::ConsoleOutputWindow(HICON icon) : TopLevelWindow(icon), state_(std::make_unique<State>())
{
    SetMinSize(s_splashWidth, s_splashHeight);
    SetSize(s_splashWidth, s_splashHeight);
    SetUseGdiplus(true);
    CreateSystemWindow(0,
                       win_utils::e_style_popup | win_utils::e_style_systemMenu | win_utils::e_style_minimizeBox |
                           win_utils::e_style_maximizeBox,
                       0);
    state_->isOpen = true;
    CenterOnDesktop();
    UpdateVisibleSizes();
}

ConsoleOutputWindow::~ConsoleOutputWindow()
{
    UnhookFromTextSource();
    // A derived class may have closed the window.
    if (GetPlatformWindow())
        DestroySystemWindow();
}

bool ConsoleOutputWindow::MessageHandler(long &result, HWND window, unsigned int message, unsigned int wParam,
                                         long lParam)
{
    if (message == win_utils::e_message_destroy || message == win_utils::e_message_showWindow)
    {
        // A writing thread requests no repaint once the window closes, until a derived class opens it again.
        SourceLock const lock(*this);
        state_->isOpen = message == win_utils::e_message_showWindow;
        state_->isMinimized = state_->isMinimized && state_->isOpen;
    }
    // Changes from here on need another repaint. Not in OnPaint(), which an override may replace.
    if (message == win_utils::e_message_paint)
        state_->isRepaintPosted = false;
    NoteModifiers(message, wParam);
    return TopLevelWindow::MessageHandler(result, window, message, wParam, lParam);
}

void ConsoleOutputWindow::OnClose()
{
    Hide();
}

// Following the buffer. OnChanged() runs on any thread, with the buffer locked, and RemoveObserver() waits for that
// lock: after it, no thread is in OnChanged().

void ConsoleOutputWindow::HookToTextSource(ConsoleOutputBuffer *source)
{
    state_->source = source;
    {
        SourceLock const lock(*this);
        state_->vertical.ResetLogicalParameters();
        state_->horizontal.ResetLogicalParameters();
    }
    UpdateVisibleSizes();
    if (source)
        source->AddObserver(*this);
    FocusOnLastLine();
}

void ConsoleOutputWindow::UnhookFromTextSource()
{
    if (state_->source)
        state_->source->RemoveObserver(*this);
    state_->source = nullptr;
}

void ConsoleOutputWindow::OnChanged(ConsoleOutputBuffer const &buffer)
{
    ConsoleOutputBufferSentry const lock(buffer);
    if (state_->isMinimized)
        return;
    TakeSizes(buffer);
    if (state_->isOpen && !state_->isRepaintPosted.exchange(true))
        PostRepaint();
}

void ConsoleOutputWindow::TakeSizes(ConsoleOutputBuffer const &buffer)
{
    ScrollGadget &vertical = state_->vertical;
    bool const follows = vertical.IsPositionAtMaximum();
    state_->horizontal.SetTotalSize(buffer.GetMaxColumns());
    vertical.SetTotalSize(buffer.GetNumLines());
    if (follows)
        vertical.SetPositionToMax();
}

// What it shows.

void ConsoleOutputWindow::SetTitleText(string const &text)
{
    state_->shown.title = text;
    SetText(text);
    Repaint();
}

void ConsoleOutputWindow::SetStatusText(string const &text)
{
    state_->shown.status = text;
    Repaint();
}

void ConsoleOutputWindow::SetTextSource(ConsoleOutputBuffer *source)
{
    if (source == state_->source)
        return;
    UnhookFromTextSource();
    HookToTextSource(source);
}

void ConsoleOutputWindow::SetOutputTypeColor(OutputStream::eOutputType type, color4b color)
{
    QUILLMARSH_ASSERT(type < s_numTypes, "Invalid enumeration value.");
    if (type >= s_numTypes)
        return;
    state_->shown.colors[type] = {color.r, color.g, color.b};
    Repaint();
}

void ConsoleOutputWindow::SetMouseWheelStep(unsigned int step)
{
    state_->mouseWheelStep = step;
}

void ConsoleOutputWindow::EnableCloseGadget(bool enable)
{
    state_->shown.hasCloseGadget = enable;
    SynthesizeMouseMove();
    Repaint();
}

void ConsoleOutputWindow::FocusOnLastLine()
{
    {
        SourceLock const lock(*this);
        state_->vertical.SetPositionToMax();
    }
    Repaint();
}

unsigned int ConsoleOutputWindow::GetFirstVisibleLine() const
{
    SourceLock const lock(*this);
    return state_->vertical.GetPosition();
}

unsigned int ConsoleOutputWindow::GetFirstVisibleColumn() const
{
    SourceLock const lock(*this);
    return state_->horizontal.GetPosition();
}

bool ConsoleOutputWindow::IsSplashSized() const
{
    unsigned int width, height;
    GetSize(width, height);
    return width == s_splashWidth && height == s_splashHeight;
}

// Geometry.

void ConsoleOutputWindow::UpdateVisibleSizes()
{
    unsigned int clientWidth, clientHeight;
    GetClientAreaSize(clientWidth, clientHeight);
    int const width = static_cast<int>(clientWidth), height = static_cast<int>(clientHeight);
    SourceLock const lock(*this);
    ScrollGadget &vertical = state_->vertical;
    bool const follows = vertical.IsPositionAtMaximum();
    vertical.SetVisibleSize(state_->view.GetNumVisibleLines(width, height));
    state_->horizontal.SetVisibleSize(state_->view.GetNumVisibleColumns(width, height));
    if (follows)
        vertical.SetPositionToMax();
    ConsoleWindowView::PlaceBars(state_->horizontal, state_->vertical, width, height);
}

void ConsoleOutputWindow::OnResized(eResizeAction action)
{
    {
        SourceLock const lock(*this);
        state_->isMinimized = action == e_resize_minimized;
        // What was written while the window was minimized counts now.
        if (!state_->isMinimized && state_->source)
            TakeSizes(*state_->source);
    }
    if (action == e_resize_minimized)
        return;
    UpdateVisibleSizes();
    Repaint();
}

void ConsoleOutputWindow::UpdateMaximizedPlacement()
{
    if (IsMaximized() && GetPlatformWindow())
        FillDesktop();
}

void ConsoleOutputWindow::UpdateSizeAfterDisplayChange()
{
    platform::Window const *const window = GetPlatformWindow();
    if (!window || IsMaximized() || IsMinimized())
        return;
    platform::Window::Area const desktop = window->GetWorkArea();
    int x, y;
    unsigned int width, height;
    GetCurrentPosition(x, y);
    GetSize(width, height);
    int const newWidth = std::min(static_cast<int>(width), std::max(desktop.size.width, s_splashWidth));
    int const newHeight = std::min(static_cast<int>(height), std::max(desktop.size.height, s_splashHeight));
    auto const move = [](int at, int size, int begin, int room)
    { return std::max(std::min(at, begin + room - size), begin); };
    int const newX = move(x, newWidth, desktop.position.x, desktop.size.width);
    int const newY = move(y, newHeight, desktop.position.y, desktop.size.height);
    bool const isSame =
        newX == x && newY == y && newWidth == static_cast<int>(width) && newHeight == static_cast<int>(height);
    if (!isSame)
        SetPositionAndSize(newX, newY, static_cast<unsigned int>(newWidth), static_cast<unsigned int>(newHeight));
}

void ConsoleOutputWindow::OnDisplaySettingsChanged()
{
    UpdateMaximizedPlacement();
    UpdateSizeAfterDisplayChange();
    Repaint();
}

void ConsoleOutputWindow::OnSystemSettingsChanged()
{
    // The work area may have changed, for example with the task bar.
    OnDisplaySettingsChanged();
}

void ConsoleOutputWindow::OnSystemColorsChanged()
{
    Repaint();
}

// Painting.

void ConsoleOutputWindow::Repaint()
{
    if (GetPlatformWindow() && !state_->isRepaintPosted.exchange(true))
        PostRepaint();
}

void ConsoleOutputWindow::SetupBackBuffer(unsigned int width, unsigned int height)
{
    state_->backBuffer.resize(std::size_t{width} * height * 4);
    state_->pixels = {state_->backBuffer.data(), static_cast<std::ptrdiff_t>(width) * 4, height, width, false};
}

void ConsoleOutputWindow::OnPaint()
{
    unsigned int width, height;
    GetClientAreaSize(width, height);
    if (width == 0 || height == 0)
        return;
    SetupBackBuffer(width, height);
    ViewState &shown = state_->shown;
    shown.isActive = IsActive();
    shown.isMaximized = IsMaximized();
    shown.hotArea = GetCurrentMouseArea();
    {
        SourceLock const lock(*this);
        shown.horizontal = state_->horizontal;
        shown.vertical = state_->vertical;
        shown.CopyLines(state_->source);
    }
    state_->view.Render(state_->pixels, shown);
    ShowPixels(state_->pixels);
}

// Mouse.

TopLevelWindow::eWindowArea ConsoleOutputWindow::MouseHitTest(win_utils::Point const &point, unsigned int &subCode)
{
    subCode = 0;
    unsigned int clientWidth, clientHeight;
    GetClientAreaSize(clientWidth, clientHeight);
    int const width = static_cast<int>(clientWidth), height = static_cast<int>(clientHeight);
    if (point.y < s_bandHeight)
        return e_area_caption;
    if (point.y <= height - s_bandHeight)
        return e_area_client;
    for (GadgetRow const &row : s_gadgets)
    {
        Rect const box = GetGadget(row, width, height);
        bool const isThere = !row.isOptional || state_->shown.hasCloseGadget;
        if (isThere && point.HitTestRectangle(box.x, box.y, box.x + box.width, box.y + box.height))
            return row.area;
    }
    return e_area_caption;
}

void ConsoleOutputWindow::OnMouseEnter(eWindowArea, unsigned int)
{
    Repaint();
}

void ConsoleOutputWindow::OnActivated(bool)
{
    Repaint();
}

void ConsoleOutputWindow::OnMouseWheel(int delta, win_utils::Point const &, unsigned int keys)
{
    constexpr int notch = 120;
    // A turn the other way begins anew.
    bool const goesOn = (state_->wheelRest < 0) == (delta < 0);
    state_->wheelRest = delta + (goesOn ? state_->wheelRest : 0);
    int const numNotches = state_->wheelRest / notch;
    state_->wheelRest %= notch;
    bool const isHorizontal = (keys & win_utils::e_mouseKeys_control) != 0;
    unsigned int step = state_->mouseWheelStep;
    {
        SourceLock const lock(*this);
        ScrollGadget const &gadget = isHorizontal ? state_->horizontal : state_->vertical;
        if (gadget.GetVisibleSize() < step)
            step = 1;
    }
    ScrollBy(isHorizontal, -numNotches * static_cast<int>(step));
    Repaint();
}

void ConsoleOutputWindow::ScrollBy(bool isHorizontal, int offset)
{
    SourceLock const lock(*this);
    (isHorizontal ? state_->horizontal : state_->vertical).OffsetPosition(offset);
}

} // namespace quillmarsh
