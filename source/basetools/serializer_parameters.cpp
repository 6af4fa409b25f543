#include <quillmarsh/basetools/serializer_parameters.h>

namespace quillmarsh::serializer_parameters
{
namespace
{

bool s_outputBigEndian = IsMachineBigEndian();
bool s_inputBigEndian = IsMachineBigEndian();
bool s_flipOutput = false;
bool s_flipInput = false;

} // namespace

void SetOutputStreamByteOrder(bool bigEndian)
{
    s_outputBigEndian = bigEndian;
    s_flipOutput = bigEndian != IsMachineBigEndian();
}

bool IsOutputStreamByteOrderBigEndian()
{
    return s_outputBigEndian;
}

void SetInputStreamByteOrder(bool bigEndian)
{
    s_inputBigEndian = bigEndian;
    s_flipInput = bigEndian != IsMachineBigEndian();
}

bool IsInputStreamByteOrderBigEndian()
{
    return s_inputBigEndian;
}

bool IsFlippingOutput()
{
    return s_flipOutput;
}

bool IsFlippingInput()
{
    return s_flipInput;
}

OutputStreamByteOrderSentry::OutputStreamByteOrderSentry(bool bigEndian)
    : savedBigEndian_(IsOutputStreamByteOrderBigEndian())
{
    SetOutputStreamByteOrder(bigEndian);
}

OutputStreamByteOrderSentry::~OutputStreamByteOrderSentry()
{
    SetOutputStreamByteOrder(savedBigEndian_);
}

InputStreamByteOrderSentry::InputStreamByteOrderSentry(bool bigEndian)
    : savedBigEndian_(IsInputStreamByteOrderBigEndian())
{
    SetInputStreamByteOrder(bigEndian);
}

InputStreamByteOrderSentry::~InputStreamByteOrderSentry()
{
    SetInputStreamByteOrder(savedBigEndian_);
}

} // namespace quillmarsh::serializer_parameters
