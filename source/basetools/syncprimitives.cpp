#include <quillmarsh/basetools/syncprimitives.h>

#include <quillmarsh/basetools/texttools.h>

#include <algorithm>

namespace quillmarsh
{
namespace
{

constexpr std::size_t s_maxKernelNameLength = 260;

} // namespace

void ForceWinKernelName(string &name)
{
    if (name.size() > s_maxKernelNameLength)
        name.resize(s_maxKernelNameLength);

    std::size_t start = 0;
    for (string const prefix : {"Local\\", "Global\\", "Session\\"})
    {
        if (MatchPrefix(name, prefix))
            start = prefix.size();
    }
    std::replace(name.begin() + static_cast<std::ptrdiff_t>(start), name.end(), '\\', '/');
}

} // namespace quillmarsh
