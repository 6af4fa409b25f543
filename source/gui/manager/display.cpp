#include "source/gui/manager/display.h"

#include <quillmarsh/basetools/diagnostics.h>
#include <quillmarsh/basetools/texttools.h>
#include <quillmarsh/devices/mouse.h>
#include <quillmarsh/framework/humaninterfacedevice.h>
#include <quillmarsh/framework/kernel.h>
#include <quillmarsh/framework/videorenderer.h>
#include <quillmarsh/gui/gui_renderer.h>
#include <quillmarsh/gui/gui_standardresources.h>
#include <quillmarsh/mathtools/transforms.h>
#include <quillmarsh/platform/window.h>

#include "source/gui/manager/parts.h"

#include <algorithm>
#include <iterator>

namespace quillmarsh::gui::manager_parts
{
namespace
{

/// By eCommandArea.
constexpr char const *s_cursorNames[] = {
    std_cursors::CursorName_Void,     std_cursors::CursorName_Client,   std_cursors::CursorName_Move,
    std_cursors::CursorName_ResizeN,  std_cursors::CursorName_ResizeS,  std_cursors::CursorName_ResizeW,
    std_cursors::CursorName_ResizeE,  std_cursors::CursorName_ResizeNW, std_cursors::CursorName_ResizeNE,
    std_cursors::CursorName_ResizeSW, std_cursors::CursorName_ResizeSE,
};
static_assert(std::size(s_cursorNames) == s_numCommandAreas);

void SetOrigin(Renderer &renderer, vec2 const &origin)
{
    mat4 transform;
    GenerateTranslateVM(transform, origin.x, origin.y, 0);
    renderer.SetTransform(transform);
}

/// Where the mouse is in this frame.
struct MousePlace
{
    bool isInside;
    vec2 position;
};

MousePlace FindMouse(Mouse &mouse, MouseDispatch const &dispatch)
{
    // While another thread writes the mouse's readings, those of the last dispatch are the ones that can be read.
    HumanInterfaceDevice const *const device = mouse.GetParentHIDPtr();
    if (device != nullptr && device->IsAsyncSamplingActive())
        return {dispatch.IsInside(), dispatch.GetLastPosition()};
    return {mouse.IsPositionInsideAppWindowClientArea(),
            vec2(static_cast<float>(mouse.GetPositionX()), static_cast<float>(mouse.GetPositionY()))};
}

} // namespace

void VideoConnection::Connect(VideoRenderer &renderer)
{
    QUILLMARSH_ASSERT(videoRenderer_ == nullptr, "Video-renderer already connected to GUI-manager.");
    videoRenderer_ = &renderer;
    renderer_ = &renderer.GetGUIRenderer();
    managedOnly_ = renderer_->CreatesManagedResourcesOnly();
    GetLogOut() << "gui-renderer-interface creates managed resources only: " << MakeString(managedOnly_) << std::endl;
    NotifyRendererChanged();
}

void VideoConnection::Disconnect()
{
    videoRenderer_ = nullptr;
    managedOnly_ = false;
    NotifyRendererChanged();
}

void VideoConnection::NotifyRendererChanged()
{
    parts_.queues.UpdateComponentHierarchyChanges();
    parts_.resources.ForEachUser([this](VideoResourceUser &user) { user.OnVideoRendererChanged(videoRenderer_); });
}

void VideoConnection::CreateResources(bool onlyIfUnmanaged)
{
    QUILLMARSH_ASSERT(videoRenderer_ != nullptr, "Video-renderer is not connected to GUI-manager.");
    if (videoRenderer_ == nullptr)
        return;
    resourcesWanted_ = true;
    if (!onlyIfUnmanaged || !managedOnly_)
        PrepareResources(true, true);
}

void VideoConnection::ReleaseResources(bool onlyIfUnmanaged)
{
    QUILLMARSH_ASSERT(videoRenderer_ != nullptr, "Video-renderer is not connected to GUI-manager.");
    if (videoRenderer_ == nullptr)
        return;
    resourcesWanted_ = false;
    if (onlyIfUnmanaged && managedOnly_)
        return;
    parts_.resources.tileTextures.objects.ReleaseVideoResources();
    parts_.resources.fonts.objects.ReleaseVideoResources();
}

void VideoConnection::PrepareResources(bool allTileTextures, bool allFonts)
{
    Pending &pending = parts_.pending;
    Resources &resources = parts_.resources;
    if (Create(resources.tileTextures, allTileTextures, pending.tileTexturesToCreate) || allTileTextures)
        pending.recacheAllTileTextures = true;
    if (Create(resources.fonts, allFonts, pending.fontsToCreate) || allFonts)
        pending.recacheAllFonts = true;
}

template<typename Kind>
bool VideoConnection::Create(Kind &kind, bool all, bool &toCreate)
{
    bool const isNeeded = toCreate || all;
    if (!isNeeded || !resourcesWanted_ || videoRenderer_ == nullptr)
        return false;
    // What throws leaves the rest to the next synchronisation.
    toCreate = true;
    kind.objects.CreateVideoResources(*videoRenderer_, all);
    toCreate = false;
    return true;
}

void VideoConnection::OnWindowResize(unsigned int width, unsigned int height)
{
    width_ = std::max(1u, width);
    height_ = std::max(1u, height);
    parts_.adapter->SetPosition(vec2::ZERO);
    parts_.adapter->SetSize(static_cast<float>(width_), static_cast<float>(height_));
    parts_.adapter->UpdateGeometry(true);
    parts_.pending.windowResizePending = true;
    parts_.pending.allGeometryDirty = true;
}

bool VideoConnection::IntersectsWindow(Component const &component) const
{
    if (videoRenderer_ == nullptr)
        return true;
    Rectangle const window(0, 0, static_cast<float>(width_), static_cast<float>(height_));
    return Rectangle(component.GetAbsolutePosition(), component.GetSize()).Intersects(window);
}

void VideoConnection::Draw()
{
    if (videoRenderer_ == nullptr)
        return;
    Renderer &renderer = *renderer_;
    bool const begins = !renderer.IsDrawing();
    if (begins)
        renderer.Begin();
    mat4 saved;
    renderer.GetTransform(saved);
    parts_.queues.draw.ForEach(
        [&renderer](Component &component)
        {
            SetOrigin(renderer, component.GetAbsolutePosition());
            component.DrawSelf(renderer);
        });
    parts_.cursorDisplay.Draw(renderer);
    renderer.SetTransform(saved);
    if (begins)
        renderer.End();
}

void CursorDisplay::Start()
{
    nullCursor_ = std::make_unique<Cursor>("", vec2::ZERO, vec2(16, 16), color4b(255, 255, 255, 255));
    active_ = nullCursor_.get();
    InvalidateHandles();
}

void CursorDisplay::Stop()
{
    nullCursor_.reset();
    active_ = nullptr;
    InvalidateHandles();
}

void CursorDisplay::SetupActiveCursor(Component &top, eCommandArea area, vec2 const &position)
{
    Message_MouseQueryCursor message(area, position - top.GetAbsolutePosition(), nullptr);
    top.DispatchMessage(message);
    active_ = message.GetCursor();
    if (active_ == nullptr)
        active_ = area < s_numCommandAreas ? standard_[area] : nullCursor_.get();
}

void CursorDisplay::CacheHandles()
{
    for (unsigned int area = 0; area < s_numCommandAreas; ++area)
    {
        Cursor const *const cursor = parts_.resources.cursors.Get(s_cursorNames[area]);
        standard_[area] = cursor != nullptr ? cursor : nullCursor_.get();
    }
}

void CursorDisplay::InvalidateHandles()
{
    std::fill(std::begin(standard_), std::end(standard_), nullCursor_.get());
}

void CursorDisplay::OnDeleted(Cursor const &cursor)
{
    std::replace(std::begin(standard_), std::end(standard_), &cursor, static_cast<Cursor const *>(nullCursor_.get()));
    if (active_ == &cursor)
        active_ = nullCursor_.get();
}

void CursorDisplay::DispatchGlobalParams()
{
    parts_.resources.cursors.objects.ForEach(
        [](Cursor &cursor)
        {
            cursor.UpdateColorCache();
            cursor.UpdateGeometryCache();
        });
}

void CursorDisplay::DisplaySystemCursor(bool display)
{
    if (display == systemCursorDisplayed_)
        return;
    systemCursorDisplayed_ = display;
    platform::ShowMouseCursor(display);
}

void CursorDisplay::ShowSystemCursor(bool show)
{
    showSystemCursor_ = show;
    if (show || parts_.mouse.IsInside())
        DisplaySystemCursor(show);
}

void CursorDisplay::Draw(Renderer &renderer)
{
    Mouse *const mouse = parts_.devices.mouse;
    if (mouse == nullptr || active_ == nullptr || (!showGUICursor && mouse->CanDisplaySystemCursor()))
        return;
    MousePlace const place = FindMouse(*mouse, parts_.mouse);
    if (!place.isInside)
        return;
    vec2 const &hotSpot = active_->GetHotSpot();
    vec2 const &size = active_->GetActiveSize();
    SetOrigin(renderer, place.position - vec2(hotSpot.x * size.x, hotSpot.y * size.y));
    active_->DrawSelf(renderer);
}

} // namespace quillmarsh::gui::manager_parts
