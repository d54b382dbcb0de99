// DDate's rules and day numbers, against a calendar that counts days and against the C library's. Names and
// formats are in date_text_test.cpp.
#include <kelcl/ddate.h>

#include "tests/datetime/plain_calendar.h"

#include <algorithm>
#include <climits>
#include <ctime>
#include <random>

#include <gtest/gtest.h>

namespace {

DDate dayNumber(long number) { return DDate::fromJulianDay(static_cast<unsigned long>(number)); }

/// Whether `date` reads as `expected` and `expected` makes `date`.
::testing::AssertionResult areOneDay(DDate date, PlainDate const& expected) {
    if (date.year() == expected.year && date.monthOfYear() == expected.month &&
        date.dayOfMonth() == expected.day && date.dayOfYear() == expected.dayOfYear &&
        DDate(static_cast<DDate::Month>(expected.month), expected.day, expected.year) == date) {
        return ::testing::AssertionSuccess();
    }
    return ::testing::AssertionFailure()
           << "day number " << static_cast<long>(date.julianDay()) << " is " << date.year() << '-'
           << date.monthOfYear() << '-' << date.dayOfMonth() << " (" << date.dayOfYear() << "), expected "
           << expected.year << '-' << expected.month << '-' << expected.day << " (" << expected.dayOfYear
           << ')';
}

TEST(DateRules, FromTheSwitchOnCenturiesAreLeapYearsOnlyEveryFourth) {
    EXPECT_TRUE(DDate::isLeapYear(1700));
    EXPECT_TRUE(DDate::isLeapYear(1500));
    EXPECT_TRUE(DDate::isLeapYear(1752));
    EXPECT_FALSE(DDate::isLeapYear(1753));
    EXPECT_FALSE(DDate::isLeapYear(1800));
    EXPECT_FALSE(DDate::isLeapYear(1900));
    EXPECT_TRUE(DDate::isLeapYear(2000));
    EXPECT_TRUE(DDate::isLeapYear(2024));
    EXPECT_FALSE(DDate::isLeapYear(2023));
}

TEST(DateRules, LeapYearsBeforeYearOneAreThoseDivisibleByFourByDesign) {
    EXPECT_TRUE(DDate::isLeapYear(0));
    EXPECT_TRUE(DDate::isLeapYear(-4));
    EXPECT_TRUE(DDate::isLeapYear(-100));
    EXPECT_FALSE(DDate::isLeapYear(-1));
    EXPECT_FALSE(DDate::isLeapYear(-5));
    EXPECT_EQ(DDate::daysInMonth(DDate::February, -4), 29);
    EXPECT_EQ(DDate::daysInMonth(DDate::February, -5), 28);
    EXPECT_TRUE(DDate::isValid(DDate::February, 29, -4));
    EXPECT_FALSE(DDate::isValid(DDate::February, 29, -5));
}

TEST(DateRules, TheYearOfTheSwitchHasElevenDaysLess) {
    EXPECT_EQ(DDate::daysInYear(1752), 355);
    EXPECT_EQ(DDate::daysInYear(1751), 365);
    EXPECT_EQ(DDate::daysInYear(1700), 366);
    EXPECT_EQ(DDate::daysInYear(1900), 365);
    EXPECT_EQ(DDate::daysInYear(2000), 366);
}

TEST(DateRules, MonthsHaveTheirLengths) {
    int const lengths[] = {31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
    for (int month = 1; month <= 12; ++month) {
        EXPECT_EQ(DDate::daysInMonth(static_cast<DDate::Month>(month), 2023), lengths[month - 1]) << month;
    }
    EXPECT_EQ(DDate::daysInMonth(DDate::February, 2024), 29);
    EXPECT_EQ(DDate::daysInMonth(DDate::February, 1900), 28);
    EXPECT_EQ(DDate::daysInMonth(DDate::February, 1700), 29);
    EXPECT_EQ(DDate::daysInMonth(DDate::September, 1752), 19);
    EXPECT_EQ(DDate::daysInMonth(DDate::September, 1751), 30);
    EXPECT_EQ(DDate::daysInMonth(DDate::December, 1752), 31);
}

TEST(DateRules, AMonthThatIsNoneHasNoDays) {
    for (int month : {INT_MIN, -1, 0, 13, 14, INT_MAX}) {
        EXPECT_EQ(DDate::daysInMonth(static_cast<DDate::Month>(month), 2023), 0) << month;
    }
}

TEST(DateRules, OnlyDatesThatExistAreValid) {
    EXPECT_TRUE(DDate::isValid(DDate::January, 1, 1));
    EXPECT_TRUE(DDate::isValid(DDate::December, 31, -1));
    EXPECT_TRUE(DDate::isValid(DDate::February, 29, 2024));
    EXPECT_FALSE(DDate::isValid(DDate::February, 29, 2023));
    EXPECT_FALSE(DDate::isValid(DDate::February, 30, 2024));
    EXPECT_FALSE(DDate::isValid(DDate::April, 31, 2024));
    EXPECT_FALSE(DDate::isValid(DDate::January, 0, 2024));
    EXPECT_FALSE(DDate::isValid(DDate::January, -1, 2024));
    EXPECT_FALSE(DDate::isValid(DDate::January, 32, 2024));
    EXPECT_FALSE(DDate::isValid(DDate::January, INT_MAX, 2024));
    EXPECT_FALSE(DDate::isValid(DDate::January, 1, 0));
    EXPECT_FALSE(DDate::isValid(static_cast<DDate::Month>(0), 1, 2024));
    EXPECT_FALSE(DDate::isValid(static_cast<DDate::Month>(13), 1, 2024));
    EXPECT_FALSE(DDate::isValid(static_cast<DDate::Month>(-1), 1, 2024));
}

TEST(DateRules, TheDroppedDaysAreNotValid) {
    for (int day = 1; day <= 31; ++day) {
        bool const exists = day <= 2 || (day >= 14 && day <= 30);
        EXPECT_EQ(DDate::isValid(DDate::September, day, 1752), exists) << day;
        EXPECT_EQ(DDate::isValid(DDate::September, day, 1751), day <= 30) << day;
    }
    EXPECT_FALSE(DDate::isValid(DDate::September, 0, 1752));
}

TEST(DateNumbers, KnownDatesHaveTheirDayNumbers) {
    EXPECT_EQ(DDate(DDate::January, 1, -4713).julianDay(), 0u);
    EXPECT_EQ(DDate(DDate::January, 1, 1).julianDay(), 1721424u);
    EXPECT_EQ(DDate(DDate::December, 31, -1).julianDay(), 1721423u);
    EXPECT_EQ(DDate(DDate::October, 14, 1066).julianDay(), 2110701u);
    EXPECT_EQ(DDate(DDate::September, 2, 1752).julianDay(), 2361221u);
    EXPECT_EQ(DDate(DDate::September, 14, 1752).julianDay(), 2361222u);
    EXPECT_EQ(DDate(DDate::November, 17, 1858).julianDay(), 2400001u);
    EXPECT_EQ(DDate(DDate::January, 1, 1970).julianDay(), 2440588u);
    EXPECT_EQ(DDate(DDate::January, 1, 2000).julianDay(), 2451545u);
}

TEST(DateNumbers, ADateOfNothingIsDayNumberZero) {
    EXPECT_EQ(DDate().julianDay(), 0u);
    EXPECT_EQ(DDate().year(), -4713);
    EXPECT_EQ(DDate().dayOfYear(), 1);
}

TEST(DateNumbers, DroppedDaysBecomeTheLastDayBeforeThem) {
    for (int day = 3; day <= 13; ++day) {
        EXPECT_EQ(DDate(DDate::September, day, 1752).julianDay(), 2361221u) << day;
    }
}

TEST(DateNumbers, TheDayAfterTheSecondOfSeptemberIsTheFourteenth) {
    DDate const next = DDate(DDate::September, 2, 1752) + 1;
    EXPECT_EQ(next.dayOfMonth(), 14);
    EXPECT_EQ(next.monthOfYear(), DDate::September);
    EXPECT_EQ(next.year(), 1752);
    EXPECT_EQ(next.dayOfYear(), 247);
}

TEST(DateNumbers, EveryDayUpToThreeMillionGoesForwardAndBack) {
    PlainDate expected;
    for (long number = 0; number <= 3000000; ++number) {
        ASSERT_TRUE(areOneDay(dayNumber(number), expected));
        expected.goToNextDay();
    }
}

TEST(DateNumbers, DaysBeforeDayZeroGoForwardAndBack) {
    PlainDate expected;
    for (long number = 0; number >= -500000; --number) {
        ASSERT_TRUE(areOneDay(dayNumber(number), expected));
        expected.goToDayBefore();
    }
}

TEST(DateNumbers, FarDatesRepeatTheCyclesOfTheirCalendar) {
    unsigned const seed = std::random_device{}();
    SCOPED_TRACE(seed);
    std::mt19937 random(seed);
    PlainDate later; // In the years 2000 to 2399.
    for (long number = 0; number < 2451545; ++number)
        later.goToNextDay();
    PlainDate earlier; // In the years -4713 to -4314.
    for (int offset = 0; offset < 146097; ++offset) {
        int const cycles = std::uniform_int_distribution<int>(0, 5368703)(random);
        PlainDate far = later;
        far.year += 400 * cycles;
        ASSERT_TRUE(areOneDay(dayNumber(2451545L + offset + 146097L * cycles), far));
        far = earlier;
        int const cyclesBack = std::min(cycles, 5368697); // no year below INT_MIN
        far.year -= 400 * cyclesBack;
        ASSERT_TRUE(areOneDay(dayNumber(offset - 146100L * cyclesBack), far));
        later.goToNextDay();
        earlier.goToNextDay();
    }
}

TEST(DateNumbers, TheShortWayToADateEndsWhereTheLongOneDoes) {
    for (std::uint32_t day = 0; day < kelcl::nearDays; ++day) {
        kelcl::CalendarDate const near = kelcl::nearCalendarDate(day);
        kelcl::CalendarDate const any = kelcl::anyCalendarDate(kelcl::lastJulianDay + 1 + day);
        ASSERT_TRUE(near.year == any.year && near.month == any.month && near.day == any.day) << day;
    }
    static_assert(kelcl::nearDays > 16000000);
}

TEST(DateNumbers, TheShortWayFromADateEndsWhereTheLongOneDoes) {
    for (int year = 1753; kelcl::isNearDay(1, 1, year); ++year)
        for (int month = 1; month <= 12; ++month)
            for (int day : {1, 2, 28, 29, 30, 31, 32, 366, INT_MAX - 40, INT_MAX})
                ASSERT_EQ(kelcl::nearDayNumber(month, day, year), kelcl::anyDayNumber(month, day, year))
                    << year << '-' << month << '-' << day;
    static_assert(kelcl::isNearDay(12, 31, 9999) && !kelcl::isNearDay(9, 14, 1752));
    static_assert(!kelcl::isNearDay(0, 1, 2000) && !kelcl::isNearDay(13, 1, 2000) &&
                  !kelcl::isNearDay(1, 0, 2000));
}

TEST(DateNumbers, TheYearsAtTheEndsOfAnIntAreExact) {
    // 2047 is as many days into its cycle as 2147483647, 5368704 cycles later.
    PlainDate const last{INT_MAX, 12, 31, 365};
    EXPECT_TRUE(areOneDay(dayNumber(2469076 + 146097L * 5368704), last));
    PlainDate const firstOfLast{INT_MAX, 1, 1, 1};
    EXPECT_TRUE(areOneDay(dayNumber(2468712 + 146097L * 5368704), firstOfLast));
    // -4716 is as far into its cycle of four as -2147483648: day number -1095 is its first.
    PlainDate const first{INT_MIN, 1, 1, 1};
    EXPECT_TRUE(areOneDay(dayNumber(-1095 - 1461L * 536869733), first));
}

TEST(DateNumbers, EveryDayNumberGivesAMonthAndADayOfIt) {
    unsigned long const edges[] = {0,
                                   1,
                                   2361221,
                                   2361222,
                                   static_cast<unsigned long>(LONG_MAX) - 1,
                                   static_cast<unsigned long>(LONG_MAX),
                                   static_cast<unsigned long>(LONG_MAX) + 1,
                                   static_cast<unsigned long>(LONG_MAX) + 2,
                                   ULONG_MAX - 1,
                                   ULONG_MAX};
    for (unsigned long edge : edges) {
        DDate const date = DDate::fromJulianDay(edge);
        EXPECT_GE(date.monthOfYear(), 1) << edge;
        EXPECT_LE(date.monthOfYear(), 12) << edge;
        EXPECT_GE(date.dayOfMonth(), 1) << edge;
        EXPECT_LE(date.dayOfMonth(), 31) << edge;
        EXPECT_EQ(date.julianDay(), edge);
    }
    EXPECT_EQ(DDate::fromJulianDay(ULONG_MAX).year(), -4714);
    EXPECT_EQ(DDate::fromJulianDay(ULONG_MAX).dayOfYear(), 365);
}

TEST(DateNumbers, GregorianDatesAgreeWithTheCLibrary) {
    for (long number = 2361222; number <= 3000000; ++number) {
        std::time_t const seconds = (number - 2440588) * 86400;
        std::tm expected{};
        ASSERT_NE(gmtime_r(&seconds, &expected), nullptr);
        DDate const date = dayNumber(number);
        ASSERT_EQ(date.year(), expected.tm_year + 1900) << number;
        ASSERT_EQ(date.monthOfYear(), expected.tm_mon + 1) << number;
        ASSERT_EQ(date.dayOfMonth(), expected.tm_mday) << number;
        ASSERT_EQ(number % 7, (expected.tm_wday + 6) % 7) << number;
        if (date.year() > 1752) {
            ASSERT_EQ(date.dayOfYear(), expected.tm_yday + 1) << number;
        }
        std::tm backwards{};
        backwards.tm_year = date.year() - 1900;
        backwards.tm_mon = date.monthOfYear() - 1;
        backwards.tm_mday = date.dayOfMonth();
        ASSERT_EQ(timegm(&backwards), seconds) << number;
    }
}

TEST(DateNumbers, NumbersBeyondTheMonthReachIntoTheFollowingOnes) {
    EXPECT_EQ(DDate(DDate::February, 29, 2023), DDate(DDate::March, 1, 2023));
    EXPECT_EQ(DDate(DDate::January, 0, 2023), DDate(DDate::December, 31, 2022));
    EXPECT_EQ(DDate(DDate::December, 32, 2023), DDate(DDate::January, 1, 2024));
}

TEST(DateNumbers, AMonthThatIsNoneIsTakenAsTheNearestBoundary) {
    EXPECT_EQ(DDate(static_cast<DDate::Month>(0), 5, 2023), DDate(DDate::January, 5, 2023));
    EXPECT_EQ(DDate(static_cast<DDate::Month>(INT_MIN), 5, 2023), DDate(DDate::January, 5, 2023));
    EXPECT_EQ(DDate(static_cast<DDate::Month>(13), 5, 2023), DDate(DDate::January, 5, 2024));
    EXPECT_EQ(DDate(static_cast<DDate::Month>(INT_MAX), 5, 2023), DDate(DDate::January, 5, 2024));
}

TEST(DateNumbers, ExtremeNumbersOverflowNothing) {
    EXPECT_EQ(DDate(DDate::January, INT_MAX, INT_MAX) - DDate(DDate::January, 1, INT_MAX), INT_MAX - 1L);
    EXPECT_EQ(DDate(DDate::January, INT_MIN, INT_MIN) - DDate(DDate::January, 1, INT_MIN), INT_MIN - 1L);
}

TEST(DateOddities, YearZeroCountsAsYearOneByDesign) {
    EXPECT_EQ(DDate(DDate::March, 5, 0), DDate(DDate::March, 5, 1));
    EXPECT_EQ(DDate(DDate::March, 5, 0).year(), 1);
}

TEST(DateOddities, DaysFarBeyondAnEarlyYearAreCorrectedByThatYearsCenturiesByDesign) {
    // (1500 - 1601) / 400 - (1500 - 1701) / 100 is 0 + 2 when quotients are cut towards zero.
    EXPECT_EQ(DDate(DDate::January, 100000, 1500).julianDay(), 2268933u + 99999u + 2u - 11u);
}

TEST(DateOddities, ThereIsNoTwentyNinthOfFebruaryMinusFourInTheArithmeticByDesign) {
    EXPECT_EQ(DDate(DDate::February, 29, -4), DDate(DDate::March, 1, -4));
    EXPECT_EQ((DDate(DDate::February, 28, -5) + 1).dayOfMonth(), 29);
}

} // namespace
