// Edits of multi-byte text, by all contenders.
#include "bench/multi_byte_contest.h"

#include <kelcl/dbuffer.h>
#include <kelcl/dstring.h>

#if KELCL_BENCH_ICU // the build found it, and links it
#include <unicode/ucasemap.h>
#endif
#if KELCL_BENCH_GLIB // the build found it, and links it
#include <glib.h>
#endif

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <cwchar>
#include <cwctype>
#include <string>
#include <vector>

namespace bench {

void Contest::enterEdits() {
    string const& text = text_;
    string const& absent = script_.absent;
    string const& set = script_.absentSet;
    Members const& members = members_;
    DBuffer* const buffer = buffer_;
    unsigned int const third = lengthOf(text) / 3;
    add("subString", "kelcl",
        [buffer, third](string* out) { return taken(buffer->subString(third, third, ' '), out); });
    add("insert", "kelcl",
        [buffer, third](string* out) { return taken(buffer->insert("12345678", 8, third, ' '), out); });
    add("overlayWith", "kelcl",
        [buffer, third](string* out) { return taken(buffer->overlayWith("12345678", 8, third, ' '), out); });
    add("leftJustify", "kelcl",
        [buffer, third](string* out) { return taken(buffer->leftJustify(third, ' '), out); });
    add("strip of white space", "kelcl", [buffer](string* out) {
        DString stripped(buffer->contents(), buffer->length);
        stripped.strip();
        return taken(string(stripped.c_str(), stripped.length()), out);
    });
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
        return taken(buffer->translate(set.data(), lengthOf(set), absent.data(), lengthOf(absent), '.'), out);
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

} // namespace bench
