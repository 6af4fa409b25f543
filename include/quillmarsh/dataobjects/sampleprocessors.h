// Processors for sample formats: fills of nibbles and bits, format converters, linear interpolators.
#ifndef QUILLMARSH_DATAOBJECTS_SAMPLEPROCESSORS_H
#define QUILLMARSH_DATAOBJECTS_SAMPLEPROCESSORS_H

#include <quillmarsh/basetools/elementprocessors.h>
#include <quillmarsh/dataobjects/sampleformats.h>

namespace quillmarsh
{

/// Processors for single samples, like those in element_processors. They define the arithmetic of the formats: code
/// that works on whole blocks gives the same bits.
namespace sample_processors
{

using element_processors::LoadElement;
using element_processors::StoreElement;

/// Rounds as all sample arithmetic does: adds a half in single precision, then truncates toward zero. Callers keep the
/// low bits without clamping, so 1.5 in a normalised float becomes the low byte of 383. Returns 0 for NaN and for
/// numbers beyond 32 bits.
constexpr int Round(float value)
{
    float const shifted = value + 0.5f;
    return shifted >= -2147483648.0f && shifted < 2147483648.0f ? static_cast<int>(shifted) : 0;
}

/// @name Nibbles and bits
/// @{

/// Sets the high four bits of a byte to the low four of a value.
class Process_Fill1NibbleHigh final : public element_processors::ElementProcessorInplace<unsigned char>
{
public:
    /// Sets the low four bits of this value.
    explicit Process_Fill1NibbleHigh(unsigned char value) : bits_((value & 0x0Fu) << 4) {}
    void Process(unsigned char *element) override { *element = static_cast<unsigned char>((*element & 0x0Fu) | bits_); }

private:
    unsigned int bits_;
};

/// Sets the low four bits of a byte to the low four of a value.
class Process_Fill1NibbleLow final : public element_processors::ElementProcessorInplace<unsigned char>
{
public:
    /// Sets the low four bits of this value.
    explicit Process_Fill1NibbleLow(unsigned char value) : bits_(value & 0x0Fu) {}
    void Process(unsigned char *element) override { *element = static_cast<unsigned char>((*element & 0xF0u) | bits_); }

private:
    unsigned int bits_;
};

/// Sets the bits `mask << shift` of a word to the masked value.
template<typename T>
class Process_FillBits final : public element_processors::ElementProcessorInplace<T>
{
public:
    /// Keeps the masked value.
    Process_FillBits(T value, T mask, T shift) : value_(static_cast<T>(value & mask)), mask_(mask), shift_(shift) {}
    void Process(T *element) override
    {
        unsigned int const mask = static_cast<unsigned int>(mask_) << shift_;
        unsigned int const bits = static_cast<unsigned int>(value_) << shift_;
        StoreElement(element, static_cast<T>((LoadElement(element) & ~mask) | bits));
    }

private:
    T value_, mask_, shift_;
};
/// @}

/// @name Converters
/// Colours of three bytes are blue, green, red. The stride decides if a sample has three bytes or four.
/// @{

/// Converts a float in 0..1 to a byte, with rounding.
class CopyConverter_FP32Norm_To_UInt8 final
    : public element_processors::ElementProcessorDstSrc<unsigned char, unsigned char const>
{
public:
    void Process(unsigned char *dst, unsigned char const *src) override
    {
        *dst = static_cast<unsigned char>(Round(LoadElement(reinterpret_cast<float const *>(src)) * 255.0f));
    }
};

/// Converts a byte to a float in 0..1, by a multiplication and not a division.
class CopyConverter_UInt8_To_FP32Norm final
    : public element_processors::ElementProcessorDstSrc<unsigned char, unsigned char const>
{
public:
    void Process(unsigned char *dst, unsigned char const *src) override
    {
        StoreElement(reinterpret_cast<float *>(dst), static_cast<float>(*src) * 0.003921569f);
    }
};

/// Converts a colour to its luminance; the sum goes from blue to red.
class CopyConverter_B8G8R8_To_L8 final
    : public element_processors::ElementProcessorDstSrc<unsigned char, unsigned char const>
{
public:
    void Process(unsigned char *dst, unsigned char const *src) override
    {
        float const blue = 0.114f * static_cast<float>(src[0]);
        float const green = 0.587f * static_cast<float>(src[1]);
        float const red = 0.299f * static_cast<float>(src[2]);
        *dst = static_cast<unsigned char>(Round(blue + green + red));
    }
};

/// Converts luminance to a colour: writes the same byte three times.
class CopyConverter_L8_To_B8G8R8 final
    : public element_processors::ElementProcessorDstSrc<unsigned char, unsigned char const>
{
public:
    void Process(unsigned char *dst, unsigned char const *src) override { dst[0] = dst[1] = dst[2] = *src; }
};

/// Converts four bytes to four fields of four bits, without rounding.
class CopyConverter_UInt8888_To_UShort4444 final
    : public element_processors::ElementProcessorDstSrc<unsigned short, unsigned int const>
{
public:
    void Process(unsigned short *dst, unsigned int const *src) override
    {
        sample_formats::PackedSample_UInt8888 const from{LoadElement(src)};
        sample_formats::PackedSample_UShort4444 to{0};
        to.SetA(from.GetA() >> 4);
        to.SetB(from.GetB() >> 4);
        to.SetC(from.GetC() >> 4);
        to.SetD(from.GetD() >> 4);
        StoreElement(dst, to.word);
    }
};

/// Converts four bytes to one bit of alpha and three fields of five bits, without rounding.
class CopyConverter_UInt8888_To_UShort1555 final
    : public element_processors::ElementProcessorDstSrc<unsigned short, unsigned int const>
{
public:
    void Process(unsigned short *dst, unsigned int const *src) override
    {
        sample_formats::PackedSample_UInt8888 const from{LoadElement(src)};
        sample_formats::PackedSample_UShort1555 to{0};
        to.SetA(from.GetA() >> 7);
        to.SetB(from.GetB() >> 3);
        to.SetC(from.GetC() >> 3);
        to.SetD(from.GetD() >> 3);
        StoreElement(dst, to.word);
    }
};

/// Converts the fields of a packed word to four bytes, each scaled to 0..255 and rounded.
template<typename P>
class CopyConverter_PackedSample4_To_UInt8888 final
    : public element_processors::ElementProcessorDstSrc<unsigned int, unsigned short const>
{
public:
    void Process(unsigned int *dst, unsigned short const *src) override
    {
        P const from{LoadElement(src)};
        sample_formats::PackedSample_UInt8888 to{0};
        to.SetA(Spread(from.GetA(), P::s_maskA));
        to.SetB(Spread(from.GetB(), P::s_maskB));
        to.SetC(Spread(from.GetC(), P::s_maskC));
        to.SetD(Spread(from.GetD(), P::s_maskD));
        StoreElement(dst, to.word);
    }

private:
    static unsigned int Spread(unsigned int field, unsigned int largest)
    {
        return static_cast<unsigned int>(Round(static_cast<float>(field) / static_cast<float>(largest) * 255.0f));
    }
};
/// Converts four fields of four bits to four bytes: each times 17.
using CopyConverter_UShort4444_To_UInt8888 =
    CopyConverter_PackedSample4_To_UInt8888<sample_formats::PackedSample_UShort4444>;
/// Converts one bit of alpha and three fields of five bits to four bytes.
using CopyConverter_UShort1555_To_UInt8888 =
    CopyConverter_PackedSample4_To_UInt8888<sample_formats::PackedSample_UShort1555>;
/// @}

/// @name Linear interpolators
/// The caller chooses the weights. Each sum is taken in the order of the arguments.
/// @{

/// Interpolates between two elements.
template<typename D, typename S>
class LinearInterpolator1D
{
public:
    /// Sets the destination to the weighted sum of the sources.
    virtual void Process(D *dst, S const *src0, float weight0, S const *src1, float weight1) = 0;

protected:
    ~LinearInterpolator1D() = default;
};

/// Interpolates between four elements.
template<typename D, typename S>
class LinearInterpolator2D
{
public:
    /// Sets the destination to the weighted sum of the sources.
    virtual void Process(D *dst, S const *src0, float weight0, S const *src1, float weight1, S const *src2,
                         float weight2, S const *src3, float weight3) = 0;

protected:
    ~LinearInterpolator2D() = default;
};

/// Interpolates between eight elements.
template<typename D, typename S>
class LinearInterpolator3D
{
public:
    /// Sets the destination to the weighted sum of the sources.
    virtual void Process(D *dst, S const *src0, float weight0, S const *src1, float weight1, S const *src2,
                         float weight2, S const *src3, float weight3, S const *src4, float weight4, S const *src5,
                         float weight5, S const *src6, float weight6, S const *src7, float weight7) = 0;

protected:
    ~LinearInterpolator3D() = default;
};

/// Sources of one interpolation with their weights, for the interpolators of all dimensions.
template<typename S, unsigned int n>
struct Taps
{
    S const *src[n];  ///< source elements
    float weights[n]; ///< the weight of each

