// Output stream that feeds several other streams.
#ifndef QUILLMARSH_BASETOOLS_CONTROLLEDOUTPUTSTREAM_H
#define QUILLMARSH_BASETOOLS_CONTROLLEDOUTPUTSTREAM_H

#include <quillmarsh/basetools/outputstream.h>

#include <sstream>
#include <vector>

namespace quillmarsh
{

/// Collects text, and passes it on to each of its targets when it is flushed.
///
/// Targets are borrowed: the owner of a target removes it before it destroys it. Text that is flushed while there are
/// no targets is lost. A target that throws is passed over: the other targets get this text and all that follows, the
/// exception goes no further, and the state of the target itself tells of the failure. One thread at a time may use the
/// stream, unless its owner guards it.
class QUILLMARSH_API ControlledOutputStream : public OutputStream
{
public:
    /// Buffer that hands the collected text to the targets at each flush.
    class QUILLMARSH_API StreamBuffer : public std::stringbuf
    {
    public:
        /// `targets` belongs to the stream, and is borrowed.
        explicit StreamBuffer(std::vector<ostream *> const &targets);
        ~StreamBuffer() override;

    protected:
        /// Writes the collected text to each target in order, flushes each, and empties the buffer. Returns 0.
        int sync() override;

    private:
        std::vector<ostream *> const &targets_;
    };

    ControlledOutputStream();
    ~ControlledOutputStream() override;

    /// Flushes, so that the text so far keeps its type, and passes the new type to each target that is an OutputStream.
    /// Does nothing without targets.
    void SetCurrentOutputType(unsigned int type) override;

    /// Flushes, and adds the target unless it is there already.
    virtual void AddOutputTarget(ostream &target);
    /// Flushes, and removes the target; harmless if it was never added.
    virtual void RemoveOutputTarget(ostream &target);
    /// Flushes, and removes all targets.
    virtual void RemoveAllOutputTargets();
    /// The stream's own buffer.
    virtual StreamBuffer *rdbuf() const;

    /// The targets, in the order in which they are served.
    std::vector<ostream *> const &GetOutputTargets() const { return targets_; }

private:
    std::vector<ostream *> targets_;
    StreamBuffer buffer_;
};

} // namespace quillmarsh

#endif
