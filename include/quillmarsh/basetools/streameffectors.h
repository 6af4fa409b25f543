// Effectors: small objects that do something to a stream when they are inserted into it.
#ifndef QUILLMARSH_BASETOOLS_STREAMEFFECTORS_H
#define QUILLMARSH_BASETOOLS_STREAMEFFECTORS_H

#include <quillmarsh/platform/types.h>

#include <ostream>

namespace quillmarsh
{

/// Object that is inserted into a stream like a manipulator: `out << TabEffector(2) << "text"`.
///
/// An effector stores no stream. One object may serve several streams, and several threads as long as it is not
/// changed.
class QUILLMARSH_API OStreamEffector
{
public:
    constexpr OStreamEffector() = default;
    constexpr OStreamEffector(OStreamEffector const &) = default;
    OStreamEffector &operator=(OStreamEffector const &) = default;
    virtual ~OStreamEffector() = default;

    /// Applies the effect to the stream, and returns the stream.
    ostream &ApplyTo(ostream &out) const;

protected:
    /// Applies the effect. Fails as an insertion into the stream fails.
    virtual void DoEffect(ostream &out) const = 0;
};

/// Applies the effector; the same as OStreamEffector::ApplyTo().
QUILLMARSH_API ostream &operator<<(ostream &out, OStreamEffector const &effector);

/// Writes a fill character a number of times. A field width that is set on the stream stays for what follows.
class QUILLMARSH_API FillEffector : public OStreamEffector
{
public:
    /// Writes `count` times `fill`.
    constexpr explicit FillEffector(unsigned int count, char fill = ' ') : count_(count), fill_(fill) {}

protected:
    void DoEffect(ostream &out) const override;

private:
    unsigned int count_;
    char fill_;
};

/// Writes a number of tab characters.
class QUILLMARSH_API TabEffector : public FillEffector
{
public:
    /// Writes `count` tabs.
    constexpr explicit TabEffector(unsigned int count) : FillEffector(count, '\t') {}
};

/// Begins a line of a dump: writes a number of tab characters, and drops a field width that was left on the stream, so
/// that the label behind it has its own width.
class QUILLMARSH_API IndentEffector : public TabEffector
{
public:
    /// Writes `count` tabs.
    constexpr explicit IndentEffector(unsigned int count) : TabEffector(count) {}

protected:
    void DoEffect(ostream &out) const override;
};

/// Writes a line of `count` fill characters, and flushes. Ignores a field width that is set on the stream.
class QUILLMARSH_API SeparatorLineEffector : public OStreamEffector
{
public:
    /// Writes a line of `count` times `fill`.
    constexpr explicit SeparatorLineEffector(unsigned int count, char fill = '-') : count_(count), fill_(fill) {}

protected:
    void DoEffect(ostream &out) const override;

private:
    unsigned int count_;
    char fill_;
};

/// Writes a title between two lines of `width` fill characters, and flushes. A centred title that is as wide as the
/// lines, or wider, is not indented. Drops a field width that was left on the stream.
class QUILLMARSH_API TitleEffector : public OStreamEffector
{
public:
    /// `width` is the length of the lines, `fill` their character; `center` centres the title.
    explicit TitleEffector(string const &title, unsigned int width = 80, char fill = '-', bool center = false);
    ~TitleEffector() override;

    /// Replaces the title, so that one object can serve several headings.
    TitleEffector &operator()(string const &title);

protected:
    void DoEffect(ostream &out) const override;

private:
    string title_;
    unsigned int width_;
    char fill_;
    bool center_;
};

/// Writes a title in its line, with `fillCount` fill characters at both ends and `spacing` blanks next to the title,
/// and flushes. Drops a field width that was left on the stream.
class QUILLMARSH_API CaptionEffector : public OStreamEffector
{
public:
    /// `fillCount`, `fill` and `spacing` are as told above.
    explicit CaptionEffector(string const &title, unsigned int fillCount = 5, char fill = '-',
                             unsigned int spacing = 1);
    ~CaptionEffector() override;

    /// Replaces the title, so that one object can serve several headings.
    CaptionEffector &operator()(string const &title);

protected:
    void DoEffect(ostream &out) const override;

private:
    string title_;
    unsigned int fillCount_;
    char fill_;
    unsigned int spacing_;
};

/// Selects the message type of an OutputStream (see outputstream.h). Harmless on any other stream.
class QUILLMARSH_API SetOutputTypeEffector : public OStreamEffector
{
public:
    /// Selects this type.
    constexpr explicit SetOutputTypeEffector(unsigned int type) : type_(type) {}

protected:
    void DoEffect(ostream &out) const override;

private:
    unsigned int type_;
};

/// Manipulator that writes a line feed without flushing. Dumps use it between lines, and `endl` only when the text must
/// be seen at once.
QUILLMARSH_API ostream &nl(ostream &out);

} // namespace quillmarsh

#endif
