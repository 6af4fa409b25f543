// Messages of thrown exceptions, for tests of messages.
#ifndef QUILLMARSH_TESTS_SUPPORT_FAILURES_H
#define QUILLMARSH_TESTS_SUPPORT_FAILURES_H

#include <quillmarsh/basetools/exception.h>

#include <gtest/gtest.h>

namespace quillmarsh::tests
{

/// Returns the message of the exception of this class that the action throws; empty when it throws none. Also checks
/// the source file that the exception names, when one is given.
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