    /// Returns the weighted sum of the values that `value` reads from the sources.
    template<typename Value>
    float Sum(Value value) const
    {
        float sum = value(src[0]) * weights[0];
        for (unsigned int i = 1; i < n; ++i)
            sum += value(src[i]) * weights[i];
        return sum;
    }
};

/// Stores a weighted sum of bytes for each component, rounded.
template<unsigned int n>
void InterpolateComponents(unsigned char *dst, unsigned int numComponents, Taps<unsigned char, n> const &taps)
{
    for (unsigned int k = 0; k < numComponents; ++k)
    {
        float const sum = taps.Sum([k](unsigned char const *src) { return static_cast<float>(src[k]); });
        dst[k] = static_cast<unsigned char>(Round(sum));
    }
}

/// Stores a weighted sum of floats for each component.
template<unsigned int n>
void InterpolateComponents(float *dst, unsigned int numComponents, Taps<float, n> const &taps)
{
    for (unsigned int k = 0; k < numComponents; ++k)
        StoreElement(dst + k, taps.Sum([k](float const *src) { return LoadElement(src + k); }));
}

/// Stores a weighted sum for each field of packed words, rounded and masked.
template<typename P, unsigned int n>
void InterpolatePacked(unsigned short *dst, Taps<unsigned short, n> const &taps)
{
    auto const sum = [&taps](auto get)
    {
        return static_cast<unsigned int>(Round(
            taps.Sum([get](unsigned short const *src) { return static_cast<float>((P{LoadElement(src)}.*get)()); })));
    };
    P result{0};
    result.SetA(sum(&P::GetA));
    result.SetB(sum(&P::GetB));
    result.SetC(sum(&P::GetC));
    result.SetD(sum(&P::GetD));
    StoreElement(dst, result.word);
}

/// Stores the number of components of an element. The derived class interpolates them.
template<typename T>
class LinearInterpolator1D_NComponents : public LinearInterpolator1D<T, T>
{
public:
    /// Sets the number of components of an element.
    explicit LinearInterpolator1D_NComponents(unsigned int n) : n_(n) {}

protected:
    ~LinearInterpolator1D_NComponents() = default;

