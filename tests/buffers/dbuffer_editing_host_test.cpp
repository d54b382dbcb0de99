// What the edits of single-byte buffers ask a class that a host derived.
#include "tests/buffers/dbuffer_editing_support.h"
#include "tests/buffers/operation_support.h"

#include <functional>
#include <vector>

namespace {

using namespace editing;

/// Finds nothing in any set; its empty texts and copies are its own, too.
class SetBlindBuffer : public DBuffer {
public:
    using DBuffer::DBuffer;
    using DBuffer::indexOf;
    using DBuffer::indexOfAnyBut;
    using DBuffer::indexOfAnyOf;
    using DBuffer::lastIndexOfAnyBut;

    DBuffer* allocate(unsigned int size) const override {
        return ::new (::operator new[](sizeof(SetBlindBuffer) + size + 1)) SetBlindBuffer(size);
    }
    char const* className() const override { return "SetBlindBuffer"; }
    unsigned int indexOfAnyOf(char const*, unsigned int, unsigned int) const override { return 0; }
    unsigned int indexOfAnyBut(char const*, unsigned int, unsigned int) const override { return 2; }
    unsigned int lastIndexOfAnyBut(char const*, unsigned int, unsigned int) const override { return 3; }
    unsigned int indexOfAnyBut(DStringTest const&, unsigned int) const override { return 3; }
    unsigned int lastIndexOfAnyBut(DStringTest const&, unsigned int) const override { return 4; }
    unsigned int indexOf(char const*, unsigned int, unsigned int start) const override {
        return start <= 2 ? 2 : 0;
    }
};

Owned setBlind(std::string_view text) {
    auto* const buffer = ::new (::operator new[](sizeof(SetBlindBuffer) + text.size() + 1))
        SetBlindBuffer(operations::lengthOf(text));
    std::memcpy(buffer->contents(), text.data(), text.size());
    return Owned(buffer);
}

TEST(HostsOwnBufferClass, IsAskedWhatStripAndChangeLookFor) {
    Owned const text = setBlind("abcdef");
    EXPECT_EQ(Owned(text->strip("x", 1, DStringEnum::both)).text(), "bc");
    EXPECT_EQ(Owned(text->strip("x", 1, DStringEnum::leading)).text(), "bcdef");
    EXPECT_EQ(Owned(text->strip("x", 1, DStringEnum::trailing)).text(), "abc");
    EXPECT_EQ(Owned(text->strip(DStringTest(isBlank), DStringEnum::both)).text(), "cd");
    EXPECT_EQ(Owned(text->change("??", 2, "-", 1, 1, 9)).text(), "a-def");
}

TEST(HostsOwnBufferClass, IsAskedForTheLettersOfUpperAndLowerCase) {
    Owned const text = setBlind("abcDEF");
    EXPECT_EQ(Owned(text->upperCase()).text(), "abcDEF");
    EXPECT_EQ(Owned(text->lowerCase()).text(), "abcDEF");
}

TEST(HostsOwnBufferClass, IsAskedForTheBytesToTranslate) {
    Owned const text = setBlind("abc");
    EXPECT_EQ(Owned(text->translate("a", 1, "x", 1, ' ')).text(), "abc");
}

TEST(HostsOwnBufferClass, MakesTheBuffersOfResults) {
    Owned const text = setBlind("abcdef");
    char const* const name = text->className();
    for (auto const& operation : std::vector<std::function<DBuffer*(DBuffer&)>>{
             overlaying("XY", 2), inserting("XY", 2), leftJustifying(9, '.'), centering(9, '.'), copying(3),
             changing("??", "x"), stripping("x", DStringEnum::both),
             [](DBuffer& b) { return b.remove(2, 1); }, [](DBuffer& b) { return b.rightJustify(9, '.'); }}) {
        Owned const result(operation(*text));
        EXPECT_EQ(result->className(), name);
    }
    SharedWith const other(text);
    EXPECT_EQ(Owned(text->reverse())->className(), name);
}

} // namespace
