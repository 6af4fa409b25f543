#include "failures.h"

#include <quillmarsh/basetools/exception.h>

#include <algorithm>
#include <exception>
#include <new>

namespace viewer
{

using namespace quillmarsh;

namespace
{

string DescribeNoMemory(string const &message)
{
    return message.empty() ? "not enough memory" : "not enough memory: " + message;
}

string Describe()
{
    try
    {
        throw;
    }
    catch (NoMemoryException const &thrown)
    {
        return DescribeNoMemory(thrown.GetMessage());
    }
    catch (Exception const &thrown)
    {
        return thrown.GetMessage().empty() ? thrown.GetClassName() : thrown.GetMessage();
    }
    catch (std::bad_alloc const &)
    {
        return DescribeNoMemory("");
    }
    catch (std::exception const &thrown)
    {
        return thrown.what();
    }
    catch (...)
    {
        return "failed without a reason";
    }
}

} // namespace

string DescribeException()
{
    string line = Describe();
    std::replace(line.begin(), line.end(), '\n', ' ');
    return line;
}

} // namespace viewer
