// States of keys and buttons with their edges, one byte each.
#ifndef QUILLMARSH_DEVICES_BUTTONSTATES_H
#define QUILLMARSH_DEVICES_BUTTONSTATES_H

#include <algorithm>

namespace quillmarsh
{

/// Row of state bytes. Bit 7 means pressed in the current sample, bit 0 pressed in the previous one.
///
/// Keyboard, Mouse and GameController have one each. Indexes are not tested: they are below `Count`. The rules for
/// threads are those of the controller.
template<unsigned int Count>
class ButtonStates
{
public:
    static constexpr unsigned char s_current = 128;
    static constexpr unsigned char s_previous = 1;

    /// @name Reading
    /// Each returns 0 for no. For yes, Pressed() returns the bit of the state, Down() and Up() return 1.
    /// @{
    unsigned char Pressed(unsigned int index) const { return states_[index] & s_current; }
    unsigned char Down(unsigned int index) const { return (states_[index] & (s_current | s_previous)) == s_current; }
    unsigned char Up(unsigned int index) const { return (states_[index] & (s_current | s_previous)) == s_previous; }
    /// @}

    /// @name Counts
    /// How many of all states are pressed, have just been pressed, and have just been released.
    /// @{
    unsigned int CountPressed() const { return CountIf(s_current, s_current); }
    unsigned int CountDown() const { return CountIf(s_current | s_previous, s_current); }
    unsigned int CountUp() const { return CountIf(s_current | s_previous, s_previous); }
    /// @}

    /// @name Writing one state
    /// Sets or clears the bit of the current sample.
    /// @{
    void SetPressed(unsigned int index) { states_[index] |= s_current; }
    void ResetPressed(unsigned int index) { states_[index] &= s_clearCurrent; }
    /// @}

    /// @name Writing all states
    /// @{

    /// Clears all states: nothing is pressed, and nothing was.
    void Reset() { std::fill_n(states_, Count, static_cast<unsigned char>(0)); }
    /// Clears the current bits; the previous bits stay.
    void ClearCurrent()
    {
        for (unsigned char &state : states_)
            state &= s_clearCurrent;
    }
    /// Moves the current bits to the previous ones.
    void Shift()
    {
        for (unsigned char &state : states_)
            state = static_cast<unsigned char>(state >> 7);
    }
    /// Copies the current bits to the previous ones.
    void ShiftCopy()
    {
        for (unsigned char &state : states_)
            state = static_cast<unsigned char>((state & s_current) | (state >> 7));
    }

    /// @}

private:
    static constexpr unsigned char s_clearCurrent = 127;

    unsigned int CountIf(unsigned int mask, unsigned int wanted) const
    {
        unsigned int count = 0;
        for (unsigned char const state : states_)
            count += (state & mask) == wanted ? 1 : 0;
        return count;
    }

    unsigned char states_[Count] = {};
};

} // namespace quillmarsh

#endif
