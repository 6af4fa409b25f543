// Colour of four bytes.
#ifndef QUILLMARSH_MATHTOOLS_COLOR4B_H
#define QUILLMARSH_MATHTOOLS_COLOR4B_H

#include <quillmarsh/mathtools/mathserializer.h>

namespace quillmarsh
{

/// Colour with one byte for each channel, in memory in the order blue, green, red, alpha.
///
/// As a 32-bit word it has alpha in bits 31-24, red in 23-16, green in 15-8 and blue in 7-0. A value type: any thread.
class color4b
{
public:
    /// Leaves the channels unset.
    color4b() = default;
    /// Takes the four channels.
    constexpr color4b(unsigned char red, unsigned char green, unsigned char blue, unsigned char alpha)
        : b(blue),
          g(green),
          r(red),
          a(alpha)
    {
    }

    /// Sets all four channels.
    constexpr void Set(unsigned char red, unsigned char green, unsigned char blue, unsigned char alpha)
    {
        *this = color4b(red, green, blue, alpha);
    }

    /// Sets all channels from the word.
    constexpr color4b &operator=(unsigned int word)
    {
        Set(static_cast<unsigned char>(word >> 16), static_cast<unsigned char>(word >> 8),
            static_cast<unsigned char>(word), static_cast<unsigned char>(word >> 24));
        return *this;
    }

    /// The colour as a word.
    constexpr operator unsigned int() const
    {
        return static_cast<unsigned int>(a) << 24 | static_cast<unsigned int>(r) << 16 |
               static_cast<unsigned int>(g) << 8 | b;
    }

    /// @name Bytes
    /// Address of the four bytes, in the order of the memory.
    /// @{
    unsigned char *ToPtr() { return &b; }
    unsigned char const *ToPtr() const { return &b; }
    operator unsigned char *() { return ToPtr(); }
    operator unsigned char const *() const { return ToPtr(); }
    /// @}

    /// True when all channels are equal.
    constexpr bool operator==(color4b const &other) const
    {
        return b == other.b && g == other.g && r == other.r && a == other.a;
    }
    /// True when a channel differs.
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
