// The UTF-8 kernels against a plain model, on valid text, on every kind of mistake, and at the end of a page.
#include "characters/utf8.h"
#include "characters/utf8_blocks.h"
#include "characters/utf8_narrow_wide.h"
#include "characters/utf8_widen_wide.h"

#include <gtest/gtest.h>

#include <sys/mman.h>
#include <unistd.h>

#include <algorithm>
#include <cstring>
#include <random>
#include <string>
#include <vector>

namespace {

using std::size_t;

struct Decoded {
    size_t length;
    wchar_t value;
};

/// By the definition: a shortest form, of a code point that is no surrogate, up to 0x10FFFF.
Decoded decodeByDefinition(std::string const& text, size_t at) {
    auto const byte = [&text](size_t i) {
        return i < text.size() ? static_cast<unsigned char>(text[i]) : 0U;
    };
    unsigned int const lead = byte(at);
    size_t const length = lead < 0x80       ? 1
                          : lead >> 5 == 6  ? 2
                          : lead >> 4 == 14 ? 3
                          : lead >> 3 == 30 ? 4
                                            : 0;
    if (length == 0) return {0, 0};
    unsigned long value = length == 1 ? lead : lead & (0x7FU >> length);
    for (size_t i = 1; i < length; ++i) {
        if (byte(at + i) >> 6 != 2) return {0, 0};
        value = value * 64 + (byte(at + i) & 0x3F);
    }
    unsigned long const least[] = {0, 0, 0x80, 0x800, 0x10000};
    if (value < least[length] || value > 0x10FFFF || (value >= 0xD800 && value < 0xE000)) return {0, 0};
    return {length, static_cast<wchar_t>(value)};
}

struct Model {
    size_t bytes = 0;
    std::vector<wchar_t> values;
};

Model modelOf(std::string const& text) {
    Model model;
    while (model.bytes < text.size()) {
        Decoded const next = decodeByDefinition(text, model.bytes);
        if (next.length == 0) break;
        model.bytes += next.length;
        model.values.push_back(next.value);
    }
    return model;
}

/// Memory between two pages that must not be touched.
class GuardedPages {
public:
    GuardedPages() : page_(static_cast<size_t>(sysconf(_SC_PAGESIZE))) {
        void* const all = mmap(nullptr, 18 * page_, PROT_NONE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
        if (all == MAP_FAILED) throw std::bad_alloc();
        begin_ = static_cast<char*>(all) + page_;
        if (mprotect(begin_, 16 * page_, PROT_READ | PROT_WRITE) != 0) throw std::bad_alloc();
    }
    GuardedPages(GuardedPages const&) = delete;
    GuardedPages& operator=(GuardedPages const&) = delete;
    ~GuardedPages() { munmap(begin_ - page_, 18 * page_); }

    /// The first bytes after one guard; the last `n` bytes in front of the other.
    char* first() { return begin_; }
    char* last(size_t n) { return begin_ + 16 * page_ - n; }

private:
    size_t page_;
    char* begin_;
};

/// One form of the widening: as in the model as far as it goes, which is to the end where there is no
/// mistake.
[[maybe_unused]] void expectWidenedAsInModel(kelcl::Extent (*widen)(wchar_t*, char const*, size_t),
                                             Model const& model, char const* p, size_t n, wchar_t* wide) {
    kelcl::Extent const widened = widen(wide, p, n);
    ASSERT_LE(widened.bytes, model.bytes);
    ASSERT_LE(widened.characters, model.values.size());
    ASSERT_TRUE(std::equal(wide, wide + widened.characters, model.values.begin()));
    ASSERT_TRUE(model.bytes != n || widened.characters == model.values.size());
}

/// One form of the narrowing: the text itself, as far as it goes, with exactly the room for it and with less.
[[maybe_unused]] void expectNarrowedAsInModel(kelcl::Extent (*narrow)(char*, size_t, wchar_t const*, size_t),
                                              Model const& model, std::string const& text,
                                              GuardedPages& output) {
    for (size_t const less : {0U, 1U, 3U, 40U}) {
        if (less > model.bytes) continue;
        size_t const room = model.bytes - less;
        char* const out = output.last(room);
        kelcl::Extent const narrowed = narrow(out, room, model.values.data(), model.values.size());
        ASSERT_LE(narrowed.bytes, room);
        ASSERT_EQ(std::memcmp(out, text.data(), narrowed.bytes), 0);
        size_t bytes = 0;
        for (size_t i = 0; i < narrowed.characters; ++i)
            bytes += kelcl::utf8LengthOf(model.values[i]);
        ASSERT_EQ(narrowed.bytes, bytes);
    }
}

void expectAsInModel(std::string const& text) {
    static GuardedPages input;
    static GuardedPages output;
    Model const model = modelOf(text);
    char* const p = input.last(text.size());
    std::copy(text.begin(), text.end(), p);

    kelcl::Extent const run = kelcl::plainUtf8Run(p, text.size());
    ASSERT_EQ(run.bytes, model.bytes);
    ASSERT_EQ(run.characters, model.values.size());
    ASSERT_EQ(kelcl::isPlainUtf8(p, text.size()), model.bytes == text.size());
    std::copy(text.begin(), text.end(), input.first());
    ASSERT_EQ(kelcl::plainUtf8Run(input.first(), text.size()).bytes, model.bytes);
    ASSERT_EQ(kelcl::isPlainUtf8(input.first(), text.size()), model.bytes == text.size());

    // Room for exactly as many characters as there are: nothing may be written past the last one.
    auto* const wide = reinterpret_cast<wchar_t*>(output.last(model.values.size() * sizeof(wchar_t)));
    kelcl::Extent const widened = kelcl::widenUtf8(wide, p, text.size());
    ASSERT_EQ(widened.bytes, model.bytes);
    ASSERT_EQ(widened.characters, model.values.size());
    ASSERT_TRUE(std::equal(model.values.begin(), model.values.end(), wide));

#if KELCL_HAS_BLOCKS
    if (kelcl::processorHasBlocks() && text.size() >= kelcl::shortestForBlocks)
        expectWidenedAsInModel(kelcl::blocks::widen, model, p, text.size(), wide);
    if (kelcl::processorHasBlocks()) expectNarrowedAsInModel(kelcl::blocks::narrow, model, text, output);
#endif
#if KELCL_HAS_WIDE
    if (kelcl::processorHasWide()) {
        expectWidenedAsInModel(kelcl::wide_utf8::widen, model, p, text.size(), wide);
        expectNarrowedAsInModel(kelcl::wide_utf8::narrow, model, text, output);
        // All of it, as there is room for it and no value that is no code point.
        std::string again(model.bytes, '\0');
        ASSERT_EQ(
            kelcl::wide_utf8::narrow(again.data(), again.size(), model.values.data(), model.values.size())
                .characters,
            model.values.size());
    }
#endif

    std::string const plain = text.substr(0, model.bytes);
    std::string backwards;
    for (size_t at = 0; at < plain.size(); at += decodeByDefinition(plain, at).length)
        backwards.insert(0, plain, at, decodeByDefinition(plain, at).length);
    char* const reversed = output.last(plain.size());
    kelcl::reverseUtf8(reversed, p, plain.size());
    ASSERT_EQ(std::string(reversed, plain.size()), backwards);

    char* const narrow = input.last(model.bytes); // over the text itself
    kelcl::Extent const narrowed =
        kelcl::narrowUtf8(narrow, model.bytes, model.values.data(), model.values.size());
    ASSERT_EQ(narrowed.bytes, model.bytes);
    ASSERT_EQ(narrowed.characters, model.values.size());
    ASSERT_EQ(std::memcmp(narrow, text.data(), model.bytes), 0);
    ASSERT_EQ(kelcl::utf8LengthOfAll(model.values.data(), model.values.size()), model.bytes);
}

class Texts {
public:
    explicit Texts(unsigned int seed) : random_(seed) {}

