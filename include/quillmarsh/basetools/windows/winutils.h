// Values and services of the window system that other classes use: GUIDs, points, colours, cursors, guards.
#ifndef QUILLMARSH_BASETOOLS_WINDOWS_WINUTILS_H
#define QUILLMARSH_BASETOOLS_WINDOWS_WINUTILS_H

#include <quillmarsh/basetools/uid.h>
#include <quillmarsh/basetools/windows/messageloop.h>
#include <quillmarsh/mathtools/color4b.h>
#include <quillmarsh/platform/types.h>

#include <cstdint>
#include <memory>
#include <vector>

namespace quillmarsh
{

/// Thin layer over the window system. Value types and functions are for any thread unless they say otherwise.
namespace win_utils
{

/// The platform's GUID record, with conversions from and to UID.
///
/// Word 0 of the UID is Data1, the halves of word 1 are Data2 and Data3, and words 2 and 3 fill Data4, highest byte
/// first: both print the same digits.
class QUILLMARSH_API Guid : public _GUID
{
public:
    /// All zeros.
    Guid();
    /// Copies the platform's record.
    Guid(_GUID const &guid);
    /// Converts as CopyFrom() does.
    explicit Guid(UID const &uid);

    /// Copies the words: word 0 to Data1, word 1 to Data2 and Data3, the others to Data4, highest byte first.
    void CopyFrom(UID const &uid);
    /// The exact inverse of CopyFrom.
    void CopyTo(UID &uid) const;

    /// True when all bytes are equal.
    bool operator==(Guid const &other) const;
    /// True when a byte differs.
    bool operator!=(Guid const &other) const { return !(*this == other); }
};

/// Prints the text of the UID with the same digits.
QUILLMARSH_API ostream &operator<<(ostream &out, Guid const &guid);

/// @name Binary form
/// Data1 in four bytes and Data2 and Data3 in two, in the byte order of the stream, then the bytes of Data4.
/// @{
QUILLMARSH_API ostream &operator<=(ostream &out, Guid const &guid);
QUILLMARSH_API istream &operator>=(istream &in, Guid &guid);
/// @}

/// Point or distance in pixels.
struct Point
{
    long x = 0;
    long y = 0;

    constexpr Point() = default;
    constexpr Point(long pointX, long pointY) : x(pointX), y(pointY) {}

    constexpr bool operator==(Point const &) const = default;
    /// Adds by coordinates.
    constexpr Point &operator+=(Point const &other) { return *this = *this + other; }
    /// Subtracts by coordinates.
    constexpr Point &operator-=(Point const &other) { return *this = *this - other; }
    /// Sum by coordinates.
    constexpr Point operator+(Point const &other) const { return {x + other.x, y + other.y}; }
    /// Difference by coordinates.
    constexpr Point operator-(Point const &other) const { return {x - other.x, y - other.y}; }
    /// Negation by coordinates.
    constexpr Point operator-() const { return {-x, -y}; }

    /// True when the point lies in a rectangle. The left and top edges belong to the rectangle, the right and bottom
    /// edges do not.
    constexpr bool HitTestRectangle(long left, long top, long right, long bottom) const
    {
        return x >= left && x < right && y >= top && y < bottom;
    }
};

/// Keeps the system's drawing library started as long as it exists; guards may be nested.
///
/// On Linux the drawing libraries need no start, and the guard does nothing.
class QUILLMARSH_API GdiplusGuard : NoCopy
{
public:
    /// Throws SystemResourceException, "Gdiplus startup failed.".
    GdiplusGuard();
    ~GdiplusGuard();

private:
    std::uintptr_t token_ = 0;
};

/// Keeps the system's component model started for the thread on which it is made and destroyed.
///
/// On Linux there is nothing to start, and the guard reports success.
class QUILLMARSH_API COMGuard : NoCopy
{
public:
    COMGuard();
    ~COMGuard();

    /// True when the component model was started.
    bool IsInitialized() const { return initialized_; }

private:
    bool initialized_;
};

/// Releases a reference to a component; ignores null.
struct QUILLMARSH_API CleanupHandlerIUnknown
{
    /// Releases the object, unless it is null.
    void operator()(IUnknown *object) const;
};

/// Owns one reference to a component, and releases it at the end of its scope.
using AutoCleanupIUnknown = std::unique_ptr<IUnknown, CleanupHandlerIUnknown>;

/// Converts a colour to the form of the drawing library: a word with alpha in the top byte, then red, green and blue.
QUILLMARSH_API unsigned int GdiplusConvertColor(color4b color);
/// Converts a colour from that form.
QUILLMARSH_API color4b GdiplusConvertColor(unsigned int argb);

/// Gives the names of the installed font families, sorted, each once. Returns false, and no names, if the system does
/// not tell.
QUILLMARSH_API bool GdiplusGetFontFamilyNames(std::vector<string> &names);

/// Colours that the user of the desktop has chosen.
enum class eSystemColor
{
    e_desktop,
    e_window,
    e_windowFrame,
    e_windowText,
    e_highlight,
    e_highlightText,
    e_grayText,
    e_buttonFace,
    e_buttonShadow,
    e_buttonHighlight,
    e_buttonText,
    e_activeCaption,
    e_activeCaptionText,
    e_inactiveCaption,
    e_inactiveCaptionText,
    e_scrollBar,
    e_infoBackground,
    e_infoText
};

/// Opaque colour of the desktop's theme. Linux has no such setting, and gives the colours of a plain light theme. A
/// value that is no enumerator gives opaque black.
QUILLMARSH_API color4b GetSystemColor(eSystemColor color);

/// Mouse cursors that the system supplies.
enum class eStockCursor
{
    e_arrow,
    e_iBeam,
    e_wait,
    e_appStarting,
    e_cross,
    e_hand,
    e_no,
    e_sizeAll,
    e_sizeNorthSouth,
    e_sizeWestEast,
    e_sizeNorthWestSouthEast,
    e_sizeNorthEastSouthWest
};

/// Loads a cursor that is shared and must not be destroyed. Returns null if the system has no such cursor or no
/// display. Main thread.
///
/// On Linux the cursor belongs to SDL, and keeps its video part running. It is good until the program calls SDL_Quit.
QUILLMARSH_API HCURSOR LoadStockCursor(eStockCursor cursor);

} // namespace win_utils
} // namespace quillmarsh

#endif
