// Message catalogs: look-up, substitution, the fallback text, and which catalog is asked.
#include "tests/except/except_support.h"

#include <kelcl/dmessagetext.h>

#include <climits>
#include <cstring>
#include <filesystem>
#include <memory>
#include <string_view>
#include <type_traits>

namespace {

/// What replaceVars makes of `pattern` with `values`.
std::string replaced(char const* pattern, std::vector<char const*> values) {
    std::unique_ptr<char[]> const result(DMessageText::replaceVars(pattern, values.data(), values.size()));
    return shown(result.get());
}

std::string const patterns = "$set 1\n"
                             "1 File %1 not found (%2).\n"
                             "2 100%% done %1\n"
                             "3 Line\\r\\n\n"
                             "4 Line\\n\n"
                             "5 %1\n"
                             "6 \\r\\n\n"
                             "7 x\n"
                             "8 \\n\n"
                             "9 %1%2%3%4%5%6%7%8%9\n"
                             "10 Line\\r\n"
                             "11 A\\r\\n\\r\\n\n"
                             "12 100%% %d %s %n\n"
                             "$quote \"\n"
                             "13 \"\"\n"
                             "2147483647 the last\n"
                             "$set 2\n"
                             "100 of the second set\n";

class MessageTexts : public ::testing::Test {
protected:
    static void SetUpTestSuite() { catalog_ = compiledCatalog("patterns", patterns); }

    template <class... Values>
    static std::string message(unsigned long id, Values... values) {
        DMessageText const text(id, catalog_.c_str(), values...);
        EXPECT_TRUE(text.isLoaded());
        return shown(text.text());
    }

    static inline std::string catalog_;
};

} // namespace

TEST_F(MessageTexts, ValuesBeyondTheLastStayMarkers) {
    EXPECT_EQ(message(1, "a.txt"), "File a.txt not found (%2).");
    EXPECT_EQ(message(1, "a.txt", "gone"), "File a.txt not found (gone).");
}

TEST_F(MessageTexts, ANullEndsTheValues) {
    EXPECT_EQ(message(1, nullptr, "x"), "File %1 not found (%2).");
    EXPECT_EQ(message(9, "a", "b", nullptr, "d"), "ab%3%4%5%6%7%8%9");
}

TEST_F(MessageTexts, DoublePercentStaysDouble) { EXPECT_EQ(message(2, "now"), "100%% done now"); }

TEST_F(MessageTexts, TakesNineValues) {
    EXPECT_EQ(message(9, "a", "b", "c", "d", "e", "f", "g", "h", "i"), "abcdefghi");
}

TEST_F(MessageTexts, DropOneCarriageReturnAndLineFeedAtTheEnd) {
    EXPECT_EQ(message(3), "Line");
    EXPECT_EQ(message(6), "");
    EXPECT_EQ(message(11), "A\r\n");
}

TEST_F(MessageTexts, KeepALoneLineFeedAndALoneCarriageReturn) {
    EXPECT_EQ(message(4), "Line\n");
    EXPECT_EQ(message(8), "\n");
    EXPECT_EQ(message(10), "Line\r");
}

TEST_F(MessageTexts, DropTheLineEndOfASubstitutedValueToo) {
    EXPECT_EQ(message(5, "value\r\n"), "value");
    EXPECT_EQ(message(5, "\r\n"), "");
    EXPECT_EQ(message(5, "\n"), "\n");
}

TEST_F(MessageTexts, ShorterThanTwoCharactersAreSafe) {
    EXPECT_EQ(message(7), "x");
    EXPECT_EQ(message(13), "");
    EXPECT_EQ(message(5, ""), "");
}

TEST_F(MessageTexts, AreNoFormats) { EXPECT_EQ(message(12, "x"), "100%% %d %s %n"); }

TEST_F(MessageTexts, ComeFromSetOneOnly) {
    DMessageText const text(100, catalog_.c_str());
    EXPECT_FALSE(text.isLoaded());
    EXPECT_STREQ(text, fallbackText);
}

TEST_F(MessageTexts, OfNumbersBeyondIntAreMissing) {
    EXPECT_EQ(message(INT_MAX), "the last");
    for (unsigned long id : {0ul, 14ul, 0x8000'0000ul, 0xFFFF'FFFFul, 0x1'0000'0001ul, ~0ul}) {
        DMessageText const text(id, catalog_.c_str());
        EXPECT_FALSE(text.isLoaded()) << id;
        EXPECT_STREQ(text, fallbackText) << id;
    }
}

