// Tells on the console what hands and heads do.
#ifndef QUILLMARSH_PLUGINS_WORKBENCH_INPUTWATCH_H
#define QUILLMARSH_PLUGINS_WORKBENCH_INPUTWATCH_H

#include <quillmarsh/devices/orientationtracker.h>
#include <quillmarsh/devices/staticgestures.h>

#include <ostream>
#include <vector>

namespace workbench
{

/// What the user wants to be told; exported as variables.
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

    /// The device is borrowed until DisconnectAll().
    void Connect(quillmarsh::HumanInterfaceDevice &device);
    void DisconnectAll();
    /// Prints what began and ended, and what turned, since the last call.
    void Update(quillmarsh::ostream &out);

private:
    struct WatchedGlove
    {
        quillmarsh::Glove *glove;
        /// Ids of the gestures that it makes, in their order.
        std::vector<unsigned int> active;
    };
    struct WatchedTracker
    {
        quillmarsh::OrientationTracker *tracker;
        /// As printed last.
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
