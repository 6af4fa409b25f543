// Bouncing balls, which the workbench moves in its frames.
#ifndef QUILLMARSH_PLUGINS_WORKBENCH_BALLS_H
#define QUILLMARSH_PLUGINS_WORKBENCH_BALLS_H

#include <quillmarsh/platform/types.h>

#include <vector>

namespace workbench
{

/// Settings that the user may change while the balls bounce; each member is an exported variable.
struct BallSettings
{
    /// Number of balls.
    unsigned int count = 100;
    /// Acceleration towards the floor, in metres per second squared.
    float gravity = 9.81f;
    /// Fraction of its speed that a ball keeps when it bounces, 0 to 1.
    double bounce = 0.9;
    /// Steps of the simulation in each frame; more are finer.
    int steps = 4;
    bool paused = false;
    /// Text that the command "greet" prints.
    quillmarsh::string greeting = "Hello from the workbench";
};

/// Balls that fall onto a floor and bounce off it.
class Balls
{
public:
    explicit Balls(BallSettings const &settings);

    /// Puts every ball back to its start.
    void Reset();
    /// Moves all balls by a time in seconds. Allocates only when the number of balls reaches a new maximum.
    void Move(double timeDelta);

    /// @name State
    /// @{
    double GetTime() const { return time_; }
    unsigned int GetNumBalls() const { return static_cast<unsigned int>(balls_.size()); }
    unsigned int GetNumBounces() const { return numBounces_; }
    /// Returns the height of a ball, in metres.
    double GetHeight(unsigned int index) const { return balls_[index].height; }
    /// Returns the height that a ball starts from, in metres. It never gets higher.
    static double GetStartHeight(unsigned int index) { return 1.0 + 0.01 * index; }
    /// Returns the height of the highest ball, in metres.
    double GetHighest() const;
    /// @}

private:
    struct Ball
    {
        double height;
        double speed;
    };

    void AdaptCount();
    void Step(double timeDelta);
    void BounceAll();

    BallSettings const &settings_;
    std::vector<Ball> balls_;
    double time_ = 0;
    unsigned int numBounces_ = 0;
};

} // namespace workbench

#endif
