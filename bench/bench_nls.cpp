// Multi-byte text beside what a user would otherwise write: loops of the C library's mbrlen and mbrtowc, its
// conversions of whole texts, and ICU where the build has it. UTF-8 with the national-language switch off and
// on, then the other encodings. The last number of a name is the size in bytes; two sizes stand 16 apart, to
// show how the work grows. Contenders must agree before anything is timed.
#include <kelcl/dbuffer.h>
#include <kelcl/ddbcsbuffer.h>
#include <kelcl/dnlsutil.h>
#include <kelcl/dstring.h>

#include <benchmark/benchmark.h>

#if KELCL_BENCH_ICU // the build found it, and links it
#include <unicode/ucasemap.h>
#include <unicode/uchar.h>
#include <unicode/ustring.h>
#include <unicode/utf8.h>
#endif

#include <algorithm>
#include <clocale>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <cwchar>
#include <cwctype>
#include <functional>
#include <initializer_list>
#include <map>
#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace {

using std::string;

// Inputs

struct Script {
    char const* name;
    char const* locale;
    string pattern;   ///< Repeated to the size.
    string absent;    ///< A character that does not occur.
    string absentSet; ///< Several.
};

std::vector<Script> const& scripts() {
    static std::vector<Script> const all{
        {"ascii", "en_US.UTF-8", "The quick brown fox jumps over the lazy dog. ", "#", "#$%"},
        {"mixed", "en_US.UTF-8", "a\xC3\xA9 \xE3\x81\x82\xD0\x96 b\xC3\xB6\xE4\xBA\xBA", "\xE3\x82\xA2",
         "\xE3\x82\xA2\xE3\x82\xA4#"},
        {"three-byte", "en_US.UTF-8", "\xE6\x97\xA5\xE6\x9C\xAC\xE8\xAA\x9E\xE3\x81\x82\xE3\x81\x84",
         "\xE3\x82\xA2", "\xE3\x82\xA2\xE3\x82\xA4#"},
    };
    return all;
}

std::vector<Script> const& otherEncodings() {
    static std::vector<Script> const all{
        {"EUC-JP", "ja_JP.EUC-JP", "ab \xC6\xFC\xCB\xDC\xB8\xEC\xA4\xA2\xA4\xA4\xA4\xA6", "\xA5\xA2",
         "\xA5\xA2\xA5\xA4#"},
        {"SJIS", "ja_JP.SJIS", "ab \x93\xFA\x96\x7B\x8C\xEA\x82\xA0\x82\xA2\x82\xA4", "\x83\x41",
         "\x83\x41\x83\x43#"},
        {"GB18030", "zh_CN.GB18030", "ab \xD6\xD0\xB9\xFA\xC8\xCB\xB0\xA1\xB0\xA2\xB0\xA3", "\xB6\xA1",
         "\xB6\xA1\xB6\xA2#"},
        {"BIG5", "zh_TW.BIG5", "ab \xA4\xA4\xB0\xEA\xA4\x48\xA4\x40\xA4\x41\xA4\x42", "\xA7\xDA",
         "\xA7\xDA\xA7\xDB#"},
    };
    return all;
}

string textOf(Script const& script, std::size_t size) {
    string text;
    while (text.size() + script.pattern.size() <= size)
        text += script.pattern;
    return text.append(size - text.size(), 'x');
}

// What is timed

/// What one run of a contender computes, for the comparison.
using Work = std::function<std::uint64_t()>;

/// Releases the buffer that an operation gave.
std::uint64_t lengthAndRelease(DBuffer* buffer) {
    std::uint64_t const length = buffer->length;
    if (--buffer->refs == 0) delete buffer;
    return length;
}

/// The loop that a user would write.
template <class Visit>
void eachByMbrtowc(string const& text, Visit visit) {
    std::mbstate_t state{};
    for (std::size_t at = 0; at < text.size();) {
        wchar_t wide = 0;
        std::size_t const length = std::mbrtowc(&wide, text.data() + at, text.size() - at, &state);
        std::size_t const bytes = length == 0 || length > 6 ? 1 : length;
        if (!visit(at, bytes, wide)) return;
        at += bytes;
    }
}

std::uint64_t countByMbrlen(string const& text) {
    std::mbstate_t state{};
    std::uint64_t count = 0;
    for (std::size_t at = 0; at < text.size(); ++count) {
        std::size_t const length = std::mbrlen(text.data() + at, text.size() - at, &state);
        at += length == 0 || length > 6 ? 1 : length;
    }
    return count;
}

