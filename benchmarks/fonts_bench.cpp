#include <quillmarsh/dataobjects/sampletransfer.h>
#include <quillmarsh/gui/gui_fonts.h>

#include "benchmarks/support/allocation_counter.h"

#include <benchmark/benchmark.h>

namespace quillmarsh::benchmarks
{
namespace
{

/// Draws the glyphs of a sheet of 512 by 256 pixels, and measures them.
void MakeSheet(benchmark::State &state)
{
    SignalOperationsManager const operations;
    gui::FontTexture::CreationParams const params;
    for ([[maybe_unused]] auto _ : state)
        benchmark::DoNotOptimize(gui::FontTexture::CreateFontTexture(params));
}
BENCHMARK(MakeSheet)->Name("fonts/sheet/512");

/// Returns printable text in an order without a pattern.
string MakeText(std::size_t length)
{
    string text(length, ' ');
    for (std::size_t i = 0; i < length; ++i)
        text[i] = static_cast<char>('!' + i * i * 7 % 94);
    return text;
}

void MeasureText(benchmark::State &state)
{
    gui::FontTexture font(true, 512, false);
    font.SetGlyphWidths(0.5f);
    gui::Font const &base = font;
    gui::TextMetrics const metrics;
    string const text = MakeText(static_cast<std::size_t>(state.range(0)));
    RunCounted(state, [&] { benchmark::DoNotOptimize(base.CalcTextWidth(metrics, text)); });
}
BENCHMARK(MeasureText)->Name("fonts/text_width")->Arg(10000);

/// Adds up the widths of a text from a table, and nothing else.
void SumOfTable(benchmark::State &state)
{
    float table[256];
    for (float &width : table)
        width = 0.5f;
    benchmark::DoNotOptimize(table);
    string const text = MakeText(static_cast<std::size_t>(state.range(0)));
    for ([[maybe_unused]] auto _ : state)
    {
        float sum = 0;
        for (char const glyph : text)
            sum += table[static_cast<unsigned char>(glyph)];
        benchmark::DoNotOptimize(sum);
    }
}
BENCHMARK(SumOfTable)->Name("limit/table_sum")->Arg(10000);

} // namespace
} // namespace quillmarsh::benchmarks
