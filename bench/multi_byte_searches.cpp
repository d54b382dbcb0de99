// Searches of multi-byte text, by all contenders.
#include "bench/multi_byte_contest.h"

#include <kelcl/dbuffer.h>

#if KELCL_BENCH_ICU // the build found it, and links it
#include <unicode/utf8.h>
#endif
#if KELCL_BENCH_GLIB // the build found it, and links it
#include <glib.h>
#endif

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <cwchar>
#include <string>

namespace bench {

void Contest::enterSearches() {
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
    add("lastIndexOfAnyOf", "kelcl",
        [buffer, &set](string*) { return buffer->lastIndexOfAnyOf(set.data(), lengthOf(set), 0xFFFFFFFF); });
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

} // namespace bench
