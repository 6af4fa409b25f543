// Draws the readings of one controller.
#ifndef QUILLMARSH_PLUGINS_VIEWER_DEVICES_CONTROLLERPAINTER_H
#define QUILLMARSH_PLUGINS_VIEWER_DEVICES_CONTROLLERPAINTER_H

#include "boardpainter.h"
#include "devicewatch.h"

namespace viewer
{

/// Draws title and readings of a controller from the top downwards. For the time of one drawing.
class ControllerPainter
{
public:
    ControllerPainter(BoardPainter const &painter, WatchedController const &watched, double now)
        : painter_(painter),
          watched_(watched),
          now_(now)
    {
    }

    /// Returns the lower edge. All in pixels.
    float Paint(float x, float y, float width) const;

private:
    float PaintPose(float x, float y, float width) const;
    float PaintAxes(float x, float y, float width) const;
    void PaintAxis(float x, float y, float width, AxisReading const &axis, Trace const *trace) const;
    float PaintButtons(float x, float y, float width) const;
    float PaintHats(float x, float y, float width) const;
    /// Draws words in boxes; `strengths` are from 0 to 1.
    float PaintChips(float x, float y, float width, std::vector<std::pair<string, double>> const &chips) const;

    BoardPainter const &painter_;
    WatchedController const &watched_;
    double now_;
};

} // namespace viewer

#endif
