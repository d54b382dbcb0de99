// Which buffers have room for appended bytes: none of a class that a host derived.
#include "tests/buffers/buffer_support.h"

#include <clocale>

namespace {

using namespace support;

/// A class of a host whose buffers look, when they are destroyed, whether anybody wrote past their text.
template <class Base>
class Guarded : public Base {
public:
    using Base::Base;
    ~Guarded() override {
        ++gone;
        if (this->length != builtLength || !guardIsIntact(this, builtLength)) ++overwritten;
    }
    DBuffer* allocate(unsigned int size) const override { return Base::allocate(size); }

    static DBuffer* make(std::string_view text) {
        gone = 0;
        overwritten = 0;
        builtLength = static_cast<unsigned int>(text.size());
        return makeIn<Guarded>(text, guardSize);
    }

    inline static unsigned int builtLength = 0;
    inline static int gone = 0;
    inline static int overwritten = 0;
};

/// The same without a word about making buffers.
class GuardedAsInherited : public DBuffer {
public:
    using DBuffer::DBuffer;
    ~GuardedAsInherited() override {
        ++gone;
        if (length != builtLength || !guardIsIntact(this, builtLength)) ++overwritten;
    }
    static DBuffer* make(std::string_view text) {
        gone = 0;
        overwritten = 0;
        builtLength = static_cast<unsigned int>(text.size());
        return makeIn<GuardedAsInherited>(text, guardSize);
    }

    inline static unsigned int builtLength = 0;
    inline static int gone = 0;
    inline static int overwritten = 0;
};

template <class Host>
void expectNeverGrownInPlace() {
    for (unsigned int length : {1U, 3U, 5U, 20U, 100U, 129U, 1000U, 1025U}) {
        SCOPED_TRACE(length);
        std::string const before(length, 'a');
        DString text(Host::make(before));
        text += 'x';
        EXPECT_EQ(textOf(text), before + 'x');
        EXPECT_EQ(Host::gone, 1) << "the text moved to a new buffer";
        EXPECT_EQ(Host::overwritten, 0);
        text += "yz";
        EXPECT_EQ(textOf(text), before + "xyz");
    }
}

TEST(StringAppendToAHostsBuffer, OfAClassThatInheritsEverythingNeverGrowsInPlace) {
    expectNeverGrownInPlace<GuardedAsInherited>();
}

TEST(StringAppendToAHostsBuffer, OfAClassThatOverridesTheFactoryNeverGrowsInPlace) {
    expectNeverGrownInPlace<Guarded<DBuffer>>();
}

TEST(StringAppendToAHostsBuffer, OfAClassThatMakesItsOwnKindKeepsTheClass) {
    DString text(makeIn<HostFactoryBuffer>("abc", guardSize));
    for (unsigned int i = 0; i < 50; ++i) {
        text += 'x';
        ASSERT_STREQ(bufferOf(text)->className(), "HostFactoryBuffer");
        ASSERT_EQ(HostFactoryBuffer::lastAllocated, 4 + i) << "each text gets a buffer of its own";
        ASSERT_TRUE(guardIsIntact(bufferOf(text), text.length()));
    }
    EXPECT_EQ(textOf(text), "abc" + std::string(50, 'x'));
}

TEST(StringAppendToAPlainBuffer, GivesTheClassOfTheLocale) {
    DString text;
    {
        std::string const locale = std::setlocale(LC_ALL, nullptr);
        std::setlocale(LC_ALL, "C");
        Owned const plain = plainBuffer("");
        text = DString(plain->newBuffer("abc", 3));
        std::setlocale(LC_ALL, locale.c_str());
    }
    ASSERT_STREQ(bufferOf(text)->className(), "DBuffer");
    text += "d";
    EXPECT_EQ(bufferOf(text)->className(), defaultClass());
    EXPECT_EQ(textOf(text), "abcd");
}

TEST(StringAppendToAMultiByteBuffer, KeepsTheClassWhenTheLocaleIsSingleByteLater) {
    if (!isMultiByte()) {
        DString text("abc");
        text += "d";
        EXPECT_STREQ(bufferOf(text)->className(), "DBuffer");
        return;
    }
    std::string const locale = std::setlocale(LC_ALL, nullptr);
    DString text("abc");
    std::setlocale(LC_ALL, "C");
    for (int i = 0; i < 200; ++i) {
        text += 'x';
        EXPECT_STREQ(bufferOf(text)->className(), "DDBCSBuffer");
    }
    std::setlocale(LC_ALL, locale.c_str());
    EXPECT_EQ(textOf(text), "abc" + std::string(200, 'x'));
}

} // namespace
