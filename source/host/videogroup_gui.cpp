// The GUI manager's share of the video stack.
#include <quillmarsh/host/videogroup.h>

#include <quillmarsh/host/hostkernel.h>

namespace quillmarsh::host
{

void VideoGroup::ConnectGUI()
{
    if (!HostKernel::HasGUI())
        return;
    isGUIConnected_ = true;
    try
    {
        HostKernel::GUIManager_ConnectVideoRenderer(Renderer());
    }
    catch (...)
    {
        // A step that has failed is not undone, but the manager may have the renderer.
        DisconnectGUI();
        throw;
    }
}

void VideoGroup::DisconnectGUI()
{
    if (HasGUI())
        HostKernel::GUIManager_DisconnectVideoRenderer();
    isGUIConnected_ = false;
}

bool VideoGroup::HasGUI() const
{
    return isGUIConnected_ && HostKernel::HasGUI();
}

void VideoGroup::CreateGUIResources()
{
    if (!HasGUI())
        return;
    try
    {
        HostKernel::GUIManager_CreateVideoResources(deviceWasLost_);
    }
    catch (...)
    {
        // As with the connection: some of the resources may exist.
        ReleaseGUIResources();
        throw;
    }
}

void VideoGroup::ReleaseGUIResources()
{
    if (HasGUI())
        HostKernel::GUIManager_ReleaseVideoResources(deviceWasLost_);
}

} // namespace quillmarsh::host
