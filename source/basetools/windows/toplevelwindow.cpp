// Life, showing, geometry and look of a top-level window.
#include <quillmarsh/basetools/windows/toplevelwindow.h>

#include <quillmarsh/basetools/diagnostics.h>
#include <quillmarsh/basetools/exception.h>
#include <quillmarsh/platform/displaymodes.h>

#include "source/basetools/windows/toplevelwindowstate.h"
#include "source/platform/desktop.h"
#include "source/platform/messagequeue.h"
#include "source/platform/threads.h"

#include <algorithm>
#include <cstdint>
#include <utility>

namespace quillmarsh
{
namespace
{

constexpr int s_noLimit = 0x7fffffff;
/// Length that any system can open, and that the memory has room to paint.
constexpr int s_longestSide = 16384;

int LimitLength(int wanted, int smallest, int largest)
{
    return std::max({1, smallest, std::min(wanted, largest > 0 ? largest : s_noLimit)});
}

/// Adds coordinates, up to the ends of their range.
int Sum(int a, int b)
{
    return static_cast<int>(std::clamp<std::int64_t>(std::int64_t{a} + b, -s_noLimit, s_noLimit));
}

int ToLength(unsigned int value)
{
    return static_cast<int>(std::min(value, static_cast<unsigned int>(s_noLimit)));
}

} // namespace

platform::Window::Size TopLevelWindow::State::Limit(Size wanted) const
{
    return {LimitLength(wanted.width, minSize.width, maxSize.width),
            LimitLength(wanted.height, minSize.height, maxSize.height)};
}

TopLevelWindow::TopLevelWindow(HICON icon) : state_(std::make_unique<State>())
{
    state_->icon = icon;
}

TopLevelWindow::~TopLevelWindow()
{
    if (state_->window && !state_->isClosing)
        DestroySystemWindow();
    // The message that the window is about to close may have destroyed the object.
    if (state_->window)
        CloseSystemWindow();
}

// Life.

void TopLevelWindow::SetRole(platform::eWindowRole role)
{
    state_->role = role;
}

void TopLevelWindow::SetOpenGLPixels(std::optional<platform::OpenGLPixels> const &pixels)
{
    state_->pixels = pixels;
}

string const &TopLevelWindow::GetCreationFailure() const
{
    return state_->creationFailure;
}

void TopLevelWindow::CreateSystemWindow(unsigned int, unsigned long style, unsigned long exStyle)
{
    QUILLMARSH_ASSERT(!state_->window, "System-window already created.");
    if (state_->window)
        return;
    state_->style = style | win_utils::e_style_clipChildren | win_utils::e_style_clipSiblings;
    platform::WindowDesc desc;
    desc.role = state_->role;
    desc.title = state_->text;
    desc.hasFrame = !state_->HasOwnFrame();
    desc.isResizable = (style & win_utils::e_style_sizeFrame) != 0;
    desc.hasSystemKeys = false;
    desc.isInTaskBar = (exStyle & win_utils::e_extendedStyle_toolWindow) == 0;
    desc.openGL = state_->pixels;
    platform::eWindowStep step = platform::eWindowStep::e_window;
    platform::MakeThreadMessageQueue();
    state_->window = platform::Window::Open(desc, state_->creationFailure, &step);
    if (!state_->window)
    {
        if (step == platform::eWindowStep::e_class)
            QUILLMARSH_THROW(SystemResourceException, "RegisterClassEx() failed.");
        if (step == platform::eWindowStep::e_deviceContext)
            QUILLMARSH_THROW(SystemResourceException, "GetDC() failed.");
        QUILLMARSH_THROW(SystemResourceException, "CreateWindowEx() failed.");
    }
    state_->creationFailure.clear();
    state_->thread = platform::GetCurrentThreadNumber();
    if ((exStyle & win_utils::e_extendedStyle_topmost) != 0)
        state_->isAlwaysOnTop = true;
    if (state_->isAlwaysOnTop)
        state_->window->SetAlwaysOnTop(true);
    if (state_->icon)
        state_->window->SetIcon(state_->icon);
    ApplyOpacity();
    ApplySizeLimits();
    if (state_->isSizeSet)
        UpdateSize();
    if (state_->isPositionSet)
        UpdatePosition();
    CacheGeometryParameters();
    Register(true);
    state_->listener = std::make_unique<Listener>(*this);
}

void TopLevelWindow::DestroySystemWindow()
{
    // A handler of the message may ask for the same.
    if (!NeedWindow() || state_->isClosing)
        return;
    std::weak_ptr<char> const life = state_->life;
    state_->isClosing = true;
    try
    {
        Send(win_utils::e_message_destroy, 0, 0);
    }
    catch (...)
    {
        if (!life.expired())
            state_->isClosing = false;
        throw;
    }
    if (life.expired())
        return;
    CloseSystemWindow();
    state_->isClosing = false;
}

void TopLevelWindow::CloseSystemWindow()
{
    state_->listener.reset();
    Register(false);
    AutoPtr<platform::Window> const window = std::move(state_->window);
    state_->ForgetButtons();
    state_->placeBefore.reset();
    state_->isActive = state_->isMinimized = state_->isMaximized = state_->isToBeRestored = false;
    state_->area = e_area_none;
}

void TopLevelWindow::SetUseGdiplus(bool use)
{
    if (!use)
        state_->gdiplus.reset();
    else if (!state_->gdiplus)
        state_->gdiplus = std::make_unique<win_utils::GdiplusGuard>();
}

platform::Window *TopLevelWindow::NeedWindow() const
{
    QUILLMARSH_ASSERT(state_->window, "System-window not created.");
    return state_->window.get();
}

HWND TopLevelWindow::GetHWND() const
{
    return state_->window ? state_->window->GetHandle() : nullptr;
}

HDC TopLevelWindow::GetHDC() const
{
    return state_->window ? state_->window->GetDeviceContext() : nullptr;
}

platform::Window *TopLevelWindow::GetPlatformWindow() const
{
    return state_->window.get();
}

// Showing.

void TopLevelWindow::Show()
{
    if (platform::Window *const window = NeedWindow())
        window->Show();
}

void TopLevelWindow::ShowMinimized(bool activate)
{
    if (!NeedWindow())
        return;
    // Each step may send messages, whose handlers may close the window or destroy the object.
    std::weak_ptr<char> const life = state_->life;
    state_->window->Show();
    if (activate && !life.expired() && state_->window)
        state_->window->Activate();
    if (!life.expired() && state_->window)
        state_->window->Minimize();
}

void TopLevelWindow::ShowMaximized()
{
    if (!NeedWindow())
        return;
    std::weak_ptr<char> const life = state_->life;
    state_->window->Show();
    if (!life.expired() && state_->window)
        Maximize();
}

void TopLevelWindow::Hide()
{
    if (platform::Window *const window = NeedWindow())
        window->Hide();
}

void TopLevelWindow::Minimize()
{
    if (platform::Window *const window = NeedWindow())
        window->Minimize();
}

void TopLevelWindow::Maximize()
{
    platform::Window *const window = NeedWindow();
    if (!window || state_->placeBefore)
        return;
    if (!state_->HasOwnFrame())
        return window->Maximize();
    platform::Window::Area const area = window->GetWorkArea();
    CacheGeometryParameters();
    state_->placeBefore = State::Area{state_->position, state_->size};
    Place({state_->maximizedPosition.value_or(area.position), state_->Limit(area.size)});
}

void TopLevelWindow::Place(platform::Window::Area const &area)
{
    state_->isPlacing = true;
    state_->window->SetPosition(area.position);
    state_->window->SetSize(area.size);
    state_->isPlacing = false;
    state_->listener->TellGeometry();
}

void TopLevelWindow::Restore()
{
    platform::Window *const window = NeedWindow();
    if (!window)
        return;
    if (!state_->placeBefore || window->GetState() != platform::eWindowState::e_normal)
        return window->Restore();
    Place(*std::exchange(state_->placeBefore, std::nullopt));
}

void TopLevelWindow::Activate()
{
    if (platform::Window *const window = NeedWindow())
        window->Activate();
}

bool TopLevelWindow::IsActive() const
{
    return state_->isActive;
}

bool TopLevelWindow::IsMinimized() const
{
    return state_->isMinimized;
}

bool TopLevelWindow::IsMaximized() const
{
    return state_->isMaximized;
}

void TopLevelWindow::SetAlwaysOnTop(bool onTop)
{
    if (onTop == state_->isAlwaysOnTop)
        return;
    state_->isAlwaysOnTop = onTop;
    if (state_->window)
        state_->window->SetAlwaysOnTop(onTop);
    OnAlwaysOnTop(onTop);
}

bool TopLevelWindow::IsAlwaysOnTop() const
{
    return state_->isAlwaysOnTop;
}

// Geometry.

void TopLevelWindow::SetPosition(int x, int y)
{
    state_->position = {x, y};
    state_->isPositionSet = true;
    UpdatePosition();
}

void TopLevelWindow::UpdatePosition()
{
    if (!state_->window)
        return;
    platform::Window::Frame const frame = state_->window->GetFrame();
    state_->window->SetPosition({Sum(state_->position.x, frame.left), Sum(state_->position.y, frame.top)});
}

void TopLevelWindow::SetMaximizedPosition(int x, int y)
{
    state_->maximizedPosition = State::Position{x, y};
}

void TopLevelWindow::GetCurrentPosition(int &x, int &y) const
{
    State::Position position = state_->position;
    if (state_->window && !state_->isMinimized)
    {
        platform::Window::Frame const frame = state_->window->GetFrame();
        position = state_->window->GetPosition();
        position.x -= frame.left;
        position.y -= frame.top;
    }
    x = position.x;
    y = position.y;
}

void TopLevelWindow::SetSize(unsigned int width, unsigned int height)
{
    state_->size = state_->Limit({ToLength(width), ToLength(height)});
    state_->isSizeSet = true;
    // The frame of a window that is not there yet is not known.
    if (!state_->window)
        state_->clientSize = state_->size;
    UpdateSize();
}

void TopLevelWindow::UpdateSize()
{
    if (!state_->window)
        return;
    platform::Window::Frame const frame = state_->window->GetFrame();
    state_->window->SetSize({std::clamp(state_->size.width - frame.left - frame.right, 1, s_longestSide),
                             std::clamp(state_->size.height - frame.top - frame.bottom, 1, s_longestSide)});
}

void TopLevelWindow::ApplySizeLimits()
{
    if (!state_->window)
        return;
    platform::Window::Frame const frame = state_->window->GetFrame();
    auto const toClient = [&frame](State::Size limit) -> State::Size {
        return {std::max(limit.width - frame.left - frame.right, 0),
                std::max(limit.height - frame.top - frame.bottom, 0)};
    };
    state_->window->SetSizeLimits(toClient(state_->minSize), toClient(state_->maxSize));
}

void TopLevelWindow::SetMinSize(unsigned int width, unsigned int height)
{
    state_->minSize = {ToLength(width), ToLength(height)};
    ApplySizeLimits();
}

void TopLevelWindow::GetMinSize(unsigned int &width, unsigned int &height) const
{
    width = static_cast<unsigned int>(state_->minSize.width);
    height = static_cast<unsigned int>(state_->minSize.height);
}

void TopLevelWindow::SetMaxSize(unsigned int width, unsigned int height)
{
    state_->maxSize = {ToLength(width), ToLength(height)};
    ApplySizeLimits();
}

void TopLevelWindow::GetMaxSize(unsigned int &width, unsigned int &height) const
{
    width = static_cast<unsigned int>(state_->maxSize.width);
    height = static_cast<unsigned int>(state_->maxSize.height);
}

void TopLevelWindow::GetSize(unsigned int &width, unsigned int &height) const
{
    State::Size size = state_->size;
    if (state_->window && !state_->isMinimized)
    {
        platform::Window::Frame const frame = state_->window->GetFrame();
        size = state_->window->GetSize();
        size.width += frame.left + frame.right;
        size.height += frame.top + frame.bottom;
    }
    width = static_cast<unsigned int>(size.width);
    height = static_cast<unsigned int>(size.height);
}

void TopLevelWindow::GetClientAreaSize(unsigned int &width, unsigned int &height) const
{
    bool const isThere = state_->window && !state_->isMinimized;
    State::Size const size = isThere ? state_->window->GetSize() : state_->clientSize;
    width = static_cast<unsigned int>(size.width);
    height = static_cast<unsigned int>(size.height);
}

void TopLevelWindow::SetPositionAndSize(int x, int y, unsigned int width, unsigned int height)
{
    std::weak_ptr<char> const life = state_->life;
    SetSize(width, height);
    if (!life.expired())
        SetPosition(x, y);
}

void TopLevelWindow::CenterOnDesktop()
{
    platform::Window *const window = NeedWindow();
    if (!window)
        return;
    platform::Window::Area const area = window->GetWorkArea();
    unsigned int width, height;
    GetSize(width, height);
    SetPosition(area.position.x + (area.size.width - ToLength(width)) / 2,
                area.position.y + (area.size.height - ToLength(height)) / 2);
}

void TopLevelWindow::FillDesktop()
{
    platform::Window *const window = NeedWindow();
    if (!window)
        return;
    platform::Window::Area const area = window->GetWorkArea();
    SetPositionAndSize(area.position.x, area.position.y, static_cast<unsigned int>(area.size.width),
                       static_cast<unsigned int>(area.size.height));
}

bool TopLevelWindow::GetVisibleClientAreaScreenCoords(int &left, int &top, int &right, int &bottom) const
{
    left = top = right = bottom = 0;
    platform::DisplayMode mode;
    if (!state_->window || !platform::ReadDesktopMode(mode))
        return false;
    platform::eWindowState const shown = state_->window->GetState();
    State::Position const position = state_->window->GetPosition();
    State::Size const size = state_->window->GetSize();
    int const rightEdge = std::min(Sum(position.x, size.width), static_cast<int>(mode.width));
    int const bottomEdge = std::min(Sum(position.y, size.height), static_cast<int>(mode.height));
    int const leftEdge = std::max(position.x, 0);
    int const topEdge = std::max(position.y, 0);
    bool const isShown = shown != platform::eWindowState::e_hidden && shown != platform::eWindowState::e_minimized;
    if (!isShown || leftEdge >= rightEdge || topEdge >= bottomEdge)
        return false;
    left = leftEdge;
    top = topEdge;
    right = rightEdge;
    bottom = bottomEdge;
    return true;
}

void TopLevelWindow::CacheGeometryParameters()
{
    if (!state_->window)
        return;
    platform::eWindowState const shown = state_->window->GetState();
    state_->isMinimized = shown == platform::eWindowState::e_minimized;
    if (state_->isMinimized)
        return;
    state_->isMaximized = shown == platform::eWindowState::e_maximized || state_->placeBefore.has_value();
    platform::Window::Frame const frame = state_->window->GetFrame();
    State::Position const position = state_->window->GetPosition();
    state_->clientSize = state_->window->GetSize();
    state_->position = {position.x - frame.left, position.y - frame.top};
    state_->size = {state_->clientSize.width + frame.left + frame.right,
                    state_->clientSize.height + frame.top + frame.bottom};
}

// Look.

void TopLevelWindow::SetText(string const &text)
{
    state_->text = text;
    if (state_->window)
        state_->window->SetTitle(text);
}

string const &TopLevelWindow::GetText() const
{
    return state_->text;
}

void TopLevelWindow::SetIcon(HICON icon)
{
    state_->icon = icon;
    if (state_->window)
        state_->window->SetIcon(icon);
}

void TopLevelWindow::EnableCompositingEffects(bool enable)
{
    state_->hasCompositing = enable;
    ApplyOpacity();
}

void TopLevelWindow::SetOpacity(unsigned char opacity)
{
    state_->opacity = opacity;
    state_->colorKey.reset();
    ApplyOpacity();
}

void TopLevelWindow::SetColorKey(color4b key)
{
    SetOpacityAndColorKey(255, key);
}

void TopLevelWindow::SetOpacityAndColorKey(unsigned char opacity, color4b key)
{
    state_->opacity = opacity;
    state_->colorKey = platform::Window::Color{key.r, key.g, key.b};
    ApplyOpacity();
}

void TopLevelWindow::ApplyOpacity()
{
    if (state_->window && state_->hasCompositing)
        state_->window->SetOpacity(state_->opacity, state_->colorKey);
    else if (state_->window)
        state_->window->SetOpacity(255);
}

void TopLevelWindow::SetForceRepaintOnMove(bool force)
{
    state_->forcesRepaintOnMove = force;
}

bool TopLevelWindow::AddWindowStyles(unsigned long styles)
{
    bool const changes = (state_->style & styles) != styles;
    state_->style |= styles;
    if (changes)
        ApplyStyles();
    return changes;
}

bool TopLevelWindow::RemoveWindowStyles(unsigned long styles)
{
    bool const changes = (state_->style & styles) != 0;
    state_->style &= ~styles;
    if (changes)
        ApplyStyles();
    return changes;
}

void TopLevelWindow::ApplyStyles()
{
    if (state_->window)
        state_->window->SetFrame(!state_->HasOwnFrame(), (state_->style & win_utils::e_style_sizeFrame) != 0);
}

// Switches and requests.

void TopLevelWindow::EnableMessageDispatchMouseMove(bool enable)
{
    state_->dispatchesMouseMove = enable;
}

void TopLevelWindow::EnableMessageDispatchMouseWheel(bool enable)
{
    state_->dispatchesMouseWheel = enable;
}

void TopLevelWindow::EnableMessageDispatchMouseButtons(bool enable)
{
    state_->dispatchesMouseButtons = enable;
}

void TopLevelWindow::EnableMessageDispatchKeyboardKeyStates(bool enable)
{
    state_->dispatchesKeyStates = enable;
}

void TopLevelWindow::EnableMessageDispatchKeyboardCharEvents(bool enable)
{
    state_->dispatchesChars = enable;
}

void TopLevelWindow::EnableCloseThroughAltF4(bool enable)
{
    state_->closesThroughAltF4 = enable;
}

void TopLevelWindow::EnableMenuThroughF10(bool enable)
{
    state_->opensMenuThroughF10 = enable;
}

void TopLevelWindow::EnableMenuThroughAltSpace(bool enable)
{
    state_->opensMenuThroughAltSpace = enable;
}

void TopLevelWindow::EnableSystemCommandEmulation(bool enable)
{
    state_->emulatesSystemCommands = enable;
}

void TopLevelWindow::PostNullMessage()
{
    if (platform::Window *const window = NeedWindow())
        window->Wake();
}

void TopLevelWindow::PostRepaint()
{
    if (platform::Window *const window = NeedWindow())
        window->Invalidate();
}

void TopLevelWindow::ShowPixels(platform::PixelRows const &pixels)
{
    if (platform::Window *const window = NeedWindow())
        window->ShowImage(pixels);
}

void TopLevelWindow::PostQuit()
{
    if (NeedWindow())
        platform::PostMessageToThread(state_->thread, {nullptr, platform::s_messageQuit});
}

} // namespace quillmarsh
