// Multi-byte text beside what a user would otherwise write or pick: loops of the C library's mbrlen and
// mbrtowc and its conversions of whole texts, ICU and GLib where the build has them. UTF-8 with the
// national-language switch off and on, then the other encodings. The last number of a name is the size in
// bytes; two sizes stand 16 apart, to show how the work grows. Contenders must agree on their results before
// anything is timed.
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
#if KELCL_BENCH_GLIB
#include <glib.h>
#endif

#include <algorithm>
#include <clocale>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <cstring>
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
using std::uint64_t;

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

/// One run of a contender. It returns a number, and fills in the text that it makes when one is asked for.
using Work = std::function<uint64_t(string* text)>;

/// Takes the result of an operation, and releases it.
uint64_t taken(DBuffer* buffer, string* text) {
    if (text != nullptr) text->assign(buffer->contents(), buffer->length);
    uint64_t const length = buffer->length;
    buffer->release();
    return length;
}
uint64_t taken(string const& made, string* text) {
    if (text != nullptr) *text = made;
    return made.size();
}

unsigned int lengthOf(string const& text) { return static_cast<unsigned int>(text.size()); }

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

std::vector<wchar_t> widened(string const& text) {
    std::vector<wchar_t> wide(text.size() + 1);
    wide.resize(std::mbstowcs(wide.data(), text.c_str(), wide.size()));
    return wide;
}

