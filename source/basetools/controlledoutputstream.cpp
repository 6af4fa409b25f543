#include <quillmarsh/basetools/controlledoutputstream.h>

#include <algorithm>
#include <exception>

namespace quillmarsh
{

ControlledOutputStream::StreamBuffer::StreamBuffer(std::vector<ostream *> const &targets)
    : std::stringbuf(std::ios_base::out),
      targets_(targets)
{
}

ControlledOutputStream::StreamBuffer::~StreamBuffer() = default;

int ControlledOutputStream::StreamBuffer::sync()
{
    std::exception_ptr firstFailure;
    if (!targets_.empty())
    {
        string const text = std::move(*this).str();
        // By index, as a target may be one that adds or removes targets.
        for (std::size_t i = 0; i < targets_.size(); ++i)
        {
            try
            {
                if (!text.empty())
                    *targets_[i] << text;
                targets_[i]->flush();
            }
            catch (...)
            {
                if (!firstFailure)
                    firstFailure = std::current_exception();
            }
        }
    }
    else
    {
        str(string());
    }
    if (firstFailure)
        std::rethrow_exception(firstFailure);
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
    // The base class flushes too, and the buffer is gone by then.
    std::ios::rdbuf(nullptr);
}

void ControlledOutputStream::SetCurrentOutputType(unsigned int type)
{
    if (targets_.empty())
        return;
    flush();
    for (ostream *const target : targets_)
    {
        if (auto *const typed = dynamic_cast<OutputStream *>(target))
            typed->SetCurrentOutputType(type);
    }
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
