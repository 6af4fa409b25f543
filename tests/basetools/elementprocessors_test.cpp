#include <quillmarsh/basetools/elementprocessors.h>

#include <gtest/gtest.h>

#include <array>
#include <string>

namespace quillmarsh
{
namespace
{

using namespace element_processors;

using Byte = unsigned char;
using Bytes = std::array<Byte, 6>;

/// Records the order of the calls, with the bytes of each.
class Recorder final : public ElementProcessorDstSrc<Byte, Byte const>, public ElementProcessorInplace<Byte>
{
public:
    void BeginDimension(unsigned int dimension) override { log_ += '(' + std::to_string(dimension); }
    void EndDimension(unsigned int dimension) override { log_ += std::to_string(dimension) + ')'; }
    void Process(Byte *dst, Byte const *src) override { log_ += {' ', char(*dst), char(*src), ' '}; }
    void Process(Byte *element) override { log_ += {' ', char(*element), ' '}; }

    string Take() { return std::exchange(log_, string()); }

private:
    string log_;
};

TEST(ElementLoops, BracketEveryTraversalAndFollowTheStrides)
{
    Byte dst[] = "ABCDEFGH", src[] = "abcdefgh";
    Recorder recorder;
    ElementProcessorDstSrc<Byte, Byte const> &both = recorder;
    ElementProcessorInplace<Byte> &one = recorder;
    ProcessElements(both, 3, dst, 2, src + 7, -3);
    ProcessElements(both, 2, dst + 7, -1, src, 0);
    ProcessElements(both, 0, dst, 1, src, 1);
    ProcessElementsInplace(one, 2, dst + 1, 4);
    EXPECT_EQ(recorder.Take(), "(0 Ah  Ce  Eb 0)(0 Ha  Ga 0)(00)(0 B  F 0)");
    ProcessElements2D(both, 2, 2, dst, {4, 1}, src, {1, 4});
    ProcessElements2D(both, 2, 0, dst, {4, 1}, src, {1, 4});
    ProcessElementsInplace2D(one, 1, 2, dst, {4, 1});
    EXPECT_EQ(recorder.Take(), "(0(1 Aa  Be 1)(1 Eb  Ff 1)0)(0(11)(11)0)(0(1 A  B 1)0)");
    ProcessElements3D(both, 2, 1, 2, dst, {4, 2, 1}, src + 1, {-1, 9, 4});
    EXPECT_EQ(recorder.Take(), "(0(1(2 Ab  Bf 2)1)(1(2 Ea  Fe 2)1)0)");
    ProcessElementsInplace3D(one, 2, 2, 2, dst, {4, 2, 1});
    EXPECT_EQ(recorder.Take(), "(0(1(2 A  B 2)(2 C  D 2)1)(1(2 E  F 2)(2 G  H 2)1)0)");
}

Bytes Inplace(ElementProcessorInplace<Byte> &&processor)
{
    Bytes bytes = {10, 11, 12, 13, 14, 15};
    processor.Process(bytes.data());
    return bytes;
}

template<typename S>
Bytes DstSrc(ElementProcessorDstSrc<Byte, S> &&processor, Bytes *source = nullptr)
{
    Bytes dst = {10, 11, 12, 13, 14, 15};
    Bytes src = {20, 21, 22, 23, 24, 25};
    processor.Process(dst.data(), src.data());
    if (source)
        *source = src;
    return dst;
}

TEST(ElementProcessors, MoveTheirBytesAndNoOthers)
{
    EXPECT_EQ(DstSrc(Copy_1<Byte>()), (Bytes{20, 11, 12, 13, 14, 15}));
    EXPECT_EQ(DstSrc(Copy_N<Byte>(5)), (Bytes{20, 21, 22, 23, 24, 15}));
    EXPECT_EQ(DstSrc(Copy_FlippedOrder2<Byte>()), (Bytes{21, 20, 12, 13, 14, 15}));
    EXPECT_EQ(DstSrc(Copy_FlippedOrder3<Byte>()), (Bytes{22, 21, 20, 13, 14, 15}));
    EXPECT_EQ(DstSrc(Copy_FlippedOrder4<Byte>()), (Bytes{23, 22, 21, 20, 14, 15}));
    Bytes source;
    EXPECT_EQ(DstSrc(Swap_N<Byte>(3), &source), (Bytes{20, 21, 22, 13, 14, 15}));
    EXPECT_EQ(source, (Bytes{10, 11, 12, 23, 24, 25}));

    EXPECT_EQ(Inplace(Process_FlipOrder2<Byte>()), (Bytes{11, 10, 12, 13, 14, 15}));
    EXPECT_EQ(Inplace(Process_FlipOrder3<Byte>()), (Bytes{12, 11, 10, 13, 14, 15}));
    EXPECT_EQ(Inplace(Process_FlipOrder4<Byte>()), (Bytes{13, 12, 11, 10, 14, 15}));
    EXPECT_EQ(Inplace(Process_FlipOrderN<Byte>(1)), (Bytes{10, 11, 12, 13, 14, 15}));
    EXPECT_EQ(Inplace(Process_FlipOrderN<Byte>(5)), (Bytes{14, 13, 12, 11, 10, 15}));
    EXPECT_EQ(Inplace(Process_Swap1<Byte>(4)), (Bytes{14, 11, 12, 13, 10, 15}));
    EXPECT_EQ(Inplace(Process_Fill1<Byte>(9)), (Bytes{9, 11, 12, 13, 14, 15}));
    EXPECT_EQ(Inplace(Process_Fill3<Byte>(9, 8, 7)), (Bytes{9, 8, 7, 13, 14, 15}));
    EXPECT_EQ(Inplace(Process_FillN<Byte>(4, 9)), (Bytes{9, 9, 9, 9, 14, 15}));

    unsigned short const word = 0xABCD;
    Byte unaligned[3] = {};
    Copy_1<unsigned short>().Process(reinterpret_cast<unsigned short *>(unaligned + 1), &word);
    EXPECT_EQ(unaligned[1] | unaligned[2] << 8, 0xABCD);
}

} // namespace
} // namespace quillmarsh
