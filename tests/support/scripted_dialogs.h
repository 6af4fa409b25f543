// Scripted answers to the library's dialogs, and a count of those that a test expects.
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

/// Answers the dialogs that come while it lives. Answers run out to Ignore.
///
/// A test takes what was shown by TakeTexts() or TakeRequests(); a dialog that it does not take is a failure of the
/// test. Outside such an object every dialog fails the test that raised it (see main.cpp of this folder).
class ScriptedDialogs : public platform::DialogPresenter, NoCopy
{
public:
    explicit ScriptedDialogs(std::initializer_list<platform::eDialogAnswer> answers = {})
        : answers_(answers),
          previous_(platform::SetDialogPresenter(this))
    {
    }

    /// Answers every dialog alike. With Retry an assertion shows again each time that it fails, in place of once.
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

    /// What was shown since the last call.
    std::vector<platform::DialogRequest> TakeRequests()
    {
        std::lock_guard const lock(mutex_);
        return std::exchange(requests_, {});
    }

    /// The messages of the assertions shown since the last call: what stands behind "! ".
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

/// Hands the texts of the dialogs that come while it lives to a function, and ignores them.
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

/// Text of the dialog that an action runs into, which is left by an exception: there is nothing to go on with.
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
