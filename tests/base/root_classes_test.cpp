// The two root classes: the version, the severities, and what objects of no special class say of themselves.
#include <kelcl/dbase.h>
#include <kelcl/dstring.h>

#include <gtest/gtest.h>

#include <cstdint>
#include <sstream>
#include <string>
#include <type_traits>

namespace {

std::string textOf(DString const& text) { return {text.c_str(), text.length()}; }

/// The address as the root classes write it: upper-case hexadecimal digits, two for each byte.
std::string hexadecimal(void const* object) {
    std::string digits;
    for (auto rest = reinterpret_cast<std::uintptr_t>(object); rest != 0; rest /= 256)
        digits.insert(0, std::string{"0123456789ABCDEF"[rest / 16 % 16], "0123456789ABCDEF"[rest % 16]});
    return digits;
}

TEST(RootClasses, HaveTheVersionNumber310Revision1) {
    auto const [number, revision] = DBase::version();
    EXPECT_EQ(number, 310);
    EXPECT_EQ(revision, 1);
    static_assert(std::is_same_v<decltype(number), std::uint16_t const>);
}

TEST(RootClasses, HaveTheSeveritiesAtHand) {
    EXPECT_EQ(static_cast<unsigned int>(DBase::recoverable), 1U);
    EXPECT_EQ(static_cast<unsigned int>(DBase::unrecoverable), 0U);
}

TEST(RootClasses, SayWhatTheyAre) {
    DBase const base;
    DVBase const vbase;
    EXPECT_EQ(textOf(base.asString()), "DBase object");
    EXPECT_EQ(textOf(vbase.asString()), "DVBase object");
    EXPECT_EQ(textOf(base.asDebugInfo()), "DBase(@" + hexadecimal(&base) + ")");
    EXPECT_EQ(textOf(vbase.asDebugInfo()), "DVBase(@" + hexadecimal(&vbase) + ")");
}

TEST(RootClasses, AreWrittenToStreams) {
    std::ostringstream out;
    out << DBase() << '|' << DVBase();
    EXPECT_EQ(out.str(), "DBase object|DVBase object");
}

TEST(RootClasses, ADerivedClassIsWrittenAsItsOwnText) {
    class Named : public DVBase {
    public:
        DString asString() const override { return DString("a named object"); }
    };
    std::ostringstream out;
    out << Named();
    EXPECT_EQ(out.str(), "a named object");
}

} // namespace