TEST_F(MessageTexts, ThatWereFoundKeepTheirText) {
    DMessageText text(7, catalog_.c_str());
    EXPECT_EQ(&text.setDefaultText("custom"), &text);
    EXPECT_STREQ(text, "x");
}

TEST_F(MessageTexts, OfMegabytesAreSubstituted) {
    std::string const value(1 << 20, 'v');
    EXPECT_EQ(message(9, value.c_str(), "b", value.c_str()), value + "b" + value + "%4%5%6%7%8%9");
}

TEST(MessageText, WithoutCatalogHasTheFallbackText) {
    DMessageText text(5, nullptr);
    EXPECT_STREQ(text.text(), "Unable to load text from message file.");
    EXPECT_STREQ(static_cast<char const*>(text), "Unable to load text from message file.");
    EXPECT_FALSE(text.isLoaded());
    EXPECT_EQ(&text.setDefaultText("custom"), &text);
    EXPECT_STREQ(text, "custom");
    EXPECT_FALSE(text.isLoaded());
}

TEST(MessageText, DefaultTextIsTakenWithItsMarkers) {
    DMessageText text(5, nullptr, "value");
    text.setDefaultText("%1 is missing");
    EXPECT_STREQ(text, "%1 is missing");
    text.setDefaultText("another one");
    EXPECT_STREQ(text, "another one");
}

TEST(MessageText, NullDefaultTextChangesNothing) {
    DMessageText text(5, nullptr);
    text.setDefaultText(nullptr);
    EXPECT_STREQ(text, fallbackText);
}

TEST(MessageText, DefaultTextMayBeItsOwn) {
    DMessageText text(5, nullptr);
    text.setDefaultText(text.text() + 7);
    EXPECT_STREQ(text, "to load text from message file.");
}

TEST(MessageText, OfAMissingOrBrokenCatalogIsTheFallbackText) {
    EXPECT_STREQ(DMessageText(1, noCatalog.c_str()), fallbackText);
    EXPECT_STREQ(DMessageText(1, ""), fallbackText);
    EXPECT_STREQ(DMessageText(1, KELCL_TEST_WORK_DIR), fallbackText);
    std::string const broken = KELCL_TEST_WORK_DIR "/broken.cat";
    std::ofstream(broken) << "this is no catalog";
    EXPECT_STREQ(DMessageText(1, broken.c_str()), fallbackText);
    std::ofstream(broken, std::ios::trunc).flush();
    EXPECT_STREQ(DMessageText(1, broken.c_str()), fallbackText);
}

TEST(MessageText, OfACutCatalogIsThePartOfTheMessageThatIsThereOrTheFallbackText) {
    std::string const whole = compiledCatalog("whole", "$set 1\n1 a message\n2 another message\n");
    auto const size = std::filesystem::file_size(whole);
    for (std::uintmax_t length = 0; length < size; ++length) {
        std::string const cut = KELCL_TEST_WORK_DIR "/cut.cat";
        std::filesystem::copy_file(whole, cut, std::filesystem::copy_options::overwrite_existing);
        std::filesystem::resize_file(cut, length);
        DMessageText const text(1, cut.c_str());
        if (text.isLoaded())
            EXPECT_EQ(std::string_view("a message").rfind(text, 0), 0u) << length;
        else
            EXPECT_STREQ(text, fallbackText) << length;
    }
}

TEST(MessageText, CopiesAreIndependent) {
    DMessageText source(5, nullptr);
    DMessageText copy(source);
    EXPECT_NE(copy.text(), source.text());
    copy.setDefaultText("copy");
    EXPECT_STREQ(source, fallbackText);
    source = copy;
    EXPECT_NE(copy.text(), source.text());
    copy.setDefaultText("again");
    EXPECT_STREQ(source, "copy");
    EXPECT_STREQ(copy, "again");
}

TEST(MessageText, CopiesAlsoKnowWhetherTheTextWasLoaded) {
    DMessageText const loaded(4, englishCatalog.c_str());
    ASSERT_TRUE(loaded.isLoaded());
    DMessageText copy(loaded);
    EXPECT_TRUE(copy.isLoaded());
    EXPECT_STREQ(copy.setDefaultText("custom"), "There is not enough memory for the operation.");
    DMessageText assigned(4, nullptr);
    assigned = loaded;
    EXPECT_TRUE(assigned.isLoaded());
    EXPECT_STREQ(assigned, "There is not enough memory for the operation.");
    assigned = DMessageText(4, nullptr);
    EXPECT_FALSE(assigned.isLoaded());
}

TEST(MessageText, AssignedToItselfKeepsItsText) {
    DMessageText text(5, nullptr);
    DMessageText const& itself = text;
    text = itself;
    EXPECT_STREQ(text, fallbackText);
}

