// Dates to day numbers and back, and their texts, beside the standard library's calendar, a well-known date
// library and plain strftime. Other rooms have files of their own.
#include <kelcl/ddate.h>
#include <kelcl/dtime.h>

#include <chrono>
#include <ctime>
#include <random>
#include <string>
#include <vector>

#include <langinfo.h>

#include <benchmark/benchmark.h>

#if __has_include(<date/date.h>)
#define HAS_DATE
#include <date/date.h>
#endif

namespace {

/// Day numbers of the years 1753 to about 2300, so that all sides know them.
std::vector<long> const& dayNumbers() {
    static std::vector<long> const numbers = [] {
        std::mt19937 random(1);
        std::vector<long> made(1024);
        for (long& number : made)
            number = 2361331 + static_cast<long>(random() % 200000);
        return made;
    }();
    return numbers;
}

struct Parts {
    int year;
    int month;
    int day;
};

std::vector<Parts> const& parts() {
    static std::vector<Parts> const all = [] {
        std::vector<Parts> made;
        for (long number : dayNumbers()) {
            DDate const date = DDate::fromJulianDay(static_cast<unsigned long>(number));
            made.push_back({date.year(), date.monthOfYear(), date.dayOfMonth()});
        }
        return made;
    }();
    return all;
}

/// Runs `work` on every element of `inputs`; the time reported is for one.
template <class Inputs, class Work>
void forEach(benchmark::State& state, Inputs const& inputs, Work work) {
    std::size_t index = 0;
    for (auto _ : state) {
        benchmark::DoNotOptimize(work(inputs[index]));
        index = (index + 1) % 1024;
    }
}

void dayNumberOfDate(benchmark::State& state) {
    forEach(state, parts(), [](Parts const& date) {
        return DDate(static_cast<DDate::Month>(date.month), date.day, date.year).julianDay();
    });
}
BENCHMARK(dayNumberOfDate);

void dayNumberByChrono(benchmark::State& state) {
    forEach(state, parts(), [](Parts const& date) {
        return std::chrono::sys_days(std::chrono::year(date.year) /
                                     std::chrono::month(static_cast<unsigned>(date.month)) / date.day)
            .time_since_epoch()
            .count();
    });
}
BENCHMARK(dayNumberByChrono);

#ifdef HAS_DATE
void dayNumberByDateLibrary(benchmark::State& state) {
    forEach(state, parts(), [](Parts const& date) {
        return date::sys_days(date::year(date.year) / date::month(static_cast<unsigned>(date.month)) /
                              date.day)
            .time_since_epoch()
            .count();
    });
}
BENCHMARK(dayNumberByDateLibrary);
#endif

void dayNumberByTimegm(benchmark::State& state) {
    forEach(state, parts(), [](Parts const& date) {
        std::tm calendar{};
        calendar.tm_year = date.year - 1900;
        calendar.tm_mon = date.month - 1;
        calendar.tm_mday = date.day;
        return timegm(&calendar);
    });
}
BENCHMARK(dayNumberByTimegm);

void dateOfDayNumber(benchmark::State& state) {
    forEach(state, dayNumbers(), [](long number) {
        DDate const date = DDate::fromJulianDay(static_cast<unsigned long>(number));
        return date.year() + date.monthOfYear() + date.dayOfMonth();
    });
}
BENCHMARK(dateOfDayNumber);

void dateByChrono(benchmark::State& state) {
    forEach(state, dayNumbers(), [](long number) {
        std::chrono::year_month_day const date{
            std::chrono::sys_days{std::chrono::days{static_cast<int>(number - 2440588)}}};
        return static_cast<int>(date.year()) + static_cast<int>(static_cast<unsigned>(date.month())) +
               static_cast<int>(static_cast<unsigned>(date.day()));
    });
}
BENCHMARK(dateByChrono);

#ifdef HAS_DATE
void dateByDateLibrary(benchmark::State& state) {
    forEach(state, dayNumbers(), [](long number) {
        date::year_month_day const date{date::sys_days{date::days{static_cast<int>(number - 2440588)}}};
        return static_cast<int>(date.year()) + static_cast<int>(static_cast<unsigned>(date.month())) +
               static_cast<int>(static_cast<unsigned>(date.day()));
    });
}
BENCHMARK(dateByDateLibrary);
#endif

void dateByGmtime(benchmark::State& state) {
    forEach(state, dayNumbers(), [](long number) {
        std::time_t const seconds = (number - 2440588) * 86400;
        std::tm calendar{};
        gmtime_r(&seconds, &calendar);
        return calendar.tm_year + calendar.tm_mon + calendar.tm_mday;
    });
}
BENCHMARK(dateByGmtime);

std::tm calendarOf(Parts const& date) {
    std::tm calendar{};
    calendar.tm_year = date.year - 1900;
    calendar.tm_mon = date.month - 1;
    calendar.tm_mday = date.day;
    return calendar;
}

void textOfDate(benchmark::State& state) {
    forEach(state, dayNumbers(), [](long number) {
        return DDate::fromJulianDay(static_cast<unsigned long>(number)).asString("%d.%m.%Y %a").length();
    });
}
BENCHMARK(textOfDate);

void textByStrftime(benchmark::State& state) {
    forEach(state, parts(), [](Parts const& date) {
        std::tm const calendar = calendarOf(date);
        char text[64];
        return std::strftime(text, sizeof text, "%d.%m.%Y %a", &calendar);
    });
}
BENCHMARK(textByStrftime);

void textByMktimeAndStrftime(benchmark::State& state) {
    forEach(state, parts(), [](Parts const& date) {
        std::tm calendar = calendarOf(date);
        std::mktime(&calendar);
        char text[64];
        return std::strftime(text, sizeof text, "%d.%m.%Y %a", &calendar);
    });
}
BENCHMARK(textByMktimeAndStrftime);

void numbersOfDate(benchmark::State& state) {
    forEach(state, dayNumbers(), [](long number) {
        return DDate::fromJulianDay(static_cast<unsigned long>(number)).asString("%Y-%m-%d").length();
    });
}
BENCHMARK(numbersOfDate);

void numbersByStrftime(benchmark::State& state) {
    forEach(state, parts(), [](Parts const& date) {
        std::tm const calendar = calendarOf(date);
        char text[64];
        return std::string(text, std::strftime(text, sizeof text, "%Y-%m-%d", &calendar)).size();
    });
}
BENCHMARK(numbersByStrftime);

void nameOfMonth(benchmark::State& state) {
    forEach(state, parts(), [](Parts const& date) {
        return DDate::monthName(static_cast<DDate::Month>(date.month)).length();
    });
}
BENCHMARK(nameOfMonth);

void nameByLanginfo(benchmark::State& state) {
    forEach(state, parts(),
            [](Parts const& date) { return std::string(nl_langinfo(MON_1 + date.month - 1)).size(); });
}
BENCHMARK(nameByLanginfo);

void textOfTime(benchmark::State& state) {
    forEach(state, dayNumbers(),
            [](long number) { return DTime::fromSeconds(number).asString("%H:%M:%S").length(); });
}
BENCHMARK(textOfTime);

} // namespace
