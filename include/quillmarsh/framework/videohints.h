// Wishes to a video renderer that do not depend on a display mode or a frame buffer.
#ifndef QUILLMARSH_FRAMEWORK_VIDEOHINTS_H
#define QUILLMARSH_FRAMEWORK_VIDEOHINTS_H

#include <quillmarsh/platform/types.h>

namespace quillmarsh
{

/// Where vertices are processed.
enum eVertexProcessingMode : unsigned int
{
    e_vertex_processing_default = 0,
    e_vertex_processing_software,
    e_vertex_processing_mixed,
    e_vertex_processing_hardware
};

/// Wishes to a video renderer. A plain record; a renderer ignores what its graphics interface does not have.
struct QUILLMARSH_API VideoHints
{
    /// Presenting a frame waits for the vertical retrace.
    bool VSync;
    /// The back buffer keeps its alpha values in fullscreen mode too.
    bool FullscreenDestinationAlpha;
    /// The device is made for speed: it cannot be asked for its state.
    bool PureDeviceMode;
    /// Where vertices are processed.
    eVertexProcessingMode VertexProcessingMode;

    /// Takes the four members in their order.
    VideoHints(bool vsync, bool fullscreenDestinationAlpha, bool pureDeviceMode,
               eVertexProcessingMode vertexProcessingMode);

    /// Compares all members.
    bool operator==(VideoHints const &other) const = default;

    /// Prints one line for each member behind `tabs` tabs.
    void Dump(ostream &out, unsigned int tabs) const;

    /// Readable name of a mode; "Unknown" for a value that is none.
    static string FormatVertexProcessingMode(eVertexProcessingMode mode);
};

} // namespace quillmarsh

#endif
