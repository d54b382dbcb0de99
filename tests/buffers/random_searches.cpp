// The random operations that search multi-byte text, and those that ask about its bytes and characters.
#include "tests/buffers/random_trial.h"

#include <kelcl/ddbcsbuffer.h>

#include <iterator>

namespace mb {

namespace {

using model::Text;

struct SetSearch {
    char const* name;
    unsigned int (DBuffer::*search)(char const*, unsigned int, unsigned int) const;
    unsigned int (*expected)(Text const&, Text const&, unsigned int);
};

constexpr SetSearch setSearches[] = {
    {"indexOf", &DBuffer::indexOf, model::indexOf},
    {"indexOfAnyOf", &DBuffer::indexOfAnyOf, model::indexOfAnyOf},
    {"indexOfAnyBut", &DBuffer::indexOfAnyBut, model::indexOfAnyBut},
    {"lastIndexOf", &DBuffer::lastIndexOf, model::lastIndexOf},
    {"lastIndexOfAnyOf", &DBuffer::lastIndexOfAnyOf, model::lastIndexOfAnyOf},
    {"lastIndexOfAnyBut", &DBuffer::lastIndexOfAnyBut, model::lastIndexOfAnyBut}};

struct TestSearch {
    char const* name;
    unsigned int (DBuffer::*search)(DStringTest const&, unsigned int) const;
    unsigned int (*expected)(Text const&, model::Function, unsigned int);
};

constexpr TestSearch testSearches[] = {
    {"indexOf(test)", &DBuffer::indexOf, model::indexOfAnyOf},
    {"indexOfAnyOf(test)", &DBuffer::indexOfAnyOf, model::indexOfAnyOf},
    {"indexOfAnyBut(test)", &DBuffer::indexOfAnyBut, model::indexOfAnyBut},
    {"lastIndexOf(test)", &DBuffer::lastIndexOf, model::lastIndexOfAnyOf},
    {"lastIndexOfAnyOf(test)", &DBuffer::lastIndexOfAnyOf, model::lastIndexOfAnyOf},
    {"lastIndexOfAnyBut(test)", &DBuffer::lastIndexOfAnyBut, model::lastIndexOfAnyBut}};

void searchForSet(Trial& trial, SetSearch const& operation, DBuffer const& buffer, Text const& t) {
    Inputs const& in = trial.inputs();
    ExactBytes const set(in.first);
    trial.found(
        operation.name, [&] { return (buffer.*operation.search)(set.data(), set.length, in.a); },
        [&] { return operation.expected(t, Text(in.first), in.a); });
}

void searchWithTest(Trial& trial, DDBCSBuffer const& buffer, Text const& t) {
    Inputs const& in = trial.inputs();
    DStringTest const test(in.test);
    unsigned int const which = trial.below(std::size(testSearches) + 1);
    if (which == std::size(testSearches))
        return trial.found(
            "windexOfAnyBut", [&] { return buffer.windexOfAnyBut(test, in.a); },
            [&] { return model::windexOfAnyBut(t, in.test, in.a); });
    TestSearch const& operation = testSearches[which];
    trial.found(
        operation.name, [&] { return (buffer.*operation.search)(test, in.a); },
        [&] { return operation.expected(t, in.test, in.a); });
}

/// Whether the character at `index` is one of a set. May be asked only where a character begins.
void askForMember(Trial& trial, DDBCSBuffer const& buffer, Text const& t, unsigned int index) {
    if (index == 0 || model::typeOf(t, index) > 1) return;
    ExactBytes const set(trial.inputs().first);
    trial.found(
        "isCharValid", [&] { return buffer.isCharValid(index, set.data(), set.length) != 0; },
        [&] { return model::isMember(t, index, Text(trial.inputs().first)); });
}

void searchOrAsk(Trial& trial, DDBCSBuffer const& multi, Text const& t) {
    Inputs const& in = trial.inputs();
    DBuffer const& buffer = multi;
    unsigned int const inside = t.length == 0 ? 0 : 1 + in.b % t.length;
    unsigned int const which = trial.below(16);
    if (which < std::size(setSearches)) return searchForSet(trial, setSearches[which], buffer, t);
    switch (which - std::size(setSearches)) {
    case 0:
        return trial.found(
            "startSearch", [&] { return buffer.startSearch(in.a, in.b); },
            [&] { return model::startForward(t, in.a, in.b); });
    case 1:
        return trial.found(
            "startBackwardsSearch", [&] { return buffer.startBackwardsSearch(in.a, in.b); },
            [&] { return model::startBackward(t, in.a, in.b); });
    case 2:
        return trial.found(
            "charType", [&] { return buffer.charType(inside); }, [&] { return model::typeOf(t, inside); });
    case 3:
        return trial.found(
            "prevCharLength", [&] { return multi.prevCharLength(inside + 1); },
            [&] { return model::previousLength(t, inside + 1); });
    case 4:
        return askForMember(trial, multi, t, inside);
    default:
        searchWithTest(trial, multi, t);
    }
}

} // namespace

void search(Trial& trial) {
    Receiver const buffer(trial);
    trial.takeAnyStart();
    searchOrAsk(trial, dynamic_cast<DDBCSBuffer&>(*buffer), Text(trial.inputs().text));
    if (buffer.text() != trial.inputs().text) trial.fail("the text changed");
}

} // namespace mb
