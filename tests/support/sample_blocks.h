// Containers of samples for tests: random or given bytes, and comparisons.
#ifndef QUILLMARSH_TESTS_SUPPORT_SAMPLE_BLOCKS_H
#define QUILLMARSH_TESTS_SUPPORT_SAMPLE_BLOCKS_H

#include <quillmarsh/dataobjects/imagebase.h>
#include <quillmarsh/dataobjects/volumebase.h>

#include <algorithm>
#include <random>
#include <vector>

namespace quillmarsh::tests
{

using Bytes = std::vector<unsigned char>;

inline Bytes RandomBytes(std::size_t size)
{
    static std::mt19937 s_random(7);
    Bytes bytes(size);
    std::generate(bytes.begin(), bytes.end(), [] { return static_cast<unsigned char>(s_random()); });
    return bytes;
}

inline Bytes BytesOf(SignalBase const &signal)
{
    return Bytes(signal.GetSamplesB(), signal.GetSamplesB() + signal.GetTotalByteSize());
}

struct Shape
{
    unsigned int layers, rows, columns;
    std::size_t GetCount() const { return std::size_t{layers} * rows * columns; }
};

/// Calls `work` with a target and a source in this memory: signals, images or volumes.
inline void WorkOnBlocks(unsigned int numDimensions, eSampleFormat format, unsigned char *dst, Shape const &to,
                         unsigned char *src, Shape const &from, auto const &work)
{
    if (numDimensions == 1)
    {
        SignalBaseFromExternalStorageAdapter d(format), s(format);
        d.SetExternalStorage(dst, to.columns);
        s.SetExternalStorage(src, from.columns);
        work(d, s);
    }
    else if (numDimensions == 2)
    {
        ImageBaseFromExternalStorageAdapter d(format), s(format);
        d.SetExternalStorage(dst, to.rows, to.columns);
        s.SetExternalStorage(src, from.rows, from.columns);
        work(d, s);
    }
    else
    {
        VolumeBaseFromExternalStorageAdapter d(format), s(format);
        d.SetExternalStorage(dst, to.layers, to.rows, to.columns);
        s.SetExternalStorage(src, from.layers, from.rows, from.columns);
        work(d, s);
    }
}

/// Fills a container with bytes that count up from `first`.
template<typename Container>
Container &CountUp(Container &container, unsigned int first = 0)
{
    for (unsigned int i = 0; i < container.GetTotalByteSize(); ++i)
        container.GetSamplesB()[i] = static_cast<unsigned char>(first + i);
    return container;
}

} // namespace quillmarsh::tests

#endif