TEST(MessageText, LeavesTheNewHandlerAsItWas) {
    std::new_handler const before = std::get_new_handler();
    DMessageText const found(4, englishCatalog.c_str());
    DMessageText const missing(4, nullptr);
    DMessageText copy(found);
    copy = missing;
    EXPECT_EQ(std::get_new_handler(), before);
}

TEST(ReplaceVars, ReplacesMarkersWhole) {
    EXPECT_EQ(replaced("a%1b%2c", {"ONE", "TWO"}), "aONEbTWOc");
    EXPECT_EQ(replaced("%2%1%2", {"1", "2"}), "212");
    EXPECT_EQ(replaced("%1", {""}), "");
    EXPECT_EQ(replaced("", {"x"}), "");
    EXPECT_EQ(replaced("no marker", {"x"}), "no marker");
}

TEST(ReplaceVars, ReadsOneDigitOnly) {
    EXPECT_EQ(replaced("%12", {"x"}), "x2");
    EXPECT_EQ(replaced("%10", {"x"}), "x0");
}

TEST(ReplaceVars, DoesNotExpandMarkersInsideValues) {
    EXPECT_EQ(replaced("%1%2", {"%2", "%1"}), "%2%1");
    EXPECT_EQ(replaced("%1%", {"%"}), "%%");
    EXPECT_EQ(replaced("%11", {"%"}), "%1");
}

TEST(ReplaceVars, LeavesMarkersWithoutAValueAsTheyAre) {
    EXPECT_EQ(replaced("%1 %2 %3", {"a"}), "a %2 %3");
    EXPECT_EQ(replaced("%1", {}), "%1");
    EXPECT_EQ(replaced("%1 %2", {nullptr, "b"}), "%1 b");
}

TEST(ReplaceVars, ZeroIsNoMarker) { EXPECT_EQ(replaced("%0 %1", {"x"}), "%0 x"); }

TEST(ReplaceVars, DoublePercentHidesTheMarkerAfterIt) {
    EXPECT_EQ(replaced("%%1", {"x"}), "%%1");
    EXPECT_EQ(replaced("%%%1", {"x"}), "%%x");
    EXPECT_EQ(replaced("%%%%1", {"x"}), "%%%%1");
    EXPECT_EQ(replaced("100%% done %1", {"now"}), "100%% done now");
}

TEST(ReplaceVars, CopiesAnyOtherPercent) {
    EXPECT_EQ(replaced("%d %", {"x"}), "%d %");
    EXPECT_EQ(replaced("%", {"x"}), "%");
    EXPECT_EQ(replaced("%%", {"x"}), "%%");
    EXPECT_EQ(replaced("%x%1", {"y"}), "%xy");
}

TEST(ReplaceVars, HasNoMoreThanNineMarkers) {
    std::vector<char const*> const twelve(12, "v");
    EXPECT_EQ(replaced("%9 %10 %: %/", twelve), "v v0 %: %/");
}

TEST(ReplaceVars, OfNullIsTheEmptyText) {
    EXPECT_EQ(replaced(nullptr, {"x"}), "");
    std::unique_ptr<char[]> const result(DMessageText::replaceVars("%1", nullptr, 0));
    EXPECT_STREQ(result.get(), "%1");
}

TEST(ReplaceVars, TakesAnArrayOfModifiableTexts) {
    char value[] = "value";
    char* values[] = {value};
    std::unique_ptr<char[]> const result(DMessageText::replaceVars("[%1]", values, 1));
    EXPECT_STREQ(result.get(), "[value]");
}

// All patterns over the characters that matter, against the rule written down once more, character by
// character.
TEST(ReplaceVars, AgreesWithASimpleModelOnAllShortPatterns) {
    std::string const alphabet = "%0129a";
    std::vector<char const*> const values = {"<%1>", "<2>"};
    auto const model = [&](std::string const& pattern) {
        std::string result;
        for (std::size_t i = 0; i < pattern.size(); ++i) {
            bool const pair = pattern[i] == '%' && i + 1 < pattern.size();
            if (pair && pattern[i + 1] == '%') {
                result += "%%";
                ++i;
            } else if (pair && (pattern[i + 1] == '1' || pattern[i + 1] == '2')) {
                result += values[static_cast<std::size_t>(pattern[i + 1] - '1')];
                ++i;
            } else {
                result += pattern[i];
            }
        }
        return result;
    };
    for (std::size_t length = 0; length <= 6; ++length) {
        std::string pattern(length, alphabet[0]);
        std::vector<std::size_t> digits(length, 0);
        for (bool more = true; more;) {
            for (std::size_t i = 0; i < length; ++i)
                pattern[i] = alphabet[digits[i]];
            ASSERT_EQ(replaced(pattern.c_str(), values), model(pattern)) << pattern;
            std::size_t i = 0;
            while (i < length && ++digits[i] == alphabet.size())
                digits[i++] = 0;
            more = i < length;
        }
    }
}

