#include <quillmarsh/basetools/consoleoutputbuffer.h>

#include "benchmarks/support/allocation_counter.h"

#include <benchmark/benchmark.h>

namespace quillmarsh::benchmarks
{
namespace
{

/// Appends lines of 80 characters to a full buffer.
void AppendLine(benchmark::State &state)
{
    auto const limit = static_cast<unsigned int>(state.range(0));
    ConsoleOutputBuffer buffer(limit);
    string const line = string(80, 'x') + '\n';
    for (unsigned int i = 0; i < 2 * limit; ++i)
        buffer.Append(line, 0);
    RunCounted(state,
               [&]
               {
                   ConsoleOutputBufferSentry const lock(buffer);
                   buffer.Append(line, 0);
               });
    state.SetItemsProcessed(state.iterations());
}
BENCHMARK(AppendLine)->Name("consoleoutputbuffer/append")->Arg(300)->Arg(100000);

} // namespace
} // namespace quillmarsh::benchmarks
