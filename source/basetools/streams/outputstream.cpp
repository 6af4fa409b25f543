#include <quillmarsh/basetools/outputstream.h>

namespace quillmarsh
{

OutputStream::OutputStream(std::streambuf *buffer) : ostream(buffer) {}

OutputStream::~OutputStream()
{
    // The mask is for the users of the stream; a destructor has no caller to throw to.
    exceptions(std::ios_base::goodbit);
    flush();
}

void OutputStream::SetCurrentOutputType(unsigned int) {}

constinit SetOutputTypeEffector const e_info(OutputStream::e_typeInfo);
constinit SetOutputTypeEffector const e_warning(OutputStream::e_typeWarning);
constinit SetOutputTypeEffector const e_error(OutputStream::e_typeError);
constinit SetOutputTypeEffector const e_attention(OutputStream::e_typeAttention);
constinit SetOutputTypeEffector const e_query(OutputStream::e_typeQuery);
constinit SetOutputTypeEffector const e_echo(OutputStream::e_typeEcho);
constinit SetOutputTypeEffector const e_debug(OutputStream::e_typeDebug);

} // namespace quillmarsh
