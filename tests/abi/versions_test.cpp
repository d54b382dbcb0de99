// A host that was linked before the library's symbols had versions: this program is linked with the library's
// objects as they were made into a library then, and runs with the one that has versions. It uses one of each
// kind of symbol.
#include <kelcl/kelcl.h>

#include <gtest/gtest.h>

#include <dlfcn.h>

namespace {

/// Relies on the virtual table and the type information of the library's class.
class DigitTest : public DStringTest {
public:
    DigitTest() : DStringTest(2, nullptr) {}
    int test(int c) const override { return c >= '0' && c <= '9' ? 1 : 0; }
};

} // namespace

TEST(HostLinkedBeforeVersions, RunsWithALibraryThatHasThem) {
    EXPECT_NE(dlvsym(RTLD_DEFAULT, "_ZN5DBase7versionEv", "KELCL_3.10"), nullptr);
}

TEST(HostLinkedBeforeVersions, CallsFunctionsAndSeesData) {
    DString text("one two three");
    EXPECT_TRUE(text.change("two", "2") == "one 2 three");
    EXPECT_TRUE(text.word(3) == "three");
    EXPECT_STREQ(DString::zero, "0");
}

TEST(HostLinkedBeforeVersions, DerivesFromClassesOfTheLibrary) {
    EXPECT_EQ(DString("ab12").indexOf(DigitTest()), 3u);
}

TEST(HostLinkedBeforeVersions, CatchesWhatTheLibraryThrows) {
    DString const text("short");
    EXPECT_THROW(text[99], DInvalidRequest);
}
