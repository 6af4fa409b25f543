#include <quillmarsh/basetools/streameffectors.h>

#include <quillmarsh/basetools/outputstream.h>

#include <algorithm>

namespace quillmarsh
{
namespace
{

/// Writes many characters at a time, and without the stream's width, which would count for the first character only.
void Fill(ostream &out, std::size_t count, char fill)
{
    char run[64];
    std::fill_n(run, std::min(count, sizeof run), fill);
    for (std::size_t left = count; left > 0;)
    {
        std::size_t const length = std::min(left, sizeof run);
        if (!out.write(run, static_cast<std::streamsize>(length)))
            return;
        left -= length;
    }
}

} // namespace

ostream &OStreamEffector::ApplyTo(ostream &out) const
{
    DoEffect(out);
    return out;
}

ostream &operator<<(ostream &out, OStreamEffector const &effector)
{
    return effector.ApplyTo(out);
}

void FillEffector::DoEffect(ostream &out) const
{
    Fill(out, count_, fill_);
}

void IndentEffector::DoEffect(ostream &out) const
{
    TabEffector::DoEffect(out);
    out.width(0);
}

void SeparatorLineEffector::DoEffect(ostream &out) const
{
    Fill(out, count_, fill_);
    out << std::endl;
}

TitleEffector::TitleEffector(string const &title, unsigned int width, char fill, bool center)
    : title_(title),
      width_(width),
      fill_(fill),
      center_(center)
{
}

TitleEffector::~TitleEffector() = default;

TitleEffector &TitleEffector::operator()(string const &title)
{
    title_ = title;
    return *this;
}

void TitleEffector::DoEffect(ostream &out) const
{
    out.width(0);
    Fill(out, width_, fill_);
    out << nl;
    if (center_ && title_.size() < width_)
        Fill(out, (width_ - title_.size()) / 2, ' ');
    out << title_ << nl;
    Fill(out, width_, fill_);
    out << std::endl;
}

CaptionEffector::CaptionEffector(string const &title, unsigned int fillCount, char fill, unsigned int spacing)
    : title_(title),
      fillCount_(fillCount),
      fill_(fill),
      spacing_(spacing)
{
}

CaptionEffector::~CaptionEffector() = default;

CaptionEffector &CaptionEffector::operator()(string const &title)
{
    title_ = title;
    return *this;
}

void CaptionEffector::DoEffect(ostream &out) const
{
    out.width(0);
    Fill(out, fillCount_, fill_);
    Fill(out, spacing_, ' ');
    out << title_;
    Fill(out, spacing_, ' ');
    Fill(out, fillCount_, fill_);
    out << std::endl;
}

void SetOutputTypeEffector::DoEffect(ostream &out) const
{
    if (auto *const typed = dynamic_cast<OutputStream *>(&out))
        typed->SetCurrentOutputType(type_);
}

ostream &nl(ostream &out)
{
    return out.put('\n');
}

} // namespace quillmarsh
