#include <quillmarsh/framework/kernelthreadinfo.h>

#include <quillmarsh/basetools/streameffectors.h>
#include <quillmarsh/basetools/texttools.h>

#include <ostream>

namespace quillmarsh
{

void KernelThreadInfo::Dump(ostream &out, unsigned int tabs) const
{
    IndentEffector const indent(tabs);
    out << indent << "ThreadHandle.......: " << MakeString(ThreadHandle) << std::endl;
    out << indent << "ThreadID...........: " << MakeString(ThreadID) << std::endl;
    out << indent << "Priority...........: " << MakeString(Priority) << std::endl;
    out << indent << "EnablePriorityBoost: " << MakeString(EnablePriorityBoost) << std::endl;
}

} // namespace quillmarsh
