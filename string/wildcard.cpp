// The wildcard match. Runs of any bytes cut the pattern into pieces of fixed length; the first and the last
// piece have their places, and for each of those between the earliest place is as good as any. So nothing is
// ever tried again.

#include "string/wildcard.h"

#include "string/byte_search.h"
#include "string/multiversion.h"

#include <algorithm>
#include <cstring>

namespace kelcl {

namespace {

/// Whether n bytes of the pattern equal those of the text, apart from the wildcards in the pattern. Many
/// places of a text may fail far behind their beginning, so whole blocks are compared at once.
KELCL_INLINED bool isEqualExceptFor(char wildcard, char const* pattern, char const* text, std::size_t n) {
    constexpr std::size_t block = 64;
    std::size_t i = 0;
    for (; n - i >= block; i += block) {
        unsigned char differs = 0;
        for (std::size_t j = i; j < i + block; ++j)
            differs |= static_cast<unsigned char>((pattern[j] != text[j]) & (pattern[j] != wildcard));
        if (differs != 0) return false;
    }
    for (; i < n; ++i)
        if (pattern[i] != text[i] && pattern[i] != wildcard) return false;
    return true;
}

/// A stretch of a pattern that holds no wildcard for runs.
class Piece {
public:
    Piece(std::string_view bytes, char anyChar) : bytes_(bytes), anyChar_(anyChar) { findLongestLiteral(); }

    std::size_t size() const { return bytes_.size(); }

    /// Whether the piece stands at the beginning of `text`, which is at least as long.
    bool matches(char const* text) const {
        if (literalSize_ == bytes_.size())
            return literalSize_ == 0 || std::memcmp(text, bytes_.data(), literalSize_) == 0;
        return multiversioned<isEqualExceptFor>(anyChar_, bytes_.data(), text, bytes_.size());
    }

    /// The offset of the first place in the text where the piece stands, or notFound.
    std::size_t findIn(std::string_view text) const {
        if (text.size() < bytes_.size()) return notFound;
        if (literalSize_ == 0) return 0;
        std::string_view const literal = bytes_.substr(literalStart_, literalSize_);
        // Only the places where the literal may stand: the rest of the piece must fit around it.
        std::string_view const window =
            text.substr(literalStart_, text.size() - bytes_.size() + literalSize_);
        for (std::size_t place = 0; window.size() - place >= literalSize_; ++place) {
            std::size_t const found = findPattern(window.substr(place), literal);
            if (found == notFound) return notFound;
            place += found;
            if (matches(text.data() + place)) return place;
        }
        return notFound;
    }

private:
    /// The longest stretch without a wildcard is what the text is searched for.
    void findLongestLiteral() {
        for (std::size_t i = 0; i < bytes_.size();) {
            std::size_t const end = std::min(bytes_.find(anyChar_, i), bytes_.size());
            if (end - i > literalSize_) {
                literalStart_ = i;
                literalSize_ = end - i;
            }
            i = end + 1;
        }
    }

    std::string_view bytes_;
    char anyChar_;
    std::size_t literalStart_ = 0;
    std::size_t literalSize_ = 0;
};

} // namespace

bool matchesWildcard(std::string_view text, std::string_view pattern, char anyString, char anyChar) {
    std::size_t const firstRun = findByte(pattern, anyString);
    if (firstRun == notFound)
        return text.size() == pattern.size() && Piece(pattern, anyChar).matches(text.data());
    std::size_t const lastRun = findLastByte(pattern, anyString);

    Piece const front(pattern.substr(0, firstRun), anyChar);
    Piece const back(pattern.substr(lastRun + 1), anyChar);
    if (text.size() < front.size() || text.size() - front.size() < back.size()) return false;
    if (!front.matches(text.data()) || !back.matches(text.data() + text.size() - back.size())) return false;
    text = text.substr(front.size(), text.size() - front.size() - back.size());

    std::string_view pieces = pattern.substr(firstRun, lastRun - firstRun);
    while (!pieces.empty()) {
        pieces.remove_prefix(1); // the wildcard in front of the piece
        std::size_t const end = std::min(findByte(pieces, anyString), pieces.size());
        Piece const piece(pieces.substr(0, end), anyChar);
        std::size_t const place = piece.findIn(text);
        if (place == notFound) return false;
        text.remove_prefix(place + piece.size());
        pieces.remove_prefix(end);
    }
    return true;
}

} // namespace kelcl
