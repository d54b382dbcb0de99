// A calendar that counts days one by one, to hold the closed formulas against. It knows nothing of the
// library.
#ifndef KELCL_TESTS_DATETIME_PLAIN_CALENDAR_H
#define KELCL_TESTS_DATETIME_PLAIN_CALENDAR_H

/// A date that can go to the next day and to the one before.
struct PlainDate {
    int year = -4713;
    int month = 1;
    int day = 1;
    int dayOfYear = 1;

    bool isLeap() const {
        if (year < 0) return -year % 4 == 1;
        if (year <= 1752) return year % 4 == 0;
        return year % 400 == 0 || (year % 4 == 0 && year % 100 != 0);
    }

    int monthLength() const {
        switch (month) {
        case 2:
            return isLeap() ? 29 : 28;
        case 4:
        case 6:
        case 9:
        case 11:
            return 30;
        default:
            return 31;
        }
    }

    void goToNextDay() {
        ++dayOfYear;
        if (year == 1752 && month == 9 && day == 2) {
            day = 14;
        } else if (day < monthLength()) {
            ++day;
        } else {
            day = 1;
            ++month;
        }
        if (month > 12) {
            month = 1;
            dayOfYear = 1;
            year = year == -1 ? 1 : year + 1;
        }
    }

    void goToDayBefore() {
        --dayOfYear;
        if (year == 1752 && month == 9 && day == 14) {
            day = 2;
        } else if (day > 1) {
            --day;
        } else if (month > 1) {
            --month;
            day = monthLength();
        } else {
            year = year == 1 ? -1 : year - 1;
            month = 12;
            day = 31;
            dayOfYear = year == 1752 ? 355 : isLeap() ? 366 : 365;
        }
    }
};

#endif
