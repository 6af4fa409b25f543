// Prints gestures of hands and turns of heads to the console.
#ifndef QUILLMARSH_PLUGINS_WORKBENCH_INPUTWATCH_H
#define QUILLMARSH_PLUGINS_WORKBENCH_INPUTWATCH_H

#include <quillmarsh/devices/orientationtracker.h>
#include <quillmarsh/devices/staticgestures.h>

#include <ostream>
#include <vector>

namespace workbench
{

/// Selects what InputWatch prints. The members are exported as variables.
struct WatchSettings
{
    bool gestures = false;
    bool orientations = false;
};

/// Watches all gloves and orientation trackers. Frame thread only.
class InputWatch
{
public:
    explicit InputWatch(WatchSettings const &settings) : settings_(settings) {}

    /// Watches a device, which is borrowed until DisconnectAll().
    void Connect(quillmarsh::HumanInterfaceDevice &device);
    void DisconnectAll();
    /// Prints the gestures that began or ended, and the trackers that turned, since the last call.
    void Update(quillmarsh::ostream &out);

private:
    struct WatchedGlove
    {
        quillmarsh::Glove *glove;
        /// Ids of the gestures that the hand makes, in ascending order.
        std::vector<unsigned int> active;
    };
    struct WatchedTracker
    {
        quillmarsh::OrientationTracker *tracker;
        /// The angles that were printed last.
        quillmarsh::vec3 angles;
    };

    void UpdateGlove(WatchedGlove &watched, quillmarsh::ostream &out);
    void UpdateTracker(WatchedTracker &watched, quillmarsh::ostream &out);
    void PrintMissing(quillmarsh::ostream &out, char const *what, std::vector<unsigned int> const &ids,
                      std::vector<unsigned int> const &others) const;

    WatchSettings const &settings_;
    quillmarsh::static_gestures::GestureAnalyzer analyzer_;
    std::vector<unsigned int> active_;
    std::vector<WatchedGlove> gloves_;
    std::vector<WatchedTracker> trackers_;
};

} // namespace workbench

#endif
