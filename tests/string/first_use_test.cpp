// What happens in a process that has not made a string yet: each test runs in a process of its own, so this
// program itself must never make one.
#include "tests/buffers/buffer_support.h"

#include <clocale>
#include <cstdlib>

namespace {

using namespace support;

/// The exit status of a child that runs `body`, which answers whether all is well.
#define EXPECT_IN_FRESH_PROCESS(...)                                                                         \
    EXPECT_EXIT(                                                                                             \
        {                                                                                                    \
            auto const body = __VA_ARGS__;                                                                   \
            std::_Exit(body() ? 0 : 1);                                                                      \
        },                                                                                                   \
        testing::ExitedWithCode(0), "")

TEST(FirstUse, NothingIsMadeAtLoad) {
    EXPECT_EQ(DBuffer::nullBuffer, nullptr);
    EXPECT_EQ(DBuffer::nullDBuffer, nullptr);
    EXPECT_EQ(DString::nullBuffer, nullptr);
    EXPECT_EQ(DString::nullBuf(), nullptr);
}

TEST(FirstUse, TheFirstStringMakesTheSharedEmptyBuffer) {
    EXPECT_IN_FRESH_PROCESS([] {
        DString const first;
        return DString::nullBuf() == first.c_str() && DString::nullBuffer == first.c_str() &&
               DBuffer::nullBuffer == bufferOf(first) && DBuffer::nullBuffer->className() == defaultClass() &&
               (DBuffer::nullDBuffer != nullptr) == isMultiByte() && refsOf(first) == 2;
    });
}

TEST(FirstUse, EveryConstructorMakesTheSharedEmptyBuffer) {
    EXPECT_IN_FRESH_PROCESS([] { return DString("abc").length() == 3 && DString::nullBuf() != nullptr; });
    EXPECT_IN_FRESH_PROCESS([] { return DString('c').length() == 1 && DString::nullBuf() != nullptr; });
    EXPECT_IN_FRESH_PROCESS([] { return DString(-5).length() == 2 && DString::nullBuf() != nullptr; });
    EXPECT_IN_FRESH_PROCESS([] { return DString(2.5).length() == 3 && DString::nullBuf() != nullptr; });
    EXPECT_IN_FRESH_PROCESS(
        [] { return DString(nullptr, 5, '*').length() == 5 && DString::nullBuf() != nullptr; });
    EXPECT_IN_FRESH_PROCESS([] { return DString("abc"s).length() == 3 && DString::nullBuf() != nullptr; });
    EXPECT_IN_FRESH_PROCESS([] { return DString(nullptr).empty() && DString::nullBuf() != nullptr; });
}

TEST(FirstUse, AdoptingABufferMakesTheSharedEmptyBuffer) {
    EXPECT_IN_FRESH_PROCESS([] {
        DString const adopted(plainBuffer("abc").giveUp());
        return DString::nullBuf() != nullptr && textOf(adopted) == "abc";
    });
}

TEST(FirstUse, AnAdoptedBufferCanBeMovedFromAtOnce) {
    EXPECT_IN_FRESH_PROCESS([] {
        DString adopted(plainBuffer("abc").giveUp());
        DString const taken(std::move(adopted));
        return textOf(taken) == "abc" && adopted.empty() && *adopted.c_str() == '\0';
    });
    EXPECT_IN_FRESH_PROCESS([] {
        DString first(plainBuffer("abc").giveUp());
        DString second(plainBuffer("def").giveUp());
        second = std::move(first);
        return textOf(second) == "abc" && first.empty();
    });
}

TEST(FirstUse, APlainReceiverMakesTheEmptyBufferItNeeds) {
    EXPECT_IN_FRESH_PROCESS([] {
        Owned const plain = plainBuffer("abc");
        DBuffer* const empty = plain->null();
        return empty != nullptr && empty->length == 0 && DBuffer::nullBuffer != nullptr &&
               (DBuffer::nullDBuffer != nullptr) == isMultiByte();
    });
    EXPECT_IN_FRESH_PROCESS([] {
        Owned const plain = plainBuffer("abc");
        Owned const empty(plain->newBuffer(nullptr, 0));
        return empty->length == 0 && empty->refs == 2 && DBuffer::nullBuffer != nullptr;
    });
}

TEST(FirstUse, InitializeDoesNotStoreWhatItMakes) {
    EXPECT_IN_FRESH_PROCESS([] {
        Owned const made(DBuffer::initialize());
        return DBuffer::nullBuffer == nullptr && (DBuffer::nullDBuffer != nullptr) == isMultiByte() &&
               made->refs == 1 && made->className() == defaultClass();
    });
}

TEST(FirstUse, TheModeOfTheSharedEmptyBufferStaysWhenTheLocaleChanges) {
    EXPECT_IN_FRESH_PROCESS([] {
        DBuffer* const shared = DBuffer::defaultBuffer();
        std::string const name = shared->className();
        return std::setlocale(LC_ALL, "C") != nullptr && DBuffer::defaultBuffer() == shared &&
               DString().c_str() == shared->contents() && shared->className() == name;
    });
}

TEST(FirstUse, TextsOfAPlainProcessAreMultiByteOnceTheLocaleIs) {
    EXPECT_IN_FRESH_PROCESS([] {
        std::string const locale = std::setlocale(LC_ALL, nullptr);
        std::setlocale(LC_ALL, "C");
        DString text("abc");
        bool const plainAtFirst = bufferOf(text)->className() == "DBuffer"s;
        std::setlocale(LC_ALL, locale.c_str());
        text += "d";
        return plainAtFirst && DBuffer::nullBuffer->className() == "DBuffer"s &&
               bufferOf(text)->className() == defaultClass() && textOf(text) == "abcd" &&
               bufferOf(DString("x"))->className() == defaultClass();
    });
}

} // namespace
