// DString: words. They are found with the buffer's virtual searches, which keep characters whole.
#include "buffers/host_classes.h"
#include "buffers/length.h"
#include "buffers/virtual_answers.h"
#include "bytes/byte_copy.h"
#include "bytes/byte_walk.h"
#include "bytes/sequence_search.h"
#include "bytes/word_separators.h"
#include "string/dstring_edit.h"

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <string_view>
#include <vector>

namespace {

struct Word {
    unsigned int position = 0; ///< 0: there is no such word.
    unsigned int length = 0;
};

/// Walks the words of a text in text order. It asks the virtual searches as far as it is told to go: for
/// where a word starts, and only then for where it ends. No separator is part of a multi-byte character in
/// any encoding, so where the searches are the library's own the bytes tell the same.
class Words {
public:
    explicit Words(DBuffer const& text, unsigned int start = 1)
        : text_(text), runs_({}, kelcl::wordSeparators), next_(start),
          usesRuns_(kelcl::isLibraryClass(text)) {
        if (!usesRuns_) return;
        // The start may lie within a character, which only the search can tell.
        startOfRuns_ = startBySearch();
        if (startOfRuns_ == 0) return;
        runs_ = {std::string_view(text.contents() + startOfRuns_ - 1, text.length - (startOfRuns_ - 1)),
                 kelcl::wordSeparators};
    }

    /// The position of the word of the given number, counted from 1 at the next one; 0 when there is none, as
    /// for number 0. It is the last thing that is asked.
    unsigned int startOf(unsigned int number) {
        if (usesRuns_) {
            std::size_t const begin = number == 0 || startOfRuns_ == 0
                                          ? kelcl::notFound
                                          : kelcl::findRunNotIn(runs_.text(), number, kelcl::wordSeparators);
            return begin == kelcl::notFound ? 0 : startOfRuns_ + static_cast<unsigned int>(begin);
        }
        unsigned int position = start();
        for (; position != 0 && --number != 0; position = start())
            end();
        return position;
    }

    /// The position of the next word, 0 when there are no more. After it comes `end`.
    unsigned int start() {
        if (!usesRuns_) return start_ = startBySearch();
        std::size_t const edge = startOfRuns_ == 0 ? kelcl::notFound : runs_.nextBegin();
        return start_ = edge == kelcl::notFound ? 0 : startOfRuns_ + static_cast<unsigned int>(edge);
    }
    /// The position after the word that has been started.
    unsigned int end() {
        if (usesRuns_) return startOfRuns_ + static_cast<unsigned int>(runs_.nextEnd());
        next_ = separatorFrom(text_, start_, start_);
        return next_ != 0 ? next_ : text_.length + 1;
    }
    /// The next word; one at position 0 when there are no more.
    Word next() {
        unsigned int const position = start();
        return position == 0 ? Word{} : Word{position, end() - position};
    }

    /// Where a separator follows the start of a word, looked for from a position on; 0: nowhere.
    static unsigned int separatorFrom(DBuffer const& text, unsigned int wordStart, unsigned int from) {
        return kelcl::positionWithin(text.indexOfAnyOf(kelcl::separatorBytes, kelcl::separatorCount, from),
                                     wordStart + 1, text.length);
    }

private:
    unsigned int startBySearch() const {
        if (next_ == 0) return 0;
        unsigned int const lowest = start_ == 0 ? 1 : next_;
        return kelcl::positionWithin(text_.indexOfAnyBut(kelcl::separatorBytes, kelcl::separatorCount, next_),
                                     lowest, text_.length);
    }

