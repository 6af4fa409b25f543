// Replaces the fuzzing engine in builds without it: runs every input of a corpus, also truncated and with changed
// bytes. The seed is fixed, so every run is the same.
#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <iterator>
#include <random>
#include <vector>

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const *data, std::size_t size);

namespace
{

using Bytes = std::vector<std::uint8_t>;

constexpr int s_numMutations = 500;

void RunOn(Bytes const &input)
{
    LLVMFuzzerTestOneInput(input.data(), input.size());
}

void RunMutations(Bytes const &input, std::mt19937 &random)
{
    for (int i = 0; i < s_numMutations; ++i)
    {
        Bytes mutated = input;
        for (std::uint32_t changes = 1 + random() % 4; changes > 0 && !mutated.empty(); --changes)
        {
            std::size_t const at = random() % mutated.size();
            switch (random() % 4)
            {
            case 0:
                mutated[at] = static_cast<std::uint8_t>(random());
                break;
            case 1:
                mutated[at] ^= static_cast<std::uint8_t>(1u << random() % 8);
                break;
            case 2:
                mutated.insert(mutated.begin() + static_cast<std::ptrdiff_t>(at), mutated[random() % mutated.size()]);
                break;
            default:
                mutated.erase(mutated.begin() + static_cast<std::ptrdiff_t>(at));
            }
        }
        RunOn(mutated);
    }
}

} // namespace

int main(int argc, char **argv)
{
    std::vector<std::filesystem::path> files;
    for (int i = 1; i < argc; ++i)
    {
        for (auto const &entry : std::filesystem::directory_iterator(argv[i]))
            files.push_back(entry.path());
    }
    std::sort(files.begin(), files.end());
    if (files.empty())
    {
        std::cerr << "The corpus is empty." << std::endl;
        return EXIT_FAILURE;
    }

    std::mt19937 random(20021);
    RunOn({});
    for (std::filesystem::path const &path : files)
    {
        std::ifstream file(path, std::ios::binary);
        Bytes const input{std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
        for (std::size_t length = 0; length <= std::min<std::size_t>(input.size(), 4096); ++length)
            RunOn(Bytes(input.begin(), input.begin() + static_cast<std::ptrdiff_t>(length)));
        RunOn(input);
        RunMutations(input, random);
    }
    return EXIT_SUCCESS;
}
