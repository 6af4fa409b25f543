#include "output.h"

#include <quillmarsh/basetools/texttools.h>
#include <quillmarsh/platform/program.h>

#include <nlohmann/json.hpp>

#include <iostream>

namespace quillmarsh::tools
{
namespace
{

bool GoesToTerminal()
{
    return platform::IsTerminal(platform::eStandardStream::e_output);
}

} // namespace

string MakeShown(string const &fileName)
{
    return GoesToTerminal() ? MakePrintable(fileName) : fileName;
}

void PrintObject(nlohmann::ordered_json const &object)
{
    // A terminal gets only ASCII. Bytes that are not UTF-8, which names of files may contain, become U+FFFD.
    std::cout << object.dump(-1, ' ', GoesToTerminal(), nlohmann::ordered_json::error_handler_t::replace) << '\n';
}

} // namespace quillmarsh::tools
