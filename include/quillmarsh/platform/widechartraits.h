// Character traits of the library's wide text.
#ifndef QUILLMARSH_PLATFORM_WIDECHARTRAITS_H
#define QUILLMARSH_PLATFORM_WIDECHARTRAITS_H

#include <cstddef>
#include <cwchar>
#include <ios>

namespace quillmarsh
{

/// Character traits for strings of `unsigned short`, for which the standard library promises none.
struct WideCharTraits
{
    /// @name Character traits
    /// The members that a standard string asks for, with the standard's meanings.
    /// @{
    using char_type = unsigned short;
    using int_type = unsigned int;
    using off_type = std::streamoff;
    using pos_type = std::streampos;
    using state_type = std::mbstate_t;

    static constexpr void assign(char_type &target, char_type const &value) noexcept { target = value; }
    static constexpr bool eq(char_type a, char_type b) noexcept { return a == b; }
    static constexpr bool lt(char_type a, char_type b) noexcept { return a < b; }

    static constexpr int compare(char_type const *a, char_type const *b, std::size_t count) noexcept
    {
        for (std::size_t i = 0; i < count; ++i)
        {
            if (a[i] != b[i])
                return a[i] < b[i] ? -1 : 1;
        }
        return 0;
    }

    static constexpr std::size_t length(char_type const *text) noexcept
    {
        std::size_t count = 0;
        while (text[count] != 0)
            ++count;
        return count;
    }

    static constexpr char_type const *find(char_type const *text, std::size_t count, char_type const &wanted) noexcept
    {
        for (std::size_t i = 0; i < count; ++i)
        {
            if (text[i] == wanted)
                return text + i;
        }
        return nullptr;
    }

    static constexpr char_type *move(char_type *target, char_type const *source, std::size_t count) noexcept
    {
        bool const backwards = source < target && target < source + count;
        for (std::size_t i = 0; i < count; ++i)
        {
            std::size_t const at = backwards ? count - 1 - i : i;
            target[at] = source[at];
        }
        return target;
    }

    static constexpr char_type *copy(char_type *target, char_type const *source, std::size_t count) noexcept
    {
        return move(target, source, count);
    }

    static constexpr char_type *assign(char_type *target, std::size_t count, char_type value) noexcept
    {
        for (std::size_t i = 0; i < count; ++i)
            target[i] = value;
        return target;
    }

    static constexpr int_type eof() noexcept { return ~0u; }
    static constexpr int_type not_eof(int_type value) noexcept { return value == eof() ? 0u : value; }
    static constexpr char_type to_char_type(int_type value) noexcept { return static_cast<char_type>(value); }
    static constexpr int_type to_int_type(char_type value) noexcept { return value; }
    static constexpr bool eq_int_type(int_type a, int_type b) noexcept { return a == b; }
    /// @}
};

} // namespace quillmarsh

#endif
