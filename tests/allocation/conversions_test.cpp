// The making of strings, and their conversions from and to numbers and other notations, without memory.
#include "tests/allocation/sweep.h"

#include <gtest/gtest.h>

namespace {

using sweep::expectNoHarm;
using sweep::longText;

TEST(WithoutMemory, ConstructionsDoNoHarm) {
    expectNoHarm({
        {"from characters", [](DString& s) { s = DString("abc"); }},
        {"from signed characters",
         [](DString& s) { s = DString(reinterpret_cast<signed char const*>("abc")); }},
        {"from unsigned characters",
         [](DString& s) { s = DString(reinterpret_cast<unsigned char const*>("abc")); }},
        {"from a standard string", [](DString& s) { s = DString(longText()); }},
        {"from a view", [](DString& s) { s = DString(std::string_view(s).substr(1)); }},
        {"from a byte", [](DString& s) { s = DString('c'); }},
        {"from a signed byte", [](DString& s) { s = DString(static_cast<signed char>(7)); }},
        {"from an unsigned byte", [](DString& s) { s = DString(static_cast<unsigned char>(200)); }},
        {"from pieces", [](DString& s) { s = DString("ab", 2, nullptr, 300, "cd", 2, '.'); }},
        {"from two pieces", [](DString& s) { s = DString(nullptr, 3, "cd", 2); }},
        {"from one piece", [](DString& s) { s = DString("ab", 2); }},
        {"a moved string",
         [](DString& s) {
             DString other(longText());
             s = std::move(other);
         }},
    });
}

TEST(WithoutMemory, NumbersDoNoHarm) {
    expectNoHarm({
        {"from a short", [](DString& s) { s = static_cast<short>(-7); }},
        {"from an unsigned short", [](DString& s) { s = static_cast<unsigned short>(7); }},
        {"from an int", [](DString& s) { s = -70'000; }},
        {"from an unsigned int", [](DString& s) { s = 70'000U; }},
        {"from a long", [](DString& s) { s = -70'000L; }},
        {"from an unsigned long", [](DString& s) { s = 70'000UL; }},
        {"from a long long", [](DString& s) { s = -70'000LL; }},
        {"from an unsigned long long", [](DString& s) { s = 70'000ULL; }},
        {"from a double", [](DString& s) { s = 0.1; }},
    });
}

TEST(WithoutMemory, RadixConversionsDoNoHarm) {
    expectNoHarm({
        {"c2x", [](DString& s) { s.c2x(); }},
        {"c2b", [](DString& s) { s.c2b(); }},
        {"c2d", [](DString& s) { s.c2d(); }},
        {"binaryMath", [](DString& s) { s.binaryMath(7); }},
        {"x2c", [](DString& s) { DString(s).c2x().x2c(); }},
        {"b2c", [](DString& s) { DString(s).c2b().b2c(); }},
        {"d2c", [](DString& s) { DString(s).c2d().d2c(); }},
        {"decimalMath", [](DString& s) { DString(s).c2d().decimalMath(7); }},
        {"d2c of something else", [](DString& s) { s.d2c(); }},
    });
}

} // namespace
