// The edits of DString beside what a user would otherwise pick. The argument is the number of bytes; two of
// the sizes stand 16 apart, to show how the work grows.
#include "bench/operations.h"

#include <kelcl/dstring.h>

#include <benchmark/benchmark.h>

#if KELCL_BENCH_ABSEIL // the build found it, and links it
#include <absl/strings/ascii.h>
#include <absl/strings/str_replace.h>
#endif
#if KELCL_BENCH_QT // the build found it, and links it
#include <QByteArray>
#endif

#include <array>
#include <cctype>
#include <cstddef>
#include <string>
#include <string_view>

namespace {

using namespace bench;

template <class Edit>
auto edited(Edit edit) {
    return [edit](string const& text) {
        string result(text);
        edit(result);
        return result;
    };
}

string replaced(string const& text, string_view from, string_view to) {
    string result;
    std::size_t at = 0;
    for (std::size_t hit = text.find(from); hit != none; hit = text.find(from, at)) {
        result.append(text, at, hit - at).append(to);
        at = hit + from.size();
    }
    return result.append(text, at, none);
}

template <class Result>
void registerChange(char const* name, char const* from, char const* to, Result const& reference) {
    Work(name, texts, manyCommas, reference)
        .byKelcl([=](DString const& s) { return DString(s).change(from, to); })
#if KELCL_BENCH_QT
        .byQt([=](QByteArray const& t) { return QByteArray(t).replace(from, to); })
#endif
#if KELCL_BENCH_ABSEIL
        .byStandard("abseil",
                    [=](string const& t) {
                        return absl::StrReplaceAll(t, {{from, to}});
                    })
#endif
        .byStandard("std", reference);
}

void registerEdits() {
    registerChange("change_longer", ",", ";;;", [](string const& t) { return replaced(t, ",", ";;;"); });
    registerChange("change_same", ",", ";", [](string const& t) { return replaced(t, ",", ";"); });
    registerChange("change_shorter", ",", "", [](string const& t) { return replaced(t, ",", ""); });

    auto const upper = edited([](string& t) {
        for (char& c : t)
            if (c >= 'a' && c <= 'z') c = static_cast<char>(c - 32);
    });
    Work("upperCase", texts, proseOf, upper)
        .byKelcl([](DString const& s) { return DString(s).upperCase(); })
        .byStandard("toupper", edited([](string& t) {
                        for (char& c : t)
                            c = static_cast<char>(std::toupper(static_cast<unsigned char>(c)));
                    }))
#if KELCL_BENCH_QT
        .byQt([](QByteArray const& t) { return t.toUpper(); })
#endif
#if KELCL_BENCH_ABSEIL
        .byStandard("abseil", [](string const& t) { return absl::AsciiStrToUpper(t); })
#endif
        .byStandard("std", upper);

    auto const translated = edited([](string& t) {
        std::array<char, 256> table{};
        for (unsigned int i = 0; i < 256; ++i)
            table[i] = static_cast<char>(i);
        for (unsigned int i = 0; i < 8; ++i)
            table[static_cast<unsigned char>("aeiouxyz"[i])] = "01234567"[i];
        for (char& c : t)
            c = table[static_cast<unsigned char>(c)];
    });
    Work("translate", texts, proseOf, translated)
        .byKelcl([](DString const& s) { return DString(s).translate("aeiouxyz", "01234567"); })
        .byStandard("std", translated);

    auto const reversed = [](string const& t) { return string(t.rbegin(), t.rend()); };
    Work("reverse", texts, proseOf, reversed)
        .byKelcl([](DString const& s) { return DString(s).reverse(); })
        .byStandard("std", reversed);

    auto const stripped = [](string const& t) {
        std::size_t const from = t.find_first_not_of(' ');
        return from == none ? string() : t.substr(from, t.find_last_not_of(' ') - from + 1);
    };
    Work("strip", texts, blanksAround, stripped)
        .byKelcl([](DString const& s) { return DString(s).strip(' '); })
#if KELCL_BENCH_QT
        .byQt([](QByteArray const& t) { return t.trimmed(); })
#endif
#if KELCL_BENCH_ABSEIL
        .byStandard("abseil", [](string const& t) { return string(absl::StripAsciiWhitespace(t)); })
#endif
        .byStandard("std", stripped);

    auto const combined = edited([](string& t) {
        for (std::size_t i = 0; i < t.size(); ++i)
            t[i] = static_cast<char>(t[i] ^ "key"[i % 3]);
    });
    Work("xor", texts, randomBytes, combined)
        .byKelcl([](DString const& s) { return s ^ "key"; })
        .byStandard("std", combined);
}

[[maybe_unused]] bool const registered = [] {
    registerEdits();
    return true;
}();

} // namespace
