// Parsing of a console line with eight options and assignments, compared with a parser set up for the same words.
#include <quillmarsh/basetools/commandlineparser.h>

#include "benchmarks/support/allocation_counter.h"

#include <CLI/CLI.hpp>

#include <string>
#include <vector>

namespace quillmarsh
{
namespace
{

constexpr char const *s_words[] = {"screenshot",   "--overwrite",    "--silent",     "--width=1024", "--height=768",
                                   "--format=png", "--quality=high", "--path=shots", "--verbose"};

void Parse(benchmark::State &state)
{
    CommandLineParser parser;
    parser.Parse(static_cast<int>(std::size(s_words)), const_cast<char const **>(s_words), true);
    std::string const line = parser.GetLastCommandLine();
    benchmarks::RunCounted(state,
                           [&]
                           {
                               parser.Parse(line, true);
                               benchmark::DoNotOptimize(parser.GetNumArguments());
                           });
}
BENCHMARK(Parse)->Name("commandlineparser/parse");

/// The peer. It knows all words of the line beforehand.
struct PeerParser
{
    CLI::App app;
    CLI::App *command = app.add_subcommand("screenshot");
    bool overwrite = false;
    bool silent = false;
    bool verbose = false;
    std::string width, height, format, quality, path;

    PeerParser()
    {
        command->add_flag("--overwrite", overwrite);
        command->add_flag("--silent", silent);
        command->add_flag("--verbose", verbose);
        command->add_option("--width", width);
        command->add_option("--height", height);
        command->add_option("--format", format);
        command->add_option("--quality", quality);
        command->add_option("--path", path);
    }
};

void PeerParse(benchmark::State &state)
{
    std::vector<char const *> words = {"program"};
    words.insert(words.end(), std::begin(s_words), std::end(s_words));
    PeerParser peer;
    for (auto _ : state)
    {
        peer.app.parse(static_cast<int>(words.size()), words.data());
        benchmark::DoNotOptimize(peer.path.data());
    }
}
BENCHMARK(PeerParse)->Name("peer/cli11_parse");

} // namespace
} // namespace quillmarsh
