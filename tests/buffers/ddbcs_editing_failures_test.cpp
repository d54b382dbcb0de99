// Edits of multi-byte text that does not convert: which of them fail, and that they leave the receiver as it
// was.
#include "tests/buffers/ddbcs_editing_support.h"
#include "tests/characters/multi_byte_support.h"

#include <kelcl/dstring.h>

#include <functional>
#include <string>
#include <vector>

namespace {

using namespace editing;
using operations::failureOf;
using operations::SharedWith;

struct NamedEdit {
    char const* name;
    std::function<DBuffer*(DBuffer&)> edit;
};

/// Every edit that converts its text with the switch on.
std::vector<NamedEdit> convertingEdits() {
    return {{"upperCase", [](DBuffer& b) { return b.upperCase(); }},
            {"lowerCase", [](DBuffer& b) { return b.lowerCase(); }},
            {"translate", [](DBuffer& b) { return b.translate("a", 1, "b", 1, ' '); }},
            {"strip(set)", [](DBuffer& b) { return b.strip(" ", 1, DStringEnum::both); }},
            {"strip(test)", [](DBuffer& b) { return b.strip(DStringTest(isBlank), DStringEnum::both); }},
            {"reverse", [](DBuffer& b) { return b.reverse(); }},
            {"overlayWith at the end", [](DBuffer& b) { return b.overlayWith("X", 1, 2, ' '); }},
            {"overlayWith at the front", [](DBuffer& b) { return b.overlayWith("X", 1, 1, ' '); }},
            {"leftJustify", [](DBuffer& b) { return b.leftJustify(1, ' '); }},
            {"insert", [](DBuffer& b) { return b.insert("X", 1, 1, ' '); }},
            {"center", [](DBuffer& b) { return b.center(1, ' '); }}};
}

TEST(MultiByteFailure, InvalidBytesFailOnTheWidePathAndLeaveTheReceiver) {
    SwitchAt const at(on);
    string const whole = "aab" + mb::samples().invalid + "c";
    for (NamedEdit const& named : convertingEdits()) {
        SCOPED_TRACE(named.name);
        Owned const text = mb::buffer(whole);
        EXPECT_EQ(failureOf([&] { Owned const lost(named.edit(*text)); }), badSequence(725));
        EXPECT_EQ(text.text(), whole);
        EXPECT_EQ(text->refs, 1U);
    }
}

TEST(MultiByteFailure, TruncatedCharacterFailsAsIncompleteOnTheWidePath) {
    SwitchAt const at(on);
    string const whole = "aab" + mb::samples().lead;
    for (NamedEdit const& named : convertingEdits()) {
        SCOPED_TRACE(named.name);
        Owned const text = mb::buffer(whole);
        SharedWith const other(text);
        EXPECT_EQ(failureOf([&] { Owned const lost(named.edit(*text)); }), badSequence(760));
        EXPECT_EQ(text.text(), whole);
        EXPECT_EQ(text->refs, 2U);
    }
}

TEST(MultiByteFailure, ArgumentsThatDoNotConvertFailOnTheWidePath) {
    SwitchAt const at(on);
    string const bad = "x" + mb::samples().lead;
    unsigned int const n = mb::lengthOf(bad);
    Owned const text = mb::buffer("a" + mb::samples().two.bytes);
    EXPECT_EQ(failureOf([&] { Owned(text->translate(bad.data(), n, "b", 1, ' ')); }), badSequence(760));
    EXPECT_EQ(failureOf([&] { Owned(text->translate("b", 1, bad.data(), n, ' ')); }), badSequence(760));
    EXPECT_EQ(failureOf([&] { Owned(text->translate("b", 1, "c", 1, bad[1])); }), badSequence(760));
    EXPECT_EQ(failureOf([&] { Owned(text->strip(bad.data(), n, DStringEnum::both)); }), badSequence(760));
    EXPECT_EQ(failureOf([&] { Owned(text->insert(bad.data(), n, 1, ' ')); }), badSequence(760));
    EXPECT_EQ(text.text(), "a" + mb::samples().two.bytes);
    EXPECT_EQ(text->refs, 1U);
}

TEST(MultiByteFailure, BytePathsTakeAnyBytes) {
    SwitchAt const at(off);
    for (string const& bad : {mb::samples().invalid, mb::samples().lead})
        for (NamedEdit const& named : convertingEdits()) {
            SCOPED_TRACE(named.name);
            Owned const text = mb::buffer("aab" + bad);
            EXPECT_EQ(failureOf([&] { Owned const result(named.edit(*text)); }), Failure{});
        }
}

TEST(MultiByteFailure, EditsThatConvertNothingTakeAnyBytesWithTheSwitchOn) {
    SwitchAt const at(on);
    string const bad = "a" + mb::samples().invalid;
    EXPECT_EQ(leftJustify(bad, 3, '.'), bad + ".");
    EXPECT_EQ(center(bad, 4, '.'), "." + bad + ".");
    EXPECT_EQ(insert(bad, "X", 3, '.'), bad + ".X");
    EXPECT_EQ(overlay(bad, "X", 3, '.'), bad + "X");
    EXPECT_EQ(overlay("ab", mb::samples().invalid, 2, '.'), bad);
    EXPECT_EQ(change(bad, "a", "b", 1, 9), "b" + mb::samples().invalid);
}

TEST(MultiByteFailure, FailedEditOfAStringLeavesItAndItsCopies) {
    SwitchAt const at(on);
    string const bad = "a" + mb::samples().invalid;
    DString text(bad);
    DString const copy(text);
    EXPECT_EQ(failureOf([&] { text.upperCase(); }), badSequence(725));
    EXPECT_EQ(failureOf([&] { text.reverse(); }), badSequence(725));
    EXPECT_EQ(operations::contentsOf(text), bad);
    EXPECT_EQ(operations::contentsOf(copy), bad);
    EXPECT_EQ(operations::refsOf(text), 2U);
}

} // namespace
