// Arithmetic of a scroll bar.
#ifndef QUILLMARSH_GUI_SCROLLGADGET_H
#define QUILLMARSH_GUI_SCROLLGADGET_H

#include <quillmarsh/platform/api.h>

namespace quillmarsh
{

/// Arithmetic of one scroll bar, horizontal or vertical: what part of a whole is visible, and where the thumb stands.
/// It draws nothing. A value type: one thread at a time.
///
/// Sizes and the position are in steps, for example lines or columns; everything about the bar is in pixels.
class QUILLMARSH_API ScrollGadget
{
public:
    ScrollGadget();
    ScrollGadget(ScrollGadget const &);
    ScrollGadget &operator=(ScrollGadget const &);
    virtual ~ScrollGadget();

    /// @name What is scrolled, in steps
    /// A new size limits the position, and updates the thumb.
    /// @{

    /// Size of the whole; 1 at first.
    unsigned int GetTotalSize() const { return totalSize_; }
    void SetTotalSize(unsigned int size);
    /// Size of the visible part; 1 at first.
    unsigned int GetVisibleSize() const { return visibleSize_; }
    void SetVisibleSize(unsigned int size);
    bool IsVisibleLessThanTotal() const { return visibleSize_ < totalSize_; }

    /// First visible step; 0 at first.
    unsigned int GetPosition() const { return position_; }
    /// Sets the position within 0 and GetMaxPosition(), and updates the thumb.
    void SetPosition(int position);
    /// Moves the position, likewise.
    void OffsetPosition(int offset);
    void SetPositionToMax();
    bool IsPositionAtMaximum() const { return position_ == GetMaxPosition(); }
    /// Position at which the last step is visible; 0 when everything is visible.
    unsigned int GetMaxPosition() const;
    /// Last visible step.
    unsigned int GetLastVisiblePosition() const;

    /// Sets sizes and position to what they are at first.
    void ResetLogicalParameters();
    /// @}

    /// @name Bar, in pixels
    /// UpdateThumbParameters() makes a change count for the thumb.
    /// @{

    /// Length of the bar that the thumb moves in; 1 at first.
    unsigned int GetBarLength() const { return barLength_; }
    void SetBarLength(unsigned int length) { barLength_ = length; }
    /// Least length of the thumb; 1 at first.
    unsigned int GetMinThumbLength() const { return minThumbLength_; }
    void SetMinThumbLength(unsigned int length) { minThumbLength_ = length; }
    /// Greatest movement of the thumb for one step; 1 at first. The thumb is made longer for it.
    unsigned int GetMaxPixelsPerStep() const { return maxPixelsPerStep_; }
    void SetMaxPixelsPerStep(unsigned int pixels) { maxPixelsPerStep_ = pixels; }
    /// False lets a step move the thumb by any length; true at first.
    bool IsEnabledMaxPixelsPerStep() const { return isEnabledMaxPixelsPerStep_; }
    void EnableMaxPixelsPerStep(bool enable) { isEnabledMaxPixelsPerStep_ = enable; }

    /// Place of the thumb in the bar; 0 at first.
    unsigned int GetThumbOffset() const { return thumbOffset_; }
    void SetThumbOffset(unsigned int offset) { thumbOffset_ = offset; }
    /// Length of the thumb; 1 at first.
    unsigned int GetThumbLength() const { return thumbLength_; }
    void SetThumbLength(unsigned int length) { thumbLength_ = length; }

    /// Top left corner of the bar in its window, and its width across; 0, 0 and 1 at first. Nothing here depends on
    /// them.
    int GetBarPosX() const { return barPosX_; }
    void SetBarPosX(int x) { barPosX_ = x; }
    int GetBarPosY() const { return barPosY_; }
    void SetBarPosY(int y) { barPosY_ = y; }
    unsigned int GetBarWidth() const { return barWidth_; }
    void SetBarWidth(unsigned int width) { barWidth_ = width; }

    /// Sets everything about bar and thumb to what it is at first.
    void ResetDrawingParameters();
    /// Computes place and length of the thumb from all other values.
    void UpdateThumbParameters();
    /// @}

private:
    void LimitPosition(long long position);

    unsigned int totalSize_ = 1;
    unsigned int visibleSize_ = 1;
    unsigned int position_ = 0;
    unsigned int barLength_ = 1;
    unsigned int minThumbLength_ = 1;
    unsigned int maxPixelsPerStep_ = 1;
    bool isEnabledMaxPixelsPerStep_ = true;
    unsigned int thumbOffset_ = 0;
    unsigned int thumbLength_ = 1;
    int barPosX_ = 0;
    int barPosY_ = 0;
    unsigned int barWidth_ = 1;
};

} // namespace quillmarsh

#endif
