// Texts of dates and times in time zones: what the C library's mktime makes of them must show in each.
#include "c_library_text.h"

#include <string>
#include <string_view>

#include <gtest/gtest.h>

namespace {

std::string bytes(DString const& text) { return std::string(std::string_view(text)); }

char const* const everyField = "%Y-%m-%d %H:%M:%S %u %j %U %V %Z %z";

// Unset, fixed, with summer time in the north and in the south, and zones that have skipped whole days or an
// odd number of minutes at a midnight.
char const* const zones[] = {nullptr,
                             "",
                             "UTC",
                             "UTC0",
                             "GMT0",
                             "IST-5:30",
                             "EST5EDT,M3.2.0,M11.1.0",
                             "NZST-12NZDT,M9.5.0,M4.1.0/3",
                             "Europe/Berlin",
                             "America/Sao_Paulo",
                             "Pacific/Kiritimati",
                             "Pacific/Apia",
                             "Africa/Abidjan",
                             "Asia/Tokyo",
                             "right/UTC"};

TEST(DateZones, DatesReadAsTheCLibraryReadsThemInEveryZone) {
    for (char const* zone : zones) {
        SCOPED_TRACE(zone == nullptr ? "unset" : zone);
        ZoneForNow const now(zone);
        for (DDate date(DDate::January, 1, 1880); date.year() < 2040; date = date + 13) {
            ASSERT_EQ(bytes(date.asString(everyField)), cLibraryText(date, everyField));
        }
    }
}

TEST(DateZones, DaysThatAZoneHasSkippedReadAsTheCLibraryReadsThem) {
    for (char const* zone : {"Pacific/Kiritimati", "Pacific/Apia", "Africa/Abidjan"}) {
        SCOPED_TRACE(zone);
        ZoneForNow const now(zone);
        for (DDate const date : {DDate(DDate::January, 1, 1995), DDate(DDate::December, 31, 1994),
                                 DDate(DDate::December, 30, 2011), DDate(DDate::January, 1, 1912)}) {
            EXPECT_EQ(bytes(date.asString(everyField)), cLibraryText(date, everyField));
        }
    }
}

TEST(DateZones, TimesReadAsTheCLibraryReadsThemInEveryZone) {
    for (char const* zone : zones) {
        SCOPED_TRACE(zone == nullptr ? "unset" : zone);
        ZoneForNow const now(zone);
        for (long seconds = 0; seconds < 86400; seconds += 997) {
            DTime const time = DTime::fromSeconds(seconds);
            ASSERT_EQ(bytes(time.asString(everyField)), cLibraryText(time, everyField));
        }
    }
}

TEST(DateZones, AChangeOfTheZoneShowsAtOnce) {
    DDate const date(DDate::July, 4, 2021);
    {
        ZoneForNow const now("UTC0");
        EXPECT_EQ(bytes(date.asString("%H %Z")), "00 UTC");
    }
    {
        ZoneForNow const now("EST5EDT,M3.2.0,M11.1.0");
        EXPECT_EQ(bytes(date.asString("%H %Z")), "01 EDT");
    }
    {
        ZoneForNow const now("IST-5:30");
        EXPECT_EQ(bytes(date.asString("%H %Z %z")), "00 IST +0530");
    }
}

TEST(DateZoneOddities, DatesInSummerTimeHaveTheHourOneByDesign) {
    ZoneForNow const now("EST5EDT,M3.2.0,M11.1.0");
    EXPECT_EQ(bytes(DDate(DDate::July, 4, 2021).asString("%d %H:%M")), "04 01:00");
    EXPECT_EQ(bytes(DDate(DDate::January, 4, 2021).asString("%d %H:%M")), "04 00:00");
}

TEST(DateZoneOddities, TimesAreAnHourLaterWhereTheEndOf1899IsInSummerTimeByDesign) {
    ZoneForNow const now("NZST-12NZDT,M9.5.0,M4.1.0/3");
    EXPECT_EQ(bytes(DTime(1, 2, 3).asString("%H:%M:%S")), "02:02:03");
}

} // namespace
