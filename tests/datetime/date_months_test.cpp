// DDate's steps by months, its weekdays, its days of the system's clock and its hash.
#include <kelcl/ddate.h>

#include "tests/datetime/plain_calendar.h"

#include <chrono>
#include <climits>
#include <type_traits>
#include <unordered_set>

#include <gtest/gtest.h>

namespace {

using std::chrono::sys_days;

constexpr DDate date(int year, int month, int day) {
    return DDate(static_cast<DDate::Month>(month), day, year);
}

TEST(DateMonths, LaterOrEarlierKeepTheDay) {
    EXPECT_EQ(date(2024, 1, 15).addMonths(1), date(2024, 2, 15));
    EXPECT_EQ(date(2024, 1, 15).addMonths(11), date(2024, 12, 15));
    EXPECT_EQ(date(2024, 1, 15).addMonths(12), date(2025, 1, 15));
    EXPECT_EQ(date(2024, 1, 15).addMonths(-1), date(2023, 12, 15));
    EXPECT_EQ(date(2024, 1, 15).addMonths(-13), date(2022, 12, 15));
    EXPECT_EQ(date(2024, 1, 15).addMonths(0), date(2024, 1, 15));
}

TEST(DateMonths, EndAtTheLastDayOfAShorterMonth) {
    EXPECT_EQ(date(2024, 1, 31).addMonths(1), date(2024, 2, 29));
    EXPECT_EQ(date(2023, 1, 31).addMonths(1), date(2023, 2, 28));
    EXPECT_EQ(date(1900, 1, 30).addMonths(1), date(1900, 2, 28));
    EXPECT_EQ(date(1700, 1, 30).addMonths(1), date(1700, 2, 29));
    EXPECT_EQ(date(2024, 2, 29).addMonths(12), date(2025, 2, 28));
    EXPECT_EQ(date(2024, 3, 31).addMonths(-1), date(2024, 2, 29));
    EXPECT_EQ(date(2024, 10, 31).addMonths(1), date(2024, 11, 30));
    EXPECT_EQ(date(2024, 11, 30).addMonths(1), date(2024, 12, 30));
}

TEST(DateMonths, LeadFromTheYearBeforeYearOneToYearOne) {
    EXPECT_EQ(date(-1, 12, 31).addMonths(1), date(1, 1, 31));
    EXPECT_EQ(date(1, 1, 31).addMonths(-1), date(-1, 12, 31));
    EXPECT_EQ(date(-1, 1, 29).addMonths(1), date(-1, 2, 29)); // which is a leap year
    EXPECT_EQ(date(-2, 1, 29).addMonths(1), date(-2, 2, 28));
    EXPECT_EQ(date(1, 6, 5).addMonths(-24), date(-2, 6, 5));
}

TEST(DateMonths, TakeDaysThatSeptember1752DoesNotHaveForTheSecond) {
    EXPECT_EQ(date(1752, 8, 2).addMonths(1), date(1752, 9, 2));
    EXPECT_EQ(date(1752, 8, 3).addMonths(1), date(1752, 9, 2));
    EXPECT_EQ(date(1752, 10, 13).addMonths(-1), date(1752, 9, 2));
    EXPECT_EQ(date(1752, 10, 14).addMonths(-1), date(1752, 9, 14));
    EXPECT_EQ(date(1752, 8, 31).addMonths(1), date(1752, 9, 30));
}

TEST(DateMonths, AreExactForTheFarthestNumbers) {
    constexpr int most = INT_MAX; // 178956970 years and 7 months
    EXPECT_EQ(date(2024, 1, 1).addMonths(most), date(178958994, 8, 1));
    EXPECT_EQ(date(2024, 1, 1).addMonths(INT_MIN), date(-178954948, 5, 1));
}

/// The date that the day's number in that month means, by a calendar that counts days.
PlainDate monthsLater(PlainDate from, int months) {
    int const wanted = from.day;
    from.day = 1;
    for (; months > 0; --months)
        for (int const month = from.month; from.month == month;)
            from.goToNextDay();
    for (; months < 0; ++months)
        for (int const month = from.month; from.month == month || from.day != 1;)
            from.goToDayBefore();
    for (PlainDate next = from; next.month == from.month && next.day <= wanted; next.goToNextDay())
        from = next;
    return from;
}

TEST(DateMonths, AreThoseOfACalendarThatCountsDays) {
    constexpr long firstOf1600 = 2305458; // the calendar of that year is the Julian one
    PlainDate plain{1600, 1, 1, 1};
    for (long number = firstOf1600; plain.year < 2010; number += 13) {
        DDate const day = DDate::fromJulianDay(static_cast<unsigned long>(number));
        for (int const months : {-25, -1, 1, 2, 12, 23}) {
            PlainDate const expected = monthsLater(plain, months);
            ASSERT_EQ(day.addMonths(months), date(expected.year, expected.month, expected.day))
                << plain.year << '-' << plain.month << '-' << plain.day << " and " << months << " months";
        }
        for (int i = 0; i < 13; ++i)
            plain.goToNextDay();
    }
}

TEST(DateWeekdays, AreCountedFromMonday) {
    EXPECT_EQ(DDate().dayOfWeek(), DDate::Monday);
    EXPECT_EQ(date(2024, 2, 29).dayOfWeek(), DDate::Thursday);
    EXPECT_EQ(date(2000, 1, 1).dayOfWeek(), DDate::Saturday);
    EXPECT_EQ(date(1970, 1, 4).dayOfWeek(), DDate::Sunday);
}

TEST(DateWeekdays, GoOnAcrossTheDroppedDays) {
    EXPECT_EQ(date(1752, 9, 2).dayOfWeek(), DDate::Wednesday);
    EXPECT_EQ(date(1752, 9, 14).dayOfWeek(), DDate::Thursday);
}

TEST(DateWeekdays, GoOnBeforeDayNumberZero) {
    EXPECT_EQ((DDate() - 1).dayOfWeek(), DDate::Sunday);
    EXPECT_EQ((DDate() - 6).dayOfWeek(), DDate::Tuesday);
    EXPECT_EQ((DDate() - 7).dayOfWeek(), DDate::Monday);
}

TEST(DateOfTheClock, IsTheSameDay) {
    using namespace std::chrono_literals;
    constexpr DDate firstDay = sys_days();
    EXPECT_EQ(firstDay, date(1970, 1, 1));
    DDate const leapDay = sys_days(2024y / 2 / 29);
    EXPECT_EQ(leapDay, date(2024, 2, 29));
    sys_days const back = leapDay;
    EXPECT_EQ(std::chrono::year_month_day(back), 2024y / 2 / 29);
    EXPECT_EQ(sys_days(date(1969, 12, 31)).time_since_epoch().count(), -1);
}

TEST(DateOfTheClock, HasTheNameOfTheOtherCalendarBeforeTheSwitch) {
    using namespace std::chrono_literals;
    EXPECT_EQ(DDate(sys_days(1752y / 9 / 13)), date(1752, 9, 2));
    EXPECT_EQ(DDate(sys_days(1752y / 9 / 14)), date(1752, 9, 14));
    EXPECT_EQ(std::chrono::year_month_day(sys_days(date(1, 1, 1))), 0y / 12 / 30);
    EXPECT_EQ(std::chrono::year_month_day(sys_days(DDate())), std::chrono::year(-4713) / 11 / 24);
}

TEST(DateOfTheClock, IsNoOtherPointOfTime) {
    using std::chrono::system_clock;
    EXPECT_TRUE((std::is_convertible_v<DDate, sys_days>));
    EXPECT_TRUE((std::is_convertible_v<sys_days, DDate>));
    EXPECT_FALSE((std::is_constructible_v<DDate, system_clock::time_point>));
    EXPECT_FALSE((std::is_constructible_v<DDate, std::chrono::sys_seconds>));
    EXPECT_FALSE((std::is_constructible_v<DDate, std::chrono::local_days>));
    EXPECT_FALSE((std::is_constructible_v<DDate, std::chrono::days>));
    EXPECT_FALSE((std::is_convertible_v<DDate, std::chrono::local_days>));
}

TEST(DateHash, IsThatOfTheDay) {
    std::unordered_set<DDate> days{date(2024, 2, 29), date(2024, 3, 1)};
    EXPECT_EQ(days.size(), 2u);
    EXPECT_EQ(days.count(date(2024, 2, 1) + 28), 1u);
    EXPECT_EQ(days.count(date(2024, 3, 2)), 0u);
}

} // namespace
