#include <quillmarsh/host/linesource.h>

namespace quillmarsh::host
{

LineSource::~LineSource() = default;

bool LineSource::IsStartScript() const
{
    return false;
}

void LineSource::Serve(std_command_interpreter::Interpreter &, ostream &) {}

} // namespace quillmarsh::host
