#pragma once

#include <cstddef>
#include <span>
#include <string_view>
#include <vector>

namespace orv::internal {

/// What one character has to be: in the list, or out of it. A plain character is a list of one, and a `?` is out of an
/// empty list.
struct WildcardPart {
    std::wstring_view list; ///< The inside of the brackets, without the negation.
    bool isNegated = false;

    bool isPlain() const {
        return list.size() == 1 && !isNegated;
    }

    bool accepts(wchar_t character) const;
};

/// A wildcard pattern taken apart once. The dialect is told at Str::matches(). Keeps a view of the pattern, which has
/// to outlive it.
///
/// Stars divide the pattern into pieces of one part per character. The first piece has to stand at the front of the
/// text and the last one at its end. Each piece between them is taken where it comes first behind the one before it:
/// that leaves the most to the pieces that follow, so no choice is ever taken back.
class Wildcard {
public:
    explicit Wildcard(std::wstring_view pattern);

    /// True when the whole text matches. The time grows with the sum of both lengths as long as the pieces between
    /// stars are plain characters. A piece with a `?` or a list costs a step per character searched for every 64 of its
    /// parts.
    bool matches(std::wstring_view text) const;

private:
    /// Reads the bracket at `begin` and gives the position behind it; `begin` when it is never closed.
    size_t readList(size_t begin);

    /// The parts between star number `index` and the star before it, or the pattern's ends.
    std::span<const WildcardPart> piece(size_t index) const;

    std::wstring_view m_pattern;
    std::vector<WildcardPart> m_parts; ///< Of all pieces, one behind the other.
    std::vector<size_t> m_pieceEnds;   ///< In the parts; one piece more than there are stars.
};

} // namespace orv::internal
