// The wildcard match. Runs of any bytes cut the pattern into pieces of fixed length; the first and the last
// piece have their places, and for each of those between the earliest place is as good as any. So nothing is
// ever tried again. A piece is searched for by its longest literal; where that comes to nothing too often, by
// all its literals in turn.

#include "bytes/wildcard.h"

#include "bytes/byte_compare.h"
#include "bytes/byte_search.h"
#include "bytes/dispatch.h"
#include "bytes/sequence_search.h"

#include <algorithm>
#include <cstring>
#include <vector>

namespace kelcl {

namespace {

/// How many bytes at the beginning of n bytes of the pattern equal those of the text, apart from the
/// wildcards in the pattern: n, or fewer than there are. Many places of a text may fail far past their
/// beginning, so whole blocks are compared at once.
KELCL_INLINED std::size_t equalExceptFor(char wildcard, char const* pattern, char const* text,
                                         std::size_t n) {
    constexpr std::size_t block = 64;
    std::size_t i = 0;
    for (; n - i >= block; i += block) {
        unsigned char differs = 0;
        for (std::size_t j = i; j < i + block; ++j)
            differs |= static_cast<unsigned char>((pattern[j] != text[j]) & (pattern[j] != wildcard));
        if (differs != 0) return i;
    }
    for (; i < n; ++i)
        if (pattern[i] != text[i] && pattern[i] != wildcard) return i;
    return n;
}

/// A stretch of a pattern that holds no wildcard for runs.
class Piece {
public:
    Piece(std::string_view bytes, char anyChar) : bytes_(bytes), anyChar_(anyChar) {
        forEachLiteral([this](std::size_t start, std::size_t size) {
            ++literals_;
            if (size <= literalSize_) return;
            literalStart_ = start;
            literalSize_ = size;
        });
    }

    std::size_t size() const { return bytes_.size(); }

    /// Whether the piece stands at the beginning of `text`, which is at least as long.
    bool matches(char const* text, std::uint64_t& steps) const {
        if (literalSize_ == bytes_.size()) {
            steps += literalSize_;
            return sameBytes(text, bytes_.data(), literalSize_);
        }
        std::size_t const equal =
            multiversioned<equalExceptFor>(anyChar_, bytes_.data(), text, bytes_.size());
        steps += equal;
        return equal == bytes_.size();
    }

    /// The offset of the first place in the text where the piece stands, or notFound.
    std::size_t findIn(std::string_view text, std::uint64_t& steps) const {
        if (text.size() < bytes_.size()) return notFound;
        if (literalSize_ == 0) return 0;
        std::string_view const literal = bytes_.substr(literalStart_, literalSize_);
        // Only the places where the literal may stand: the rest of the piece must fit around it.
        std::string_view const window =
            text.substr(literalStart_, text.size() - bytes_.size() + literalSize_);
        std::uint64_t const before = steps;
        for (std::size_t place = 0; window.size() - place >= literalSize_; ++place) {
            std::size_t const found = findPattern(window.substr(place), literal);
            if (found == notFound) {
                steps += window.size() - place;
                return notFound;
            }
            place += found;
            steps += found + literalSize_;
            if (matches(text.data() + place, steps)) return place;
            // Steps of this kind take bytes by the dozen.
            if (steps - before > 16 * (blockOfPlaces + std::uint64_t{literals_} * place))
                return findByAllLiterals(text, place + 1, steps);
        }
        return notFound;
    }

private:
    /// So many places at least are looked at together.
    static constexpr std::size_t blockOfPlaces = 4096;

    template <class Action>
    void forEachLiteral(Action action) const {
        for (std::size_t i = 0; i < bytes_.size();) {
            std::size_t const end = std::min(bytes_.find(anyChar_, i), bytes_.size());
            if (end > i) action(i, end - i);
            i = end + 1;
        }
    }

    /// The same from a place on, in blocks of places: of each place it is counted how many literals in turn
    /// stand where they should. As a block is at least as long as the piece, a literal costs the time of
    /// going through the text twice.
    std::size_t findByAllLiterals(std::string_view text, std::size_t from, std::uint64_t& steps) const {
        std::size_t const places = text.size() - bytes_.size() + 1;
        std::vector<std::uint32_t> standing(std::max(blockOfPlaces, bytes_.size()));
        std::vector<std::uint32_t> borders(literalSize_);
        for (; from < places; from += standing.size()) {
            std::fill(standing.begin(), standing.end(), 0);
            std::size_t const n = std::min(standing.size(), places - from);
            std::uint32_t literals = 0;
            forEachLiteral([&](std::size_t start, std::size_t size) {
                std::string_view const window = text.substr(from + start, n + size - 1);
                std::string_view const literal = bytes_.substr(start, size);
                SequenceSearch search(size, borders.data(), [literal](std::size_t a, std::size_t b) {
                    return literal[a] == literal[b];
                });
                for (std::size_t at = 0; at < window.size(); ++at)
                    if (search.endsWith([&](std::size_t k) { return literal[k] == window[at]; }) &&
                        standing[at + 1 - size] == literals)
                        ++standing[at + 1 - size];
                ++literals;
                steps += size + window.size();
            });
            auto const end = standing.begin() + static_cast<std::ptrdiff_t>(n);
            auto const found = std::find(standing.begin(), end, literals);
            if (found != end) return from + static_cast<std::size_t>(found - standing.begin());
        }
        return notFound;
    }

    std::string_view bytes_;
    char anyChar_;
    std::size_t literals_ = 0;     ///< Stretches without a wildcard; the longest one is searched for.
    std::size_t literalStart_ = 0; ///< Where that one begins.
    std::size_t literalSize_ = 0;
};

/// Whether text and pattern, neither of them empty, differ in their last bytes: most of those that do not
/// match at an end are told by that.
bool lastBytesDiffer(std::string_view text, std::string_view pattern, char anyString, char anyChar) {
    char const last = pattern.back();
    return last != text.back() && last != anyString && last != anyChar;
}

} // namespace

bool matchesWildcard(std::string_view text, std::string_view pattern, char anyString, char anyChar,
                     std::uint64_t& steps) {
    if (!text.empty() && !pattern.empty() && lastBytesDiffer(text, pattern, anyString, anyChar)) return false;
    std::size_t const firstRun = findByte(pattern, anyString);
    if (firstRun == notFound)
        return text.size() == pattern.size() && Piece(pattern, anyChar).matches(text.data(), steps);
    std::size_t const lastRun = findLastByte(pattern, anyString);

    Piece const front(pattern.substr(0, firstRun), anyChar);
    Piece const back(pattern.substr(lastRun + 1), anyChar);
    if (text.size() < front.size() || text.size() - front.size() < back.size()) return false;
    if (!front.matches(text.data(), steps) || !back.matches(text.data() + text.size() - back.size(), steps))
        return false;
    text = text.substr(front.size(), text.size() - front.size() - back.size());

    std::string_view pieces = pattern.substr(firstRun, lastRun - firstRun);
    while (!pieces.empty()) {
        pieces.remove_prefix(1); // the wildcard before the piece
        std::size_t const end = std::min(findByte(pieces, anyString), pieces.size());
        Piece const piece(pieces.substr(0, end), anyChar);
        std::size_t const place = piece.findIn(text, steps);
        if (place == notFound) return false;
        text.remove_prefix(place + piece.size());
        pieces.remove_prefix(end);
    }
    return true;
}

} // namespace kelcl
