// Layout of a dump of the profiler's statistics.
#ifndef QUILLMARSH_BASETOOLS_PROFILERDUMPDESC_H
#define QUILLMARSH_BASETOOLS_PROFILERDUMPDESC_H

#include <quillmarsh/platform/types.h>

#include <vector>

namespace quillmarsh
{

/// Layout of the table that Profiler::DumpStatistics() prints. After a change of other members, ConstructHeaderLines()
/// adapts the header lines.
struct QUILLMARSH_API ProfilerDumpDesc
{
    /// Sets the defaults, and builds the header lines for them.
    ProfilerDumpDesc();

    /// Builds the two header lines of the columns that are shown.
    void ConstructHeaderLines();

    std::vector<string> headerLines;
    string linePrefix = " ";
    string groupSeparator = " | ";
    string columnSeparator = "  ";
    unsigned int indentPerDepth = 2;
    /// Number of lines with the same output type, before lines with the other type follow; 0 for no such bands.
    unsigned int linesPerColorBand = 3;
    bool showEntryCounts = true;
    bool showNodeTimes = true;
    bool showBranchTimes = true;
    bool showNodePercentages = true;
    unsigned int countWidth = 3;
    unsigned int timeWidth = 8;
    unsigned int timeDecimals = 6;
    unsigned int percentageWidth = 7;
    unsigned int percentageDecimals = 3;
};

} // namespace quillmarsh

#endif
