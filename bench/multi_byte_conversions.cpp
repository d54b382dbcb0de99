// Conversions of multi-byte text, by all contenders.
#include "bench/multi_byte_contest.h"

#include <kelcl/dnlsutil.h>

#if KELCL_BENCH_ICU // the build found it, and links it
#include <unicode/ustring.h>
#endif
#if KELCL_BENCH_GLIB // the build found it, and links it
#include <glib.h>
#endif

#include <cstdint>
#include <cstdlib>
#include <cwchar>
#include <string>

namespace bench {

void Contest::enterConversions() {
    string const& text = text_;
    unsigned int const length = lengthOf(text);
    add("cvtMBS2WCS", "kelcl",
        [&text, length, this](string*) { return cvtMBS2WCS(text.data(), length, room_.data()); });
    add("cvtMBS2WCS", "mbstowcs",
        [&text, this](string*) { return std::mbstowcs(room_.data(), text.c_str(), room_.size()); });
    add("cvtWCS2MBS", "kelcl", [length, this](string* out) {
        return written(out, cvtWCS2MBS(wide_.data(), static_cast<unsigned int>(wide_.size()), bytes_.data(),
                                       length, 0, ' '));
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
            u_strFromUTF8(reinterpret_cast<UChar*>(room_.data()), static_cast<std::int32_t>(2 * room_.size()),
                          &n, text.data(), static_cast<std::int32_t>(text.size()), &error);
            return static_cast<uint64_t>(n); // in units of 16 bits; no text here has pairs of them
        });
#endif
}

} // namespace bench
