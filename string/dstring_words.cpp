// DString: words. They are found with the buffer's virtual searches, which keep characters whole.
#include "string/buffer_factory.h"
#include "string/byte_walk.h"
#include "string/dstring_edit.h"
#include "string/length.h"
#include "string/word_separators.h"

#include <cstdint>
#include <cstring>
#include <string_view>
#include <vector>

namespace {

struct Word {
    unsigned int position = 0; ///< 0: there is no such word.
    unsigned int length = 0;
};

/// Walks the words of a buffer in text order. No separator is part of a multi-byte character in any encoding,
/// so where the searches are the library's own the bytes tell the same.
class Words {
public:
    explicit Words(DBuffer const& text, unsigned int start = 1)
        : text_(text), runs_({}, kelcl::wordSeparators), next_(start) {
        if (!kelcl::isOfLibraryClass(text)) return;
        goesByBytes_ = true;
        // The start may lie within a character, which only the search can tell.
        unsigned int const first = startBySearch();
        if (first == 0) return;
        runs_ = {std::string_view(text.contents() + first - 1, text.length - (first - 1)),
                 kelcl::wordSeparators};
    }

    /// The next word; one at position 0 when there are no more.
    Word next() { return goesByBytes_ ? nextByBytes() : nextBySearch(); }

private:
    Word nextByBytes() {
        std::string_view const run = runs_.next();
        if (run.empty()) return {};
        return {static_cast<unsigned int>(run.data() - text_.contents()) + 1,
                static_cast<unsigned int>(run.size())};
    }

    Word nextBySearch() {
        unsigned int const position = startBySearch();
        if (position == 0) return {};
        next_ = text_.indexOfAnyOf(kelcl::separatorBytes, kelcl::separatorCount, position);
        unsigned int const behind = next_ != 0 ? next_ : text_.length + 1;
        return {position, behind - position};
    }
    unsigned int startBySearch() const {
        return next_ == 0 ? 0 : text_.indexOfAnyBut(kelcl::separatorBytes, kelcl::separatorCount, next_);
    }

    DBuffer const& text_;
    bool goesByBytes_ = false;
    kelcl::RunsNotIn runs_;
    unsigned int next_; ///< Where to search on: the separator behind the last word found, 0 at the end.
};

std::vector<Word> wordList(DBuffer const& text) {
    std::vector<Word> list;
    Words words(text);
    for (Word word = words.next(); word.position != 0; word = words.next())
        list.push_back(word);
    return list;
}

/// Word `n` when counting starts at byte `start` with `counted` words seen.
Word findWord(DBuffer const& text, unsigned int n, unsigned int start = 1, unsigned int counted = 0) {
    Words words(text, start);
    for (Word word = words.next(); word.position != 0; word = words.next())
        if (++counted == n) return word;
    return {};
}

/// The position behind the last character that is no separator.
unsigned int endOfLastWord(DBuffer const& text) {
    unsigned int end =
        text.lastIndexOfAnyBut(kelcl::separatorBytes, kelcl::separatorCount, kelcl::unboundedLength) + 1;
    while (end <= text.length && text.charType(end) > 1)
        ++end;
    return end;
}

std::string_view bytesOf(DBuffer const& text, Word word) {
    return {text.contents() + word.position - 1, word.length};
}

} // namespace

unsigned int DString::numWords() const {
    if (kelcl::isOfLibraryClass(*buffer()))
        return static_cast<unsigned int>(kelcl::countRunsNotIn(*this, kelcl::wordSeparators));
    unsigned int count = 0;
    Words words(*buffer());
    while (words.next().position != 0)
        ++count;
    return count;
}

DString DString::word(unsigned int n) const {
    Word const found = findWord(*buffer(), n == 0 ? 1 : n);
    return found.position == 0 ? DString() : DString(text_ + found.position - 1, found.length);
}

