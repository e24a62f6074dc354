#include "OrvCore/Wildcard_p.h"

#include <algorithm>
#include <cstdint>
#include <limits>
#include <string>

namespace orv::internal {
namespace {

using Piece = std::span<const WildcardPart>;

constexpr size_t NOT_FOUND = std::wstring_view::npos;

/// Characters from `begin` to before `end`. Wider than a character, so that an end behind the last one has room.
struct Range {
    std::int64_t begin;
    std::int64_t end;
};

constexpr std::int64_t FIRST_CHARACTER = std::numeric_limits<wchar_t>::min();

/// The members of a list in their order, empty ranges such as "z-a" among them.
template <class TakeRange>
void forEachRange(std::wstring_view list, TakeRange take) {
    for (size_t i = 0; i < list.size();) {
        bool isRange = i + 2 < list.size() && list[i + 1] == L'-';
        take(Range{list[i], std::int64_t(list[isRange ? i + 2 : i]) + 1});
        i += isRange ? 3 : 1;
    }
}

bool contains(std::wstring_view list, wchar_t character) {
    bool found = false;
    forEachRange(list, [&](Range range) { found = found || (range.begin <= character && character < range.end); });
    return found;
}

/// The ranges of a list in ascending order, without overlaps.
std::vector<Range> disjointRanges(std::wstring_view list) {
    std::vector<Range> ranges;
    forEachRange(list, [&](Range range) { ranges.push_back(range); });
    std::sort(ranges.begin(), ranges.end(), [](Range a, Range b) { return a.begin < b.begin; });
    std::int64_t taken = FIRST_CHARACTER;
    for (Range& range : ranges) {
        range.begin = std::max(range.begin, taken);
        taken = std::max(range.end, taken);
    }
    std::erase_if(ranges, [](Range range) { return range.begin >= range.end; });
    return ranges;
}

/// Up to 64 neighbouring parts of a piece, a bit for each, and how far the piece has been matched within them.
class Block {
public:
    static constexpr size_t SIZE = 64;

    explicit Block(Piece parts) : m_lastBit(std::uint64_t(1) << (parts.size() - 1)) {
        // What the parts accept changes at few characters: each part toggles its bit where a range of its begins or
        // ends, and so between two toggles one mask serves all characters.
        std::vector<Toggle> toggles{{FIRST_CHARACTER, 0}};
        for (size_t i = 0; i < parts.size(); ++i) {
            addToggles(parts[i], std::uint64_t(1) << i, toggles);
        }
        std::sort(toggles.begin(), toggles.end(), [](const Toggle& a, const Toggle& b) { return a.begin < b.begin; });
        std::uint64_t mask = 0;
        for (const Toggle& toggle : toggles) {
            if (m_begins.empty() || m_begins.back() != toggle.begin) {
                m_begins.push_back(toggle.begin);
                m_masks.push_back(mask);
            }
            mask ^= toggle.bit;
            m_masks.back() = mask;
        }
    }

    /// Takes one more character. `enters` and the answer tell whether all parts in front of this block, and all up to
    /// its end, had been matched before that character.
    bool read(wchar_t character, bool enters) {
        if (!m_matched && !enters) {
            return false;
        }
        bool leaves = isMatched();
        size_t interval = size_t(std::upper_bound(m_begins.begin(), m_begins.end(), character) - m_begins.begin()) - 1;
        m_matched = (m_matched << 1 | std::uint64_t(enters)) & m_masks[interval];
        return leaves;
    }

    /// Whether the piece is matched up to the end of this block.
    bool isMatched() const {
        return m_matched & m_lastBit;
    }

private:
    struct Toggle {
        std::int64_t begin;
        std::uint64_t bit;
    };

    static void addToggles(const WildcardPart& part, std::uint64_t bit, std::vector<Toggle>& toggles) {
        if (part.isNegated) {
            toggles.push_back({FIRST_CHARACTER, bit});
        }
        for (Range range : disjointRanges(part.list)) {
            toggles.push_back({range.begin, bit});
            toggles.push_back({range.end, bit});
        }
    }

