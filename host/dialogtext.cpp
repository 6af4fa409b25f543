#include "dialogtext.h"

#include <quillmarsh/basetools/texttools.h>

#include <iterator>
#include <span>

namespace quillmarsh::host
{

namespace
{

using platform::DialogRequest;
using platform::eDialogAnswer;
using platform::eDialogButtons;

struct AnswerKey
{
    eDialogAnswer answer;
    char const *name;
    char const *choice;
};

constexpr AnswerKey s_answers[] = {
    {eDialogAnswer::e_ok, "OK", "[O]K"},
    {eDialogAnswer::e_cancel, "Cancel", "[C]ancel"},
    {eDialogAnswer::e_abort, "Abort", "[A]bort"},
    {eDialogAnswer::e_retry, "Retry", "[R]etry"},
    {eDialogAnswer::e_ignore, "Ignore", "[I]gnore"},
};

std::span<AnswerKey const> GetAnswers(eDialogButtons buttons)
{
    std::span<AnswerKey const> const all(s_answers);
    switch (buttons)
    {
    case eDialogButtons::e_ok:
        return all.subspan(0, 1);
    case eDialogButtons::e_cancelOk:
        return all.subspan(0, 2);
    case eDialogButtons::e_abortRetryIgnore:
        break;
    }
    return all.subspan(2, 3);
}

} // namespace

char const *GetAnswerName(eDialogAnswer answer)
{
    return s_answers[static_cast<unsigned int>(answer)].name;
}

string FormatDialog(DialogRequest const &request)
{
    return MakePrintable(request.title) + '\n' + MakePrintable(request.text, true) + '\n' + FormatQuestion(request);
}

string FormatQuestion(DialogRequest const &request)
{
    string text;
    for (AnswerKey const &answer : GetAnswers(request.buttons))
        text += string(answer.choice) + ", ";
    return text + "or Enter for " + GetAnswerName(request.defaultAnswer) + "? ";
}

std::optional<eDialogAnswer> FindDialogAnswer(DialogRequest const &request, string const &typed)
{
    if (typed.empty())
        return request.defaultAnswer;
    string lower = typed;
    LowerCase(lower);
    for (AnswerKey const &answer : GetAnswers(request.buttons))
    {
        string name = answer.name;
        LowerCase(name);
        if (MatchPrefix(name, lower))
            return answer.answer;
    }
    return std::nullopt;
}

} // namespace quillmarsh::host
