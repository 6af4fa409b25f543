#include <quillmarsh/gui/gui_videoresource.h>

#include <quillmarsh/gui/gui_manager.h>

namespace quillmarsh::gui
{

VideoResource::VideoResource() = default;

VideoResource::~VideoResource() = default;

VideoResourceUser::~VideoResourceUser()
{
    Manager::NotifyUserDeleted(*this);
}

void VideoResourceUser::RequestTileTextureRecache()
{
    if (Manager *const manager = Manager::InstancePtr())
        manager->RequestTileTextureRecache(*this);
}

void VideoResourceUser::RequestFontRecache()
{
    if (Manager *const manager = Manager::InstancePtr())
        manager->RequestFontRecache(*this);
}

void VideoResourceUser::OnVideoRendererChanged(VideoRenderer *) {}

void VideoResourceUser::OnTileTextureListChanged(Manager &) {}

void VideoResourceUser::OnFontListChanged(Manager &) {}

bool VideoResourceUser::CacheTileTextureHandles(Manager &)
{
    return true;
}

void VideoResourceUser::PostCacheTileTextureHandles() {}

bool VideoResourceUser::CacheFontHandles(Manager &)
{
    return true;
}

void VideoResourceUser::PostCacheFontHandles() {}

} // namespace quillmarsh::gui
