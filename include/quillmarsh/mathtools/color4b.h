// Colour of four bytes.
#ifndef QUILLMARSH_MATHTOOLS_COLOR4B_H
#define QUILLMARSH_MATHTOOLS_COLOR4B_H

#include <quillmarsh/mathtools/mathserializer.h>

namespace quillmarsh
{

/// Colour of one byte a channel, in memory in the order blue, green, red, alpha.
///
/// Read as a 32-bit word it holds alpha in bits 31-24, red in 23-16, green in 15-8 and blue in 7-0. A value type: any
/// thread.
class color4b
{
public:
    /// Leaves the channels unset.
    color4b() = default;
    constexpr color4b(unsigned char red, unsigned char green, unsigned char blue, unsigned char alpha)
        : b(blue),
          g(green),
          r(red),
          a(alpha)
    {
    }

    /// Sets all four channels, in this order whatever the order in memory.
    constexpr void Set(unsigned char red, unsigned char green, unsigned char blue, unsigned char alpha)
    {
        *this = color4b(red, green, blue, alpha);
    }

    /// Stores the word whole.
    constexpr color4b &operator=(unsigned int word)
    {
        Set(static_cast<unsigned char>(word >> 16), static_cast<unsigned char>(word >> 8),
            static_cast<unsigned char>(word), static_cast<unsigned char>(word >> 24));
        return *this;
    }

    /// The word, see above.
    constexpr operator unsigned int() const
    {
        return static_cast<unsigned int>(a) << 24 | static_cast<unsigned int>(r) << 16 |
               static_cast<unsigned int>(g) << 8 | b;
    }

    /// @name The four bytes in memory order
    /// @{
    unsigned char *ToPtr() { return &b; }
    unsigned char const *ToPtr() const { return &b; }
    operator unsigned char *() { return ToPtr(); }
    operator unsigned char const *() const { return ToPtr(); }
    /// @}

    constexpr bool operator==(color4b const &other) const
    {
        return b == other.b && g == other.g && r == other.r && a == other.a;
    }
    constexpr bool operator!=(color4b const &other) const { return !(*this == other); }

    /// Swaps blue and red.
    constexpr void FlipRGBOrder() { Set(b, g, r, a); }
    /// Copy with blue and red swapped.
    constexpr color4b FlippedRGBOrder() const { return color4b(b, g, r, a); }

    unsigned char b;
    unsigned char g;
    unsigned char r;
    unsigned char a;
};

static_assert(sizeof(color4b) == 4);

} // namespace quillmarsh

#endif
