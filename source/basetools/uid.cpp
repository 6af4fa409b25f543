#include <quillmarsh/basetools/uid.h>

#include <quillmarsh/basetools/diagnostics.h>
#include <quillmarsh/basetools/serializer.h>
#include <quillmarsh/basetools/texttools.h>

#include <algorithm>
#include <ostream>

namespace quillmarsh
{
namespace
{

constexpr unsigned int s_numWords = 4;

unsigned int CheckedIndex(unsigned int index)
{
    QUILLMARSH_ASSERT(index < s_numWords, "Index out of range.");
    return index < s_numWords ? index : 0;
}

} // namespace

UID::UID() = default;

UID::UID(unsigned int word0, unsigned int word1, unsigned int word2, unsigned int word3)
    : words_{word0, word1, word2, word3}
{
}

UID::UID(unsigned int const *words) : UID(words[0], words[1], words[2], words[3]) {}

unsigned int &UID::operator[](unsigned int index)
{
    return words_[CheckedIndex(index)];
}

unsigned int const &UID::operator[](unsigned int index) const
{
    return words_[CheckedIndex(index)];
}

bool UID::operator==(UID const &other) const
{
    return std::equal(words_, words_ + s_numWords, other.words_);
}

string UID::ToString() const
{
    string text = "[";
    for (unsigned int const word : words_)
    {
        string digits;
        ToStringHex(digits, word, 8);
        UpperCase(digits);
        text += digits + '-';
    }
    text.back() = ']';
    return text;
}

ostream &operator<<(ostream &out, UID const &uid)
{
    return out << uid.ToString();
}

ostream &operator<=(ostream &out, UID const &uid)
{
    for (unsigned int i = 0; i < s_numWords; ++i)
        out <= uid[i];
    return out;
}

istream &operator>=(istream &in, UID &uid)
{
    for (unsigned int i = 0; i < s_numWords; ++i)
        in >= uid[i];
    return in;
}

} // namespace quillmarsh
