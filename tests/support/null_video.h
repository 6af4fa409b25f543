// A video stack without a device, connected and with its resources.
#ifndef QUILLMARSH_TESTS_SUPPORT_NULL_VIDEO_H
#define QUILLMARSH_TESTS_SUPPORT_NULL_VIDEO_H

#include "tests/support/test_kernel.h"

#include "video_null/nullrenderer.h"
#include "video_null/nullsubsystem.h"

namespace quillmarsh::tests
{

/// Connects the null renderer to the null subsystem for its own life, in a window of 640 by 480 pixels.
class NullVideo
{
public:
    NullVideo()
    {
        subsystem.Open(VideoConfig(true), "test");
        Doors::VideoRenderer_ConnectVideoSubsystem(renderer, subsystem);
        Doors::VideoRenderer_CreateVideoResources(renderer, false);
        Doors::VideoRenderer_OnWindowResize(renderer, 640, 480);
    }
    ~NullVideo()
    {
        Doors::VideoRenderer_ReleaseVideoResources(renderer, false);
        Doors::VideoRenderer_DisconnectVideoSubsystem(renderer);
        subsystem.Close();
    }

    /// The kernel's doors.
    struct Doors : TestKernel
    {
        using Kernel::VideoRenderer_ConnectVideoSubsystem;
        using Kernel::VideoRenderer_CreateVideoResources;
        using Kernel::VideoRenderer_DisconnectVideoSubsystem;
        using Kernel::VideoRenderer_OnWindowResize;
        using Kernel::VideoRenderer_ReleaseVideoResources;
    };

    video_null::NullSubsystem subsystem;
    video_null::NullRenderer renderer;
    video_null::NullGUIRenderer &gui = renderer.GetNullGUIRenderer();
};

} // namespace quillmarsh::tests

#endif
