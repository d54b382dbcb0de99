// The message catalogs: every language has the messages of English with the same markers, and the compiled
// catalogs give what the sources say. How a program finds its catalog is tested in tests/except and
// tests/install.
#include <gtest/gtest.h>

#include <cctype>
#include <cstddef>
#include <filesystem>
#include <fstream>
#include <istream>
#include <map>
#include <nl_types.h>
#include <set>
#include <sstream>
#include <string>
#include <vector>

namespace {

using Messages = std::map<int, std::string>;

/// The messages of a source, read by the few rules that ours keep to: NUMBER "TEXT" in set 1, without
/// escapes.
Messages messagesIn(std::istream& in) {
    Messages messages;
    for (std::string line; std::getline(in, line);) {
        if (line.empty() || line[0] == '$') continue;
        std::size_t const quote = line.find(" \"");
        if (quote == std::string::npos || line.back() != '"' || line.find('\\') != std::string::npos ||
            line.find_first_not_of("0123456789") != quote) {
            ADD_FAILURE() << "not of the form NUMBER \"TEXT\": " << line;
            continue;
        }
        std::string const text = line.substr(quote + 2, line.size() - quote - 3);
        EXPECT_TRUE(messages.emplace(std::stoi(line), text).second) << "twice: " << line;
    }
    return messages;
}

Messages messagesOf(std::string const& source) {
    std::ifstream in(std::string(KELCL_TEST_CATALOG_SOURCES) + "/" + source);
    EXPECT_TRUE(in.is_open()) << source;
    return messagesIn(in);
}

/// The markers %1 to %9 of a text, each as often as it is there.
std::multiset<char> markersOf(std::string const& text) {
    std::multiset<char> markers;
    for (std::size_t i = 0; i + 1 < text.size(); ++i) {
        if (text[i] != '%') continue;
        ++i; // after %% no digit makes a marker
        if (std::isdigit(static_cast<unsigned char>(text[i]))) markers.insert(text[i]);
    }
    return markers;
}

/// In what a translation differs from the original, in words.
std::vector<std::string> differences(Messages const& original, Messages const& translation) {
    std::vector<std::string> found;
    for (auto const& [number, text] : original) {
        auto const translated = translation.find(number);
        if (translated == translation.end())
            found.push_back(std::to_string(number) + " is missing");
        else if (markersOf(text) != markersOf(translated->second))
            found.push_back(std::to_string(number) + " has other markers");
    }
    for (auto const& message : translation)
        if (original.count(message.first) == 0) found.push_back(std::to_string(message.first) + " is new");
    return found;
}

/// The names of the sources, and where each is compiled to.
std::map<std::string, std::string> const compiledCatalogs{
    {"kelcl.msg", "kelcl.cat"},
    {"kelcl.de.msg", "de/LC_MESSAGES/kelcl.cat"},
    {"kelcl.es.msg", "es/LC_MESSAGES/kelcl.cat"},
    {"kelcl.fr.msg", "fr/LC_MESSAGES/kelcl.cat"},
    {"kelcl.ja.msg", "ja/LC_MESSAGES/kelcl.cat"},
};

} // namespace

TEST(Catalogs, EverySourceIsKnownToThisTest) {
    std::set<std::string> names;
    for (auto const& entry : std::filesystem::directory_iterator(KELCL_TEST_CATALOG_SOURCES))
        if (entry.path().extension() == ".msg") names.insert(entry.path().filename());
    std::set<std::string> known;
    for (auto const& catalog : compiledCatalogs)
        known.insert(catalog.first);
    EXPECT_EQ(names, known);
}

TEST(Catalogs, EnglishHasTheMessagesThatTheLibraryAsksFor) {
    std::map<int, std::multiset<char>> markers;
    for (auto const& [number, text] : messagesOf("kelcl.msg"))
        markers[number] = markersOf(text);
    std::map<int, std::multiset<char>> const wanted{{1, {'1'}}, {4, {}},    {185, {}}, {186, {}},
                                                    {1010, {}}, {1011, {}}, {1012, {}}};
    EXPECT_EQ(markers, wanted);
}

TEST(Catalogs, EveryLanguageHasTheNumbersAndMarkersOfEnglish) {
    Messages const english = messagesOf("kelcl.msg");
    for (auto const& catalog : compiledCatalogs)
        EXPECT_EQ(differences(english, messagesOf(catalog.first)), std::vector<std::string>())
            << catalog.first;
}

TEST(Catalogs, EachCompiledCatalogGivesTheTextsOfItsSourceAndNoOthers) {
    for (auto const& [source, compiled] : compiledCatalogs) {
        Messages const messages = messagesOf(source);
        std::string const path = std::string(KELCL_TEST_CATALOG_DIR) + "/" + compiled;
        nl_catd const catalog = catopen(path.c_str(), 0);
        ASSERT_NE(catalog, reinterpret_cast<nl_catd>(-1)) << path;
        for (int number = 0; number <= 1100; ++number) {
            auto const message = messages.find(number);
            EXPECT_EQ(catgets(catalog, 1, number, "none"),
                      message == messages.end() ? "none" : message->second)
                << path << " message " << number;
        }
        catclose(catalog);
    }
}

TEST(CatalogComparison, FindsEachDifferenceThatATranslationCanHave) {
    Messages const original{{1, "%1 and %2"}, {2, "100%% of %3"}, {3, "none"}};
    std::vector<std::string> const nothing;
    EXPECT_EQ(differences(original, {{1, "%2 und %1"}, {2, "%3: 100%%"}, {3, "%% 5 %"}}), nothing);
    EXPECT_EQ(
        differences(original, {{1, "%2 und %2"}, {2, "100%%3"}, {3, "%9"}}),
        (std::vector<std::string>{"1 has other markers", "2 has other markers", "3 has other markers"}));
    EXPECT_EQ(differences(original, {{1, "%1 %2"}, {2, "%3"}, {4, ""}}),
              (std::vector<std::string>{"3 is missing", "4 is new"}));
}

TEST(CatalogComparison, ReadsSourcesAsTheyAreWritten) {
    std::istringstream source("$ A remark\n$quote \"\n$set 1\n7 \"seven %1\"\n1010 \"\"\n");
    EXPECT_EQ(messagesIn(source), (Messages{{7, "seven %1"}, {1010, ""}}));
}
