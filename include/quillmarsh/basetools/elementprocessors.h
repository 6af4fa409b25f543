// Function objects on the elements of strided arrays, and the loops that drive them over one, two or three dimensions.
#ifndef QUILLMARSH_BASETOOLS_ELEMENTPROCESSORS_H
#define QUILLMARSH_BASETOOLS_ELEMENTPROCESSORS_H

#include <quillmarsh/basetools/diagnostics.h>

#include <cstddef>
#include <cstring>
#include <type_traits>
#include <utility>

namespace quillmarsh
{

/// Processors are small objects on the stack of one thread. They know nothing of containers: the caller of a loop gives
/// it pointers and strides in bytes. The element type is a unit of addressing only. The stride alone decides where the
/// next element lies, so elements need no alignment.
namespace element_processors
{

/// Works on one destination element and one source element at a time. All operations do nothing here.
template<typename D, typename S>
class ElementProcessorDstSrc
{
public:
    /// Called before each traversal of a dimension; 0 is the outermost.
    virtual void BeginDimension(unsigned int dimension);
    /// Called for each pair of elements.
    virtual void Process(D *dst, S *src);
    /// Called after each traversal of a dimension.
    virtual void EndDimension(unsigned int dimension);

protected:
    ~ElementProcessorDstSrc() = default;
};

/// Works on one element at a time, in place. All operations do nothing here.
template<typename T>
class ElementProcessorInplace
{
public:
    /// Called before each traversal of a dimension; 0 is the outermost.
    virtual void BeginDimension(unsigned int dimension);
    /// Called for each element.
    virtual void Process(T *element);
    /// Called after each traversal of a dimension.
    virtual void EndDimension(unsigned int dimension);

protected:
    ~ElementProcessorInplace() = default;
};

template<typename D, typename S>
void ElementProcessorDstSrc<D, S>::BeginDimension(unsigned int)
{
}

template<typename D, typename S>
void ElementProcessorDstSrc<D, S>::Process(D *, S *)
{
}

template<typename D, typename S>
void ElementProcessorDstSrc<D, S>::EndDimension(unsigned int)
{
}

template<typename T>
void ElementProcessorInplace<T>::BeginDimension(unsigned int)
{
}

template<typename T>
void ElementProcessorInplace<T>::Process(T *)
{
}

template<typename T>
void ElementProcessorInplace<T>::EndDimension(unsigned int)
{
}

/// A byte, constant if the element is constant.
template<typename T>
using ByteOf = std::conditional_t<std::is_const_v<T>, unsigned char const, unsigned char>;

/// Reads an element from memory of any alignment.
template<typename T>
std::remove_const_t<T> LoadElement(T *element)
{
    std::remove_const_t<T> value;
    std::memcpy(&value, static_cast<void const *>(element), sizeof value);
    return value;
}

/// Writes an element to memory of any alignment.
template<typename T>
void StoreElement(T *element, T value)
{
    std::memcpy(static_cast<void *>(element), &value, sizeof value);
}

/// Steps of an array with two or three dimensions, in bytes and outermost first. They may be negative.
struct Strides2D
{
    std::ptrdiff_t outer; ///< from row to row
    std::ptrdiff_t inner; ///< from column to column
};

/// The same with three dimensions.
struct Strides3D
{
    std::ptrdiff_t outer;  ///< from layer to layer
    std::ptrdiff_t middle; ///< from row to row
    std::ptrdiff_t inner;  ///< from column to column
};

/// Parts of the loops.
namespace loops
{

/// Traverses one dimension, and calls `step` with the address of each of its elements.
template<typename Processor, typename Step>
void Traverse(Processor &processor, unsigned int dimension, std::size_t count, unsigned char *dst,
              std::ptrdiff_t dstStride, Step step)
{
    unsigned char *const end = dst + static_cast<std::ptrdiff_t>(count) * dstStride;
    processor.BeginDimension(dimension);
    for (; dst != end; dst += dstStride)
        step(dst);
    processor.EndDimension(dimension);
}

} // namespace loops

/// @name Loops
/// BeginDimension() and EndDimension() of the processor are called around every traversal of a dimension, also around
/// one without elements. A loop ends when its destination reaches the end, so strides may be negative. All loops assert
/// "Invalid argument." for a pointer that is null, and process nothing then.
/// @{

template<typename T>
void ProcessElementsInplace(ElementProcessorInplace<T> &processor, std::size_t count, unsigned char *element,
                            std::ptrdiff_t stride, unsigned int dimension = 0)
{
    QUILLMARSH_ASSERT(element, "Invalid argument.");
    if (element == nullptr)
        count = 0;
    loops::Traverse(processor, dimension, count, element, stride,
                    [&](unsigned char *at) { processor.Process(reinterpret_cast<T *>(at)); });
}

template<typename D, typename S>
void ProcessElements(ElementProcessorDstSrc<D, S> &processor, std::size_t count, unsigned char *dst,
                     std::ptrdiff_t dstStride, ByteOf<S> *src, std::ptrdiff_t srcStride, unsigned int dimension = 0)
{
    QUILLMARSH_ASSERT(dst && src, "Invalid argument.");
    if (dst == nullptr || src == nullptr)
        count = 0;
    loops::Traverse(processor, dimension, count, dst, dstStride,
                    [&](unsigned char *at)
                    {
                        processor.Process(reinterpret_cast<D *>(at), reinterpret_cast<S *>(src));
                        src += srcStride;
                    });
}

template<typename T>
void ProcessElementsInplace2D(ElementProcessorInplace<T> &processor, std::size_t outerCount, std::size_t innerCount,
                              unsigned char *element, Strides2D strides, unsigned int dimension = 0)
{
    QUILLMARSH_ASSERT(element, "Invalid argument.");
    if (element == nullptr)
        outerCount = 0;
    loops::Traverse(processor, dimension, outerCount, element, strides.outer,
                    [&](unsigned char *at)
                    { ProcessElementsInplace(processor, innerCount, at, strides.inner, dimension + 1); });
}

template<typename D, typename S>
void ProcessElements2D(ElementProcessorDstSrc<D, S> &processor, std::size_t outerCount, std::size_t innerCount,
                       unsigned char *dst, Strides2D dstStrides, ByteOf<S> *src, Strides2D srcStrides,
                       unsigned int dimension = 0)
{
    QUILLMARSH_ASSERT(dst && src, "Invalid argument.");
    if (dst == nullptr || src == nullptr)
        outerCount = 0;
    loops::Traverse(processor, dimension, outerCount, dst, dstStrides.outer,
                    [&](unsigned char *at)
                    {
                        ProcessElements(processor, innerCount, at, dstStrides.inner, src, srcStrides.inner,
                                        dimension + 1);
                        src += srcStrides.outer;
                    });
}

template<typename T>
void ProcessElementsInplace3D(ElementProcessorInplace<T> &processor, std::size_t outerCount, std::size_t middleCount,
                              std::size_t innerCount, unsigned char *element, Strides3D strides)
{
    QUILLMARSH_ASSERT(element, "Invalid argument.");
    if (element == nullptr)
        outerCount = 0;
    loops::Traverse(
        processor, 0, outerCount, element, strides.outer,
        [&](unsigned char *at) {
            ProcessElementsInplace2D(processor, middleCount, innerCount, at, {strides.middle, strides.inner}, 1);
        });
}

template<typename D, typename S>
void ProcessElements3D(ElementProcessorDstSrc<D, S> &processor, std::size_t outerCount, std::size_t middleCount,
                       std::size_t innerCount, unsigned char *dst, Strides3D dstStrides, ByteOf<S> *src,
                       Strides3D srcStrides)
{
    QUILLMARSH_ASSERT(dst && src, "Invalid argument.");
    if (dst == nullptr || src == nullptr)
        outerCount = 0;
    loops::Traverse(processor, 0, outerCount, dst, dstStrides.outer,
                    [&](unsigned char *at)
                    {
                        ProcessElements2D(processor, middleCount, innerCount, at, {dstStrides.middle, dstStrides.inner},
                                          src, {srcStrides.middle, srcStrides.inner}, 1);
                        src += srcStrides.outer;
                    });
}
/// @}

/// @name Copies and swaps between two elements
/// @{

/// Copies one element.
template<typename T>
class Copy_1 final : public ElementProcessorDstSrc<T, T const>
{
public:
    void Process(T *dst, T const *src) override { StoreElement(dst, LoadElement(src)); }
};

/// Copies n units.
template<typename T>
class Copy_N final : public ElementProcessorDstSrc<T, T const>
{
public:
    /// Copies `n` units.
    explicit Copy_N(unsigned int n) : n_(n) {}
    void Process(T *dst, T const *src) override
    {
        for (unsigned int i = 0; i < n_; ++i)
            dst[i] = src[i];
    }

private:
    unsigned int n_;
};

/// Exchanges n units, one by one.
template<typename T>
class Swap_N final : public ElementProcessorDstSrc<T, T>
{
public:
    /// Exchanges `n` units.
    explicit Swap_N(unsigned int n) : n_(n) {}
    void Process(T *dst, T *src) override
    {
        for (unsigned int i = 0; i < n_; ++i)
            std::swap(dst[i], src[i]);
    }

private:
    unsigned int n_;
};

/// Copies a number of units in reversed order.
template<typename T, unsigned int n>
class Copy_FlippedOrder final : public ElementProcessorDstSrc<T, T const>
{
public:
    void Process(T *dst, T const *src) override
    {
        for (unsigned int i = 0; i < n; ++i)
            dst[i] = src[n - 1 - i];
    }
};
template<typename T>
using Copy_FlippedOrder2 = Copy_FlippedOrder<T, 2>; ///< copies two units, reversed
template<typename T>
using Copy_FlippedOrder3 = Copy_FlippedOrder<T, 3>; ///< copies three units, reversed
template<typename T>
using Copy_FlippedOrder4 = Copy_FlippedOrder<T, 4>; ///< copies four units, reversed
/// @}

/// @name Work in place
/// @{

/// Reverses the order of a number of units.
template<typename T, unsigned int n>
class Process_FlipOrder final : public ElementProcessorInplace<T>
{
public:
    void Process(T *element) override
    {
        for (unsigned int i = 0; i < n / 2; ++i)
            std::swap(element[i], element[n - 1 - i]);
    }
};
template<typename T>
using Process_FlipOrder2 = Process_FlipOrder<T, 2>; ///< reverses two units
template<typename T>
using Process_FlipOrder3 = Process_FlipOrder<T, 3>; ///< reverses three units
template<typename T>
using Process_FlipOrder4 = Process_FlipOrder<T, 4>; ///< reverses four units

/// Reverses the order of n units.
template<typename T>
class Process_FlipOrderN final : public ElementProcessorInplace<T>
{
public:
    /// Reverses `n` units.
    explicit Process_FlipOrderN(unsigned int n) : n_(n) {}
    void Process(T *element) override
    {
        for (unsigned int i = 0; i < n_ / 2; ++i)
            std::swap(element[i], element[n_ - 1 - i]);
    }

private:
    unsigned int n_;
};

/// Exchanges the element with the one at an offset from it.
template<typename T>
class Process_Swap1 final : public ElementProcessorInplace<T>
{
public:
    /// `offset` is in units from the element.
    explicit Process_Swap1(unsigned int offset) : offset_(offset) {}
    void Process(T *element) override { std::swap(element[0], element[offset_]); }

private:
    unsigned int offset_;
};

/// Sets one unit.
template<typename T>
class Process_Fill1 final : public ElementProcessorInplace<T>
{
public:
    /// Sets this value.
    explicit Process_Fill1(T value) : value_(value) {}
    void Process(T *element) override { element[0] = value_; }

private:
    T value_;
};

/// Sets three units.
template<typename T>
class Process_Fill3 final : public ElementProcessorInplace<T>
{
public:
    /// Sets these values, in this order.
    Process_Fill3(T b0, T b1, T b2) : values_{b0, b1, b2} {}
    void Process(T *element) override
    {
        for (unsigned int i = 0; i < 3; ++i)
            element[i] = values_[i];
    }

private:
    T values_[3];
};

/// Sets n units to one value.
template<typename T>
class Process_FillN final : public ElementProcessorInplace<T>
{
public:
    /// Sets `n` units to `value`.
    Process_FillN(unsigned int n, T value) : n_(n), value_(value) {}
    void Process(T *element) override
    {
        for (unsigned int i = 0; i < n_; ++i)
            element[i] = value_;
    }

private:
    unsigned int n_;
    T value_;
};
/// @}

/// @name Thresholds
/// @{

/// Replaces values below a threshold and values equal to it; others stay.
template<typename T>
class Process_HighPassFilter final : public ElementProcessorInplace<T>
{
public:
    /// Takes the threshold and the two replacements.
    Process_HighPassFilter(T threshold, T onEqual, T onBelow)
        : threshold_(threshold),
          onEqual_(onEqual),
          onBelow_(onBelow)
    {
    }
    void Process(T *element) override
    {
        T const value = *element;
        *element = value < threshold_ ? onBelow_ : value == threshold_ ? onEqual_ : value;
    }

private:
    T threshold_, onEqual_, onBelow_;
};

/// Replaces values above a threshold and values equal to it; others stay.
template<typename T>
class Process_LowPassFilter final : public ElementProcessorInplace<T>
{
public:
    /// Takes the threshold and the two replacements.
    Process_LowPassFilter(T threshold, T onEqual, T onAbove)
        : threshold_(threshold),
          onEqual_(onEqual),
          onAbove_(onAbove)
    {
    }
    void Process(T *element) override
    {
        T const value = *element;
        *element = value > threshold_ ? onAbove_ : value == threshold_ ? onEqual_ : value;
    }

private:
    T threshold_, onEqual_, onAbove_;
};

/// Replaces everything by one of three values: below, at, or above a threshold.
template<typename T>
class Process_ThresholdSegmentation final : public ElementProcessorInplace<T>
{
public:
    /// Takes the threshold and the three values.
    Process_ThresholdSegmentation(T threshold, T onBelow, T onEqual, T onAbove)
        : threshold_(threshold),
          onBelow_(onBelow),
          onEqual_(onEqual),
          onAbove_(onAbove)
    {
    }
    void Process(T *element) override
    {
        T const value = *element;
        *element = value < threshold_ ? onBelow_ : value == threshold_ ? onEqual_ : onAbove_;
    }

private:
    T threshold_, onBelow_, onEqual_, onAbove_;
};
/// @}

} // namespace element_processors
} // namespace quillmarsh

#endif
