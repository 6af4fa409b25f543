// Sets an environment variable for a scope.
#ifndef QUILLMARSH_TESTS_SUPPORT_ENVIRONMENT_VARIABLE_H
#define QUILLMARSH_TESTS_SUPPORT_ENVIRONMENT_VARIABLE_H

#include <quillmarsh/platform/types.h>

#include <cstdlib>

namespace quillmarsh::tests
{

/// Sets a variable, or removes it when the value is null, and restores the old state at the end of the scope.
class EnvironmentVariable : NoCopy
{
public:
    EnvironmentVariable(string const &name, char const *value) : name_(name)
    {
        char const *const before = std::getenv(name.c_str());
        wasSet_ = before != nullptr;
        before_ = wasSet_ ? before : "";
        Put(value);
    }

    ~EnvironmentVariable() { Put(wasSet_ ? before_.c_str() : nullptr); }

private:
    void Put(char const *value)
    {
#if defined(_WIN32)
        _putenv_s(name_.c_str(), value ? value : "");
#else
        value ? setenv(name_.c_str(), value, 1) : unsetenv(name_.c_str());
#endif
    }

    string name_;
    bool wasSet_;
    string before_;
};

} // namespace quillmarsh::tests

#endif