    DBuffer const& text_;
    kelcl::RunsNotIn runs_;
    unsigned int startOfRuns_ = 0;
    unsigned int start_ = 0; ///< Of the last word.
    unsigned int next_;      ///< Where to search on: the separator after the last word, 0 at the end.
    bool usesRuns_;
};

std::vector<Word> wordList(DBuffer const& text) {
    std::vector<Word> list;
    if (kelcl::isLibraryClass(text))
        list.reserve(kelcl::countRunsNotIn(kelcl::bytesOf(text), kelcl::wordSeparators));
    Words words(text);
    for (Word word = words.next(); word.position != 0; word = words.next())
        list.push_back(word);
    return list;
}

/// Where word `n` starts when counting starts at byte `start` with `counted` words seen; 0: there is none.
unsigned int findWord(DBuffer const& text, unsigned int n, unsigned int start = 1, unsigned int counted = 0) {
    return Words(text, start).startOf(n - counted);
}

/// The position after the word at `start`. The search begins at its second byte.
unsigned int endOfWord(DBuffer const& text, unsigned int start) {
    unsigned int const found = Words::separatorFrom(text, start, start + 1);
    return found != 0 ? found : text.length + 1;
}

/// The position after the last character that is no separator, but not before `start`, where a word is.
unsigned int endOfLastWord(DBuffer const& text, unsigned int start) {
    unsigned int const last = kelcl::positionWithin(
        text.lastIndexOfAnyBut(kelcl::separatorBytes, kelcl::separatorCount, kelcl::unboundedLength), start,
        text.length);
    if (last == 0) return text.length + 1;
    unsigned int end = last + 1;
    while (end <= text.length && text.charType(end) > 1)
        ++end;
    return end;
}

std::string_view bytesOf(DBuffer const& text, Word word) {
    return {text.contents() + word.position - 1, word.length};
}

} // namespace

unsigned int DString::numWords() const {
    if (kelcl::isLibraryClass(*buffer()))
        return static_cast<unsigned int>(kelcl::countRunsNotIn(*this, kelcl::wordSeparators));
    unsigned int count = 0;
    Words words(*buffer());
    while (words.next().position != 0)
        ++count;
    return count;
}

DString DString::word(unsigned int n) const {
    unsigned int const start = findWord(*buffer(), n == 0 ? 1 : n);
    return start == 0 ? DString() : DString(text_ + start - 1, endOfWord(*buffer(), start) - start);
}

DString DString::words(unsigned int first, unsigned int count) const {
    if (first == 0) first = 1;
    unsigned int const start = indexOfWord(first);
    if (start == 0) return DString();
    if (count == 0) return subString(start, 0, ' ');
    unsigned int const last =
        count - 1 > kelcl::unboundedLength - first ? kelcl::unboundedLength : first + count - 1;
    // A class that a host derived may find other words when asked again from the front.
    bool const goesOn = kelcl::isLibraryClass(*buffer());
    unsigned int const startOfLast =
        goesOn ? findWord(*buffer(), last, start, first - 1) : findWord(*buffer(), last);
    unsigned int const after =
        startOfLast != 0 ? endOfWord(*buffer(), startOfLast) : endOfLastWord(*buffer(), start);
    return subString(start, std::max(after, start) - start, ' ');
}

unsigned int DString::indexOfWord(unsigned int n, unsigned int startPos, unsigned int counted) const {
    return findWord(*buffer(), n, startPos, counted);
}

unsigned int DString::lengthOfWord(unsigned int n) const {
    unsigned int const start = findWord(*buffer(), n);
    return start == 0 ? 0 : endOfWord(*buffer(), start) - start;
}

DString& DString::removeWords(unsigned int first, unsigned int count) {
    if (count == 0) return *this;
    unsigned int const start = indexOfWord(first);
    if (start == 0) return *this;
    unsigned int const after = indexOfWord(first + count, start, first - 1);
    return after != 0 ? remove(start, after - start) : remove(start);
}

