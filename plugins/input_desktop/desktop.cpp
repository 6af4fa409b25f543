#include "desktop.h"

namespace input_desktop
{

using namespace quillmarsh;

namespace
{

// One notch of the wheel, in the unit that mice report.
constexpr float s_wheelTurn = 120.0f;

using Guard = CriticalSectionSentry;

} // namespace

void Desktop::OnKey(eKey key, bool isDown)
{
    if (key >= e_key_none)
        return;
    Guard const guard(lock_);
    keys_.keys[key] = isDown;
    if (isDown)
        tappedKeys_.set(key);
}

void Desktop::OnLocks(bool isCapsLockOn, bool isNumLockOn)
{
    Guard const guard(lock_);
    keys_.isCapsLockOn = isCapsLockOn;
    keys_.isNumLockOn = isNumLockOn;
}

void Desktop::OnButton(eMouseButton button, bool isDown)
{
    Guard const guard(lock_);
    unsigned int const bit = 1u << button;
    pointer_.buttons = isDown ? pointer_.buttons | bit : pointer_.buttons & ~bit;
    if (isDown)
        tappedButtons_ |= bit;
}

void Desktop::OnMove(float x, float y)
{
    Guard const guard(lock_);
    pointer_.moveX += x;
    pointer_.moveY += y;
}

void Desktop::OnPosition(int x, int y)
{
    Guard const guard(lock_);
    pointer_.x = x;
    pointer_.y = y;
}

void Desktop::OnInside(bool isInside)
{
    Guard const guard(lock_);
    pointer_.isInside = isInside;
}

void Desktop::OnWheel(float turns)
{
    Guard const guard(lock_);
    wheel_ += turns * s_wheelTurn;
}

void Desktop::OnSize(int width, int height)
{
    Guard const guard(lock_);
    pointer_.width = width;
    pointer_.height = height;
}

void Desktop::OnFocusLost()
{
    Guard const guard(lock_);
    keys_.keys.reset();
    pointer_.buttons = 0;
}

void Desktop::TakeKeys(KeySample &sample)
{
    Guard const guard(lock_);
    sample = keys_;
    sample.keys |= tappedKeys_;
    tappedKeys_.reset();
}

void Desktop::TakePointer(PointerSample &sample)
{
    Guard const guard(lock_);
    sample = pointer_;
    sample.buttons |= tappedButtons_;
    sample.wheel = static_cast<int>(wheel_);
    // A fraction of a step is kept until the rest arrives.
    wheel_ -= static_cast<float>(sample.wheel);
    tappedButtons_ = 0;
    pointer_.moveX = pointer_.moveY = 0;
}

void Desktop::ForgetThePast()
{
    Guard const guard(lock_);
    tappedKeys_.reset();
    tappedButtons_ = 0;
    wheel_ = 0;
    pointer_.moveX = pointer_.moveY = 0;
}

void Desktop::Wish(CursorWish const &wish)
{
    Guard const guard(lock_);
    wish_ = wish;
}

CursorWish Desktop::TakeWish()
{
    Guard const guard(lock_);
    CursorWish const wish = wish_;
    wish_.mustMove = false;
    return wish;
}

} // namespace input_desktop
