#include "source/platform/linux/terminaldialog.h"
#include "source/platform/linux/endsignals.h"

#include <quillmarsh/basetools/texttools.h>

#include <cerrno>
#include <fcntl.h>
#include <iostream>
#include <iterator>
#include <poll.h>
#include <sys/eventfd.h>
#include <termios.h>
#include <unistd.h>

namespace quillmarsh::platform
{
namespace
{

constexpr DialogButton s_ok[] = {{eDialogAnswer::e_ok, "OK"}};
constexpr DialogButton s_cancelOk[] = {{eDialogAnswer::e_ok, "OK"}, {eDialogAnswer::e_cancel, "Cancel"}};
constexpr DialogButton s_abortRetryIgnore[] = {
    {eDialogAnswer::e_abort, "Abort"}, {eDialogAnswer::e_retry, "Retry"}, {eDialogAnswer::e_ignore, "Ignore"}};

constexpr char s_endOfInput = '\x04';

/// The program's terminal. It cannot be used in the background, where reading would stop the program.
class Terminal : NoCopy
{
public:
    Terminal() : descriptor_(open("/dev/tty", O_RDWR | O_CLOEXEC | O_NOCTTY))
    {
        if (descriptor_ < 0 && isatty(STDIN_FILENO))
            descriptor_ = fcntl(STDIN_FILENO, F_DUPFD_CLOEXEC, 0);
        isUsable_ = descriptor_ >= 0 && tcgetpgrp(descriptor_) == getpgrp() && tcgetattr(descriptor_, &modes_) == 0;
        if (isUsable_)
            TakeOver();
    }

    ~Terminal()
    {
        if (isUsable_)
            tcsetattr(descriptor_, TCSADRAIN, &modes_);
        if (descriptor_ >= 0)
            close(descriptor_);
    }

    bool IsUsable() const { return isUsable_; }

    void Write(string const &text)
    {
        for (std::size_t at = 0; at < text.size();)
        {
            ssize_t const written = write(descriptor_, text.data() + at, text.size() - at);
            if (written < 0 && errno != EINTR)
                return;
            at += written > 0 ? static_cast<std::size_t>(written) : 0;
        }
    }

    /// Returns the next key, or the end of input. A signal that asks the program to end counts as the end of input.
    char ReadKey()
    {
        pollfd waits[] = {{descriptor_, POLLIN, 0}, {GetEndSignalDescriptor(), POLLIN, 0}};
        while (poll(waits, std::size(waits), -1) < 0 && errno == EINTR)
        {
        }
        char key = s_endOfInput;
        if (waits[1].revents != 0)
            return key;
        ssize_t count = 0;
        do
            count = read(descriptor_, &key, 1);
        while (count < 0 && errno == EINTR);
        return count == 1 ? key : s_endOfInput;
    }

    /// Discards input up to Enter, or up to a pause.
    void SkipMistake()
    {
        constexpr int pauseMilliseconds = 1000;
        pollfd wait = {descriptor_, POLLIN, 0};
        char key = 0;
        while (key != '\n' && key != s_endOfInput && poll(&wait, 1, pauseMilliseconds) > 0)
            key = ReadKey();
    }

private:
    /// Sets the terminal to single keys without echo and to complete line ends, whatever a line editor has set.
    /// Discards keys that were typed before the question.
    void TakeOver()
    {
        termios modes = modes_;
        modes.c_iflag |= ICRNL;
        modes.c_oflag |= OPOST | ONLCR;
        modes.c_lflag &= ~static_cast<tcflag_t>(ICANON | ECHO);
        modes.c_cc[VMIN] = 1;
        modes.c_cc[VTIME] = 0;
        tcsetattr(descriptor_, TCSAFLUSH, &modes);
        // A signal that came before the question was for somebody else.
        eventfd_t count = 0;
        eventfd_read(GetEndSignalDescriptor(), &count);
    }

    int descriptor_;
    bool isUsable_ = false;
    termios modes_{};
};

char LowerLetter(char c)
{
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}

DialogButton const *FindButton(DialogRequest const &request, char key)
{
    for (DialogButton const &button : GetDialogButtons(request.buttons))
    {
        bool const isDefault = button.answer == request.defaultAnswer && (key == '\n' || key == s_endOfInput);
        if (isDefault || LowerLetter(key) == LowerLetter(button.name[0]))
            return &button;
    }
    return nullptr;
}

string MakeQuestion(DialogRequest const &request)
{
    string question;
    string defaultName;
    for (DialogButton const &button : GetDialogButtons(request.buttons))
    {
        question += (question.empty() ? "[" : ", [") + string(1, button.name[0]) + "]" + (button.name + 1);
        if (button.answer == request.defaultAnswer)
            defaultName = button.name;
    }
    return question + " (Enter: " + defaultName + ")? ";
}

eDialogAnswer Ask(Terminal &terminal, DialogRequest const &request)
{
    terminal.Write(MakeQuestion(request));
    for (;;)
    {
        char const key = terminal.ReadKey();
        DialogButton const *const button = FindButton(request, key);
        if (button)
            terminal.Write(string(button->name) + "\n");
        if (button || key == s_endOfInput)
            return button ? button->answer : request.defaultAnswer;
        terminal.SkipMistake();
        terminal.Write("\n" + MakeQuestion(request));
    }
}

} // namespace

std::span<DialogButton const> GetDialogButtons(eDialogButtons buttons)
{
    switch (buttons)
    {
    case eDialogButtons::e_abortRetryIgnore:
        return s_abortRetryIgnore;
    case eDialogButtons::e_cancelOk:
        return s_cancelOk;
    default:
        return s_ok;
    }
}

eDialogAnswer PresentTerminalDialog(DialogRequest const &request)
{
    Terminal terminal;
    string const text = request.title + '\n' + request.text + '\n';
    string const printable = MakePrintable(request.title) + '\n' + MakePrintable(request.text, true) + '\n';
    bool const isErrorShown = isatty(STDERR_FILENO) != 0;
    std::cerr << (isErrorShown ? printable : text) << std::flush;
    if (!terminal.IsUsable())
        return request.defaultAnswer;
    if (!isErrorShown)
        terminal.Write(printable);
    return Ask(terminal, request);
}

} // namespace quillmarsh::platform
