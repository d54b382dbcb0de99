// DDate's names and formats in the locales that the modes bring. The arithmetic is in
// date_arithmetic_test.cpp.
#include <kelcl/ddate.h>

#include <climits>
#include <clocale>
#include <cstdlib>
#include <iomanip>
#include <sstream>
#include <string>
#include <string_view>

#include <gtest/gtest.h>

namespace {

/// What the C library's tables of a locale say.
struct Expected {
    char const* january;
    char const* march;
    char const* december;
    char const* monday;
    char const* wednesday;
    char const* friday;
    char const* sunday;
    char const* lastOf1999;     ///< In the locale's date format.
    char const* firstOf1752;    ///< The same.
    char const* fourDigits1752; ///< The same with every y turned into Y.
    char const* forenoonMarker; ///< Nothing in some locales.
};

Expected const english{"January", "March",      "December",   "Monday",     "Wednesday", "Friday",
                       "Sunday",  "12/31/1999", "01/01/1752", "01/01/1752", "AM"};

Expected expectedNames() {
    std::string_view const locale = std::setlocale(LC_ALL, nullptr);
    if (locale == "de_DE.ISO-8859-1") {
        return {"Januar",  "M\xe4rz",    "Dezember",   "Montag",     "Mittwoch", "Freitag",
                "Sonntag", "31.12.1999", "01.01.1752", "01.01.1752", ""};
    }
    if (locale == "ja_JP.EUC-JP") {
        return {"1\xb7\xee",
                "3\xb7\xee",
                "12\xb7\xee",
                "\xb7\xee\xcd\xcb\xc6\xfc",
                "\xbf\xe5\xcd\xcb\xc6\xfc",
                "\xb6\xe2\xcd\xcb\xc6\xfc",
                "\xc6\xfc\xcd\xcb\xc6\xfc",
                "1999\xc7\xaf"
                "12\xb7\xee"
                "31\xc6\xfc",
                "1752\xc7\xaf"
                "01\xb7\xee"
                "01\xc6\xfc",
                "1752\xc7\xaf"
                "01\xb7\xee"
                "01\xc6\xfc",
                "\xb8\xe1\xc1\xb0"};
    }
    if (locale == "ja_JP.SJIS") {
        return {"1\x8c\x8e",
                "3\x8c\x8e",
                "12\x8c\x8e",
                "\x8c\x8e\x97\x6a\x93\xfa",
                "\x90\x85\x97\x6a\x93\xfa",
                "\x8b\xe0\x97\x6a\x93\xfa",
                "\x93\xfa\x97\x6a\x93\xfa",
                "1999\x94\x4e"
                "12\x8c\x8e"
                "31\x93\xfa",
                "1752\x94\x4e"
                "01\x8c\x8e"
                "01\x93\xfa",
                "1752\x94\x4e"
                "01\x8c\x8e"
                "01\x93\xfa",
                "\x8c\xdf\x91\x4f"};
    }
    if (locale == "C") {
        Expected names = english;
        names.lastOf1999 = "12/31/99";
        names.firstOf1752 = "01/01/52";
        return names;
    }
    return english;
}

std::string bytes(DString const& text) { return std::string(std::string_view(text)); }

std::string written(DDate const& date) {
    std::ostringstream out;
    out << date;
    return out.str();
}

class DateNames : public ::testing::Test {
protected:
    Expected const expected = expectedNames();
};
using DateFormats = DateNames;

DDate const lastOf1999(DDate::December, 31, 1999);
DDate const firstOf1752(DDate::January, 1, 1752);

TEST_F(DateNames, MonthsAreNamedByTheLocale) {
    EXPECT_EQ(bytes(DDate::monthName(DDate::January)), expected.january);
    EXPECT_EQ(bytes(DDate::monthName(DDate::March)), expected.march);
    EXPECT_EQ(bytes(DDate::monthName(DDate::December)), expected.december);
    EXPECT_EQ(bytes(lastOf1999.monthName()), expected.december);
    EXPECT_EQ(bytes(firstOf1752.monthName()), expected.january);
}

TEST_F(DateNames, WeekdaysAreNamedByTheLocale) {
    EXPECT_EQ(bytes(DDate::dayName(DDate::Monday)), expected.monday);
    EXPECT_EQ(bytes(DDate::dayName(DDate::Wednesday)), expected.wednesday);
    EXPECT_EQ(bytes(DDate::dayName(DDate::Friday)), expected.friday);
    EXPECT_EQ(bytes(DDate::dayName(DDate::Sunday)), expected.sunday);
    EXPECT_EQ(bytes(lastOf1999.dayName()), expected.friday);
}

TEST_F(DateNames, DayNumberZeroIsAMonday) {
    EXPECT_EQ(bytes(DDate().dayName()), expected.monday);
    EXPECT_EQ(bytes((DDate() + 6).dayName()), expected.sunday);
    EXPECT_EQ(bytes((DDate() + 7).dayName()), expected.monday);
}

TEST_F(DateNames, WeekdaysGoOnBeforeDayZeroAndAcrossTheDroppedDays) {
    EXPECT_EQ(bytes((DDate() - 1).dayName()), expected.sunday);
    EXPECT_EQ(bytes((DDate() - 7).dayName()), expected.monday);
    EXPECT_EQ(bytes(DDate(DDate::September, 2, 1752).dayName()), expected.wednesday);
    EXPECT_EQ(bytes((DDate(DDate::September, 14, 1752) + 1).dayName()), expected.friday);
}

TEST_F(DateNames, NumbersThatNameNothingReadNothingElse) {
    for (int number : {INT_MIN, -1, 0, 13, INT_MAX}) {
        EXPECT_LE(DDate::monthName(static_cast<DDate::Month>(number)).length(), 1u) << number;
    }
    EXPECT_LE(DDate::dayName(static_cast<DDate::DayOfWeek>(INT_MIN)).length(), 1u);
    EXPECT_EQ(bytes(DDate::dayName(static_cast<DDate::DayOfWeek>(7))), expected.monday);
}

TEST_F(DateFormats, TheLocalesFormatIsTheDefault) {
    EXPECT_EQ(bytes(lastOf1999.asString()), expected.lastOf1999);
    EXPECT_EQ(bytes(lastOf1999.asString(DDate::localeYear)), expected.lastOf1999);
    EXPECT_EQ(written(lastOf1999), expected.lastOf1999);
}

TEST_F(DateFormats, AFourDigitYearIsShownWhole) {
    EXPECT_EQ(bytes(firstOf1752.asString(DDate::fourDigitYear)), expected.fourDigits1752);
    EXPECT_EQ(bytes(DDate(DDate::January, 1, 1752).asString("%Y-%m-%d")), "1752-01-01");
}

TEST_F(DateFormats, ATwoDigitYearBefore1900ShowsItsLastDigits) {
    EXPECT_EQ(bytes(firstOf1752.asString(DDate::localeYear)), expected.firstOf1752);
    EXPECT_EQ(written(firstOf1752), expected.firstOf1752);
    EXPECT_EQ(bytes(DDate(DDate::May, 4, 7).asString("%d %y")), "04 07");
    EXPECT_EQ(bytes(DDate(DDate::May, 4, 1899).asString("%d %y")), "04 99");
    EXPECT_EQ(bytes(DDate(DDate::May, 4, 1900).asString("%d %y")), "04 00");
}

TEST_F(DateFormats, TheCallersFormatIsTaken) {
    EXPECT_EQ(bytes(lastOf1999.asString("%Y-%m-%d")), "1999-12-31");
    EXPECT_EQ(bytes(lastOf1999.asString("%j")), "365");
    EXPECT_EQ(bytes(lastOf1999.asString("%B %A")), std::string(expected.december) + ' ' + expected.friday);
    EXPECT_EQ(bytes(lastOf1999.asString("100%%")), "100%");
    EXPECT_EQ(bytes(lastOf1999.asString("no conversion")), "no conversion");
}

TEST_F(DateFormats, WeekdayAndDayOfTheYearAreFilledIn) {
    EXPECT_EQ(bytes(DDate(DDate::March, 1, 2024).asString("%u %j")), "5 061");
    EXPECT_EQ(bytes(DDate(DDate::March, 1, 2023).asString("%w %j")), "3 060");
}

TEST_F(DateFormats, AResultOfAnyLengthComesOutWhole) {
    EXPECT_EQ(bytes(lastOf1999.asString("%100Y")), std::string(96, '0') + "1999");
    EXPECT_EQ(bytes(lastOf1999.asString("%255Y")), std::string(251, '0') + "1999");
    EXPECT_EQ(bytes(lastOf1999.asString("%256Y")), std::string(252, '0') + "1999");
    EXPECT_EQ(bytes(lastOf1999.asString("%511Y")), std::string(507, '0') + "1999");
    EXPECT_EQ(bytes(lastOf1999.asString("%512Y")), std::string(508, '0') + "1999");
    EXPECT_EQ(bytes(lastOf1999.asString("%100000Y")), std::string(99996, '0') + "1999");
    std::string format;
    std::string text;
    for (int repeat = 0; repeat < 1000; ++repeat) {
        format += "%d.%Y ";
        text += "31.1999 ";
    }
    EXPECT_EQ(bytes(lastOf1999.asString(format.c_str())), text);
}

TEST_F(DateFormats, AResultBeyondAllMeasureComesOutEmpty) {
    EXPECT_EQ(bytes(lastOf1999.asString("%2000000000Y")), "");
}

TEST_F(DateFormats, AFormatThatGivesNothingGivesTheEmptyString) {
    EXPECT_EQ(bytes(lastOf1999.asString("")), "");
    EXPECT_EQ(bytes(lastOf1999.asString(static_cast<char const*>(nullptr))), "");
    EXPECT_EQ(bytes(lastOf1999.asString(nullptr)), "");
    EXPECT_EQ(bytes(lastOf1999.asString("%p")), expected.forenoonMarker);
}

TEST_F(DateFormats, WritingTakesWidthAndFillOfTheStream) {
    std::ostringstream out;
    out << std::setw(20) << std::setfill('*') << lastOf1999;
    EXPECT_EQ(out.str(),
              std::string(20 - std::string(expected.lastOf1999).size(), '*') + expected.lastOf1999);
}

TEST_F(DateFormats, AYearBeforeYearOneIsANegativeNumber) {
    EXPECT_EQ(bytes(DDate(DDate::January, 1, -44).asString("%Y/%m")), "-44/01");
}

TEST(DateFormatOddities, AFormatWithASmallYMakesTheFullYear1900TooHighByDesign) {
    EXPECT_EQ(bytes(firstOf1752.asString("%Y %y")), "3652 52");
    EXPECT_EQ(bytes(firstOf1752.asString("%Y my year")), "3652 my year");
    EXPECT_EQ(bytes(DDate(DDate::January, 1, 1900).asString("%Y my year")), "1900 my year");
}

TEST(DateFormatOddities, LeapDaysOfTheJulianCalendarAloneComeOutAsFirstOfMarchByDesign) {
    EXPECT_EQ(bytes(DDate(DDate::February, 29, 1700).asString("%d.%m.%Y")), "01.03.1700");
    EXPECT_EQ(bytes(DDate(DDate::February, 29, 1600).asString("%d.%m.%Y")), "29.02.1600");
    // Given as year 3600 and year 3500 here.
    EXPECT_EQ(bytes(DDate(DDate::February, 29, 1700).asString("%d.%m.%y")), "29.02.00");
    EXPECT_EQ(bytes(DDate(DDate::February, 29, 1600).asString("%d.%m.%y")), "01.03.00");
}

TEST(DateFormatOddities, WeekdaysInFormatsAreGregorianForJulianDaysTooByDesign) {
    EXPECT_EQ(bytes(DDate(DDate::September, 2, 1752).asString("%u")), "6");
    EXPECT_EQ(bytes(DDate(DDate::September, 14, 1752).asString("%u")), "4");
}

TEST_F(DateFormats, AByteThatOnlyLooksLikeASmallYIsNone) {
    if (std::string_view(std::setlocale(LC_ALL, nullptr)) == "ja_JP.SJIS") {
        EXPECT_EQ(bytes(firstOf1752.asString("\x83\x79%Y")), "\x83\x79"
                                                             "1752");
    } else {
        EXPECT_EQ(bytes(firstOf1752.asString("Y%Y")), "Y1752");
    }
}

} // namespace
