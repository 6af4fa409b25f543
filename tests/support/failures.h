// What an action throws, for tests of messages.
#ifndef QUILLMARSH_TESTS_SUPPORT_FAILURES_H
#define QUILLMARSH_TESTS_SUPPORT_FAILURES_H

#include <quillmarsh/basetools/exception.h>

namespace quillmarsh::tests
{

/// Message of the exception of the class that the action throws, with empty text when it throws none.
template<typename Failure>
string MessageOf(auto const &action)
{
    try
    {
        action();
    }
    catch (Failure const &failure)
    {
        return failure.GetMessage();
    }
    return "";
}

} // namespace quillmarsh::tests

#endif