TEST(ReplaceVars, TakesLinearTimeForManyMarkers) {
    std::string pattern;
    std::string expected;
    for (int i = 0; i < 500'000; ++i) {
        pattern += "a%1";
        expected += "axyz";
    }
    EXPECT_EQ(replaced(pattern.c_str(), {"xyz"}), expected);
}

TEST(MessageFileName, IsReplacedAndCopied) {
    char name[] = "/opt/first.cat";
    DBase::setMessageFile(name);
    name[1] = 'X';
    EXPECT_STREQ(DBase::messageFile(), "/opt/first.cat");
    DBase::setMessageFile(nullptr);
    EXPECT_STREQ(DBase::messageFile(), "/opt/first.cat");
    DBase::setMessageFile(DBase::messageFile() + 5);
    EXPECT_STREQ(DBase::messageFile(), "first.cat");
    DBase::setMessageFile("");
    EXPECT_STREQ(DBase::messageFile(), "");
    DBase::setMessageFile("kelcl.cat");
}

TEST(LibraryCatalog, IsAskedUnderTheNameSetLast) {
    MessageFile const catalog(englishCatalog);
    DMessageText const text = DBase::messageText(1, "a < b");
    EXPECT_TRUE(text.isLoaded());
    EXPECT_STREQ(text, "The condition does not hold: a < b");
    DBase::setMessageFile(noCatalog.c_str());
    EXPECT_FALSE(DBase::messageText(1, "a < b").isLoaded());
}

TEST(LibraryCatalog, PassesAllNineValues) {
    MessageFile const catalog(compiledCatalog("nine", "$set 1\n1 %1%2%3%4%5%6%7%8%9\n"));
    EXPECT_STREQ(DBase::messageText(1, "a", "b", "c", "d", "e", "f", "g", "h", "i"), "abcdefghi");
}

TEST(LibraryCatalog, IsLookedForAlongNlspath) {
    ASSERT_EQ(setenv("NLSPATH", KELCL_TEST_CATALOG_DIR "/%N", 1), 0);
    EXPECT_STREQ(DMessageText(4, "kelcl.cat"), "There is not enough memory for the operation.");
    unsetenv("NLSPATH");
}

TEST(LibraryCatalog, HoldsEveryNumberInEnglish) {
    MessageFile const catalog(englishCatalog);
    EXPECT_STREQ(DBase::messageText(1), "The condition does not hold: %1");
    EXPECT_STREQ(DBase::messageText(4), "There is not enough memory for the operation.");
    EXPECT_STREQ(DBase::messageText(185), "The presentation system reported an error.");
    EXPECT_STREQ(DBase::messageText(186), "The operating system reported an error.");
    EXPECT_STREQ(DBase::messageText(1010), "The text would become longer than a string can be.");
    EXPECT_STREQ(DBase::messageText(1011), "The index lies outside of the string.");
    EXPECT_STREQ(DBase::messageText(1012),
                 "The text holds bytes that are no character of the locale's encoding.");
}

TEST(LibraryCatalog, HoldsTheSameNumbersAndMarkersInEveryLanguage) {
    for (char const* language : {"de", "es", "fr", "ja"}) {
        std::string const file =
            std::string(KELCL_TEST_CATALOG_DIR "/") + language + "/LC_MESSAGES/kelcl.cat";
        for (unsigned long id : {1ul, 4ul, 185ul, 186ul, 1010ul, 1011ul, 1012ul}) {
            DMessageText const text(id, file.c_str());
            EXPECT_TRUE(text.isLoaded()) << language << ' ' << id;
            std::size_t const marker = std::string(text).find('%');
            if (id == 1)
                EXPECT_EQ(std::string(text).substr(marker), "%1") << language;
            else
                EXPECT_EQ(marker, std::string::npos) << language << ' ' << id;
            EXPECT_STRNE(text, DMessageText(id, englishCatalog.c_str())) << language << ' ' << id;
        }
    }
}

TEST(Version, Is310And1) {
    auto const [number, revision] = DBase::version();
    EXPECT_EQ(number, 310u);
    EXPECT_EQ(revision, 1u);
    EXPECT_TRUE((std::is_same_v<decltype(number), std::uint16_t const>));
    EXPECT_TRUE((std::is_same_v<decltype(revision), std::uint16_t const>));
}
