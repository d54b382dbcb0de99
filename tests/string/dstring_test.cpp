// What a string is: one pointer to a buffer that it shares until it is written to, whose operations it calls
// through the virtual table. Its constants and its debug text.
#include "tests/buffers/buffer_support.h"
#include "tests/string/string_support.h"

#include <cstdint>

namespace {

using namespace support;

TEST(StringConstants, HaveTheirTexts) {
    EXPECT_STREQ(DString::null, "");
    EXPECT_STREQ(DString::zero, "0");
    EXPECT_STREQ(DString::maxLong, "0x7fffffffffffffffL");
}

TEST(StringConstants, TheSwitchFollowsTheEnvironment) {
    char const* const set = std::getenv("KORVA_I18N");
    EXPECT_EQ(DString::fgI18NState, set != nullptr && set == "ON"s ? 1 : 0);
}

TEST(StringLayout, AStringIsOnePointerWide) {
    static_assert(sizeof(DString) == sizeof(void*));
    static_assert(alignof(DString) == alignof(void*));
    static_assert(!std::is_polymorphic_v<DString>);
    DString const text("abc");
    char const* stored = nullptr;
    std::memcpy(&stored, static_cast<void const*>(&text), sizeof stored);
    EXPECT_EQ(stored, text.c_str()) << "the pointer is that of the text";
}

// Copy-on-write

TEST(StringCopyOnWrite, ASoleOwnerKeepsItsBuffer) {
    DString text("abc");
    char const* const before = text.c_str();
    EXPECT_EQ(&text.prepareToChange(), &text);
    EXPECT_EQ(text.c_str(), before);
    EXPECT_EQ(refsOf(text), 1U);
}

TEST(StringCopyOnWrite, OneOfTwoOwnersGetsABufferOfItsOwn) {
    DString const original("a\0c"s);
    DString copy(original);
    EXPECT_EQ(&copy.prepareToChange(), &copy);
    EXPECT_NE(copy.c_str(), original.c_str());
    expectOwnText(copy, "a\0c"s);
    expectOwnText(original, "a\0c"s);
}

TEST(StringCopyOnWrite, AnEmptyStringStaysOnTheSharedBuffer) {
    DString text;
    unsigned int const before = refsOf(text);
    text.prepareToChange();
    expectSharedEmpty(text);
    EXPECT_EQ(refsOf(text), before);
}

TEST(StringCopyOnWrite, TheCopyIsOfTheSameClass) {
    DString const original(makeIn<HostFactoryBuffer>("abc", guardSize));
    DString copy(original);
    copy.prepareToChange();
    EXPECT_NE(copy.c_str(), original.c_str());
    EXPECT_STREQ(bufferOf(copy)->className(), "HostFactoryBuffer");
    EXPECT_EQ(textOf(copy), "abc");
}

TEST(StringCopyOnWrite, WritingAnElementNeverShowsInACopy) {
    DString original("abc");
    DString const copy(original);
    original[2U] = 'X';
    EXPECT_EQ(textOf(original), "aXc");
    EXPECT_EQ(textOf(copy), "abc");
    EXPECT_EQ(refsOf(copy), 1U);
}

/// A buffer whose operations tell how many owners it had meanwhile, and fail.
class FailingBuffer : public DBuffer {
public:
    using DBuffer::DBuffer;
    DBuffer* remove(unsigned int, unsigned int) override { throw refs; }
    DBuffer* rightJustify(unsigned int, char) override { throw refs; }
};

TEST(StringProtocol, TheBufferIsHeldByAnotherReferenceWhileItsOperationRuns) {
    DString text(makeIn<FailingBuffer>("abcd", guardSize));
    try {
        text.remove(1, 1);
        ADD_FAILURE() << "did not fail";
    } catch (unsigned int refs) {
        EXPECT_EQ(refs, 2U);
    }
    try {
        text.rightJustify(9, ' ');
        ADD_FAILURE() << "did not fail";
    } catch (unsigned int refs) {
        EXPECT_EQ(refs, 2U);
    }
    EXPECT_EQ(refsOf(text), 1U) << "only the extra reference is released";
    EXPECT_EQ(textOf(text), "abcd");
}

TEST(StringProtocol, OperationsAreCalledThroughTheVirtualTable) {
    class Answering : public DBuffer {
    public:
        using DBuffer::DBuffer;
        DBuffer* remove(unsigned int start, unsigned int count) override {
            return answer("remove " + std::to_string(start) + " " + std::to_string(count));
        }
        DBuffer* rightJustify(unsigned int width, char pad) override {
            return answer("rightJustify " + std::to_string(width) + " " + pad);
        }

    private:
        DBuffer* answer(std::string const& call) const {
            return newBuffer(call.data(), static_cast<unsigned int>(call.size()));
        }
    };
    DString const original(makeIn<Answering>("abcd", guardSize));
    DString text(original);
    EXPECT_EQ(textOf(text.remove(2, 7)), "remove 2 7");
    text = original;
    EXPECT_EQ(textOf(text.remove(3)), "remove 3 4294967295");
    text = original;
    EXPECT_EQ(textOf(text.rightJustify(9, '+')), "rightJustify 9 +");
    EXPECT_EQ(textOf(DString::remove(original, 0, 1)), "remove 0 1");
    EXPECT_EQ(refsOf(original), 1U);
}

// Debug text

TEST(StringDebugText, ShowsTheAddressAndTheBuffer) {
    DString const text("hello");
    DString const copy(text);
    std::string const expected = "DString(@" + std::to_string(reinterpret_cast<std::uintptr_t>(&text)) +
                                 ",pBuffer->" + defaultClass() + "(@" +
                                 std::to_string(reinterpret_cast<std::uintptr_t>(bufferOf(text))) +
                                 ",refs=2,len=5,data=[hello]))";
    EXPECT_EQ(textOf(text.asDebugInfo()), expected);
}

TEST(StringDebugText, AsStringIsACopyThatShares) {
    DString const text("hello");
    DString const copy = text.asString();
    EXPECT_EQ(copy.c_str(), text.c_str());
    EXPECT_EQ(refsOf(text), 2U);
}

} // namespace
