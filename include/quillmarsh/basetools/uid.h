// Identifier of four words.
#ifndef QUILLMARSH_BASETOOLS_UID_H
#define QUILLMARSH_BASETOOLS_UID_H

#include <quillmarsh/platform/types.h>

namespace quillmarsh
{

/// Unique identifier of 128 bits, held as four words. A value type: any thread.
class QUILLMARSH_API UID
{
public:
    /// Leaves the words unset.
    UID();
    /// Takes the four words.
    UID(unsigned int word0, unsigned int word1, unsigned int word2, unsigned int word3);
    /// Copies the four words at `words`.
    explicit UID(unsigned int const *words);

    /// @name Words
    /// By index, 0 to 3. Any other index asserts "Index out of range.", and then means word 0.
    /// @{
    unsigned int &operator[](unsigned int index);
    unsigned int const &operator[](unsigned int index) const;
    /// @}

    /// True when all words are equal.
    bool operator==(UID const &other) const;
    /// True when a word differs.
    bool operator!=(UID const &other) const { return !(*this == other); }

    /// The words as eight upper-case hexadecimal digits each, joined by "-", in square brackets.
    string ToString() const;

private:
    unsigned int words_[4];
};

/// Prints the text of UID::ToString.
QUILLMARSH_API ostream &operator<<(ostream &out, UID const &uid);

/// @name Binary form
/// The four words, index 0 first, each in the byte order of the stream (see serializer.h).
/// @{
QUILLMARSH_API ostream &operator<=(ostream &out, UID const &uid);
QUILLMARSH_API istream &operator>=(istream &in, UID &uid);
/// @}

} // namespace quillmarsh

#endif
