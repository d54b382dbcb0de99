// Formats put together at random, with every conversion that there is, for random and extreme dates and
// times: the texts must be those of the C library's mktime and strftime.
#include "c_library_text.h"

#include <clocale>
#include <random>
#include <string>
#include <string_view>
#include <vector>

#include <gtest/gtest.h>

namespace {

constexpr std::uint32_t seed = 20261122;

char const* const zones[] = {
    nullptr,        "UTC",          "UTC0", "EST5EDT,M3.2.0,M11.1.0", "NZST-12NZDT,M9.5.0,M4.1.0/3",
    "Pacific/Apia", "Europe/Berlin"};

struct Format {
    std::string text;
    bool hasSmallY = false;
};

class RandomFormats {
public:
    explicit RandomFormats(std::uint32_t from) : random_(from) {}

    std::size_t below(std::size_t end) { return random_() % end; }

    Format next() {
        Format format;
        for (std::size_t pieces = 1 + below(6); pieces != 0; --pieces)
            addPiece(format);
        return format;
    }

    DDate date() {
        switch (below(4)) {
        case 0: // every year that has four digits, and some that have not
            return DDate::fromJulianDay(2000000 + below(4000000));
        case 1:
            return DDate(static_cast<DDate::Month>(1 + below(12)), static_cast<int>(1 + below(31)),
                         edgeYears[below(std::size(edgeYears))]);
        case 2: // the leap days of centuries, and their neighbours
            return DDate(DDate::February, static_cast<int>(27 + below(4)), static_cast<int>(100 * below(30)));
        default:
            return DDate(DDate::January, 1, 1900) + static_cast<long>(below(60000));
        }
    }

private:
    static constexpr int edgeYears[] = {-4713, -400, -4,   -1,   1,     4,      99,   100,
                                        999,   1000, 1751, 1752, 1753,  1899,   1900, 1901,
                                        1969,  2000, 2100, 9999, 10000, 2000000};
    static constexpr std::string_view plain = "YmdHMSyFTDRxX%";
    static constexpr std::string_view all = "aAbBcCdDeFgGhHIjklmMnpPrRStTuUVwWxXyYzZ%";

    void addPiece(Format& format) {
        std::size_t const choice = below(16);
        if (choice < 9) {
            add(format, {'%', plain[below(plain.size())]});
        } else if (choice < 11) {
            add(format, {'%', all[below(all.size())]});
        } else if (choice == 11) {
            add(format, {'%', "EO-_0^#5"[below(8)], plain[below(plain.size())]});
        } else if (choice == 12 && std::string_view(std::setlocale(LC_ALL, nullptr)) == "ja_JP.SJIS") {
            format.text += "\x83\x79"; // one character
        } else {
            add(format, std::string(1, " -.:/Yyz"[below(8)]));
        }
    }

    static void add(Format& format, std::string const& piece) {
        format.text += piece;
        format.hasSmallY = format.hasSmallY || piece.find('y') != std::string::npos;
    }

    std::mt19937 random_;
};

std::string bytes(DString const& text) { return std::string(std::string_view(text)); }

/// Calls `compare(format, random)` for many formats in each zone.
template <class Compare>
void withFormats(Compare compare) {
    for (char const* zone : zones) {
        SCOPED_TRACE(zone == nullptr ? "unset" : zone);
        ZoneForNow const now(zone);
        RandomFormats random(seed);
        for (int times = 0; times < 4000 && !testing::Test::HasFailure(); ++times)
            compare(random.next(), random);
    }
}

TEST(RandomFormats, MakeTheTextsOfDatesThatTheCLibraryMakes) {
    withFormats([](Format const& format, RandomFormats& random) {
        DDate const date = random.date();
        long const yearZero = format.hasSmallY && date.year() < 1900 ? 0 : 1900;
        EXPECT_EQ(bytes(date.asString(format.text.c_str())),
                  cLibraryText(date, format.text.c_str(), yearZero))
            << format.text << " of day " << static_cast<long>(date.julianDay());
    });
}

TEST(RandomFormats, MakeTheTextsOfTimesThatTheCLibraryMakes) {
    withFormats([](Format const& format, RandomFormats& random) {
        DTime const time = DTime::fromSeconds(static_cast<long>(random.below(86400)));
        EXPECT_EQ(bytes(time.asString(format.text.c_str())), cLibraryText(time, format.text.c_str()))
            << format.text << " of second " << time.secondsOfDay();
    });
}

TEST(DateTexts, OfEveryDayOfFourHundredYearsAreThoseOfTheCLibrary) {
    constexpr char const* format = "%Y-%m-%d %u %j";
    ZoneForNow const now(nullptr);
    for (DDate date(DDate::January, 1, 1691); date.year() < 2101; date = date + 1)
        ASSERT_EQ(bytes(date.asString(format)), cLibraryText(date, format))
            << static_cast<long>(date.julianDay());
}

TEST(DateTexts, AreCompleteUpToTheRoomThatTheyAreFirstWrittenTo) {
    DDate const date(DDate::February, 3, 2001);
    for (std::size_t length = 240; length <= 270; ++length) {
        std::string const literal(length, '.');
        EXPECT_EQ(bytes(date.asString((literal + "%Y").c_str())), literal + "2001");
        EXPECT_EQ(bytes(date.asString((literal + "%d").c_str())), literal + "03");
        EXPECT_EQ(bytes(date.asString((literal + "%%").c_str())), literal + "%");
        EXPECT_EQ(bytes(date.asString((literal + "%F").c_str())), literal + "2001-02-03");
    }
}

TEST(DateTexts, OfYearsAtTheEndsOfTheNumbersEndInNothingWorse) {
    for (unsigned long day :
         {0UL, ~0UL, 1UL << 31, 1UL << 32, ~0UL >> 1, (~0UL >> 1) + 1, 784000000000UL, 784400000000UL}) {
        DDate const date = DDate::fromJulianDay(day);
        EXPECT_EQ(bytes(date.asString("%d.%m")).size(), 5U) << day;
        EXPECT_NE(bytes(date.asString("%Y")), "") << day;
    }
}

TEST(DateNames, AreThoseThatTheCLibraryWrites) {
    for (int number = 0; number < 12; ++number) {
        std::tm calendar{};
        calendar.tm_mday = 1;
        calendar.tm_mon = number;
        EXPECT_EQ(bytes(DDate::monthName(static_cast<DDate::Month>(number + 1))),
                  cLibraryText(calendar, "%B"));
    }
    for (int number = 0; number < 7; ++number) {
        std::tm calendar{}; // 1 January 2001, a Monday, and the days after it
        calendar.tm_mday = 1 + number;
        calendar.tm_year = 101;
        EXPECT_EQ(bytes(DDate::dayName(static_cast<DDate::DayOfWeek>(number))), cLibraryText(calendar, "%A"));
    }
}

} // namespace
