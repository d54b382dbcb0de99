// What the first use of an encoding costs, counted in questions to the C library: this program brings a
// mbrtowc of its own, which counts them and passes them on.
#include "characters/stepping.h"
#include "tests/characters/multi_byte_support.h"

#include <dlfcn.h>

namespace {

unsigned int questions = 0;

} // namespace

extern "C" std::size_t mbrtowc(wchar_t* value, char const* p, std::size_t n, std::mbstate_t* state) noexcept {
    using Function = std::size_t (*)(wchar_t*, char const*, std::size_t, std::mbstate_t*);
    static auto const library = reinterpret_cast<Function>(dlsym(RTLD_NEXT, "mbrtowc"));
    ++questions;
    return library(value, p, n, state);
}

namespace {

unsigned int countOf(void (*use)()) {
    unsigned int const before = questions;
    use();
    return questions - before;
}

void useEncoding() { EXPECT_GE(kelcl::BufferSteps().length("a"), 1u); }

TEST(Encodings, AskAFewTenThousandQuestionsWhenTheyAreFirstUsedAndNoneLater) {
    unsigned int const first = countOf(useEncoding);
    if (mb::isUtf8()) {
        EXPECT_EQ(first, 0u);
    } else {
        EXPECT_GE(first, 256u) << "each byte";
        EXPECT_LE(first, 80000u) << "a few milliseconds";
    }
    EXPECT_EQ(countOf(useEncoding), 0u);
}

} // namespace