    unsigned int n_; ///< number of components
};

/// Interpolates n bytes, each rounded.
class LinearInterpolator1D_NBytes final : public LinearInterpolator1D_NComponents<unsigned char>
{
public:
    /// Sets the number of bytes of an element.
    explicit LinearInterpolator1D_NBytes(unsigned int n) : LinearInterpolator1D_NComponents(n) {}
    void Process(unsigned char *dst, unsigned char const *src0, float weight0, unsigned char const *src1,
                 float weight1) override
    {
        InterpolateComponents<2>(dst, n_, {{src0, src1}, {weight0, weight1}});
    }
};

/// Interpolates n floats.
template<>
class LinearInterpolator1D_NComponents<float> final : public LinearInterpolator1D<float, float>
{
public:
    /// Sets the number of components of an element.
    explicit LinearInterpolator1D_NComponents(unsigned int n) : n_(n) {}
    void Process(float *dst, float const *src0, float weight0, float const *src1, float weight1) override
    {
        InterpolateComponents<2>(dst, n_, {{src0, src1}, {weight0, weight1}});
    }

private:
    unsigned int n_;
};

/// Interpolates the four fields of a packed word, each rounded.
template<typename P>
class LinearInterpolator1D_PackedSample4 final : public LinearInterpolator1D<unsigned short, unsigned short>
{
public:
    void Process(unsigned short *dst, unsigned short const *src0, float weight0, unsigned short const *src1,
                 float weight1) override
    {
        InterpolatePacked<P, 2>(dst, {{src0, src1}, {weight0, weight1}});
    }
};

/// Stores the number of components of an element. The derived class interpolates them.
template<typename T>
class LinearInterpolator2D_NComponents : public LinearInterpolator2D<T, T>
{
public:
    /// Sets the number of components of an element.
    explicit LinearInterpolator2D_NComponents(unsigned int n) : n_(n) {}

protected:
    ~LinearInterpolator2D_NComponents() = default;