namespace {

/// Bytes of the words after the first one, each with a gap of `n` in front.
unsigned int lengthAfterFirst(std::vector<Word> const& words, unsigned int n) {
    unsigned int total = 0;
    for (std::size_t i = 1; i < words.size(); ++i)
        total = kelcl::lengthSum(total, kelcl::lengthSum(n, words[i].length));
    return total;
}

/// The same where words are told by bytes.
unsigned int lengthAfterFirst(std::string_view after, unsigned int n) {
    std::uint64_t const gaps = kelcl::countRunsNotIn(after, kelcl::wordSeparators);
    std::uint64_t const bytes = after.size() - kelcl::countIn(after, kelcl::wordSeparators);
    if (bytes + gaps * n >= kelcl::unboundedLength) kelcl::raiseLengthOverflow();
    return static_cast<unsigned int>(bytes + gaps * n);
}

/// Writes the text anew: its first word, and with a gap of `n` bytes in front of each those that `next`
/// gives.
template <class Next>
DBuffer* respaced(DBuffer const& text, Word first, unsigned int afterFirst, unsigned int n, char c,
                  Next next) {
    DBuffer* const result = text.newBuffer(text.contents() + first.position - 1, first.length, nullptr,
                                           afterFirst, nullptr, 0, c);
    char* out = result->contents() + first.length;
    for (Word word = next(); word.position != 0; word = next()) {
        kelcl::copyBytes(out + n, text.contents() + word.position - 1, word.length);
        out += n + word.length;
    }
    return result;
}

} // namespace

DString& DString::space(unsigned int n, char c) {
    if (isEmpty()) return *this;
    if (!kelcl::isLibraryClass(*buffer())) { // each word is asked for once: the next answer may be another
        std::vector<Word> words = wordList(*buffer());
        if (words.empty()) return *this = DString();
        unsigned int const afterFirst = lengthAfterFirst(words, n);
        words.emplace_back(); // the end
        return edit<During::heldAlive>([&](DBuffer& text) {
            return respaced(text, words.front(), afterFirst, n, c,
                            [word = words.begin()]() mutable { return *++word; });
        });
    }
    Word const first = Words(*buffer()).next();
    if (first.position == 0) return *this = DString();
    unsigned int const from = first.position + first.length;
    unsigned int const afterFirst = lengthAfterFirst(std::string_view(*this).substr(from - 1), n);
    return edit<During::heldAlive>([=](DBuffer& text) {
        return respaced(text, first, afterFirst, n, c,
                        [words = Words(text, from)]() mutable { return words.next(); });
    });
}

namespace {

/// The first word from word `first` on, which there is, with which a run of words begins that equals those
/// wanted, at least one; 0 when there is none. Words are counted from 1.
unsigned int findWords(DBuffer const& text, std::vector<Word> const& words, unsigned int first,
                       DBuffer const& wantedText, std::vector<Word> const& wanted) {
    auto const wantedWord = [&](std::size_t i) { return bytesOf(wantedText, wanted[i]); };
    std::vector<std::uint32_t> borders(wanted.size());
    kelcl::SequenceSearch search(wanted.size(), borders.data(), [&](std::size_t i, std::size_t j) {
        return wantedWord(i) == wantedWord(j);
    });
    for (std::size_t i = first - 1; i < words.size(); ++i) {
        std::string_view const word = bytesOf(text, words[i]);
        if (search.endsWith([&](std::size_t k) { return wantedWord(k) == word; }))
            return static_cast<unsigned int>(i + 2 - wanted.size());
    }
    return 0;
}

} // namespace

unsigned int DString::findPhrase(DString const& phrase, unsigned int startWord, IndexType type) const {
    std::vector<Word> const own = wordList(*buffer());
    std::vector<Word> const wanted = wordList(*phrase.buffer());
    auto const count = static_cast<unsigned int>(own.size());
    auto const wantedCount = static_cast<unsigned int>(wanted.size());
    // The sum wraps on purpose: from word 0 an empty phrase is not found, and a start so large that the sum
    // is small again is as good as word 0, which no word of a phrase equals.
    if (count < startWord + wantedCount - 1) return 0;
    unsigned int found = startWord;
    if (wantedCount != 0) {
        unsigned int const first = startWord == 0 || startWord > count ? 1 : startWord;
        found = findWords(*buffer(), own, first, *phrase.buffer(), wanted);
    }
    if (type != charIndex) return found;
    return found == 0 || found > count ? 0 : own[found - 1].position;
}
