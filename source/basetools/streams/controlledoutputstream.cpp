#include <quillmarsh/basetools/controlledoutputstream.h>

#include <algorithm>

namespace quillmarsh
{
namespace
{

/// Calls `call` with each target, and continues with the next one when a target throws. If the exception went on, it
/// would leave the stream bad, and the other targets would get no more text.
template<typename Call>
void ForEachTarget(std::vector<ostream *> const &targets, Call const &call)
{
    // By index, since a target may add or remove targets.
    for (std::size_t i = 0; i < targets.size(); ++i)
    {
        try
        {
            call(*targets[i]);
        }
        catch (...)
        {
            // The state of the target tells of the failure.
        }
    }
}

} // namespace

ControlledOutputStream::StreamBuffer::StreamBuffer(std::vector<ostream *> const &targets)
    : std::stringbuf(std::ios_base::out),
      targets_(targets)
{
}

ControlledOutputStream::StreamBuffer::~StreamBuffer() = default;

int ControlledOutputStream::StreamBuffer::sync()
{
    string const text = std::move(*this).str();
    ForEachTarget(targets_,
                  [&text](ostream &target)
                  {
                      if (!text.empty())
                          target << text;
                      target.flush();
                  });
    return 0;
}

ControlledOutputStream::ControlledOutputStream() : OutputStream(nullptr), buffer_(targets_)
{
    std::ios::rdbuf(&buffer_);
}

ControlledOutputStream::~ControlledOutputStream()
{
    exceptions(std::ios_base::goodbit);
    flush();
    // The base class flushes too, when the buffer is destroyed already.
    std::ios::rdbuf(nullptr);
}

void ControlledOutputStream::SetCurrentOutputType(unsigned int type)
{
    if (targets_.empty())
        return;
    flush();
    ForEachTarget(targets_,
                  [type](ostream &target)
                  {
                      if (auto *const typed = dynamic_cast<OutputStream *>(&target))
                          typed->SetCurrentOutputType(type);
                  });
}

void ControlledOutputStream::AddOutputTarget(ostream &target)
{
    flush();
    if (std::find(targets_.begin(), targets_.end(), &target) == targets_.end())
        targets_.push_back(&target);
}

void ControlledOutputStream::RemoveOutputTarget(ostream &target)
{
    flush();
    std::erase(targets_, &target);
}

void ControlledOutputStream::RemoveAllOutputTargets()
{
    flush();
    targets_.clear();
}

ControlledOutputStream::StreamBuffer *ControlledOutputStream::rdbuf() const
{
    return const_cast<StreamBuffer *>(&buffer_);
}

} // namespace quillmarsh