    std::vector<std::int64_t> m_begins; ///< Of the intervals that share a mask; the first is FIRST_CHARACTER.
    std::vector<std::uint64_t> m_masks; ///< Per interval, the parts that accept its characters.
    std::uint64_t m_lastBit;
    std::uint64_t m_matched = 0; ///< The parts that end a match of all parts in front of them and of themselves.
};

/// Shift-And (Baeza-Yates and Gonnet), carried on from block to block.
size_t findParts(std::wstring_view text, Piece piece) {
    std::vector<Block> blocks;
    for (size_t i = 0; i < piece.size(); i += Block::SIZE) {
        blocks.emplace_back(piece.subspan(i, std::min(Block::SIZE, piece.size() - i)));
    }
    for (size_t i = 0; i < text.size(); ++i) {
        bool enters = true;
        for (Block& block : blocks) {
            enters = block.read(text[i], enters);
        }
        if (blocks.back().isMatched()) {
            return i + 1 - piece.size();
        }
    }
    return NOT_FOUND;
}

/// Knuth, Morris and Pratt. The standard library's search may take the product of both lengths.
size_t findPlain(std::wstring_view text, std::wstring_view what) {
    // Of each beginning of `what`, the longest shorter beginning that it also ends with.
    std::vector<size_t> borders(what.size());
    auto extend = [&](size_t matched, wchar_t character) {
        while (matched > 0 && what[matched] != character) {
            matched = borders[matched - 1];
        }
        return matched + (what[matched] == character ? 1 : 0);
    };
    for (size_t i = 1; i < what.size(); ++i) {
        borders[i] = extend(borders[i - 1], what[i]);
    }
    size_t matched = 0;
    for (size_t i = 0; i < text.size(); ++i) {
        matched = extend(matched, text[i]);
        if (matched == what.size()) {
            return i + 1 - matched;
        }
    }
    return NOT_FOUND;
}

/// The first place where the piece stands in `text`; an empty one stands at 0.
size_t findPiece(std::wstring_view text, Piece piece) {
    if (piece.empty() || piece.size() > text.size()) {
        return piece.empty() ? 0 : NOT_FOUND;
    }
    std::wstring plain;
    for (const WildcardPart& part : piece) {
        if (!part.isPlain()) {
            return findParts(text, piece);
        }
        plain += part.list[0];
    }
    return findPlain(text, plain);
}

/// Whether the piece is `text`, which has as many characters.
bool isPiece(std::wstring_view text, Piece piece) {
    return std::equal(text.begin(), text.end(), piece.begin(),
                      [](wchar_t character, const WildcardPart& part) { return part.accepts(character); });
}

} // namespace

Wildcard::Wildcard(std::wstring_view pattern) : m_pattern(pattern) {
    // Only a bracket before the last closing one is worth a look; without this a row of open ones costs its square.
    size_t lastClosing = pattern.rfind(L']');
    for (size_t i = 0; i < pattern.size();) {
        wchar_t character = pattern[i];
        if (character == L'[' && lastClosing != pattern.npos && i < lastClosing) {
            size_t behind = readList(i);
            if (behind != i) {
                i = behind;
                continue;
            }
        }
        if (character == L'*') {
            m_pieceEnds.push_back(m_parts.size());
        } else if (character == L'?') {
            m_parts.push_back({L"", true});
        } else {
            m_parts.push_back({pattern.substr(i, 1), false});
        }
        ++i;
    }
    m_pieceEnds.push_back(m_parts.size());
}

size_t Wildcard::readList(size_t begin) {
    size_t first = begin + 1;
    bool isNegated = first < m_pattern.size() && (m_pattern[first] == L'!' || m_pattern[first] == L'^');
    first += isNegated ? 1 : 0;
    size_t closing = m_pattern.find(L']', first + 1); // One at `first` is a member.
    if (closing == m_pattern.npos) {
        return begin;
    }
    m_parts.push_back({m_pattern.substr(first, closing - first), isNegated});
    return closing + 1;
}

bool WildcardPart::accepts(wchar_t character) const {
    return contains(list, character) != isNegated;
}

std::span<const WildcardPart> Wildcard::piece(size_t index) const {
    size_t begin = index > 0 ? m_pieceEnds[index - 1] : 0;
    return Piece(m_parts).subspan(begin, m_pieceEnds[index] - begin);
}

bool Wildcard::matches(std::wstring_view text) const {
    size_t last = m_pieceEnds.size() - 1;
    if (last == 0) {
        return text.size() == m_parts.size() && isPiece(text, piece(0));
    }
    size_t front = piece(0).size();
    size_t back = piece(last).size();
    if (text.size() < front + back || !isPiece(text.substr(0, front), piece(0)) ||
        !isPiece(text.substr(text.size() - back), piece(last))) {
        return false;
    }
    std::wstring_view rest = text.substr(front, text.size() - front - back);
    for (size_t i = 1; i < last; ++i) {
        size_t found = findPiece(rest, piece(i));
        if (found == NOT_FOUND) {
            return false;
        }
        rest.remove_prefix(found + piece(i).size());
    }
    return true;
}

} // namespace orv::internal
