#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace orv::internal {

/// A wildcard pattern taken apart once, so that a match is one walk over its parts. The dialect is told at
/// Str::matches(). Keeps a view of the pattern, which has to outlive it.
class Wildcard {
public:
    explicit Wildcard(std::wstring_view pattern);

    /// True when the whole text matches. A failed match goes back to the last star only: what earlier stars took need
    /// never change, so the time is at worst the product of both lengths.
    bool matches(std::wstring_view text) const;

private:
    enum class Kind { CHARACTER, ANY_CHARACTER, ANY_TEXT, LIST, LIST_OF_OTHERS };

    /// What one character has to be, or the star.
    struct Part {
        Kind kind;
        std::wstring_view text; ///< The character, or the inside of the brackets without the negation.

        bool accepts(wchar_t character) const;
    };

    /// Reads the bracket at `begin` and gives the position behind it; `begin` when it is never closed.
    size_t readList(size_t begin);

    std::wstring_view m_pattern;
    std::vector<Part> m_parts;
};

} // namespace orv::internal
