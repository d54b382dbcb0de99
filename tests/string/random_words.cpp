// Random operations on the words of strings.
#include "tests/string/random_trial.h"

namespace random_strings {
namespace {

void countWords(Trial& r) { r.same(r.s().numWords(), static_cast<unsigned int>(model::words(r.m()).size())); }

void readWord(Trial& r) {
    unsigned int const n = r.few();
    std::vector<model::Word> const words = model::words(r.m());
    auto const at = [&](unsigned int i) { return i == 0 || i > words.size() ? model::Word() : words[i - 1]; };
    r.same(operations::contentsOf(r.s().word(n)), at(n == 0 ? 1 : n).text);
    r.same(r.s().lengthOfWord(n), operations::lengthOf(at(n).text));
    r.same(r.s().indexOfWord(n), at(n).position);
    unsigned int const from = r.start();
    unsigned int const counted = r.below(3);
    r.same(r.s().indexOfWord(n, from, counted), model::indexOfWord(r.m(), n, from, counted));
}

void cutWords(Trial& r) {
    unsigned int const first = r.few();
    unsigned int const count = r.few();
    r.edit(model::wordsFrom(r.m(), first, count), [&](DString& s) { s = s.words(first, count); });
}
void removeWords(Trial& r) {
    unsigned int const first = r.few();
    unsigned int const count = r.few();
    r.edit(model::removeWords(r.m(), first, count), [&](DString& s) { s.removeWords(first, count); });
}
void space(Trial& r) {
    unsigned int const n = r.few();
    r.edit(model::space(r.m(), n, r.pad), [&](DString& s) { s.space(n, r.pad); });
}

void findPhrase(Trial& r) {
    unsigned int const from = r.few();
    std::vector<model::Word> const words = model::words(r.m());
    string phrase = r.a.wanted;
    if (!words.empty() && r.oneIn(2)) {
        unsigned int const at = r.below(static_cast<unsigned int>(words.size()));
        phrase = "\t" + words[at].text;
        if (at + 1 < words.size()) phrase += "  " + words[at + 1].text;
    }
    r.same(r.s().findPhrase(phrase, from, DString::wordIndex), model::findPhrase(r.m(), phrase, from, false));
    r.same(r.s().findPhrase(phrase, from, DString::charIndex), model::findPhrase(r.m(), phrase, from, true));
}

constexpr Operation operations[] = {{"numWords", countWords}, {"word", readWord},
                                    {"words", cutWords},      {"removeWords", removeWords},
                                    {"space", space},         {"findPhrase", findPhrase}};

} // namespace

std::span<Operation const> wordOperations() { return operations; }

} // namespace random_strings
