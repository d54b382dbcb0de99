// Searches take time in proportion to the text, shown by counts: this program brings the C library's
// functions that look at bytes and characters with counters in front of them.
#include "tests/buffers/buffer_support.h"
#include "tests/characters/multi_byte_support.h"

#include <dlfcn.h>

namespace {

std::size_t looked = 0; ///< Bytes that were compared, and characters that were measured.

} // namespace

extern "C" {

int memcmp(void const* left, void const* right, std::size_t n) noexcept {
    auto const* const l = static_cast<unsigned char const*>(left);
    auto const* const r = static_cast<unsigned char const*>(right);
    for (std::size_t i = 0; i < n; ++i) {
        ++looked;
        if (l[i] != r[i]) return l[i] < r[i] ? -1 : 1;
    }
    return 0;
}

void* memmem(void const* text, std::size_t n, void const* pattern, std::size_t m) noexcept {
    using Function = void* (*)(void const*, std::size_t, void const*, std::size_t);
    static auto const original = reinterpret_cast<Function>(dlsym(RTLD_NEXT, "memmem"));
    void* const found = original(text, n, pattern, m);
    looked += m + (found == nullptr ? n
                                    : static_cast<std::size_t>(static_cast<char const*>(found) -
                                                               static_cast<char const*>(text)));
    return found;
}

std::size_t mbrtowc(wchar_t* value, char const* p, std::size_t n, std::mbstate_t* state) noexcept {
    using Function = std::size_t (*)(wchar_t*, char const*, std::size_t, std::mbstate_t*);
    static auto const original = reinterpret_cast<Function>(dlsym(RTLD_NEXT, "mbrtowc"));
    ++looked;
    return original(value, p, n, state);
}

std::size_t mbrlen(char const* p, std::size_t n, std::mbstate_t* state) noexcept {
    static std::mbstate_t own;
    return mbrtowc(nullptr, p, n, state != nullptr ? state : &own);
}
}

namespace {

/// A class of a host that leaves the searches alone.
class HostBuffer : public DDBCSBuffer {
public:
    using DDBCSBuffer::DDBCSBuffer;
    DBuffer* allocate(unsigned int size) const override {
        return support::makeIn<HostBuffer>(std::string(size, ' '), 0);
    }
};

std::string repeated(std::string const& part, std::size_t bytes) {
    std::string text;
    while (text.size() < bytes)
        text += part;
    return text;
}

/// A text of one character, of which every step is asked of the C library where there is such a character,
/// and patterns in it that begin inside characters only.
struct Case {
    std::string character;
    std::string text;
    std::vector<std::string> patterns;
};

std::vector<Case> casesOf(std::size_t bytes) {
    std::vector<std::string> characters = {"\xF8\x88\x80\x80\x80"}; // not Unicode, but glibc takes it
    if (!mb::isUtf8()) characters.clear();
    for (mb::Sample const& sample : mb::samples().longCharacters())
        characters.push_back(sample.bytes);
    std::vector<Case> cases;
    for (std::string const& character : characters) {
        Case one{character, repeated(character, bytes), {}};
        for (std::size_t const length : {std::size_t{2}, std::size_t{70}, bytes / 3, bytes / 2})
            one.patterns.push_back(one.text.substr(1, length));
        // All but the last byte matches at each character.
        one.patterns.push_back(one.text.substr(0, bytes / 2) + '!');
        cases.push_back(one);
    }
    return cases;
}

/// Does something with each text and pattern in a class, and expects that it looks at no byte often.
template <class Buffer, class Work>
void expectFewLooks(Work work) {
    DString(support::makeIn<DDBCSBuffer>("\xB0\xA1", 0)).indexOf('a', 2); // learns the encoding
    for (std::size_t const bytes : {std::size_t{1} << 12, std::size_t{1} << 16})
        for (Case const& one : casesOf(bytes))
            for (std::string const& pattern : one.patterns) {
                DString text(support::makeIn<Buffer>(one.text, 0));
                looked = 0;
                work(text, pattern);
                EXPECT_LE(looked, 20 * bytes)
                    << mb::hex(one.character) << bytes << " bytes, pattern of " << pattern.size();
            }
}

template <class Work>
void expectFewLooksInAll(Work work) {
    expectFewLooks<DDBCSBuffer>(work);
    expectFewLooks<HostBuffer>(work);
}

TEST(Growth, OfSearchesForPatternsInsideCharactersIsLinear) {
    expectFewLooksInAll([](DString const& text, std::string const& pattern) { text.indexOf(pattern); });
}

TEST(Growth, OfBackwardSearchesForPatternsInsideCharactersIsLinear) {
    expectFewLooksInAll(
        [](DString const& text, std::string const& pattern) { text.lastIndexOf(pattern, text.length()); });
}

TEST(Growth, OfCountingPatternsInsideCharactersIsLinear) {
    expectFewLooksInAll([](DString const& text, std::string const& pattern) { text.occurrencesOf(pattern); });
}

TEST(Growth, OfChangingPatternsInsideCharactersIsLinear) {
    expectFewLooksInAll([](DString& text, std::string const& pattern) { text.change(pattern, "x"); });
}

TEST(Growth, OfCountingAndChangingEveryCharacterIsLinear) {
    auto const first = [](DString const& text) {
        return std::string(text.c_str(), mb::lengthAt(std::string(text.c_str(), 8), 0));
    };
    expectFewLooksInAll([=](DString& text, std::string const&) {
        std::string const character = first(text);
        EXPECT_EQ(text.occurrencesOf(character), text.length() / character.size());
        EXPECT_EQ(text.occurrencesOf(character[0]), text.length() / character.size());
        text.change(character, "xy");
    });
}

TEST(Growth, OfCountingWhatATestAcceptsIsLinear) {
    expectFewLooksInAll([](DString const& text, std::string const&) {
        mb::SwitchAt const off(0);
        text.occurrencesOf(DStringTest([](int c) { return c < 0 ? 1 : 0; }));
    });
}

} // namespace
