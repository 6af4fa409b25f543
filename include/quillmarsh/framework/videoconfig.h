// Configuration of the video stack.
#ifndef QUILLMARSH_FRAMEWORK_VIDEOCONFIG_H
#define QUILLMARSH_FRAMEWORK_VIDEOCONFIG_H

#include <quillmarsh/framework/displaymode.h>
#include <quillmarsh/framework/framebufferconfig.h>
#include <quillmarsh/framework/videohints.h>

namespace quillmarsh
{

/// Configuration of the video stack that is wanted or in force. A plain record.
///
/// A windowed configuration takes only its size from the display mode; a fullscreen one has no use for `Resizable`.
class QUILLMARSH_API VideoConfig
{
public:
    FrameBufferConfig FrameBuffer;
    DisplayModeConfig DisplayMode;
    /// The user may change the size of the window.
    bool Resizable;
    VideoHints Hints;

    /// Takes a window of 640 x 480 with one back buffer, 24 bits of depth and 8 of stencil, on the hardware rasterizer,
    /// with vertical synchronisation and pure device mode.
    explicit VideoConfig(bool resizable);

    /// Compares all members.
    bool operator==(VideoConfig const &other) const = default;
    /// True when both have the same meaning, vertical synchronisation aside. Values that do not count in `other` may
    /// differ: `Resizable` when it is fullscreen, bit depth and refresh frequency when it is windowed.
    bool IsEqualIgnoreVSync(VideoConfig const &other) const;

    /// Prints the frame buffer, a line with the display mode, `Resizable` and the hints behind `tabs` tabs.
    void Dump(ostream &out, unsigned int tabs) const;
};

} // namespace quillmarsh

#endif
