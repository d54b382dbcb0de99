// What was answered for a character, for the next time it comes: texts use few of the many characters, and
// each question to the C library goes through several tables. Lives as long as one operation.
#ifndef KELCL_CHARACTERS_ANSWER_CACHE_H
#define KELCL_CHARACTERS_ANSWER_CACHE_H

#include <array>
#include <cstddef>
#include <cstdint>

namespace kelcl {

/// Remembers the answer of one character for each of some places. `ask(value)` must give the same answer each
/// time.
template <class Answer, class Ask>
class AnswerCache {
public:
    explicit AnswerCache(Ask ask) : ask_(ask) {
        places_[0].value = 1; // a value that has another place: nothing is remembered yet
    }

    Answer of(int value) {
        Place& place = places_[static_cast<unsigned int>(value) % places_.size()];
        if (place.value != value) place = {value, ask_(value)};
        return place.answer;
    }

private:
    struct Place {
        int value;
        Answer answer;
    };

    Ask ask_;
    std::array<Place, 256> places_{};
};

/// Remembers in 16 KB the answers of all characters up to U+07FF, and which others of the first plane have
/// the usual answer.
template <class Answer, class Ask, class Usual>
class PlaneOfAnswers {
public:
    PlaneOfAnswers(Ask ask, Usual usual) : ask_(ask), usual_(usual) { low_.fill(unknown); }

    Answer of(int value) {
        auto const place = static_cast<std::uint32_t>(value);
        if (place < low_.size()) {
            if (low_[place] == unknown) low_[place] = static_cast<std::int32_t>(ask_(value));
            return static_cast<Answer>(low_[place]);
        }
        return place < plane ? ofPlane(value, place) : ask_(value);
    }

private:
    Answer ofPlane(int value, std::uint32_t place) {
        std::uint64_t& known = usuals_[place / bitsInWord];
        std::uint64_t const bit = std::uint64_t{1} << place % bitsInWord;
        if ((known & bit) != 0) return usual_(value);
        Answer const answer = ask_(value);
        if (answer == usual_(value)) known |= bit;
        return answer;
    }

    static constexpr std::uint32_t plane = 0x10000;
    static constexpr std::uint32_t bitsInWord = 64;
    static constexpr std::int32_t unknown = -1; // is asked for again where it is the answer

    Ask ask_;
    Usual usual_;
    std::array<std::int32_t, 0x800> low_;
    std::array<std::uint64_t, plane / bitsInWord> usuals_{};
};

/// Calls `use(of)`, where `of(value)` is the answer, remembered as far as a text of `n` bytes makes that
/// worth its start. Most answers should be `usual(value)`, at least beyond U+07FF.
template <class Answer, class Ask, class Usual, class Use>
auto withAnswers(std::size_t n, Ask ask, Usual usual, Use use) {
    constexpr std::size_t worthRemembering = 256;
    constexpr std::size_t worthAPlane = 8192;
    if (n < worthRemembering) return use(ask);
    if (n < worthAPlane) {
        AnswerCache<Answer, Ask> answers(ask);
        return use([&answers](int value) { return answers.of(value); });
    }
    PlaneOfAnswers<Answer, Ask, Usual> answers(ask, usual);
    return use([&answers](int value) { return answers.of(value); });
}

} // namespace kelcl

#endif