    unsigned int n_; ///< number of components
};

/// Interpolates n bytes, each rounded.
class LinearInterpolator2D_NBytes final : public LinearInterpolator2D_NComponents<unsigned char>
{
public:
    /// Sets the number of bytes of an element.
    explicit LinearInterpolator2D_NBytes(unsigned int n) : LinearInterpolator2D_NComponents(n) {}
    void Process(unsigned char *dst, unsigned char const *src0, float weight0, unsigned char const *src1, float weight1,
                 unsigned char const *src2, float weight2, unsigned char const *src3, float weight3) override
    {
        InterpolateComponents<4>(dst, n_, {{src0, src1, src2, src3}, {weight0, weight1, weight2, weight3}});
    }
};

/// Interpolates n floats.
template<>
class LinearInterpolator2D_NComponents<float> final : public LinearInterpolator2D<float, float>
{
public:
    /// Sets the number of components of an element.
    explicit LinearInterpolator2D_NComponents(unsigned int n) : n_(n) {}
    void Process(float *dst, float const *src0, float weight0, float const *src1, float weight1, float const *src2,
                 float weight2, float const *src3, float weight3) override
    {
        InterpolateComponents<4>(dst, n_, {{src0, src1, src2, src3}, {weight0, weight1, weight2, weight3}});
    }

private:
    unsigned int n_;
};

/// Interpolates the four fields of a packed word, each rounded.
template<typename P>
class LinearInterpolator2D_PackedSample4 final : public LinearInterpolator2D<unsigned short, unsigned short>
{
public:
    void Process(unsigned short *dst, unsigned short const *src0, float weight0, unsigned short const *src1,
                 float weight1, unsigned short const *src2, float weight2, unsigned short const *src3,
                 float weight3) override
    {
        InterpolatePacked<P, 4>(dst, {{src0, src1, src2, src3}, {weight0, weight1, weight2, weight3}});
    }
};

/// Stores the number of components of an element. The derived class interpolates them.
template<typename T>
class LinearInterpolator3D_NComponents : public LinearInterpolator3D<T, T>
{
public:
    /// Sets the number of components of an element.
    explicit LinearInterpolator3D_NComponents(unsigned int n) : n_(n) {}

protected:
    ~LinearInterpolator3D_NComponents() = default;

    unsigned int n_; ///< number of components
};

/// Interpolates n bytes, each rounded.
class LinearInterpolator3D_NBytes final : public LinearInterpolator3D_NComponents<unsigned char>
{
public:
    /// Sets the number of bytes of an element.
    explicit LinearInterpolator3D_NBytes(unsigned int n) : LinearInterpolator3D_NComponents(n) {}
    void Process(unsigned char *dst, unsigned char const *src0, float weight0, unsigned char const *src1, float weight1,
                 unsigned char const *src2, float weight2, unsigned char const *src3, float weight3,
                 unsigned char const *src4, float weight4, unsigned char const *src5, float weight5,
                 unsigned char const *src6, float weight6, unsigned char const *src7, float weight7) override
    {
        InterpolateComponents<8>(dst, n_,
                                 {{src0, src1, src2, src3, src4, src5, src6, src7},
                                  {weight0, weight1, weight2, weight3, weight4, weight5, weight6, weight7}});
    }
};

/// Interpolates n floats.
template<>
class LinearInterpolator3D_NComponents<float> final : public LinearInterpolator3D<float, float>
{
public:
    /// Sets the number of components of an element.
    explicit LinearInterpolator3D_NComponents(unsigned int n) : n_(n) {}
    void Process(float *dst, float const *src0, float weight0, float const *src1, float weight1, float const *src2,
                 float weight2, float const *src3, float weight3, float const *src4, float weight4, float const *src5,
                 float weight5, float const *src6, float weight6, float const *src7, float weight7) override
    {
        InterpolateComponents<8>(dst, n_,
                                 {{src0, src1, src2, src3, src4, src5, src6, src7},
                                  {weight0, weight1, weight2, weight3, weight4, weight5, weight6, weight7}});
    }

private:
    unsigned int n_;
};

/// Interpolates the four fields of a packed word, each rounded.
template<typename P>
class LinearInterpolator3D_PackedSample4 final : public LinearInterpolator3D<unsigned short, unsigned short>
{
public:
    void Process(unsigned short *dst, unsigned short const *src0, float weight0, unsigned short const *src1,
                 float weight1, unsigned short const *src2, float weight2, unsigned short const *src3, float weight3,
                 unsigned short const *src4, float weight4, unsigned short const *src5, float weight5,
                 unsigned short const *src6, float weight6, unsigned short const *src7, float weight7) override
    {
        InterpolatePacked<P, 8>(dst, {{src0, src1, src2, src3, src4, src5, src6, src7},
                                      {weight0, weight1, weight2, weight3, weight4, weight5, weight6, weight7}});
    }
};
/// @}

} // namespace sample_processors
} // namespace quillmarsh

#endif