DString DString::words(unsigned int first, unsigned int count) const {
    if (first == 0) first = 1;
    unsigned int const start = indexOfWord(first);
    if (start == 0) return DString();
    if (count == 0) return subString(start, 0, ' ');
    unsigned int const last =
        count - 1 > kelcl::unboundedLength - first ? kelcl::unboundedLength : first + count - 1;
    Word const end = findWord(*buffer(), last, start, first - 1);
    unsigned int const behind = end.position != 0 ? end.position + end.length : endOfLastWord(*buffer());
    return subString(start, behind - start, ' ');
}

unsigned int DString::indexOfWord(unsigned int n, unsigned int startPos, unsigned int counted) const {
    return findWord(*buffer(), n, startPos, counted).position;
}

unsigned int DString::lengthOfWord(unsigned int n) const { return findWord(*buffer(), n).length; }

DString& DString::removeWords(unsigned int first, unsigned int count) {
    if (count == 0) return *this;
    unsigned int const start = indexOfWord(first);
    if (start == 0) return *this;
    unsigned int const behind = indexOfWord(first + count, start, first - 1);
    return behind != 0 ? remove(start, behind - start) : remove(start);
}

namespace {

/// Bytes of the words behind the first one, each with a gap of `n` in front.
unsigned int lengthBehindFirst(DBuffer const& text, Word first, unsigned int n) {
    unsigned int total = 0;
    Words words(text, first.position + first.length);
    for (Word word = words.next(); word.position != 0; word = words.next())
        total = kelcl::lengthSum(total, kelcl::lengthSum(n, word.length));
    return total;
}

/// The same where words are told by bytes.
unsigned int lengthBehindFirst(std::string_view behind, unsigned int n) {
    std::uint64_t const gaps = kelcl::countRunsNotIn(behind, kelcl::wordSeparators);
    std::uint64_t const bytes = behind.size() - kelcl::countIn(behind, kelcl::wordSeparators);
    if (bytes + gaps * n >= kelcl::unboundedLength) kelcl::raiseLengthOverflow();
    return static_cast<unsigned int>(bytes + gaps * n);
}

} // namespace

DString& DString::space(unsigned int n, char c) {
    if (isEmpty()) return *this;
    Word const first = findWord(*buffer(), 1);
    if (first.position == 0) return *this = DString();
    unsigned int const from = first.position + first.length;
    unsigned int const behindFirst = kelcl::isOfLibraryClass(*buffer())
                                         ? lengthBehindFirst(std::string_view(*this).substr(from - 1), n)
                                         : lengthBehindFirst(*buffer(), first, n);

    return edit<During::heldAlive>([=](DBuffer& text) {
        DBuffer* const joined = text.newBuffer(text.contents() + first.position - 1, first.length, nullptr,
                                               behindFirst, nullptr, 0, c);
        Words words(text, first.position + first.length);
        char* out = joined->contents() + first.length;
        for (Word word = words.next(); word.position != 0; word = words.next()) {
            std::memcpy(out + n, text.contents() + word.position - 1, word.length);
            out += n + word.length;
        }
        return joined;
    });
}

unsigned int DString::findPhrase(DString const& phrase, unsigned int startWord, IndexType type) const {
    std::vector<Word> const own = wordList(*buffer());
    std::vector<Word> const wanted = wordList(*phrase.buffer());
    auto const count = static_cast<unsigned int>(own.size());
    auto const wantedCount = static_cast<unsigned int>(wanted.size());
    auto const matchesAt = [&](unsigned int first) {
        if (first == 0 || first > count) return wantedCount == 0; // there is no such word
        for (unsigned int i = 0; i < wantedCount; ++i)
            if (bytesOf(*buffer(), own[first - 1 + i]) != bytesOf(*phrase.buffer(), wanted[i])) return false;
        return true;
    };
    // The sum wraps on purpose: from word 0 an empty phrase is not found.
    for (unsigned int first = startWord; count >= first + wantedCount - 1; ++first) {
        if (!matchesAt(first)) continue;
        if (type != charIndex) return first;
        return first == 0 || first > count ? 0 : own[first - 1].position;
    }
    return 0;
}
