// A server's loop, shrunk: requests are parsed, words looked up in a table that all threads read, failures
// thrown and caught, steps traced. Four threads must come to what one thread comes to.
#include "tests/threads/together.h"

#include <kelcl/kelcl.h>

#include <chrono>
#include <cstdlib>
#include <unordered_map>
#include <vector>

#include <gtest/gtest.h>

namespace {

using Table = std::unordered_map<DString, DString>;

struct Outcome {
    unsigned long found = 0;
    unsigned long missing = 0;
    unsigned long failures = 0;
    unsigned long bytes = 0;

    bool operator==(Outcome const&) const = default;
    Outcome& operator+=(Outcome const& other) {
        found += other.found;
        missing += other.missing;
        failures += other.failures;
        bytes += other.bytes;
        return *this;
    }
};

Table makeTable() {
    Table table;
    for (int i = 0; i < 200; ++i)
        table.emplace("key" + DString(i), DString("value of key ") + DString(i));
    return table;
}

/// Requests are "get KEY...", some of them with a byte position that lies outside of their text.
DString request(int number) {
    DString line("get");
    for (int i = 0; i < 5; ++i)
        line += " key" + DString((number * 7 + i * 31) % 260);
    if (number % 11 == 0) line += " at:900";
    return line;
}

DString answer(Table const& table, DString const& line, Outcome& outcome) {
    DTrace const trace("answer", __LINE__);
    DString result;
    for (unsigned int i = 2; i <= line.numWords(); ++i) {
        DString const word = line.word(i);
        if (word.isLike("at:*")) {
            outcome.bytes += static_cast<unsigned char>(line[900U]);
            continue;
        }
        auto const entry = table.find(word);
        if (entry == table.end()) {
            ++outcome.missing;
            DTrace::write("no " + word);
            continue;
        }
        ++outcome.found;
        if (!result.isEmpty()) result += "; ";
        result += entry->second;
    }
    return result.change("value of ", "").strip();
}

Outcome serve(Table const& table, int number) {
    Outcome outcome;
    DString const line = request(number);
    try {
        DString text = answer(table, line, outcome);
        DString const copy(text);
        text.upperCase();
        outcome.bytes += text.length() + copy.length() + static_cast<unsigned long>(text != copy);
    } catch (DInvalidRequest const& error) {
        outcome.failures += error.errorId() == 1011 ? 1 : 100;
    }
    return outcome;
}

constexpr int requestsOfARound = 1000;

Outcome serveRound(Table const& table) {
    Outcome sum;
    for (int number = 0; number < requestsOfARound; ++number)
        sum += serve(table, number);
    return sum;
}

class Silent final : public DException::TraceFn {
public:
    void write(char const*) override {}
};

TEST(ServerLoop, GivesWithFourThreadsInTenSecondsWhatItGivesWithOne) {
    static Silent silent;
    DException::setTraceFunction(silent);
    setenv("KORVA_TRACETO", "FILE", 1);
    setenv("KORVA_TRACEFILE", "/dev/null",
           1); // in upper case there is no such file: lines are made and dropped
    DTraceSetup::initialize();

    Table const table = makeTable();
    Outcome const expected = serveRound(table);
    EXPECT_EQ(expected.found + expected.missing, 5UL * requestsOfARound);
    EXPECT_EQ(expected.failures, 91UL); // every eleventh, from the first on

    constexpr int threads = 4;
    std::vector<unsigned long> rounds(threads);
    std::vector<unsigned long> wrong(threads);
    auto const end = std::chrono::steady_clock::now() + std::chrono::seconds(10);
    together(threads, [&](int thread) {
        auto const mine = static_cast<std::size_t>(thread);
        while (std::chrono::steady_clock::now() < end) {
            if (!(serveRound(table) == expected)) ++wrong[mine];
            ++rounds[mine];
        }
    });
    for (int thread = 0; thread < threads; ++thread) {
        EXPECT_EQ(wrong[static_cast<std::size_t>(thread)], 0UL);
        EXPECT_GT(rounds[static_cast<std::size_t>(thread)], 0UL);
    }
    for (auto const& [key, value] : table) {
        EXPECT_EQ(DBuffer::fromContents(key.c_str())->owners(), 1U) << key;
        EXPECT_EQ(DBuffer::fromContents(value.c_str())->owners(), 1U) << value;
    }
}

} // namespace
