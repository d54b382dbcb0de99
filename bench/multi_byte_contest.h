// A work on multi-byte text by all contenders: the texts, what users write with the C library, and the check
// that all agree. The works are in multi_byte_stepping.cpp, multi_byte_searches.cpp, multi_byte_edits.cpp,
// and multi_byte_conversions.cpp.
#ifndef KELCL_BENCH_MULTI_BYTE_CONTEST_H
#define KELCL_BENCH_MULTI_BYTE_CONTEST_H

#include <kelcl/dbuffer.h>
#include <kelcl/dstring.h>

#include <benchmark/benchmark.h>

#if KELCL_BENCH_GLIB // the build found it, and links it
#include <glib.h>
#endif

#include <algorithm>
#include <clocale>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <cwchar>
#include <functional>
#include <map>
#include <string>
#include <utility>
#include <vector>

namespace bench {

using std::string;
using std::uint64_t;

using std::string;
using std::uint64_t;

// Inputs

struct Script {
    char const* name;
    char const* locale;
    string pattern;   ///< Repeated to the size.
    string absent;    ///< A character that does not occur.
    string absentSet; ///< Several.
};

inline std::vector<Script> const& scripts() {
    static std::vector<Script> const all{
        {"ascii", "en_US.UTF-8", "The quick brown fox jumps over the lazy dog. ", "#", "#$%"},
        {"mixed", "en_US.UTF-8", "a\xC3\xA9 \xE3\x81\x82\xD0\x96 b\xC3\xB6\xE4\xBA\xBA", "\xE3\x82\xA2",
         "\xE3\x82\xA2\xE3\x82\xA4#"},
        {"three-byte", "en_US.UTF-8", "\xE6\x97\xA5\xE6\x9C\xAC\xE8\xAA\x9E\xE3\x81\x82\xE3\x81\x84",
         "\xE3\x82\xA2", "\xE3\x82\xA2\xE3\x82\xA4#"},
    };
    return all;
}

inline std::vector<Script> const& otherEncodings() {
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

inline string textOf(Script const& script, std::size_t size) {
    string text;
    while (text.size() + script.pattern.size() <= size)
        text += script.pattern;
    return text.append(size - text.size(), 'x');
}

// What is timed

/// One run of a contender. It returns a number, and fills in the text that it makes when one is asked for.
using Work = std::function<uint64_t(string* text)>;

/// Takes the result of an operation, and releases it.
inline uint64_t taken(DBuffer* buffer, string* text) {
    if (text != nullptr) text->assign(buffer->contents(), buffer->length);
    uint64_t const length = buffer->length;
    buffer->release();
    return length;
}
inline uint64_t taken(string const& made, string* text) {
    if (text != nullptr) *text = made;
    return made.size();
}

inline unsigned int lengthOf(string const& text) { return static_cast<unsigned int>(text.size()); }

// What users write: the C library's characters

/// Calls `visit(offset, bytes, value)` until it returns false.
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

template <class Visit>
void eachByMbrlen(string const& text, Visit visit) {
    std::mbstate_t state{};
    for (std::size_t at = 0; at < text.size();) {
        std::size_t const length = std::mbrlen(text.data() + at, text.size() - at, &state);
        std::size_t const bytes = length == 0 || length > 6 ? 1 : length;
        if (!visit(at, bytes)) return;
        at += bytes;
    }
}

inline std::vector<wchar_t> widened(string const& text) {
    std::vector<wchar_t> wide(text.size() + 1);
    wide.resize(std::mbstowcs(wide.data(), text.c_str(), wide.size()));
    return wide;
}

#if KELCL_BENCH_ICU
inline std::uint8_t const* utf8Of(string const& text) {
    return reinterpret_cast<std::uint8_t const*>(text.data());
}
#endif

/// The characters of a set by value, and what to do with a text character by character.
struct Members {
    explicit Members(string const& set) : values(widened(set)) {}
    bool contains(wchar_t value) const {
        return std::find(values.begin(), values.end(), value) != values.end();
    }
    std::vector<wchar_t> values;
};

/// A work on one text under one state of the switch, by all contenders.
class Contest {
public:
    Contest(Script const& script, std::size_t size)
        : script_(script), text_(textOf(script, size)), string_(text_),
          buffer_(DBuffer::fromContents(string_.c_str())), members_(script.absentSet), room_(size + 1),
          bytes_(6 * size + 16), wide_(widened(text_)) {}

    void enter(int switchState) {
        switchState_ = switchState;
        enterStepping();
        enterSearches();
        enterEdits();
        enterQuestions();
        enterConversions();
    }

private:
    void enterStepping();

    void enterSearches();

    void enterEdits();

    void enterQuestions();

    void enterConversions();

    bool isUtf8() const { return string(script_.locale) == "en_US.UTF-8"; }

    uint64_t written(string* out, std::size_t bytes) const {
        if (out != nullptr) out->assign(bytes_.data(), bytes);
        return bytes;
    }

#if KELCL_BENCH_GLIB
    static uint64_t takenFromGlib(char* made, string* out) {
        std::size_t const length = std::strlen(made);
        if (out != nullptr) out->assign(made, length);
        g_free(made);
        return length;
    }
#endif

    template <class Function>
    void add(string const& subject, char const* contender, Function function) {
        string const group = subject + "/" + script_.name + (switchState_ == 1 ? "/on/" : "/off/");
        string const name = group + contender + "/" + std::to_string(text_.size());
        benchmark::RegisterBenchmark(
            name.c_str(), [this, group, state = switchState_, work = Work(function)](benchmark::State& run) {
                measure(run, group, state, work);
            });
    }

    void measure(benchmark::State& run, string const& group, int switchState, Work const& work) {
        std::setlocale(LC_ALL, script_.locale);
        int const before = std::exchange(DString::fgI18NState, switchState);
        string text;
        uint64_t const number = work(&text);
        auto const [answer, isFirst] = answers_.emplace(group, std::pair(number, text));
        if (!isFirst && answer->second != std::pair(number, text)) run.SkipWithError("the contenders differ");
        for (auto _ : run)
            benchmark::DoNotOptimize(work(nullptr));
        DString::fgI18NState = before;
        run.SetBytesProcessed(run.iterations() * static_cast<std::int64_t>(text_.size()));
    }

    Script const& script_;
    int switchState_ = 0;
    string text_;
    DString string_;
    DString secondOwner_ = string_; ///< So that no edit is done in place.
    DBuffer* buffer_;
    Members members_;
    std::map<string, std::pair<uint64_t, string>> answers_;
    std::vector<wchar_t> room_;
    std::vector<char> bytes_;
    std::vector<wchar_t> wide_;
};

} // namespace bench

#endif
