#include <quillmarsh/dataobjects/codecfailure.h>

#include <utility>

namespace quillmarsh
{
namespace
{

constinit thread_local CodecFailure *s_innermost = nullptr;

} // namespace

CodecFailureSentry::CodecFailureSentry() : outer_(std::exchange(s_innermost, &failure_)) {}

CodecFailureSentry::~CodecFailureSentry()
{
    s_innermost = outer_;
}

string CodecFailureSentry::GetText() const
{
    return failure_ ? failure_.text : "failed without a reason";
}

void TellCodecFailure(eCodecFailure kind, string const &text)
{
    if (s_innermost)
        *s_innermost = {kind, text};
}

} // namespace quillmarsh
