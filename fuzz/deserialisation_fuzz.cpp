// Reads any bytes as serialised values, each kind in both byte orders, and checks that complete values are written back
// unchanged.
#include <quillmarsh/basetools/serializer.h>

#include <cstdint>
#include <cstdlib>
#include <sstream>
#include <vector>

namespace
{

using namespace quillmarsh;

void Require(bool holds)
{
    if (!holds)
        std::abort();
}

template<typename T>
void ReadValue(istream &in)
{
    std::streamoff const begin = in.tellg();
    T value{};
    in >= value;
    if (in.fail())
        return;

    std::ostringstream out;
    out <= value;
    std::streamoff const end = in.tellg();
    string const written = out.str();
    Require(end - begin == static_cast<std::streamoff>(written.size()));
    string read(written.size(), '\0');
    in.seekg(begin);
    in.read(read.data(), static_cast<std::streamsize>(read.size()));
    // A bool may be any byte; an int is read in the machine's byte order only.
    if constexpr (!std::is_same_v<T, bool> && !std::is_same_v<T, int>)
        Require(read == written);
}

/// With a length beyond the end of the input, reading gives the bytes up to the end.
void ReadText(istream &in, std::size_t inputSize)
{
    ReadValue<string>(in);
    in.clear();
    string text;
    in >= text;
    Require(text.size() <= inputSize && text.capacity() <= inputSize + 128);
}

void ReadBlocks(istream &in, unsigned int blockByteSize, unsigned int numBlocks)
{
    std::vector<unsigned char> blocks(std::size_t(blockByteSize) * numBlocks);
    ReadByteBlocks(in, blocks.data(), blockByteSize, numBlocks);
    if (in.fail())
        return;
    std::stringstream back;
    WriteByteBlocks(back, blocks.data(), blockByteSize, numBlocks);
    std::vector<unsigned char> again(blocks.size());
    ReadByteBlocks(back, again.data(), blockByteSize, numBlocks);
    Require(again == blocks);
}

void ReadKind(istream &in, unsigned char kind, std::size_t inputSize)
{
    switch (kind % 13)
    {
    case 0:
        return ReadValue<unsigned char>(in);
    case 1:
        return ReadValue<char>(in);
    case 2:
        return ReadValue<bool>(in);
    case 3:
        return ReadValue<unsigned short>(in);
    case 4:
        return ReadValue<short>(in);
    case 5:
        return ReadValue<unsigned int>(in);
    case 6:
        return ReadValue<int>(in);
    case 7:
        return ReadValue<unsigned long>(in);
    case 8:
        return ReadValue<long>(in);
    case 9:
        return ReadValue<float>(in);
    case 10:
        return ReadValue<double>(in);
    case 11:
        return ReadText(in, inputSize);
    default:
        return ReadBlocks(in, kind / 13u, kind / 26u);
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const *data, std::size_t size)
{
    // A byte selects the kind of the value that follows.
    for (bool const bigEndian : {false, true})
    {
        serializer_parameters::InputStreamByteOrderSentry const input(bigEndian);
        serializer_parameters::OutputStreamByteOrderSentry const output(bigEndian);
        std::istringstream in(string(reinterpret_cast<char const *>(data), size));
        for (int kind = in.get(); kind != EOF && in.good(); kind = in.get())
            ReadKind(in, static_cast<unsigned char>(kind), size);
    }
    return 0;
}
