#include <quillmarsh/basetools/serializer_parameters.h>

#include <atomic>

namespace quillmarsh::serializer_parameters
{
namespace
{

constinit std::atomic<bool> s_outputBigEndian{IsMachineBigEndian()};
constinit std::atomic<bool> s_inputBigEndian{IsMachineBigEndian()};

/// Order that the innermost sentry of the thread has set; empty while the thread holds none.
constinit thread_local std::optional<bool> s_threadOutputBigEndian;
constinit thread_local std::optional<bool> s_threadInputBigEndian;

void SetBigEndian(std::atomic<bool> &ofProcess, std::optional<bool> &ofThread, bool bigEndian)
{
    if (ofThread)
        ofThread = bigEndian;
    else
        ofProcess.store(bigEndian, std::memory_order_relaxed);
}

bool IsBigEndian(std::atomic<bool> const &ofProcess, std::optional<bool> const &ofThread)
{
    return ofThread ? *ofThread : ofProcess.load(std::memory_order_relaxed);
}

} // namespace

void SetOutputStreamByteOrder(bool bigEndian)
{
    SetBigEndian(s_outputBigEndian, s_threadOutputBigEndian, bigEndian);
}

bool IsOutputStreamByteOrderBigEndian()
{
    return IsBigEndian(s_outputBigEndian, s_threadOutputBigEndian);
}

void SetInputStreamByteOrder(bool bigEndian)
{
    SetBigEndian(s_inputBigEndian, s_threadInputBigEndian, bigEndian);
}

bool IsInputStreamByteOrderBigEndian()
{
    return IsBigEndian(s_inputBigEndian, s_threadInputBigEndian);
}

bool IsFlippingOutput()
{
    return IsOutputStreamByteOrderBigEndian() != IsMachineBigEndian();
}

bool IsFlippingInput()
{
    return IsInputStreamByteOrderBigEndian() != IsMachineBigEndian();
}

OutputStreamByteOrderSentry::OutputStreamByteOrderSentry(bool bigEndian) : savedBigEndian_(s_threadOutputBigEndian)
{
    s_threadOutputBigEndian = bigEndian;
}

OutputStreamByteOrderSentry::~OutputStreamByteOrderSentry()
{
    s_threadOutputBigEndian = savedBigEndian_;
}

InputStreamByteOrderSentry::InputStreamByteOrderSentry(bool bigEndian) : savedBigEndian_(s_threadInputBigEndian)
{
    s_threadInputBigEndian = bigEndian;
}

InputStreamByteOrderSentry::~InputStreamByteOrderSentry()
{
    s_threadInputBigEndian = savedBigEndian_;
}

} // namespace quillmarsh::serializer_parameters
