// The order of dates, their record of four bytes, and today.
#include <kelcl/ddate.h>

#include "tests/datetime/plain_calendar.h"

#include <cstdint>
#include <cstring>
#include <ctime>
#include <type_traits>

#include <gtest/gtest.h>

namespace {

TEST(DateConstruction, RefusesAMonthAndAYear) {
    EXPECT_FALSE((std::is_constructible_v<DDate, DDate::Month, int>));
    EXPECT_TRUE((std::is_constructible_v<DDate, int, int>));
}

TEST(DateRecord, IsFourBytesInOrder) {
    static_assert(sizeof(DCnrDate) == 4 && std::is_trivially_copyable_v<DCnrDate>);
    DCnrDate const record = DDate(DDate::December, 31, 1999).asICnrDate();
    unsigned char bytes[4];
    std::memcpy(bytes, &record, sizeof bytes);
    std::uint16_t year = 0;
    std::memcpy(&year, bytes + 2, sizeof year);
    EXPECT_EQ(bytes[0], 31);
    EXPECT_EQ(bytes[1], 12);
    EXPECT_EQ(year, 1999);
}

TEST(DateRecord, GoesToADateAndBack) {
    DDate const date(DCnrDate{2, 9, 1752});
    EXPECT_EQ(date.julianDay(), 2361221u);
    DCnrDate const record = (date + 1).asICnrDate();
    EXPECT_EQ(record.day, 14);
    EXPECT_EQ(record.month, 9);
    EXPECT_EQ(record.year, 1752);
    EXPECT_EQ(DDate(DCnrDate{31, 12, 65535}).asICnrDate().year, 65535);
}

TEST(DateRecord, KeepsTheLowSixteenBitsOfAYear) {
    EXPECT_EQ(DDate(DDate::January, 1, -1).asICnrDate().year, 65535);
    EXPECT_EQ(DDate(DDate::January, 1, 65537).asICnrDate().year, 1);
}

TEST(DateRecord, OfZeroesIsTakenAsItStands) {
    EXPECT_EQ(DDate(DCnrDate{0, 0, 0}), DDate(DDate::January, 0, 0));
}

TEST(DateOrder, ComparesDays) {
    DDate const early(DDate::September, 2, 1752);
    DDate const late(DDate::September, 14, 1752);
    EXPECT_TRUE(early < late && early <= late && late > early && late >= early && early != late);
    EXPECT_FALSE(early == late || early > late || early >= late || late < early || late <= early);
    EXPECT_TRUE(early == DDate(early) && early <= early && early >= early);
}

TEST(DateOrder, DaysBeforeDayZeroComeBeforeIt) {
    EXPECT_LT(DDate() - 1, DDate());
    EXPECT_GT(DDate(), DDate(DDate::January, 1, -5000));
    EXPECT_LT(DDate(DDate::January, 1, -6000), DDate(DDate::January, 1, -5000));
}

TEST(DateOrder, AddsAndSubtractsDays) {
    DDate const leapDay(DDate::February, 29, 2024);
    EXPECT_EQ(leapDay + 1, DDate(DDate::March, 1, 2024));
    EXPECT_EQ(leapDay - 29, DDate(DDate::January, 31, 2024));
    EXPECT_EQ(leapDay + -29, DDate(DDate::January, 31, 2024));
    EXPECT_EQ(leapDay + 366, DDate(DDate::March, 1, 2025));
    EXPECT_EQ(DDate(DDate::March, 1, 2025) - leapDay, 366);
    EXPECT_EQ(leapDay - DDate(DDate::March, 1, 2025), -366);
    EXPECT_EQ(DDate() - 1 + 1, DDate());
    static_assert(std::is_same_v<decltype(leapDay - leapDay), long>);
}

TEST(DateOrder, DatesAreConstantsToTheCompiler) {
    constexpr DDate date(DDate::September, 14, 1752);
    static_assert(date.julianDay() == 2361222 && date.year() == 1752 && date.dayOfMonth() == 14);
    static_assert(DDate(247, 1752) == date && date - 1 < date && DDate::isLeapYear(1700));
    static_assert(date.asICnrDate().month == 9);
    EXPECT_EQ(sizeof date, sizeof(unsigned long));
}

TEST(DateToday, IsTheDateOfTheClock) {
    // The day may change between two looks at the clock, but not twice.
    auto const clockDay = [] {
        std::time_t const now = std::time(nullptr);
        std::tm local{};
        localtime_r(&now, &local);
        return DDate(static_cast<DDate::Month>(local.tm_mon + 1), local.tm_mday, local.tm_year + 1900);
    };
    DDate const before = clockDay();
    DDate const today = DDate::today();
    DDate const after = clockDay();
    EXPECT_GE(today, before);
    EXPECT_LE(today, after);
}

} // namespace
