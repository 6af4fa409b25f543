#include "balls.h"

#include <quillmarsh/framework/frameworkprofiler.h>

#include <algorithm>

namespace workbench
{

Balls::Balls(BallSettings const &settings) : settings_(settings)
{
    Reset();
}

void Balls::Reset()
{
    balls_.clear();
    time_ = 0;
    numBounces_ = 0;
    AdaptCount();
}

void Balls::AdaptCount()
{
    // Each ball starts a little higher than the one before.
    while (balls_.size() < settings_.count)
        balls_.push_back({GetStartHeight(GetNumBalls()), 0.0});
    balls_.resize(settings_.count);
}

void Balls::Move(double timeDelta)
{
    AdaptCount();
    if (settings_.paused)
        return;
    // After a long pause, as in a debugger, the balls continue from where they were.
    double const delta = std::min(timeDelta, 0.1);
    time_ += delta;
    for (int step = 0; step < settings_.steps; ++step)
    {
        Step(delta / settings_.steps);
        BounceAll();
    }
}

void Balls::Step(double timeDelta)
{
    QUILLMARSH_PROFILE_BLOCK("Balls::Step");
    double const gravity = static_cast<double>(settings_.gravity);
    for (Ball &ball : balls_)
    {
        ball.speed -= gravity * timeDelta;
        ball.height += ball.speed * timeDelta;
    }
}

void Balls::BounceAll()
{
    QUILLMARSH_PROFILE_BLOCK("Balls::BounceAll");
    for (Ball &ball : balls_)
    {
        if (ball.height > 0 || ball.speed > 0)
            continue;
        ball.height = 0;
        ball.speed *= -settings_.bounce;
        ++numBounces_;
    }
}

double Balls::GetHighest() const
{
    double height = 0;
    for (Ball const &ball : balls_)
        height = std::max(height, ball.height);
    return height;
}

} // namespace workbench
