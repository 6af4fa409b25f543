// Format codes of samples with their names, the plain sample records, and samples packed into one 16-bit word.
#ifndef QUILLMARSH_DATAOBJECTS_SAMPLEFORMATS_H
#define QUILLMARSH_DATAOBJECTS_SAMPLEFORMATS_H

#include <quillmarsh/platform/types.h>

namespace quillmarsh
{

/// Meaning of a sample's bytes. The most significant byte is the size of a sample in bytes; the low 24 bits are the
/// layout of its components. Programs may use their own codes.
enum eSampleFormat : unsigned int
{
    e_format_none = 0,
    e_format_L8 = 0x01000001,        ///< luminance
    e_format_A8 = 0x01000002,        ///< alpha
    e_format_A8L8 = 0x02000001,      ///< luminance, alpha
    e_format_A4R4G4B4 = 0x02000010,  ///< 16-bit word: alpha 15-12, red 11-8, green 7-4, blue 3-0
    e_format_A1R5G5B5 = 0x02000020,  ///< 16-bit word: alpha 15, red 14-10, green 9-5, blue 4-0
    e_format_X8R8G8B8 = 0x04000001,  ///< blue, green, red, unused
    e_format_A8R8G8B8 = 0x04000002,  ///< blue, green, red, alpha
    e_format_FP32NormL = 0x04001001, ///< one float, luminance in 0..1; has no name
    e_format_FP32NormA = 0x04001002  ///< one float, alpha in 0..1; has no name
};

/// Plain sample of N bytes. Typed containers exist for the eight sizes that have a name below.
template<unsigned int N>
struct SampleOfBytes
{
    unsigned char bytes[N]; ///< byte 0 first
};

/// @name Plain samples, by their size in bits
/// @{
using Sample8 = SampleOfBytes<1>;
using Sample16 = SampleOfBytes<2>;
using Sample24 = SampleOfBytes<3>;
using Sample32 = SampleOfBytes<4>;
using Sample48 = SampleOfBytes<6>;
using Sample64 = SampleOfBytes<8>;
using Sample96 = SampleOfBytes<12>;
using Sample128 = SampleOfBytes<16>;
/// @}

/// Functions on format codes. Any thread may call them.
namespace sample_formats
{

/// Returns the size of a sample in bytes.
constexpr unsigned int ExtractByteSize(unsigned int format)
{
    return (format >> 24) & 0xFF;
}

/// Returns the layout of the components: the code without the size.
constexpr unsigned int ExtractComponentLayout(unsigned int format)
{
    return format & 0xFFFFFF;
}

/// Returns a code with a size and no layout, for a container whose format is set later.
constexpr eSampleFormat UnknownSampleFormat(unsigned int byteSize)
{
    return static_cast<eSampleFormat>(byteSize << 24);
}

/// Returns the name of a format; "unknown" if it has none.
QUILLMARSH_API string MapSampleFormatToName(unsigned int format);

/// Returns the format with a name, in upper or lower case; 0 for an unknown name.
QUILLMARSH_API eSampleFormat MapNameToSampleFormat(string const &name);

/// A word with four fields. Each field is read and written by mask and shift; writing does not change the other bits.
template<typename W, unsigned int maskA, unsigned int shiftA, unsigned int maskB, unsigned int shiftB,
         unsigned int maskC, unsigned int shiftC, unsigned int maskD, unsigned int shiftD>
struct PackedSample4
{
    using Word = W; ///< the word itself

    /// @name The largest value of each field
    /// @{
    static constexpr unsigned int s_maskA = maskA;
    static constexpr unsigned int s_maskB = maskB;
    static constexpr unsigned int s_maskC = maskC;
    static constexpr unsigned int s_maskD = maskD;
    /// @}

    W word; ///< all four fields

    /// @name Fields
    /// A setter stores only as many low bits of the value as the field has.
    /// @{
    constexpr unsigned int GetA() const { return word >> shiftA & maskA; }
    constexpr unsigned int GetB() const { return word >> shiftB & maskB; }
    constexpr unsigned int GetC() const { return word >> shiftC & maskC; }
    constexpr unsigned int GetD() const { return word >> shiftD & maskD; }
    constexpr void SetA(unsigned int value) { Set(value, maskA, shiftA); }
    constexpr void SetB(unsigned int value) { Set(value, maskB, shiftB); }
    constexpr void SetC(unsigned int value) { Set(value, maskC, shiftC); }
    constexpr void SetD(unsigned int value) { Set(value, maskD, shiftD); }
    /// @}

private:
    constexpr void Set(unsigned int value, unsigned int mask, unsigned int shift)
    {
        word = static_cast<W>((word & ~(mask << shift)) | (value & mask) << shift);
    }
};

/// Word of "A4R4G4B4": A is alpha, B red, C green, D blue.
using PackedSample_UShort4444 = PackedSample4<unsigned short, 15, 12, 15, 8, 15, 4, 15, 0>;
/// Word of "A1R5G5B5", likewise.
using PackedSample_UShort1555 = PackedSample4<unsigned short, 1, 15, 31, 10, 31, 5, 31, 0>;
/// Word of "A8R8G8B8", likewise.
using PackedSample_UInt8888 = PackedSample4<unsigned int, 255, 24, 255, 16, 255, 8, 255, 0>;

} // namespace sample_formats
} // namespace quillmarsh

#endif
