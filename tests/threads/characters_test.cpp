// Multi-byte text and the national-language functions with a locale of its own in each thread.
#include "tests/threads/together.h"

#include <kelcl/kelcl.h>

#include <atomic>
#include <clocale>
#include <string>

#include <gtest/gtest.h>

#ifdef KELCL_ADDRESS_SANITIZER
#include <sanitizer/lsan_interface.h>
#endif

namespace {

/// The same two-character word in an encoding: "日本", its length in bytes, and both characters exchanged.
struct Sample {
    char const* locale;
    char const* text;
    char const* reversed;
    unsigned int secondCharacter; ///< the byte position at which it begins
};

constexpr Sample samples[] = {
    {"en_US.UTF-8", "\xE6\x97\xA5\xE6\x9C\xAC", "\xE6\x9C\xAC\xE6\x97\xA5", 4},
    {"ja_JP.EUC-JP", "\xC6\xFC\xCB\xDC", "\xCB\xDC\xC6\xFC", 3},
    {"ja_JP.SJIS", "\x93\xFA\x96\x7B", "\x96\x7B\x93\xFA", 3},
    {"zh_CN.GB18030", "\xC8\xD5\xB1\xBE", "\xB1\xBE\xC8\xD5", 3},
    {"zh_TW.BIG5", "\xA4\xE9\xA5\xBB", "\xA5\xBB\xA4\xE9", 3},
    {"ko_KR.EUC-KR", "\xEC\xED\xDC\xE2", "\xDC\xE2\xEC\xED", 3},
};

constexpr int threads = 6;
constexpr int rounds = 500;

/// The C library's newlocale loses the list of folders that it makes of LOCPATH, which a search for leaks
/// would find.
locale_t newLocale(char const* name) {
#ifdef KELCL_ADDRESS_SANITIZER
    __lsan::ScopedDisabler const disabled;
#endif
    return newlocale(LC_ALL_MASK, name, nullptr);
}

/// The calling thread's locale for as long as it lives.
class ThreadLocale {
public:
    explicit ThreadLocale(char const* name) : locale_(newLocale(name)) {
        EXPECT_NE(locale_, nullptr) << name;
        former_ = uselocale(locale_);
    }
    ThreadLocale(ThreadLocale const&) = delete;
    ThreadLocale& operator=(ThreadLocale const&) = delete;
    ~ThreadLocale() {
        uselocale(former_);
        freelocale(locale_);
    }

private:
    locale_t locale_;
    locale_t former_;
};

TEST(LocalePerThread, TheNationalLanguageFunctionsFollowIt) {
    std::atomic<int> right = 0;
    together(threads, [&](int number) {
        Sample const& sample = samples[number];
        ThreadLocale const locale(sample.locale);
        auto const length = static_cast<unsigned int>(std::char_traits<char>::length(sample.text));
        for (int i = 0; i < rounds; ++i) {
            DWBuffer const wide(sample.text, length);
            if (wide.length == 2 && wide.wide[0] == L'\u65E5' && wide.wide[1] == L'\u672C' &&
                findBytePos(sample.text, length, 2) == sample.secondCharacter &&
                findCharNum(sample.text, length, sample.secondCharacter) == 2)
                ++right;
        }
    });
    EXPECT_EQ(right, threads * rounds);
}

TEST(LocalePerThread, MultiByteBuffersFollowIt) {
    if (MB_CUR_MAX == 1) GTEST_FAIL() << "this test is for processes whose strings are multi-byte";
    std::atomic<int> right = 0;
    together(threads, [&](int number) {
        Sample const& sample = samples[number];
        ThreadLocale const locale(sample.locale);
        for (int i = 0; i < rounds; ++i) {
            DString const text(sample.text);
            std::string const expected = std::string(sample.reversed) + " ";
            DString edited = DString(" ") + text;
            edited.reverse();
            if (std::string(edited.c_str()) == expected && text.charType(1) == 1 &&
                text.charType(sample.secondCharacter) == 1 &&
                text.indexOf(sample.text + sample.secondCharacter - 1) == sample.secondCharacter &&
                text.isMBCS())
                ++right;
        }
    });
    EXPECT_EQ(right, threads * rounds);
}

TEST(LocalePerThread, ASharedTextMayBeReadInSeveral) {
    DString const text("plain text in every encoding");
    std::atomic<int> right = 0;
    together(threads, [&](int number) {
        ThreadLocale const locale(samples[number].locale);
        for (int i = 0; i < rounds; ++i)
            if (text.indexOf("every") == 15 && text.isPrintable() && text.occurrencesOf('e') == 4 &&
                text.lastIndexOf("n") == 27 && DString(text).change("plain", "PLAIN").word(1) == "PLAIN")
                ++right;
    });
    EXPECT_EQ(right, threads * rounds);
}

} // namespace
