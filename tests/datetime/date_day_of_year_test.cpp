// DDate from a day of a year.
#include <kelcl/ddate.h>

#include "tests/datetime/plain_calendar.h"

#include <gtest/gtest.h>

namespace {

TEST(DayOfYear, FindsTheDateInEveryYearFromOneOn) {
    PlainDate expected;
    long number = 0;
    for (; expected.year < 1; ++number)
        expected.goToNextDay();
    for (; number <= 3000000; ++number) {
        ASSERT_EQ(DDate(expected.dayOfYear, expected.year).julianDay(), static_cast<unsigned long>(number))
            << expected.year << ' ' << expected.dayOfYear;
        expected.goToNextDay();
    }
}

TEST(DayOfYear, BeforeYearOneFollowsTheMonthLengthsOfDaysInMonth) {
    for (int year = -1; year >= -4800; --year) {
        int dayOfYear = 1;
        for (int month = 1; month <= 12; ++month) {
            auto const name = static_cast<DDate::Month>(month);
            for (int day = 1; day <= DDate::daysInMonth(name, year); ++day, ++dayOfYear) {
                ASSERT_EQ(DDate(dayOfYear, year), DDate(name, day, year)) << year << ' ' << dayOfYear;
            }
        }
    }
}

TEST(DayOfYear, BeforeYearOneDaysOfTheTwoKindsOfLeapYearsFallTogetherOrApartByDesign) {
    EXPECT_EQ(DDate(60, -4), DDate(61, -4));
    EXPECT_EQ(DDate(60, -5) - DDate(59, -5), 2);
}

TEST(DayOfYear, SkipsTheDroppedDays) {
    EXPECT_EQ(DDate(246, 1752), DDate(DDate::September, 2, 1752));
    EXPECT_EQ(DDate(247, 1752), DDate(DDate::September, 14, 1752));
    EXPECT_EQ(DDate(263, 1752), DDate(DDate::September, 30, 1752));
    EXPECT_EQ(DDate(264, 1752), DDate(DDate::October, 1, 1752));
    EXPECT_EQ(DDate(355, 1752), DDate(DDate::December, 31, 1752));
}

TEST(DayOfYear, BeyondTheYearRollsIntoLaterOnes) {
    EXPECT_EQ(DDate(366, 2023), DDate(DDate::January, 1, 2024));
    EXPECT_EQ(DDate(366, 2024), DDate(DDate::December, 31, 2024));
    EXPECT_EQ(DDate(1000, 2023), DDate(DDate::January, 1, 2023) + 999);
    EXPECT_EQ(DDate(0, 2023), DDate(DDate::December, 31, 2022));
    EXPECT_EQ(DDate(-30, 2023), DDate(DDate::December, 1, 2022));
}

TEST(DayOfYear, BeyondTheYearOfTheSwitchCountsTheDroppedDaysAgainByDesign) {
    EXPECT_EQ(DDate(356, 1752), DDate(DDate::December, 21, 1752));
}

TEST(DayOfYear, OfYearZeroIsADayOfJanuary) {
    EXPECT_EQ(DDate(100, 0), DDate(DDate::January, 100, 0));
    EXPECT_EQ(DDate(100, 0), DDate(DDate::April, 10, 1));
}

} // namespace
