// The order in which a GUI renderer is called.
#ifndef QUILLMARSH_PLUGINS_VIDEO_NULL_CALLORDER_H
#define QUILLMARSH_PLUGINS_VIDEO_NULL_CALLORDER_H

#include <quillmarsh/gui/gui_renderer.h>

#include <functional>
#include <vector>

namespace video_null
{

using namespace quillmarsh;

/// Operations whose order matters, with the row of each in the table of callorder.cpp.
enum class eCall
{
    e_connect,
    e_createResources,
    e_releaseResources,
    e_disconnect,
    e_windowResize,
    e_createTexture,
    e_clearBuffers,
    e_setViewport,
    e_begin,
    e_end,
    e_flush,
    e_beginInterleaved,
    e_endInterleaved,
    e_setClipRectangle,
    e_resetClipRectangle,
    e_setDepthParams,
    e_setTransform,
    e_drawColored,
    e_drawTextured,
    e_drawText
};

/// Checks the order of calls by a table, and counts them.
///
/// A call in a wrong place is a fault: a text that names this call and the one that it must not follow.
class CallOrder
{
public:
    /// Counts in `statistics`, which is borrowed. `report` gets each fault once; null for nobody.
    CallOrder(gui::Renderer::Statistics &statistics, std::function<void(string const &)> report);

    /// Notes a call. Returns false when it stands in a wrong place; the caller then draws nothing.
    bool Enter(eCall call);
    /// Adds a fault that is not about the order.
    void AddFault(string const &text);

    /// True between Begin() and End().
    bool IsDrawing() const;
    /// Returns the faults in the order of their first time; equal ones count once.
    std::vector<string> const &GetFaults() const { return faults_; }

private:
    /// Returns the text about a call that belongs elsewhere.
    string MakeFault(char const *call, char const *place) const;

    gui::Renderer::Statistics &statistics_;
    std::function<void(string const &)> report_;
    std::vector<string> faults_;
    unsigned int state_;
    /// The call that led to the state; null before the first one.
    char const *stateCall_ = nullptr;
};

} // namespace video_null

#endif
