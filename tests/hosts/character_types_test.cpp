// Whether a class that a host derived says itself what its characters are, told by its virtual table.
#include "buffers/host_classes.h"

#include <kelcl/ddbcsbuffer.h>

#include <new>

#include <gtest/gtest.h>

namespace {

class Inheriting : public DDBCSBuffer {
public:
    using DDBCSBuffer::DDBCSBuffer;
    unsigned int startSearch(unsigned int start, unsigned int) const override { return start; }
    char const* className() const override { return "Inheriting"; }
};

class Overriding : public Inheriting {
public:
    using Inheriting::Inheriting;
    unsigned int charType(unsigned int) const override { return 0; }
};

class OverridingFurtherDown final : public Overriding {
public:
    using Overriding::Overriding;
};

template <class Buffer>
bool overrides() {
    alignas(Buffer) char storage[sizeof(Buffer) + 1];
    auto* const buffer = ::new (storage) Buffer(0);
    bool const result = !kelcl::hasMultiByteCharType(*buffer);
    buffer->~Buffer();
    return result;
}

TEST(CharacterTypes, AreTheLibrarysWhereNoClassOverridesThem) {
    EXPECT_FALSE(overrides<DDBCSBuffer>());
    EXPECT_FALSE(overrides<Inheriting>());
}

TEST(CharacterTypes, AreAHostsWhereOneDoes) {
    EXPECT_TRUE(overrides<Overriding>());
    EXPECT_TRUE(overrides<OverridingFurtherDown>());
}

} // namespace
