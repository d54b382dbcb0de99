// The random operations that edit multi-byte text, of buffers and of strings: the result, which buffer it is,
// and who must not notice.
#include "tests/buffers/random_trial.h"

#include <kelcl/dstring.h>

#include <cstring>
#include <iterator>

namespace mb {

namespace {

using model::Edited;
using model::Text;
using std::string;
using std::string_view;

/// The inputs, and the forms of them that the model and buffers take.
struct Arguments : Inputs {
    explicit Arguments(Inputs const& inputs)
        : Inputs(inputs), t(text), p(first), q(second), x(first), y(second), predicate(test) {}

    Text t; ///< The text, the first and the second argument for the model.
    Text p;
    Text q;
    ExactBytes x; ///< The first and the second argument for buffers.
    ExactBytes y;
    DStringTest predicate;
};

struct Edit {
    char const* name;
    DBuffer* (*ofBuffer)(DBuffer&, Arguments const&);
    void (*ofString)(DString&, Arguments const&);
    Edited (*expected)(Arguments const&);
    Edited (*expectedOfString)(Arguments const&) = expected;
};

constexpr Edit edits[] = {
    {"upperCase", [](DBuffer& b, Arguments const&) { return b.upperCase(); },
     [](DString& s, Arguments const&) { s.upperCase(); },
     [](Arguments const& with) { return model::caseOf(with.t, true); }},
    {"lowerCase", [](DBuffer& b, Arguments const&) { return b.lowerCase(); },
     [](DString& s, Arguments const&) { s.lowerCase(); },
     [](Arguments const& with) { return model::caseOf(with.t, false); }},
    {"translate",
     [](DBuffer& b, Arguments const& with) {
         return b.translate(with.x.data(), with.x.length, with.y.data(), with.y.length, with.pad);
     },
     [](DString& s, Arguments const& with) { s.translate(with.first, with.second, with.pad); },
     [](Arguments const& with) { return model::translated(with.t, with.p, with.q, with.pad); }},
    {"strip(set)",
     [](DBuffer& b, Arguments const& with) { return b.strip(with.x.data(), with.x.length, with.mode); },
     [](DString& s, Arguments const& with) { s.strip(with.first, with.mode); },
     [](Arguments const& with) { return model::stripped(with.t, with.p, with.mode); }},
    {"strip(test)", [](DBuffer& b, Arguments const& with) { return b.strip(with.predicate, with.mode); },
     [](DString& s, Arguments const& with) { s.strip(with.predicate, with.mode); },
     [](Arguments const& with) { return model::stripped(with.t, with.test, with.mode); }},
    {"reverse", [](DBuffer& b, Arguments const&) { return b.reverse(); },
     [](DString& s, Arguments const&) { s.reverse(); },
     [](Arguments const& with) { return model::reversed(with.t); }},
    {"overlayWith",
     [](DBuffer& b, Arguments const& with) {
         return b.overlayWith(with.x.data(), with.x.length, with.a, with.pad);
     },
     [](DString& s, Arguments const& with) { s.overlayWith(with.first, with.a, with.pad); },
     [](Arguments const& with) { return model::overlaid(with.t, with.p, with.a, with.pad); }},
    {"leftJustify", [](DBuffer& b, Arguments const& with) { return b.leftJustify(with.a, with.pad); },
     [](DString& s, Arguments const& with) { s.leftJustify(with.a, with.pad); },
     [](Arguments const& with) { return model::leftJustified(with.t, with.a, with.pad); }},
    {"rightJustify", [](DBuffer& b, Arguments const& with) { return b.rightJustify(with.a, with.pad); },
     [](DString& s, Arguments const& with) { s.rightJustify(with.a, with.pad); },
     [](Arguments const& with) { return model::rightJustified(with.t, with.a, with.pad); }},
    {"insert",
     [](DBuffer& b, Arguments const& with) {
         return b.insert(with.x.data(), with.x.length, with.a, with.pad);
     },
     [](DString& s, Arguments const& with) { s.insert(with.first, with.a, with.pad); },
     [](Arguments const& with) { return model::inserted(with.t, with.p, with.a, with.pad); }},
    {"center", [](DBuffer& b, Arguments const& with) { return b.center(with.a, with.pad); },
     [](DString& s, Arguments const& with) { s.center(with.a, with.pad); },
     [](Arguments const& with) { return model::centered(with.t, with.a, with.pad); }},
    {"remove", [](DBuffer& b, Arguments const& with) { return b.remove(with.a, with.b); },
     [](DString& s, Arguments const& with) { s.remove(with.a, with.b); },
     [](Arguments const& with) { return model::removed(with.t, with.a, with.b); },
     [](Arguments const& with) {
         return with.b == 0 ? model::same(with.t) : model::removed(with.t, with.a, with.b);
     }},
    {"change",
     [](DBuffer& b, Arguments const& with) {
         return b.change(with.x.data(), with.x.length, with.y.data(), with.y.length, with.a, with.b);
     },
     [](DString& s, Arguments const& with) { s.change(with.first, with.second, with.a, with.b); },
     [](Arguments const& with) { return model::changed(with.t, with.p, with.q, with.a, with.b); }},
    // of buffers only
    {"subString(start)", [](DBuffer& b, Arguments const& with) { return b.subString(with.a); }, nullptr,
     [](Arguments const& with) { return Edited{model::remainOf(with.t, with.a, ' ')}; }},
    {"subString(start, count)",
     [](DBuffer& b, Arguments const& with) { return b.subString(with.a, with.b, with.pad); }, nullptr,
     [](Arguments const& with) { return Edited{model::subStringOf(with.t, with.a, with.b, with.pad)}; }}};

constexpr unsigned int editsOfStrings = std::size(edits) - 2;

/// Whether the right buffer came back, and the others stay.
void checkBuffers(Trial& trial, Receiver const& receiver, unsigned int refs, operations::Owned const& result,
                  Edited const& expected) {
    DBuffer const& buffer = *receiver;
    string const& before = trial.inputs().text;
    if (result->contents()[result->length] != '\0') trial.fail("no NUL after the result");
    if (std::strcmp(result->className(), "DDBCSBuffer") != 0) trial.fail("the result is of another class");
    bool const isReceiver = result.get() == &buffer;
    bool const inPlace = expected.where == Edited::Where::inPlace && refs < 2;
    if (!(isReceiver && inPlace) && receiver.text() != before) trial.fail("the receiver changed");
    if (before.empty()) return; // all empty buffers are one
    if (isReceiver != (inPlace || expected.where == Edited::Where::unchanged))
        trial.fail(isReceiver ? "the receiver came back" : "the receiver did not come back");
    if (buffer.refs != refs + (isReceiver ? 1 : 0)) trial.fail("references are miscounted");
}

} // namespace

void editBuffer(Trial& trial) {
    // A translation is twice as likely as the others.
    unsigned int const which = trial.below(std::size(edits) + 1);
    Edit const& edit = edits[which < 3 ? which : which - 1];
    trial.name(edit.name);

    Arguments const arguments(trial.inputs());
    Receiver const receiver(trial);
    unsigned int const refs = (*receiver).refs;
    Edited expected;
    string const shouldBe = Trial::outcomeOf([&] {
        expected = edit.expected(arguments);
        return escaped(expected.bytes);
    });
    std::optional<operations::Owned> result;
    string const is = Trial::outcomeOf([&] {
        result.emplace(edit.ofBuffer(*receiver, arguments));
        return escaped(result->text());
    });
    trial.check(is, shouldBe);
    if (result)
        checkBuffers(trial, receiver, refs, *result, expected);
    else if ((*receiver).refs != refs || receiver.text() != arguments.text)
        trial.fail("the receiver changed by a failure");
}

void editString(Trial& trial) {
    Edit const& edit = edits[trial.below(editsOfStrings)];
    trial.name(string("DString ") + edit.name);

    Arguments const arguments(trial.inputs());
    string_view const before = arguments.text;
    DString edited(arguments.text);
    DString const copy = trial.chooseSharing() ? edited : DString(arguments.text);
    string const shouldBe = Trial::outcomeOf([&] { return escaped(edit.expectedOfString(arguments).bytes); });
    string const is = Trial::outcomeOf([&] {
        edit.ofString(edited, arguments);
        return escaped({edited.data(), edited.length()});
    });
    trial.check(is, shouldBe);
    if (is.rfind("throws", 0) == 0 && string_view(edited.data(), edited.length()) != before)
        trial.fail("the string changed by a failure");
    if (string_view(copy.data(), copy.length()) != before) trial.fail("the copy changed");
}

} // namespace mb