#if KELCL_BENCH_ICU
std::uint8_t const* utf8Of(string const& text) { return reinterpret_cast<std::uint8_t const*>(text.data()); }
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
    void enterStepping() {
        string const& text = text_;
        unsigned int const length = lengthOf(text);
        DBuffer* const buffer = buffer_;
        add("stepping", "kelcl",
            [&text, length](string*) { return findCharNum(text.c_str(), length, length); });
        add("stepping", "mbrlen", [&text](string*) {
            uint64_t count = 0;
            eachByMbrlen(text, [&count](std::size_t, std::size_t) { return ++count != 0; });
            return count;
        });
        // The byte position of the last character but a few.
        unsigned int const number = std::max(findCharNum(text.c_str(), length, length - 8), 1U);
        add("findBytePos", "kelcl",
            [&text, length, number](string*) { return findBytePos(text.c_str(), length, number); });
        add("findBytePos", "mbrlen", [&text, number](string*) {
            uint64_t count = 0;
            uint64_t position = 0;
            eachByMbrlen(text, [&](std::size_t at, std::size_t) {
                position = at + 1;
                return ++count < number;
            });
            return position;
        });
        add("charType at the end", "kelcl", [buffer, length](string*) { return buffer->charType(length); });
#if KELCL_BENCH_GLIB
        if (isUtf8()) {
            add("stepping", "GLib", [&text](string*) {
                return static_cast<uint64_t>(g_utf8_strlen(text.data(), static_cast<gssize>(text.size())));
            });
            add("findBytePos", "GLib", [&text, number](string*) {
                return static_cast<uint64_t>(g_utf8_offset_to_pointer(text.c_str(), number - 1) -
                                             text.c_str() + 1);
            });
        }
#endif
#if KELCL_BENCH_ICU
        if (isUtf8()) {
            auto const size = static_cast<std::int32_t>(text.size());
            add("stepping", "ICU", [&text, size](string*) {
                uint64_t count = 0;
                for (std::int32_t at = 0; at < size; ++count)
                    U8_FWD_1(utf8Of(text), at, size);
                return count;
            });
            add("findBytePos", "ICU", [&text, size, number](string*) {
                std::int32_t at = 0;
                U8_FWD_N(utf8Of(text), at, size, static_cast<std::int32_t>(number) - 1);
                return static_cast<uint64_t>(at) + 1;
            });
        }
#endif
    }

    void enterSearches() {
        string const& text = text_;
        string const& absent = script_.absent;
        string const& set = script_.absentSet;
        Members const& members = members_;
        DBuffer* const buffer = buffer_;
        add("indexOf", "kelcl",
            [buffer, &absent](string*) { return buffer->indexOf(absent.data(), lengthOf(absent), 1); });
        add("indexOf", "memmem", [&text, &absent](string*) {
            void const* const found = memmem(text.data(), text.size(), absent.data(), absent.size());
            return found == nullptr ? 0 : uint64_t{1};
        });
        add("lastIndexOf", "kelcl", [buffer, &absent](string*) {
            return buffer->lastIndexOf(absent.data(), lengthOf(absent), 0xFFFFFFFF);
        });
        add("lastIndexOf", "std::string", [&text, &absent](string*) { return text.rfind(absent) + 1; });
        add("indexOfAnyOf", "kelcl",
            [buffer, &set](string*) { return buffer->indexOfAnyOf(set.data(), lengthOf(set), 1); });
        add("indexOfAnyOf", "mbrtowc", [&text, &members](string*) {
            uint64_t found = 0;
            eachByMbrtowc(text, [&](std::size_t at, std::size_t, wchar_t wide) {
                if (!members.contains(wide)) return true;
                found = at + 1;
                return false;
            });
            return found;
        });
        add("lastIndexOfAnyOf", "kelcl", [buffer, &set](string*) {
            return buffer->lastIndexOfAnyOf(set.data(), lengthOf(set), 0xFFFFFFFF);
        });
#if KELCL_BENCH_GLIB
        if (isUtf8())
            add("lastIndexOfAnyOf", "GLib", [&text, &members](string*) {
                char const* const begin = text.data();
                for (char const* p = begin + text.size(); p > begin;) {
                    p = g_utf8_prev_char(p);
                    if (members.contains(static_cast<wchar_t>(g_utf8_get_char(p))))
                        return static_cast<uint64_t>(p - begin) + 1;
                }
                return uint64_t{0};
            });
#endif
#if KELCL_BENCH_ICU
        if (isUtf8()) {
            auto const size = static_cast<std::int32_t>(text.size());
            add("indexOfAnyOf", "ICU", [&text, &members, size](string*) {
                for (std::int32_t at = 0; at < size;) {
                    std::int32_t const from = at;
                    UChar32 c;
                    U8_NEXT(utf8Of(text), at, size, c);
                    if (members.contains(c)) return static_cast<uint64_t>(from) + 1;
                }
                return uint64_t{0};
            });
            add("lastIndexOfAnyOf", "ICU", [&text, &members, size](string*) {
                for (std::int32_t at = size; at > 0;) {
                    UChar32 c;
                    U8_PREV(utf8Of(text), 0, at, c);
                    if (members.contains(c)) return static_cast<uint64_t>(at) + 1;
                }
                return uint64_t{0};
            });
        }
#endif
    }

    void enterEdits() {
        string const& text = text_;
        string const& absent = script_.absent;
        string const& set = script_.absentSet;
        Members const& members = members_;
        DBuffer* const buffer = buffer_;
        unsigned int const third = lengthOf(text) / 3;
        add("subString", "kelcl",
            [buffer, third](string* out) { return taken(buffer->subString(third, third, ' '), out); });
        add("reverse", "kelcl", [buffer](string* out) { return taken(buffer->reverse(), out); });
        add("reverse", "mbrlen", [&text](string* out) {
            string made(text.size(), ' ');
            eachByMbrlen(text, [&](std::size_t at, std::size_t bytes) {
                made.replace(text.size() - at - bytes, bytes, text, at, bytes);
                return true;
            });
            return taken(made, out);
        });
        add("upperCase", "kelcl", [buffer](string* out) { return taken(buffer->upperCase(), out); });
        add("translate", "kelcl", [buffer, &set, &absent](string* out) {
            return taken(buffer->translate(set.data(), lengthOf(set), absent.data(), lengthOf(absent), '.'),
                         out);
        });
        add("translate", "mbrtowc", [&text, &members, &absent](string* out) {
            string made;
            made.reserve(text.size());
            eachByMbrtowc(text, [&](std::size_t at, std::size_t bytes, wchar_t wide) {
                if (!members.contains(wide))
                    made.append(text, at, bytes);
                else if (wide == members.values.front())
                    made += absent;
                else
                    made += '.';
                return true;
            });
            return taken(made, out);
        });
        add("strip", "kelcl", [buffer, &set](string* out) {
            return taken(buffer->strip(set.data(), lengthOf(set), DStringEnum::both), out);
        });
        if (switchState_ == 1) {
            add("upperCase", "towupper", [&text](string* out) {
                std::vector<wchar_t> wide = widened(text);
                std::transform(wide.begin(), wide.end(), wide.begin(), [](wchar_t c) {
                    return static_cast<wchar_t>(std::towupper(static_cast<std::wint_t>(c)));
                });
                wide.push_back(L'\0');
                string made(6 * wide.size(), ' ');
                made.resize(std::wcstombs(made.data(), wide.data(), made.size()));
                return taken(made, out);
            });
        } else {
            // Only where no letter can be part of a longer character, bytes may be taken one by one.
            if (isUtf8())
                add("upperCase", "ASCII loop", [&text](string* out) {
                    string made(text);
                    for (char& c : made)
                        if (c >= 'a' && c <= 'z') c = static_cast<char>(c - 32);
                    return taken(made, out);
                });
            else
                add("upperCase", "mbrlen", [&text](string* out) {
                    string made(text);
                    eachByMbrlen(text, [&made](std::size_t at, std::size_t bytes) {
                        char& c = made[at];
                        if (bytes == 1 && c >= 'a' && c <= 'z') c = static_cast<char>(c - 32);
                        return true;
                    });
                    return taken(made, out);
                });
        }
#if KELCL_BENCH_GLIB
        if (isUtf8()) {
            add("reverse", "GLib", [&text](string* out) {
                return takenFromGlib(g_utf8_strreverse(text.data(), static_cast<gssize>(text.size())), out);
            });
            if (switchState_ == 1)
                add("upperCase", "GLib", [&text](string* out) {
                    return takenFromGlib(g_utf8_strup(text.data(), static_cast<gssize>(text.size())), out);
                });
        }
#endif
#if KELCL_BENCH_ICU
        if (isUtf8() && switchState_ == 1)
            add("upperCase", "ICU", [&text, this](string* out) {
                UErrorCode error = U_ZERO_ERROR;
                UCaseMap* const map = ucasemap_open("en", 0, &error);
                std::int32_t const n =
                    ucasemap_utf8ToUpper(map, bytes_.data(), static_cast<std::int32_t>(bytes_.size()),
                                         text.data(), static_cast<std::int32_t>(text.size()), &error);
                ucasemap_close(map);
                if (out != nullptr) out->assign(bytes_.data(), static_cast<std::size_t>(n));
                return static_cast<uint64_t>(n);
            });
#endif
    }

    void enterQuestions() {
        string const& text = text_;
        DBuffer* const buffer = buffer_;
        add("isPrintable", "kelcl", [buffer](string*) { return buffer->isPrintable() ? 1 : 0; });
        add("isPrintable", "iswprint", [&text](string*) {
            bool all = true;
            eachByMbrtowc(text, [&all](std::size_t, std::size_t, wchar_t wide) {
                return all = std::iswprint(static_cast<std::wint_t>(wide)) != 0;
            });
            return all ? 1 : 0;
        });
        add("isSBCS", "kelcl", [buffer](string*) { return buffer->isSBCS() ? 1 : 0; });
        add("isSBCS", "wcwidth", [&text](string*) {
            bool all = true;
            eachByMbrtowc(text, [&all](std::size_t, std::size_t bytes, wchar_t wide) {
                return all = bytes < 2 || wcwidth(wide) < 2;
            });
            return all ? 1 : 0;
        });
#if KELCL_BENCH_GLIB
        if (isUtf8())
            add("isPrintable", "GLib", [&text](string*) {
                char const* const end = text.data() + text.size();
                for (char const* p = text.data(); p < end; p = g_utf8_next_char(p))
                    if (g_unichar_isprint(g_utf8_get_char(p)) == 0) return 0;
                return 1;
            });
#endif
#if KELCL_BENCH_ICU
        if (isUtf8())
            add("isPrintable", "ICU", [&text](string*) {
                auto const size = static_cast<std::int32_t>(text.size());
                for (std::int32_t at = 0; at < size;) {
                    UChar32 c;
                    U8_NEXT(utf8Of(text), at, size, c);
                    if (u_isprint(c) == 0) return 0;
                }
                return 1;
            });
#endif
    }

    void enterConversions() {
        string const& text = text_;
        unsigned int const length = lengthOf(text);
        add("cvtMBS2WCS", "kelcl",
            [&text, length, this](string*) { return cvtMBS2WCS(text.data(), length, room_.data()); });
        add("cvtMBS2WCS", "mbstowcs",
            [&text, this](string*) { return std::mbstowcs(room_.data(), text.c_str(), room_.size()); });
        add("cvtWCS2MBS", "kelcl", [length, this](string* out) {
            return written(out, cvtWCS2MBS(wide_.data(), static_cast<unsigned int>(wide_.size()),
                                           bytes_.data(), length, 0, ' '));
        });
        add("cvtWCS2MBS", "wcsnrtombs", [this](string* out) {
            std::mbstate_t state{};
            wchar_t const* from = wide_.data();
            return written(out, wcsnrtombs(bytes_.data(), &from, wide_.size(), bytes_.size(), &state));
        });
#if KELCL_BENCH_GLIB
        if (isUtf8()) {
            add("cvtMBS2WCS", "GLib", [&text](string*) {
                glong count = 0;
                g_free(g_utf8_to_ucs4_fast(text.data(), static_cast<glong>(text.size()), &count));
                return static_cast<uint64_t>(count);
            });
            add("cvtWCS2MBS", "GLib", [this](string* out) {
                auto const* const wide = reinterpret_cast<gunichar const*>(wide_.data());
                return takenFromGlib(
                    g_ucs4_to_utf8(wide, static_cast<glong>(wide_.size()), nullptr, nullptr, nullptr), out);
            });
        }
#endif
#if KELCL_BENCH_ICU
        if (isUtf8())
            add("cvtMBS2WCS", "ICU", [&text, this](string*) {
                UErrorCode error = U_ZERO_ERROR;
                std::int32_t n = 0;
                u_strFromUTF8(reinterpret_cast<UChar*>(room_.data()),
                              static_cast<std::int32_t>(2 * room_.size()), &n, text.data(),
                              static_cast<std::int32_t>(text.size()), &error);
                return static_cast<uint64_t>(n); // in units of 16 bits; no text here has pairs of them
            });
#endif
    }

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
