// DTime: its seconds, its record and its texts in the locales that the modes bring. Time zones are in
// date_zones_test.cpp.
#include <kelcl/dtime.h>

#include <climits>
#include <clocale>
#include <cstring>
#include <ctime>
#include <iomanip>
#include <sstream>
#include <string>
#include <string_view>
#include <type_traits>
#include <unordered_set>

#include <gtest/gtest.h>

namespace {

std::string bytes(DString const& text) { return std::string(std::string_view(text)); }

/// 15:04:05 in the representation of the locale.
std::string expectedRepresentation() {
    std::string_view const locale = std::setlocale(LC_ALL, nullptr);
    if (locale == "ja_JP.EUC-JP") {
        return "15\xbb\xfe"
               "04\xca\xac"
               "05\xc9\xc3";
    }
    if (locale == "ja_JP.SJIS") {
        return "15\x8e\x9e"
               "04\x95\xaa"
               "05\x95\x62";
    }
    if (locale == "en_US.UTF-8") return "03:04:05 PM";
    return "15:04:05";
}

TEST(TimeOfDay, ARecordGivesSecondsAndComesBack) {
    DTime const time(DCnrTime{23, 59, 59, 0});
    EXPECT_EQ(time.secondsOfDay(), 86399);
    DCnrTime const record = time.asICnrTime();
    EXPECT_EQ(record.hours, 23);
    EXPECT_EQ(record.minutes, 59);
    EXPECT_EQ(record.seconds, 59);
    EXPECT_EQ(record.reserved, 0);
}

TEST(TimeOfDay, TwentyFourHoursAreMidnight) {
    EXPECT_EQ(DTime(DCnrTime{24, 0, 0, 0}).secondsOfDay(), 0);
    EXPECT_EQ(DTime(DCnrTime{255, 255, 255, 255}).secondsOfDay(), (255 * 3600 + 255 * 60 + 255) % 86400);
}

TEST(TimeOfDay, TheFourthByteOfARecordIsNotRead) {
    EXPECT_EQ(DTime(DCnrTime{1, 2, 3, 77}), DTime(DCnrTime{1, 2, 3, 0}));
}

TEST(TimeOfDay, ARecordIsFourBytesInOrder) {
    static_assert(sizeof(DCnrTime) == 4 && std::is_trivially_copyable_v<DCnrTime>);
    DCnrTime const record = DTime(1, 2, 3).asICnrTime();
    unsigned char bytesOfRecord[4];
    std::memcpy(bytesOfRecord, &record, sizeof bytesOfRecord);
    EXPECT_EQ(bytesOfRecord[0], 1);
    EXPECT_EQ(bytesOfRecord[1], 2);
    EXPECT_EQ(bytesOfRecord[2], 3);
    EXPECT_EQ(bytesOfRecord[3], 0);
}

TEST(TimeOfDay, EverySecondOfTheDayGoesToARecordAndBack) {
    long number = 0;
    for (int hours = 0; hours < 24; ++hours) {
        for (int minutes = 0; minutes < 60; ++minutes) {
            for (int seconds = 0; seconds < 60; ++seconds, ++number) {
                DTime const time = DTime::fromSeconds(number);
                ASSERT_EQ(time.hours(), hours);
                ASSERT_EQ(time.minutes(), minutes);
                ASSERT_EQ(time.seconds(), seconds);
                ASSERT_EQ(DTime(time.asICnrTime()).secondsOfDay(), number);
                ASSERT_EQ(DTime(hours, minutes, seconds).secondsOfDay(), number);
            }
        }
    }
}

TEST(TimeOfDay, SecondsBeyondADayAndNegativeOnesWrapAround) {
    EXPECT_EQ(DTime::fromSeconds(86400).secondsOfDay(), 0);
    EXPECT_EQ(DTime::fromSeconds(86401).secondsOfDay(), 1);
    EXPECT_EQ(DTime::fromSeconds(-1).secondsOfDay(), 86399);
    EXPECT_EQ(DTime::fromSeconds(-86400).secondsOfDay(), 0);
    EXPECT_EQ(DTime::fromSeconds(LONG_MAX).secondsOfDay(), 9223372036854775807L % 86400);
    EXPECT_EQ(DTime::fromSeconds(LONG_MIN).secondsOfDay(), 86400 - 9223372036854775807L % 86400 - 1);
    EXPECT_EQ(DTime(25, 0).secondsOfDay(), 3600);
    EXPECT_EQ(DTime(0, -1).secondsOfDay(), 86340);
    EXPECT_EQ(DTime(INT_MAX, INT_MAX, INT_MAX).secondsOfDay(), 2147483647L * 3661 % 86400);
}

TEST(TimeOfDay, MidnightIsTheDefault) {
    EXPECT_EQ(DTime().secondsOfDay(), 0);
    EXPECT_EQ(DTime(7, 30).seconds(), 0);
}

TEST(TimeOfDay, ComparesSeconds) {
    DTime const early(1, 0);
    DTime const late(1, 0, 1);
    EXPECT_TRUE(early < late && early <= late && late > early && late >= early && early != late);
    EXPECT_FALSE(early == late || early > late || early >= late || late < early || late <= early);
    EXPECT_TRUE(early == DTime(0, 60) && early <= early && early >= early);
}

TEST(TimeOfDay, TimesAreConstantsToTheCompiler) {
    constexpr DTime time(1, 2, 3);
    static_assert(time.secondsOfDay() == 3723 && time.asICnrTime().minutes == 2);
    static_assert(std::is_same_v<decltype(time.secondsOfDay()), long>);
    EXPECT_EQ(sizeof time, sizeof(long));
}

TEST(TimeOfDay, NowIsTheTimeOfTheClock) {
    // Midnight may pass between two looks at the clock.
    auto const clockSeconds = [] {
        std::time_t const now = std::time(nullptr);
        std::tm local{};
        localtime_r(&now, &local);
        return (local.tm_hour * 60L + local.tm_min) * 60 + local.tm_sec;
    };
    long const before = clockSeconds();
    long const now = DTime::now().secondsOfDay();
    long const after = clockSeconds();
    EXPECT_LE((now - before + 86400) % 86400, (after - before + 86400) % 86400);
}

TEST(TimeFormats, TheCallersFormatIsTaken) {
    EXPECT_EQ(bytes(DTime::fromSeconds(3723).asString("%H:%M:%S")), "01:02:03");
    EXPECT_EQ(bytes(DTime(15, 4, 5).asString("%I-%M")), "03-04");
}

TEST(TimeFormats, TheLocalesRepresentationIsTheDefault) {
    EXPECT_EQ(bytes(DTime(15, 4, 5).asString()), expectedRepresentation());
    std::ostringstream out;
    out << DTime(15, 4, 5);
    EXPECT_EQ(out.str(), expectedRepresentation());
}

TEST(TimeFormats, WritingTakesWidthAndFillOfTheStream) {
    std::ostringstream out;
    out << std::setw(20) << std::setfill('*') << DTime(15, 4, 5);
    EXPECT_EQ(out.str(), std::string(20 - expectedRepresentation().size(), '*') + expectedRepresentation());
}

TEST(TimeFormats, AResultMoreThanSixLongerThanItsFormatComesOutWhole) {
    EXPECT_EQ(bytes(DTime(1, 2, 3).asString("%T%T%T")), "01:02:0301:02:0301:02:03");
    EXPECT_EQ(bytes(DTime(1, 2, 3).asString("%300H")), std::string(298, '0') + "01");
    EXPECT_EQ(bytes(DTime(1, 2, 3).asString("%70000H")), std::string(69998, '0') + "01");
}

TEST(TimeFormats, AFormatThatGivesNothingGivesTheEmptyString) {
    EXPECT_EQ(bytes(DTime(1, 2, 3).asString("")), "");
    EXPECT_EQ(bytes(DTime(1, 2, 3).asString(nullptr)), "");
    bool const hasMarkers = std::string_view(std::setlocale(LC_ALL, nullptr)) != "de_DE.ISO-8859-1";
    EXPECT_EQ(DTime(1, 2, 3).asString("%p").isEmpty(), !hasMarkers);
}

TEST(TimeFormatOddities, TheDateOfATimeIsTheLastDayOf1899ByDesign) {
    EXPECT_EQ(bytes(DTime(1, 2, 3).asString("%Y-%m-%d %u")), "1899-12-31 7");
}

TEST(TimeOfDay, DiffersFromAnotherBySecondsWithinTheDay) {
    EXPECT_EQ(DTime(7, 30) - DTime(6, 0), 5400);
    EXPECT_EQ(DTime(0, 0, 1) - DTime(23, 59, 59), -86398);
    EXPECT_EQ(DTime(12, 0) - DTime(12, 0), 0);
}

TEST(TimeOfDay, HasAHash) {
    std::unordered_set<DTime> const times{DTime(7, 30), DTime(7, 31)};
    EXPECT_EQ(times.size(), 2u);
    EXPECT_EQ(times.count(DTime(6, 90)), 1u);
    EXPECT_EQ(times.count(DTime(7, 32)), 0u);
}

} // namespace
