#include <quillmarsh/basetools/consolebuffers.h>
#include <quillmarsh/framework/stdcommandinterpreter.h>

#include "benchmarks/support/allocation_counter.h"
#include "tests/support/test_kernel.h"

#include <benchmark/benchmark.h>

namespace quillmarsh::benchmarks
{
namespace
{

class NullBuffer : public std::streambuf
{
};

class QuietCmd : public Command
{
public:
    explicit QuietCmd(string const &name) { SetDefaultName(name); }
    bool ParseAndExecute(ostream &, CommandLineParser const &, string const &) override { return true; }
    void DumpHelp(ostream &, CommandLineParser const &) override {}
};

/// Lines with commands and aliases from all parts of the registers.
void InterpretLine(benchmark::State &state)
{
    tests::TestKernel kernel;
    ConsoleBuffers buffers;
    kernel.consoleBuffers = &buffers;
    std_command_interpreter::Interpreter interpreter;
    std::vector<string> lines;
    for (int i = 0; i < 200; ++i)
    {
        string const number = std::to_string(i);
        interpreter.RegisterExternalCommand(new QuietCmd("command" + number));
        interpreter.RegisterAlias("alias" + number, "command" + number + " -quick");
        lines.push_back((i % 2 == 0 ? "command" : "alias") + number + " -mode=fast 'a name'");
    }
    NullBuffer nowhere;
    ostream out(&nowhere);
    std::size_t next = 0;
    RunCounted(state,
               [&]
               {
                   benchmark::DoNotOptimize(interpreter.InterpretCommandLine(lines[next], out));
                   next = next + 1 == lines.size() ? 0 : next + 1;
               });
    state.SetItemsProcessed(state.iterations());
}
BENCHMARK(InterpretLine)->Name("interpreter/line");

} // namespace
} // namespace quillmarsh::benchmarks
