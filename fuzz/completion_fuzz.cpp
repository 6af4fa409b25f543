// Completes half-typed lines, and checks that each candidate gives a line that can be parsed.
#include <quillmarsh/basetools/variableregistry.h>
#include <quillmarsh/framework/commands/frameworkcommands.h>
#include <quillmarsh/framework/stdcommandinterpreter.h>

#include "tests/support/test_kernel.h"

#include <cstddef>
#include <cstdint>
#include <cstdlib>

namespace
{

using namespace quillmarsh;

void Require(bool holds)
{
    if (!holds)
        std::abort();
}

/// A kernel with variables and a command for files.
class Fixture
{
public:
    Fixture()
    {
        VariableRegistry &registry = *kernel_.GetVariableRegistry();
        registry.RegisterVariable(VariableProxyRangeCheckedInt(&count_, 0, 9, "pond.count", "fish"));
        registry.RegisterVariable(VariableProxyBool(&isFrozen_, "pond.frozen"));
        registry.RegisterVariable(VariableProxyString(&name_, "pond.name", "", true));
        framework_commands::CreateAndRegisterAllCommands(interpreter, nullptr, 0, 0);
        interpreter.SetDeveloperModeActive(true);
        interpreter.RegisterAlias("go", "var pond.count");
        interpreter.RegisterAlias("fro zen", "var -info");
    }

private:
    tests::TestKernel kernel_;
    int count_ = 1;
    bool isFrozen_ = false;
    string name_ = "it's $ - big";

public:
    std_command_interpreter::Interpreter interpreter;
};

void Complete(std_command_interpreter::Interpreter const &interpreter, string const &line, std::size_t cursor)
{
    Completions const completions = interpreter.FindCompletions(line, cursor);
    Require(completions.begin <= cursor);
    string const kept = line.substr(0, completions.begin);
    string const typed = line.substr(completions.begin, cursor - completions.begin);
    Require(!completions.candidates.empty() || completions.commonReplacement == typed);
    CommandLineParser parser;
    CommandLineParser::UnfinishedWord word;
    // What all have in common can be completed further.
    Require(completions.candidates.size() < 2 || parser.ParseUnfinished(kept + completions.commonReplacement, word));
    for (CompletionCandidate const &candidate : completions.candidates)
    {
        string const completed = kept + candidate.replacement;
        Require(candidate.isWhole ? parser.Parse(completed) : parser.ParseUnfinished(completed, word));
        unsigned int const count = parser.GetNumArguments();
        // An alias may consist of several words.
        bool const isString = candidate.text != "fro zen" && candidate.isWhole && count > 0 &&
                              parser.GetArgument(count - 1) == CommandLineParser::e_string;
        Require(!isString || parser.GetArgument(count - 1).String() == candidate.text);
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const *data, std::size_t size)
{
    static Fixture s_fixture;
    string const line(reinterpret_cast<char const *>(data), size);
    Complete(s_fixture.interpreter, line, size);
    Complete(s_fixture.interpreter, line, size / 2);
    static_cast<void>(s_fixture.interpreter.FindCommandOfLine(line));
    return 0;
}
