// Output stream whose text carries a message type, and the effectors that select the type.
#ifndef QUILLMARSH_BASETOOLS_OUTPUTSTREAM_H
#define QUILLMARSH_BASETOOLS_OUTPUTSTREAM_H

#include <quillmarsh/basetools/streameffectors.h>

#include <ostream>

namespace quillmarsh
{

/// Standard output stream with a current message type.
///
/// The type is selected in the insertion chain: `out << e_error << "No device" << e_info << endl`. The derived class
/// decides what it means to the text; this class ignores it. A stream belongs to one thread at a time; see
/// SharedOutputStream for more.
class QUILLMARSH_API OutputStream : public ostream, NoCopy
{
public:
    /// Kind of a text, for the code that shows it. A program may add types of its own behind these.
    enum eOutputType : unsigned int
    {
        e_typeInfo = 0,
        e_typeWarning = 1,
        e_typeError = 2,
        e_typeAttention = 3,
        e_typeQuery = 4,
        e_typeEcho = 5,
        e_typeDebug = 6
    };

    /// The buffer is borrowed. It outlives the stream, unless the derived class removes it by `rdbuf(nullptr)`.
    explicit OutputStream(std::streambuf *buffer);
    /// Flushes. Throws nothing, even if the stream's exception mask says so.
    ~OutputStream() override;

    /// Selects the type of the text that follows. Does nothing by default.
    virtual void SetCurrentOutputType(unsigned int type);
};

/// @name Selection of a message type
/// Inserted into an OutputStream, each selects one of OutputStream::eOutputType; other streams ignore them.
/// @{
extern QUILLMARSH_API SetOutputTypeEffector const e_info;
extern QUILLMARSH_API SetOutputTypeEffector const e_warning;
extern QUILLMARSH_API SetOutputTypeEffector const e_error;
extern QUILLMARSH_API SetOutputTypeEffector const e_attention;
extern QUILLMARSH_API SetOutputTypeEffector const e_query;
extern QUILLMARSH_API SetOutputTypeEffector const e_echo;
extern QUILLMARSH_API SetOutputTypeEffector const e_debug;
/// @}

} // namespace quillmarsh

#endif
