// What a dump of the profiler's statistics shows, and how.
#ifndef QUILLMARSH_BASETOOLS_PROFILERDUMPDESC_H
#define QUILLMARSH_BASETOOLS_PROFILERDUMPDESC_H

#include <quillmarsh/platform/types.h>

#include <vector>

namespace quillmarsh
{

/// Layout of the table that Profiler::DumpStatistics prints. The header lines follow the other members only when
/// ConstructHeaderLines() is called.
struct QUILLMARSH_API ProfilerDumpDesc
{
    ProfilerDumpDesc();

    /// Builds the two header lines of the columns that are shown.
    void ConstructHeaderLines();

    std::vector<string> headerLines;
    string linePrefix = " ";
    string groupSeparator = " | ";
    string columnSeparator = "  ";
    unsigned int indentPerDepth = 2;
    /// Number of lines of one output type, before the other follows; 0 for no bands.
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
