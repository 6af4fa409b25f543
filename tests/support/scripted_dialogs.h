// Scripted answers to the library's dialogs, and checks for unexpected dialogs.
#ifndef QUILLMARSH_TESTS_SUPPORT_SCRIPTED_DIALOGS_H
#define QUILLMARSH_TESTS_SUPPORT_SCRIPTED_DIALOGS_H

#include <quillmarsh/platform/dialogs.h>

#include <gtest/gtest.h>

#include <deque>
#include <functional>
#include <initializer_list>
#include <mutex>
#include <utility>
#include <vector>

namespace quillmarsh::tests
{

/// Answers the dialogs while it exists. After the last scripted answer, it answers Ignore.
///
/// A test takes the shown dialogs by TakeTexts() or TakeRequests(); a dialog that it does not take fails the test.
/// Without such an object, every dialog fails its test (see main.cpp of this folder).
class ScriptedDialogs : public platform::DialogPresenter, NoCopy
{
public:
    explicit ScriptedDialogs(std::initializer_list<platform::eDialogAnswer> answers = {})
        : answers_(answers),
          previous_(platform::SetDialogPresenter(this))
    {
    }

    /// Gives every dialog the same answer. With Retry, an assertion shows its dialog each time that it fails, not only
    /// once.
    explicit ScriptedDialogs(platform::eDialogAnswer every) : ScriptedDialogs() { every_ = every; }

    ~ScriptedDialogs() override
    {
        platform::SetDialogPresenter(previous_);
        for (platform::DialogRequest const &request : requests_)
            ADD_FAILURE() << "Unexpected dialog: " << request.title << '\n' << request.text;
    }

    platform::eDialogAnswer Present(platform::DialogRequest const &request) override
    {
        std::lock_guard const lock(mutex_);
        requests_.push_back(request);
        if (answers_.empty())
            return every_;
        platform::eDialogAnswer const answer = answers_.front();
        answers_.pop_front();
        return answer;
    }

    /// Returns the dialogs since the last call.
    std::vector<platform::DialogRequest> TakeRequests()
    {
        std::lock_guard const lock(mutex_);
        return std::exchange(requests_, {});
    }

    /// Returns the messages of the assertions since the last call: the text after "! ".
    std::vector<string> TakeTexts()
    {
        std::vector<string> texts;
        for (platform::DialogRequest const &request : TakeRequests())
        {
            std::size_t const mark = request.text.find("\n! ");
            texts.push_back(mark == string::npos ? request.text : request.text.substr(mark + 3));
        }
        return texts;
    }

private:
    std::mutex mutex_;
    std::deque<platform::eDialogAnswer> answers_;
    std::vector<platform::DialogRequest> requests_;
    platform::DialogPresenter *previous_;
    platform::eDialogAnswer every_ = platform::eDialogAnswer::e_ignore;
};

/// Passes the texts of dialogs to a function while it exists, and answers Ignore.
class HandledDialogs : public platform::DialogPresenter, NoCopy
{
public:
    explicit HandledDialogs(std::function<void(string const &)> handle)
        : handle_(std::move(handle)),
          previous_(platform::SetDialogPresenter(this))
    {
    }
    ~HandledDialogs() override { platform::SetDialogPresenter(previous_); }

    platform::eDialogAnswer Present(platform::DialogRequest const &request) override
    {
        handle_(request.text);
        return platform::eDialogAnswer::e_ignore;
    }

private:
    std::function<void(string const &)> handle_;
    platform::DialogPresenter *previous_;
};

/// Returns the text of the dialog that an action raises. An exception leaves the dialog, because the action cannot
/// continue after it.
string TextOfLastDialog(auto const &action)
{
    HandledDialogs const dialogs([](string const &text) { throw text; });
    try
    {
        action();
    }
    catch (string const &text)
    {
        return text;
    }
    return "";
}

} // namespace quillmarsh::tests

#endif
