#include "dialogtext.h"

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
    char key;
    char const *name;
    char const *choice;
};

constexpr AnswerKey s_answers[] = {
    {eDialogAnswer::e_ok, 'o', "OK", "[O]K"},
    {eDialogAnswer::e_cancel, 'c', "Cancel", "[C]ancel"},
    {eDialogAnswer::e_abort, 'a', "Abort", "[A]bort"},
    {eDialogAnswer::e_retry, 'r', "Retry", "[R]etry"},
    {eDialogAnswer::e_ignore, 'i', "Ignore", "[I]gnore"},
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
    string text = request.title + '\n' + request.text + '\n';
    for (AnswerKey const &answer : GetAnswers(request.buttons))
        text += string(answer.choice) + ", ";
    return text + "or Enter for " + GetAnswerName(request.defaultAnswer) + "? ";
}

std::optional<eDialogAnswer> FindDialogAnswer(DialogRequest const &request, char key)
{
    if (key == '\n' || key == '\r')
        return request.defaultAnswer;
    for (AnswerKey const &answer : GetAnswers(request.buttons))
    {
        if ((key | 0x20) == answer.key)
            return answer.answer;
    }
    return std::nullopt;
}

} // namespace quillmarsh::host
