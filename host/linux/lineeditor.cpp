#include "lineeditor.h"

#include "../dialogtext.h"
#include <quillmarsh/basetools/outputstream.h>
#include <quillmarsh/basetools/texttools.h>
#include <quillmarsh/host/textoutput.h>
#include <quillmarsh/platform/program.h>

#include <algorithm>
#include <cerrno>
#include <clocale>
#include <cstdio>
#include <cwchar>

#include <fcntl.h>
#include <poll.h>
#include <unistd.h>

namespace quillmarsh::host
{

namespace
{

/// Bytes of text that may be pending before writers must wait.
constexpr std::size_t s_maxPendingText = 1 << 20;

std::size_t GetWidth(wchar_t const *begin, wchar_t const *end)
{
    std::size_t width = 0;
    for (; begin != end; ++begin)
        width += static_cast<std::size_t>(std::max(wcwidth(*begin), 0));
    return width;
}

/// True when the terminal understands the common escape sequences.
bool HasCursorControl()
{
    return platform::TakesEscapeSequences(platform::eStandardStream::e_output);
}

void Put(string const &text)
{
    std::fwrite(text.data(), 1, text.size(), stdout);
    std::fflush(stdout);
}

/// Character of a terminal for the end of input; used for a closed input, too.
constexpr char s_endOfInput = '\x04';
/// Milliseconds without a key after which a mistyped answer counts as complete.
constexpr int s_mistakePause = 1000;

bool WaitForKey(int milliseconds)
{
    pollfd wait = {STDIN_FILENO, POLLIN, 0};
    int ready = 0;
    do
        ready = poll(&wait, 1, milliseconds);
    while (ready < 0 && errno == EINTR);
    return ready != 0;
}

char ReadKey()
{
    while (WaitForKey(-1))
    {
        char key = 0;
        ssize_t const got = read(STDIN_FILENO, &key, 1);
        if (got == 1)
            return key;
        if (got == 0 || (errno != EINTR && errno != EAGAIN))
            break;
    }
    return s_endOfInput;
}

bool EndsLine(char key)
{
    return key == '\n' || key == '\r' || key == s_endOfInput;
}

/// Reads an answer of a single key. Enter and the end of input give the default answer. Any other key gives nothing,
/// and the text typed with it is dropped, up to Enter or a pause.
std::optional<platform::eDialogAnswer> ReadAnswer(platform::DialogRequest const &request)
{
    char const key = ReadKey();
    std::optional<platform::eDialogAnswer> const answer =
        FindDialogAnswer(request, EndsLine(key) ? string() : string(1, key));
    while (!answer && WaitForKey(s_mistakePause) && !EndsLine(ReadKey()))
    {
    }
    return answer;
}

/// Sets a locale for characters beyond ASCII.
void PrepareLocale()
{
    if (std::setlocale(LC_CTYPE, "") == nullptr || MB_CUR_MAX == 1)
        std::setlocale(LC_CTYPE, "C.UTF-8");
}

} // namespace

std::size_t GetTerminalColumns()
{
    unsigned int const width = platform::GetTerminalWidth(platform::eStandardStream::e_output);
    return width > 0 ? width : 80;
}

LineEditor::LineEditor(ConsoleBuffers &buffers, std::function<void()> onInput, std::function<void()> onExit)
    : buffers_(buffers),
      onInput_(std::move(onInput)),
      onExit_(std::move(onExit)),
      coloured_(WantsColours() && HasCursorControl())
{
    PrepareLocale();
    tcgetattr(STDIN_FILENO, &terminalAtStart_);
    if (pipe2(wake_, O_CLOEXEC | O_NONBLOCK) != 0)
        wake_[0] = wake_[1] = -1;
    thread_ = std::thread([this] { Run(); });
}

LineEditor::~LineEditor()
{
    ChangeAndWake([this] { closing_ = true; });
    thread_.join();
    close(wake_[0]);
    close(wake_[1]);
}

// Called by other threads

void LineEditor::Wake()
{
    // A full pipe wakes the thread, too.
    static_cast<void>(!write(wake_[1], "", 1));
}

void LineEditor::BeginEditing(string const &prompt)
{
    ChangeAndWake(
        [&]
        {
            prompt_ = MakePrintable(prompt);
            mayEdit_ = true;
        });
}

void LineEditor::EndEditing()
{
    ChangeAndWake([this] { mayEdit_ = false; });
}

void LineEditor::Interrupt()
{
    ChangeAndWake([this] { work_.interrupted = true; });
}

void LineEditor::Resize()
{
    ChangeAndWake([this] { work_.resized = true; });
}

void LineEditor::Continue()
{
    ChangeAndWake([this] { work_.continued = true; });
}

void LineEditor::Write(std::string_view text, unsigned int type)
{
    string const printable = MakePrintable(string(text), true);
    {
        std::unique_lock lock(mutex_);
        condition_.wait(lock, [this] { return closing_ || work_.text.size() < s_maxPendingText; });
        AppendColoured(work_.text, printable, coloured_ ? type : OutputStream::e_typeInfo);
    }
    Wake();
}

platform::eDialogAnswer LineEditor::PresentDialog(platform::DialogRequest const &request)
{
    if (std::this_thread::get_id() == thread_.get_id())
        return AskDialog(request);
    Dialog dialog{request, request.defaultAnswer};
    ChangeAndWake([&] { work_.dialogs.push_back(&dialog); });
    std::unique_lock lock(mutex_);
    condition_.wait(lock, [&] { return dialog.answered || ended_; });
    return dialog.answer;
}

bool LineEditor::TakeHandOver(HandOver &handOver, string &text)
{
    std::lock_guard const lock(mutex_);
    if (handOver.state != HandOver::eState::e_offered)
        return false;
    handOver.state = HandOver::eState::e_taken;
    text = handOver.text;
    return true;
}

bool LineEditor::TakeLine(string &line)
{
    return TakeHandOver(line_, line);
}

void LineEditor::FinishLine()
{
    ChangeAndWake([this] { line_.state = HandOver::eState::e_done; });
}

// The editor's thread

LineEditor &LineEditor::FromEditor(EditLine *editor)
{
    LineEditor *self = nullptr;
    el_get(editor, EL_CLIENTDATA, &self);
    return *self;
}

int LineEditor::OnHistory(void *self, HistEvent *event, int operation, ...)
{
    return static_cast<LineEditor *>(self)->ServeHistory(event, operation);
}

void LineEditor::Run()
{
    editor_ = el_init("quillmarsh-host", stdin, stdout, stderr);
    if (editor_ != nullptr)
    {
        el_set(editor_, EL_CLIENTDATA, this);
        el_set(editor_, EL_SIGNAL, 0);
        el_set(editor_, EL_EDITOR, "emacs");
        el_set(
            editor_, EL_PROMPT, +[](EditLine *editor) { return FromEditor(editor).shownPrompt_.data(); });
        el_set(
            editor_, EL_GETCFN,
            +[](EditLine *editor, wchar_t *character) { return FromEditor(editor).ReadCharacter(character); });
        el_set(editor_, EL_HIST, &OnHistory, this);
        el_set(
            editor_, EL_ADDFN, "quillmarsh-complete", "Complete the command",
            +[](EditLine *editor, int) { return FromEditor(editor).Complete(); });
        el_set(editor_, EL_BIND, "^I", "quillmarsh-complete", nullptr);
        el_set(editor_, EL_BIND, "^R", "em-inc-search-prev", nullptr);
        el_source(editor_, nullptr);
    }
    while (!IsClosing())
    {
        if (editor_ != nullptr && MayEdit())
            EditOneLine();
        else
            WaitForWork();
        DoWork();
    }
    DoWork();
    if (editor_ != nullptr)
        el_end(editor_);
    ChangeAndWake([this] { ended_ = true; });
}

bool LineEditor::MayEdit()
{
    std::lock_guard const lock(mutex_);
    shownPrompt_ = prompt_;
    return mayEdit_ && !closing_ && !exitAsked_;
}

bool LineEditor::IsClosing()
{
    std::lock_guard const lock(mutex_);
    return closing_;
}

void LineEditor::WaitForWork()
{
    pollfd wait = {wake_[0], POLLIN, 0};
    poll(&wait, 1, -1);
    char drained[64];
    while (read(wake_[0], drained, sizeof(drained)) > 0)
    {
    }
}

void LineEditor::EditOneLine()
{
    DoWork();
    if (!atLineStart_)
        Put("\n");
    atLineStart_ = false;
    inEditor_ = true;
    // Before the prompt, so that the editor gets a key that is typed immediately after it appears.
    el_set(editor_, EL_PREP_TERM, 1);
    int length = 0;
    char const *const text = el_gets(editor_, &length);
    if (text != nullptr && length > 0)
    {
        inEditor_ = false;
        string line(text, static_cast<std::size_t>(length));
        if (line.ends_with('\n'))
            line.pop_back();
        atLineStart_ = true;
        HandOverAndWait(line_, line);
        return;
    }
    // The input ended, or the editor is being closed. No prompt stays behind.
    if (!atLineStart_)
        EraseEditArea();
    inEditor_ = false;
    atLineStart_ = true;
    if (MayEdit() || exitAsked_)
    {
        exitAsked_ = true;
        onExit_();
    }
}

void LineEditor::HandOverAndWait(HandOver &handOver, string const &text, std::size_t cursor)
{
    {
        std::lock_guard const lock(mutex_);
        handOver.text = text;
        handOver.cursor = cursor;
        handOver.completions = Completions();
        handOver.state = HandOver::eState::e_offered;
    }
    onInput_();
    while (true)
    {
        {
            std::lock_guard const lock(mutex_);
            // A line that was not taken before the editor closes is dropped.
            bool const dropped = closing_ || (!mayEdit_ && handOver.state == HandOver::eState::e_offered);
            if (dropped || handOver.state == HandOver::eState::e_done)
            {
                handOver.state = HandOver::eState::e_none;
                return;
            }
        }
        WaitForWork();
        DoWork();
    }
}

/// Does the work that other threads have left, while the prompt is hidden.
void LineEditor::DoWork()
{
    Work work;
    {
        std::lock_guard const lock(mutex_);
        std::swap(work, work_);
    }
    if (work.IsEmpty())
        return;
    condition_.notify_all();
    if (work.continued)
        RestoreTerminalMode();
    else if (inEditor_)
        EraseEditArea();
    if (!work.text.empty())
        ShowText(work.text);
    for (Dialog *const dialog : work.dialogs)
    {
        platform::eDialogAnswer const answer = AskDialog(dialog->request);
        {
            std::lock_guard const lock(mutex_);
            dialog->answer = answer;
            dialog->answered = true;
        }
        condition_.notify_all();
    }
    if (work.interrupted)
        HandleInterrupt();
    if (work.resized && editor_ != nullptr)
        el_resize(editor_);
    if (!inEditor_)
        return;
    if (!atLineStart_)
        Put("\n");
    atLineStart_ = false;
    el_set(editor_, EL_REFRESH);
}

/// Takes the terminal back from the shell, which has used it meanwhile, and left its cursor in a line of its own.
void LineEditor::RestoreTerminalMode()
{
    atLineStart_ = true;
    if (!inEditor_)
        return;
    el_set(editor_, EL_PREP_TERM, 0);
    el_set(editor_, EL_PREP_TERM, 1);
}

void LineEditor::ShowText(string const &text)
{
    Put(text);
    atLineStart_ = text.back() == '\n';
}

/// Erases the prompt and the typed line. The cursor is then at the start of a line.
void LineEditor::EraseEditArea()
{
    atLineStart_ = true;
    if (!HasCursorControl())
    {
        Put("\n");
        return;
    }
    LineInfoW const *const line = el_wline(editor_);
    std::size_t const ahead = shownPrompt_.size() + GetWidth(line->buffer, line->cursor);
    std::size_t const rowsAbove = ahead / GetTerminalColumns();
    string erase = "\r";
    if (rowsAbove > 0)
        erase += "\033[" + std::to_string(rowsAbove) + "A";
    Put(erase + "\033[J");
}

platform::eDialogAnswer LineEditor::AskDialog(platform::DialogRequest const &request)
{
    if (!atLineStart_)
        Put("\n");
    termios present{};
    tcgetattr(STDIN_FILENO, &present);
    termios singleKeys = present;
    singleKeys.c_lflag &= ~static_cast<tcflag_t>(ICANON | ECHO);
    // Drops keys that were typed before the question.
    tcsetattr(STDIN_FILENO, TCSAFLUSH, &singleKeys);
    Put(FormatDialog(request));
    std::optional<platform::eDialogAnswer> answer = ReadAnswer(request);
    for (; !answer; answer = ReadAnswer(request))
        Put("\n" + FormatQuestion(request));
    Put(string(GetAnswerName(*answer)) + "\n");
    atLineStart_ = true;
    // Abort ends the program at once, so the terminal is restored here.
    bool const stops = *answer == platform::eDialogAnswer::e_abort;
    tcsetattr(STDIN_FILENO, TCSADRAIN, stops ? &terminalAtStart_ : &present);
    return *answer;
}

void LineEditor::HandleInterrupt()
{
    bool isEmpty = true;
    if (inEditor_)
    {
        LineInfoW const *const line = el_wline(editor_);
        isEmpty = line->lastchar == line->buffer;
        Put(shownPrompt_);
        LineInfo const *const bytes = el_line(editor_);
        Put(MakePrintable(string(bytes->buffer, bytes->lastchar)));
        el_cursor(editor_, static_cast<int>(line->lastchar - line->cursor));
        el_deletestr(editor_, static_cast<int>(line->lastchar - line->buffer));
    }
    // Outside of the editor, the terminal itself has shown the "^C".
    Put(inEditor_ ? "^C\n" : "\n");
    atLineStart_ = true;
    if (isEmpty && interruptedBefore_)
    {
        exitAsked_ = true;
        if (!inEditor_)
            onExit_();
        return;
    }
    if (isEmpty)
        Put("Interrupt again to exit.\n");
    interruptedBefore_ = true;
}

int LineEditor::ReadCharacter(wchar_t *character)
{
    constexpr auto invalid = static_cast<std::size_t>(-1);
    std::mbstate_t state{};
    while (true)
    {
        DoWork();
        if (!MayEdit())
            return 0;
        pollfd waits[2] = {{STDIN_FILENO, POLLIN, 0}, {wake_[0], POLLIN, 0}};
        poll(waits, 2, -1);
        if (waits[1].revents != 0)
            WaitForWork();
        if (waits[0].revents == 0)
            continue;
        char byte = 0;
        ssize_t const got = read(STDIN_FILENO, &byte, 1);
        if (got == 0 || (got < 0 && errno != EINTR && errno != EAGAIN))
            return 0;
        if (got < 0)
            continue;
        interruptedBefore_ = false;
        std::size_t length = std::mbrtowc(character, &byte, 1, &state);
        if (length == invalid)
        {
            // The bytes before this one are not a character. This one may be another, or begin it.
            state = {};
            length = std::mbrtowc(character, &byte, 1, &state);
        }
        if (length <= 1)
            return 1;
        if (length == invalid)
            state = {};
    }
}

/// Answers the editor's requests for the history; index 0 is the newest entry.
int LineEditor::ServeHistory(HistEvent *event, int operation)
{
    CommandHistorySentry const lock(buffers_);
    unsigned int const count = buffers_.GetNumCommandsInHistory();
    unsigned int wanted = count;
    switch (operation)
    {
    case H_FIRST:
        wanted = 0;
        break;
    case H_LAST:
        wanted = count - 1;
        break;
    case H_NEXT:
        wanted = historyIndex_ + 1;
        break;
    case H_PREV:
        wanted = historyIndex_ - 1;
        break;
    case H_CURR:
        wanted = historyIndex_;
        break;
    default:
        break;
    }
    if (wanted >= count)
        return -1;
    historyText_ = buffers_.GetCommandFromHistory(count - 1 - wanted);
    historyIndex_ = wanted;
    event->num = static_cast<int>(count - wanted);
    event->str = historyText_.c_str();
    return 0;
}

} // namespace quillmarsh::host
