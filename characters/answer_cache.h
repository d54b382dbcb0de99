// What was answered for a character, for the next time it comes: texts use few of the many characters, and
// each question to the C library goes through several tables. Lives as long as one operation.
#ifndef KELCL_CHARACTERS_ANSWER_CACHE_H
#define KELCL_CHARACTERS_ANSWER_CACHE_H

#include <array>
#include <cstddef>

namespace kelcl {

template <class Answer, class Ask>
class AnswerCache {
public:
    /// `ask(value)` must give the same answer each time.
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

/// Calls `use(of)`, where `of(value)` is the answer, remembered if a text of `n` bytes makes that worth its
/// start.
template <class Answer, class Ask, class Use>
auto withAnswers(std::size_t n, Ask ask, Use use) {
    constexpr std::size_t worthRemembering = 256;
    if (n < worthRemembering) return use(ask);
    AnswerCache<Answer, Ask> answers(ask);
    return use([&answers](int value) { return answers.of(value); });
}

} // namespace kelcl

#endif
