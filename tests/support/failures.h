// What an action throws, for tests of messages.
#ifndef QUILLMARSH_TESTS_SUPPORT_FAILURES_H
#define QUILLMARSH_TESTS_SUPPORT_FAILURES_H

#include <quillmarsh/basetools/exception.h>

#include <gtest/gtest.h>

namespace quillmarsh::tests
{

/// Message of the exception of the class that the action throws, with empty text when it throws none. The source file
/// that it names is held against one that is given.
template<typename Failure>
string MessageOf(auto const &action, string const &file = "")
{
    try
    {
        action();
    }
    catch (Failure const &failure)
    {
        EXPECT_TRUE(file.empty() || failure.GetFile() == file) << failure.GetFile();
        return failure.GetMessage();
    }
    return "";
}

} // namespace quillmarsh::tests

#endif