std::uint64_t widenByLibrary(string const& text, std::vector<wchar_t>& room) {
    std::mbstate_t state{};
    char const* from = text.c_str();
    return std::mbsrtowcs(room.data(), &from, room.size(), &state);
}

class Contest {
public:
    Contest(Script const& script, std::size_t size)
        : script_(script), size_(size), text_(textOf(script, size)), string_(text_),
          buffer_(DBuffer::fromContents(string_.c_str())), room_(size + 1), bytes_(6 * size + 16) {}

    void enter(int switchState) {
        switchState_ = switchState;
        auto const length = static_cast<unsigned int>(size_);
        DBuffer* const buffer = buffer_;
        string const& text = text_;
        Script const& script = script_;

        add("stepping", "kelcl", [&text, length] { return findCharNum(text.c_str(), length, length); });
        add("stepping", "mbrlen", [&text] { return countByMbrlen(text); });
        add("charType at the end", "kelcl", [buffer, length] { return buffer->charType(length); });
        add("findBytePos", "kelcl",
            [&text, length] { return findBytePos(text.c_str(), length, length / 4); });

        auto const& absent = script.absent;
        auto const& set = script.absentSet;
        add("indexOf", "kelcl",
            [buffer, &absent] { return buffer->indexOf(absent.data(), lengthOf(absent), 1); });
        add("lastIndexOf", "kelcl",
            [buffer, &absent] { return buffer->lastIndexOf(absent.data(), lengthOf(absent), 0xFFFFFFFF); });
        add("indexOfAnyOf", "kelcl",
            [buffer, &set] { return buffer->indexOfAnyOf(set.data(), lengthOf(set), 1); });
        add("indexOfAnyOf", "mbrtowc", [&text, &set, this] {
            std::vector<wchar_t> members(8);
            members.resize(widenByLibrary(set, members));
            std::uint64_t found = 0;
            eachByMbrtowc(text, [&](std::size_t at, std::size_t, wchar_t wide) {
                if (std::find(members.begin(), members.end(), wide) == members.end()) return true;
                found = at + 1;
                return false;
            });
            return found;
        });
        add("lastIndexOfAnyOf", "kelcl",
            [buffer, &set] { return buffer->lastIndexOfAnyOf(set.data(), lengthOf(set), 0xFFFFFFFF); });

        add("subString", "kelcl",
            [buffer, length] { return lengthAndRelease(buffer->subString(length / 3, length / 3, ' ')); });
        add("reverse", "kelcl", [buffer] { return lengthAndRelease(buffer->reverse()); });
        add("upperCase", "kelcl", [buffer] { return lengthAndRelease(buffer->upperCase()); });
        add("translate", "kelcl", [buffer, &set, &absent] {
            return lengthAndRelease(
                buffer->translate(set.data(), lengthOf(set), absent.data(), lengthOf(absent), '.'));
        });
        add("strip", "kelcl", [buffer, &set] {
            return lengthAndRelease(buffer->strip(set.data(), lengthOf(set), DStringEnum::both));
        });
        add("isPrintable", "kelcl", [buffer] { return buffer->isPrintable() ? 1 : 0; });
        add("isPrintable", "iswprint", [&text] {
            bool all = true;
            eachByMbrtowc(text, [&all](std::size_t, std::size_t, wchar_t wide) {
                return all = std::iswprint(static_cast<std::wint_t>(wide)) != 0;
            });
            return all ? 1 : 0;
        });
        add("isValidMBCS and isSBCS", "kelcl",
            [buffer] { return (buffer->isValidMBCS() ? 1 : 0) + (buffer->isSBCS() ? 2 : 0); });
        add("cvtMBS2WCS", "kelcl",
            [&text, length, this] { return cvtMBS2WCS(text.data(), length, room_.data()); });
        add("cvtMBS2WCS", "mbsrtowcs", [&text, this] { return widenByLibrary(text, room_); });
        add("cvtWCS2MBS", "kelcl", [&text, length, this] {
            fillWide();
            return cvtWCS2MBS(wide_.data(), static_cast<unsigned int>(wide_.size()), bytes_.data(), length, 0,
                              ' ');
        });
        add("cvtWCS2MBS", "wcsrtombs", [this] {
            fillWide();
            std::mbstate_t state{};
            wchar_t const* from = wide_.data();
            return wcsnrtombs(bytes_.data(), &from, wide_.size(), bytes_.size(), &state);
        });
#if KELCL_BENCH_ICU
        if (string(script.locale) == "en_US.UTF-8") enterIcu();
#endif
    }

private:
    static unsigned int lengthOf(string const& text) { return static_cast<unsigned int>(text.size()); }

