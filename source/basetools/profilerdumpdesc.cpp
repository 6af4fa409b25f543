#include <quillmarsh/basetools/profilerdumpdesc.h>

#include <quillmarsh/basetools/texttools.h>

namespace quillmarsh
{

ProfilerDumpDesc::ProfilerDumpDesc()
{
    ConstructHeaderLines();
}

void ProfilerDumpDesc::ConstructHeaderLines()
{
    struct Group
    {
        bool isShown;
        char const *title;
        unsigned int width;
    };
    Group const groups[] = {
        {showEntryCounts, "EntryCounts", countWidth},
        {showNodeTimes, "NodeTimes", timeWidth},
        {showBranchTimes, "BranchTimes", timeWidth},
        {showNodePercentages, "NodePercentages", percentageWidth},
    };
    auto const padded = [](string text, std::size_t length)
    {
        PadToLength(text, static_cast<unsigned int>(length));
        return text;
    };

    string titles(linePrefix.size(), ' ');
    string columns = linePrefix;
    for (Group const &group : groups)
    {
        if (!group.isShown)
            continue;
        titles += padded(group.title, std::size_t{3} * group.width + 2 * columnSeparator.size()) + groupSeparator;
        columns += padded("Min", group.width) + columnSeparator + padded("Avg", group.width) + columnSeparator +
                   padded("Max", group.width) + groupSeparator;
    }
    headerLines = {titles + "BlockNames", columns};
}

} // namespace quillmarsh
