#include <quillmarsh/gui/gui_videoresource.h>

namespace quillmarsh::gui
{

VideoResource::VideoResource() = default;

VideoResource::~VideoResource() = default;

VideoResourceUser::~VideoResourceUser() = default;

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
