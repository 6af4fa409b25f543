#include <quillmarsh/framework/completion.h>

#include <quillmarsh/basetools/texttools.h>

#include <algorithm>

namespace quillmarsh
{

namespace
{

/// Candidates that are shown with descriptions.
constexpr std::size_t s_maxDescribed = 40;
/// Candidates that are shown at all.
constexpr std::size_t s_maxShown = 400;

bool BeginsCharacter(char byte)
{
    return (static_cast<unsigned char>(byte) & 0xC0) != 0x80;
}

std::size_t CountCharacters(string const &text)
{
    return static_cast<std::size_t>(std::count_if(text.begin(), text.end(), BeginsCharacter));
}

string CutToLength(string const &text, std::size_t length)
{
    std::size_t end = 0;
    for (std::size_t count = 0; end < text.size(); ++end)
    {
        if (BeginsCharacter(text[end]) && count++ == length)
            break;
    }
    return text.substr(0, end);
}

string FormatDescribed(CompletionCandidate const &candidate, std::size_t width, std::size_t columns, bool coloured)
{
    std::size_t const begin = width + 2;
    if (candidate.description.empty() || begin >= columns)
        return candidate.text + '\n';
    string const description = CutToLength(candidate.description, columns - begin);
    return candidate.text + string(begin - CountCharacters(candidate.text), ' ') +
           (coloured ? "\033[2m" + description + "\033[0m" : description) + '\n';
}

} // namespace

string FormatCandidates(std::vector<CompletionCandidate> const &candidates, std::size_t columns, bool coloured)
{
    std::size_t const numShown = std::min(candidates.size(), s_maxShown);
    std::size_t width = 0;
    for (std::size_t i = 0; i < numShown; ++i)
        width = std::max(width, CountCharacters(candidates[i].text));

    string text;
    if (candidates.size() <= s_maxDescribed &&
        std::any_of(candidates.begin(), candidates.end(),
                    [](CompletionCandidate const &candidate) { return !candidate.description.empty(); }))
    {
        for (CompletionCandidate const &candidate : candidates)
            text += FormatDescribed(candidate, width, columns, coloured);
        return text;
    }
    std::size_t const perLine = std::max<std::size_t>(1, (columns + 1) / (width + 2));
    for (std::size_t i = 0; i < numShown; ++i)
    {
        bool const endsLine = i % perLine + 1 == perLine || i + 1 == numShown;
        text += candidates[i].text;
        text += endsLine ? "\n" : string(width + 2 - CountCharacters(candidates[i].text), ' ');
    }
    if (numShown < candidates.size())
        text += "and " + MakeString(static_cast<unsigned int>(candidates.size() - numShown)) + " more\n";
    return text;
}

} // namespace quillmarsh
