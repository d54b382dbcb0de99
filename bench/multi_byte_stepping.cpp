// Stepping through multi-byte text, and what is asked about it, by all contenders.
#include "bench/multi_byte_contest.h"

#include <kelcl/dbuffer.h>
#include <kelcl/dnlsutil.h>

#if KELCL_BENCH_ICU // the build found it, and links it
#include <unicode/uchar.h>
#include <unicode/utf8.h>
#endif
#if KELCL_BENCH_GLIB // the build found it, and links it
#include <glib.h>
#endif

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cwchar>
#include <cwctype>
#include <string>

namespace bench {

void Contest::enterStepping() {
    string const& text = text_;
    unsigned int const length = lengthOf(text);
    DBuffer* const buffer = buffer_;
    add("stepping", "kelcl", [&text, length](string*) { return findCharNum(text.c_str(), length, length); });
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
    add("isMBCS", "kelcl", [buffer](string*) { return static_cast<uint64_t>(buffer->isMBCS()); });
    add("isValidMBCS", "kelcl", [buffer](string*) { return static_cast<uint64_t>(buffer->isValidMBCS()); });
    add("charType at the end", "kelcl", [buffer, length](string*) { return buffer->charType(length); });
#if KELCL_BENCH_GLIB
    if (isUtf8()) {
        add("stepping", "GLib", [&text](string*) {
            return static_cast<uint64_t>(g_utf8_strlen(text.data(), static_cast<gssize>(text.size())));
        });
        add("findBytePos", "GLib", [&text, number](string*) {
            return static_cast<uint64_t>(g_utf8_offset_to_pointer(text.c_str(), number - 1) - text.c_str() +
                                         1);
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

void Contest::enterQuestions() {
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

} // namespace bench
