// Colour of four floats, and its way to four bytes and back.
#ifndef QUILLMARSH_MATHTOOLS_COLOR4F_H
#define QUILLMARSH_MATHTOOLS_COLOR4F_H

#include <quillmarsh/mathtools/color4b.h>
#include <quillmarsh/mathtools/componentoperations.h>
#include <quillmarsh/mathtools/mathserializer.h>

namespace quillmarsh
{

/// Red, green, blue and alpha, in this order, usually from 0 to 1. All arithmetic includes alpha. A value type: any
/// thread.
class color4f : public ComponentwiseOperations<color4f>
{
public:
    using ComponentwiseOperations<color4f>::Div;
    using ComponentwiseOperations<color4f>::operator/=;

    /// Leaves the channels unset.
    color4f() = default;
    /// Takes the channels, in order.
    constexpr color4f(float red, float green, float blue, float alpha) : r(red), g(green), b(blue), a(alpha) {}
    /// Takes the channels from an array, in order.
    explicit constexpr color4f(float const *channels) : color4f(channels[0], channels[1], channels[2], channels[3]) {}
    /// Converts bytes to 0 to 1. The conversion back gives the same bytes.
    constexpr color4f(color4b const &color)
        : color4f(FromByte(color.r), FromByte(color.g), FromByte(color.b), FromByte(color.a))
    {
    }

    /// Gives the low byte of each channel times 255, truncated: neither rounded nor clamped.
    constexpr operator color4b() const { return color4b(ToByte(r), ToByte(g), ToByte(b), ToByte(a)); }

    /// @name Channels
    /// Set() stores all channels, by value or from an array. ToPtr() and the conversions give the address of the first;
    /// the others follow it in order.
    /// @{
    constexpr color4f &Set(float red, float green, float blue, float alpha)
    {
        return *this = color4f(red, green, blue, alpha);
    }
    constexpr color4f &Set(float const *channels) { return *this = color4f(channels); }
    constexpr float *ToPtr() { return &r; }
    constexpr float const *ToPtr() const { return &r; }
    constexpr operator float *() { return ToPtr(); }
    constexpr operator float const *() const { return ToPtr(); }
    /// @}

    /// @name Quotient with a number
    /// The colour is multiplied by the reciprocal of the number.
    /// @{
    constexpr color4f &Div(color4f const &color, float divisor)
    {
        return Mul(color, static_cast<float>(1.0 / static_cast<double>(divisor)));
    }
    constexpr color4f &Div(float divisor) { return Div(*this, divisor); }
    /// @}

    /// Weighted sum of red, green and blue, in double precision.
    constexpr double Luminance() const
    {
        return static_cast<double>(0.299f) * static_cast<double>(r) +
               static_cast<double>(0.587f) * static_cast<double>(g) +
               static_cast<double>(0.114f) * static_cast<double>(b);
    }

    /// @name Component by component
    /// See componentoperations.h.
    /// @{
    template<typename Function, typename... Operands>
    static constexpr color4f Map(Function function, Operands const &...operands)
    {
        return color4f(function(operands.r...), function(operands.g...), function(operands.b...),
                       function(operands.a...));
    }
    template<typename Predicate, typename... Operands>
    static constexpr bool All(Predicate predicate, Operands const &...operands)
    {
        return predicate(operands.r...) && predicate(operands.g...) && predicate(operands.b...) &&
               predicate(operands.a...);
    }
    /// @}

    float r;
    float g;
    float b;
    float a;

private:
    static constexpr float FromByte(unsigned char channel)
    {
        // 1/255 in single precision is a little more than that, so that the truncation on the way back meets the byte.
        return static_cast<float>(channel) * 0.003921568859f;
    }
    static constexpr unsigned char ToByte(float channel)
    {
        double const scaled = static_cast<double>(channel) * 255.0;
        // The low byte of larger integers is 0, and so is that of NaN here.
        bool const hasLowByte = -9.0e18 < scaled && scaled < 9.0e18;
        return hasLowByte ? static_cast<unsigned char>(static_cast<long long>(scaled)) : static_cast<unsigned char>(0);
    }
};

static_assert(sizeof(color4f) == 4 * sizeof(float));

} // namespace quillmarsh

#endif