    size_t below(size_t n) { return std::uniform_int_distribution<size_t>(0, n - 1)(random_); }

    /// Characters of up to `longest` bytes, ASCII more often when `dense` is low.
    std::string valid(size_t characters, size_t longest, size_t dense) {
        std::string text;
        for (size_t i = 0; i < characters; ++i)
            append(text, below(4) < dense ? 1 + below(longest) : 1);
        return text;
    }

private:
    void append(std::string& text, size_t length) {
        static constexpr wchar_t from[] = {0, 0, 0x80, 0x800, 0x10000};
        static constexpr wchar_t to[] = {0, 0x7F, 0x7FF, 0xFFFF, 0x10FFFF};
        wchar_t value;
        do {
            switch (below(8)) {
            case 0:
                value = from[length];
                break;
            case 1:
                value = to[length];
                break;
            case 2:
                value = length == 3 ? (below(2) == 0 ? 0xD7FF : 0xE000) : from[length];
                break;
            default:
                value = from[length] +
                        static_cast<wchar_t>(below(static_cast<size_t>(to[length] - from[length]) + 1));
            }
        } while (value >= 0xD800 && value < 0xE000);
        char bytes[4];
        kelcl::writeUtf8(bytes, value, length);
        text.append(bytes, length);
    }

    std::mt19937 random_;
};

TEST(Utf8, IsWrittenAsTheDefinitionReadsIt) {
    for (wchar_t value = 0; value <= 0x10FFFF; ++value) {
        size_t const length = kelcl::utf8LengthOf(value);
        if (value >= 0xD800 && value < 0xE000) {
            ASSERT_EQ(length, 0U);
            continue;
        }
        char bytes[4];
        kelcl::writeUtf8(bytes, value, length);
        std::string const text(bytes, length);
        Decoded const back = decodeByDefinition(text, 0);
        ASSERT_EQ(back.length, length);
        ASSERT_EQ(back.value, value);
        ASSERT_EQ(kelcl::plainUtf8Length(text.data(), length), length);
        ASSERT_EQ(kelcl::plainUtf8Value(text.data(), length), value);
    }
    EXPECT_EQ(kelcl::utf8LengthOf(-1), 0U);
    EXPECT_EQ(kelcl::utf8LengthOf(0x110000), 0U);
    EXPECT_EQ(kelcl::utf8LengthOf(0x7FFFFFFF), 0U);
}

TEST(Utf8, OfAnyMixtureIsCountedAndConverted) {
    Texts texts(1);
    for (size_t dense = 0; dense <= 4; ++dense)
        for (size_t longest = 1; longest <= 4; ++longest)
            for (size_t characters = 0; characters < 140; ++characters)
                ASSERT_NO_FATAL_FAILURE(expectAsInModel(texts.valid(characters, longest, dense)));
    for (size_t longest = 1; longest <= 4; ++longest)
        ASSERT_NO_FATAL_FAILURE(expectAsInModel(texts.valid(9000, longest, 3)));
}

TEST(Utf8, IsPlainUpToTheFirstMistakeOfAnyKind) {
    using namespace std::string_literals;
    std::vector<std::string> const mistakes = {"\x80"s,
                                               "\xBF"s,
                                               "\xC0\x80"s,
                                               "\xC1\xBF"s,
                                               "\xC2"s,
                                               "\xC2\x41"s,
                                               "\xC2\xC2\x80"s,
                                               "\xDF\x80\x80"s,
                                               "\xE0\x80\x80"s,
                                               "\xE0\x9F\xBF"s,
                                               "\xE1\x80"s,
                                               "\xE1\x41\x80"s,
                                               "\xE1\x80\x41"s,
                                               "\xED\xA0\x80"s,
                                               "\xED\xBF\xBF"s,
                                               "\xEF\xBF"s,
                                               "\xF0\x80\x80\x80"s,
                                               "\xF0\x8F\xBF\xBF"s,
                                               "\xF1\x80\x80"s,
                                               "\xF1\x80\x80\x41"s,
                                               "\xF4\x90\x80\x80"s,
                                               "\xF4\xBF\xBF\xBF"s,
                                               "\xF5\x80\x80\x80"s,
                                               "\xF7\xBF\xBF\xBF"s,
                                               "\xF8\x88\x80\x80\x80"s,
                                               "\xFC\x84\x80\x80\x80\x80"s,
                                               "\xFE"s,
                                               "\xFF"s};
    Texts texts(2);
    for (std::string const& mistake : mistakes)
        for (size_t front = 0; front < 70; ++front)
            for (size_t back : {0U, 1U, 40U})
                ASSERT_NO_FATAL_FAILURE(
                    expectAsInModel(texts.valid(front, 4, 2) + mistake + texts.valid(back, 4, 2)));
}

TEST(Utf8, OfRandomBytesIsPlainAsFarAsTheDefinitionGoes) {
    Texts texts(3);
    constexpr char bytes[] =
        "\x41\x7F\x80\x8F\x90\x9F\xA0\xBF\xC0\xC2\xDF\xE0\xE1\xED\xEF\xF0\xF1\xF4\xF5\xFF";
    for (int i = 0; i < 20000; ++i) {
        std::string text = texts.valid(texts.below(60), 4, 3);
        for (size_t changes = texts.below(3); changes > 0 && !text.empty(); --changes)
            text[texts.below(text.size())] = bytes[texts.below(sizeof bytes - 1)];
        ASSERT_NO_FATAL_FAILURE(expectAsInModel(text));
    }
}

/// Each mistake, and each character that the end cuts off, at each place of the blocks that are looked at
/// together, with ASCII or longer characters around it.
TEST(Utf8, IsPlainOnlyWithoutAMistakeAnywhere) {
    static GuardedPages input;
    Texts texts(6);
    for (std::string const& around :
         std::vector<std::string>{std::string(400, 'a'), texts.valid(200, 4, 4), texts.valid(200, 3, 3)})
        for (std::string const& odd :
             std::vector<std::string>{"\x80", "\xC1\xBF", "\xED\xA0\x80", "\xF4\x90\x80\x80", "\xFF", "\xC3",
                                      "\xE4\xB8", "\xF0\x9F\x98", "\xC3\xA4", "\xF0\x9F\x98\x80"})
            for (size_t front = 0; front < 300; ++front)
                for (size_t const back : {0U, 1U, 2U, 3U, 31U, 130U}) {
                    std::string const text = around.substr(0, front) + odd + around.substr(0, back);
                    char* const p = input.last(text.size());
                    std::copy(text.begin(), text.end(), p);
                    ASSERT_EQ(kelcl::isPlainUtf8(p, text.size()), modelOf(text).bytes == text.size())
                        << front << ' ' << back;
                }
}

/// The same for texts of more than a kilobyte, at each alignment that a line of the cache has.
TEST(Utf8, IsPlainOnlyWithoutAMistakeAnywhereInLongTexts) {
    static GuardedPages input;
    Texts texts(7);
    for (std::string const& around :
         std::vector<std::string>{std::string(3000, 'a'), texts.valid(2000, 4, 4), texts.valid(2000, 3, 3)})
        for (std::string const& odd : std::vector<std::string>{"", "\x80", "\xED\xA0\x80", "\xFF", "\xE4\xB8",
                                                               "\xC3\xA4", "\xF0\x9F\x98\x80"})
            for (size_t front = 0; front < 1500; front += front < 100 || front > 1200 ? 1 : 7) {
                std::string const text =
                    around.substr(0, front) + odd + around.substr(front, 1300 - front % 64);
                char* const p = input.last(text.size());
                std::copy(text.begin(), text.end(), p);
                ASSERT_EQ(kelcl::isPlainUtf8(p, text.size()), modelOf(text).bytes == text.size()) << front;
            }
}

TEST(Utf8, IsCountedUpToALimit) {
    Texts texts(4);
    for (int i = 0; i < 300; ++i) {
        std::string const text = texts.valid(texts.below(150), 4, 3);
        for (size_t most = 0; most < 160; most += 1 + texts.below(9)) {
            size_t bytes = 0;
            size_t characters = 0;
            for (; characters < most && bytes < text.size(); ++characters)
                bytes += decodeByDefinition(text, bytes).length;
            kelcl::Extent const run = kelcl::plainUtf8Run(text.data(), text.size(), most);
            ASSERT_EQ(run.bytes, bytes);
            ASSERT_EQ(run.characters, characters);
        }
    }
}

TEST(Utf8, IsNarrowedUpToWhatDoesNotFitOrIsNoCodePoint) {
    Texts texts(5);
    for (int i = 0; i < 4000; ++i) {
        Model model = modelOf(texts.valid(texts.below(120), 1 + texts.below(4), 3));
        bool const isWhole = model.values.empty() || texts.below(2) == 0;
        if (!isWhole) {
            constexpr wchar_t none[] = {0xD800, 0xDFFF, 0x110000, static_cast<wchar_t>(-1)};
            model.values[texts.below(model.values.size())] = none[texts.below(4)];
        }
        size_t const room = texts.below(200);
        size_t bytes = 0;
        size_t characters = 0;
        for (; characters < model.values.size(); ++characters) {
            size_t const length = kelcl::utf8LengthOf(model.values[characters]);
            if (length == 0 || bytes + length > room) break;
            bytes += length;
        }
        std::string out(room + 8, '#');
        kelcl::Extent const done =
            kelcl::narrowUtf8(out.data(), room, model.values.data(), model.values.size());
        ASSERT_EQ(done.bytes, bytes);
        ASSERT_EQ(done.characters, characters);
        std::string const written(out, 0, bytes);
        ASSERT_EQ(modelOf(written).bytes, bytes);
        ASSERT_TRUE(std::equal(model.values.begin(),
                               model.values.begin() + static_cast<std::ptrdiff_t>(characters),
                               modelOf(written).values.begin()));
        ASSERT_EQ(out.substr(room), "########");
        if (isWhole) {
            ASSERT_EQ(out.find_first_not_of('#', bytes), std::string::npos);
        }
    }
}

} // namespace