    void fillWide() {
        if (!wide_.empty()) return;
        wide_.resize(size_ + 1);
        wide_.resize(widenByLibrary(text_, wide_));
    }

#if KELCL_BENCH_ICU
    void enterIcu() {
        string const& text = text_;
        auto const length = static_cast<std::int32_t>(size_);
        add("stepping", "ICU", [&text, length] {
            std::uint64_t count = 0;
            for (std::int32_t at = 0; at < length; ++count) {
                UChar32 c;
                U8_NEXT(reinterpret_cast<std::uint8_t const*>(text.data()), at, length, c);
                benchmark::DoNotOptimize(c);
            }
            return count;
        });
        add("stepping back", "ICU", [&text, length] {
            for (std::int32_t at = length; at > 0;) {
                UChar32 c;
                U8_PREV(reinterpret_cast<std::uint8_t const*>(text.data()), 0, at, c);
                benchmark::DoNotOptimize(c);
            }
            return std::uint64_t{0};
        });
        add("isPrintable", "ICU", [&text, length] {
            for (std::int32_t at = 0; at < length;) {
                UChar32 c;
                U8_NEXT(reinterpret_cast<std::uint8_t const*>(text.data()), at, length, c);
                if (!u_isprint(c)) return 0;
            }
            return 1;
        });
        add("upperCase", "ICU", [&text, length, this] {
            UErrorCode error = U_ZERO_ERROR;
            UCaseMap* const map = ucasemap_open("en", 0, &error);
            std::int32_t const n = ucasemap_utf8ToUpper(
                map, bytes_.data(), static_cast<std::int32_t>(bytes_.size()), text.data(), length, &error);
            ucasemap_close(map);
            return static_cast<std::uint64_t>(n);
        });
        add("cvtMBS2WCS", "ICU to 16 bits", [&text, length, this] {
            UErrorCode error = U_ZERO_ERROR;
            std::int32_t n = 0;
            u_strFromUTF8(reinterpret_cast<UChar*>(room_.data()), length + 1, &n, text.data(), length,
                          &error);
            return static_cast<std::uint64_t>(n);
        });
    }
#endif

    template <class Function>
    void add(string const& subject, char const* contender, Function function) {
        string const group = subject + "/" + script_.name + (switchState_ == 1 ? "/on/" : "/off/");
        string const name = group + contender + "/" + std::to_string(size_);
        benchmark::RegisterBenchmark(
            name.c_str(), [this, group, state = switchState_, work = Work(function)](benchmark::State& run) {
                measure(run, group, state, work);
            });
    }

    void measure(benchmark::State& run, string const& group, int switchState, Work const& work) {
        std::setlocale(LC_ALL, script_.locale);
        int const before = std::exchange(DString::fgI18NState, switchState);
        if (auto const [answer, isFirst] = answers_.emplace(group, work());
            !isFirst && answer->second != work())
            run.SkipWithError("the contenders differ");
        for (auto _ : run)
            benchmark::DoNotOptimize(work());
        DString::fgI18NState = before;
        run.SetBytesProcessed(static_cast<std::int64_t>(run.iterations()) * static_cast<std::int64_t>(size_));
    }

    Script const& script_;
    std::size_t size_;
    int switchState_ = 0;
    string text_;
    DString string_;
    DString secondOwner_ = string_; ///< So that no edit is done in place.
    DBuffer* buffer_;
    std::map<string, std::uint64_t> answers_;
    std::vector<wchar_t> room_;
    std::vector<wchar_t> wide_;
    std::vector<char> bytes_;
};

bool const isRegistered = [] {
    static std::vector<std::unique_ptr<Contest>> contests;
    auto const register_ = [](Script const& script, std::size_t size, std::initializer_list<int> switches) {
        // Buffers are multi-byte ones in a multi-byte locale only.
        if (std::setlocale(LC_ALL, script.locale) == nullptr) return;
        contests.push_back(std::make_unique<Contest>(script, size));
        for (int const state : switches)
            contests.back()->enter(state);
    };
    for (Script const& script : scripts())
        for (std::size_t const size :
             {std::size_t{64}, std::size_t{1} << 10, std::size_t{1} << 16, std::size_t{1} << 20})
            register_(script, size, {0, 1});
    for (Script const& script : otherEncodings())
        for (std::size_t const size : {std::size_t{64}, std::size_t{1} << 10, std::size_t{1} << 20})
            register_(script, size, {0});
    return true;
}();

} // namespace
