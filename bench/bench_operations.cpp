// The operations of DString beside what a user would otherwise pick: the standard library, the C library, and
// where the build has them Qt, Abseil and GMP. Every contender's result is compared with a plain one before
// anything is timed. The argument is the number of bytes (for words: of words); two of the sizes stand 16
// apart, to show how the work grows.
#include <kelcl/dstring.h>

#include <benchmark/benchmark.h>

#if KELCL_BENCH_GMP // the build found it, and links it
#include <gmp.h>
#endif
#if KELCL_BENCH_ABSEIL
#include <absl/strings/ascii.h>
#include <absl/strings/escaping.h>
#include <absl/strings/match.h>
#include <absl/strings/str_replace.h>
#include <absl/strings/str_split.h>
#endif
#if KELCL_BENCH_QT
#include <QByteArray>
#include <QByteArrayMatcher>
#endif

#include <fnmatch.h>

#include <algorithm>
#include <array>
#include <cctype>
#include <cstring>
#include <random>
#include <sstream>
#include <string>
#include <string_view>
#include <vector>

namespace {

using std::string;
using std::string_view;

constexpr std::size_t none = string_view::npos;

// Inputs

string randomBytes(std::size_t n) {
    std::mt19937 random(7);
    string text(n, '\0');
    for (char& byte : text)
        byte = static_cast<char>(random());
    return text;
}

/// Words of two to nine small letters in lines of about 70 bytes.
string proseOf(std::size_t n) {
    std::mt19937 random(11);
    string text;
    while (text.size() < n) {
        for (std::size_t length = 2 + random() % 8; length > 0; --length)
            text.push_back("etaoinshrdlucmfwypvbgk"[std::min(random() % 22, random() % 22)]);
        text.push_back(random() % 12 == 0 ? '\n' : ' ');
    }
    text.resize(n);
    return text;
}

/// Prose with a comma in place of every eighth byte.
string manyCommas(std::size_t n) {
    string text = proseOf(n);
    for (std::size_t i = 0; i < n; i += 8)
        text[i] = ',';
    return text;
}

string blanksAround(std::size_t n) {
    string text(n, ' ');
    text[n / 2] = 'x';
    return text;
}

string randomDigits(std::size_t n, string_view digits) {
    std::mt19937 random(13);
    string text(n, '1');
    for (std::size_t i = 1; i < n; ++i)
        text[i] = digits[random() % digits.size()];
    return text;
}
string hexDigits(std::size_t n) { return randomDigits(n, "0123456789ABCDEF"); }
string binaryDigits(std::size_t n) { return randomDigits(n, "01"); }
string decimalDigits(std::size_t n) { return randomDigits(n, "0123456789"); }
string numberBytes(std::size_t n) {
    string text = randomBytes(n);
    text[0] = '\x7F';
    return text;
}

/// So many words, each with a number in it, two separators between them.
string wordsOf(std::size_t n) {
    string text;
    for (std::size_t i = 0; i < n; ++i) {
        text += 'w';
        text += std::to_string(i % 1009);
        text += i % 3 == 0 ? " \t" : "  ";
    }
    return text;
}

// What results look like

string plain(std::size_t number) { return std::to_string(number); }
string plain(unsigned int number) { return std::to_string(number); }
string plain(bool truth) { return truth ? "yes" : "no"; }
string plain(string const& text) { return text; }
string plain(DString const& text) { return string(text.data(), text.length()); }
#if KELCL_BENCH_QT
string plain(QByteArray const& text) { return text.toStdString(); }
#endif

/// An offset as a 1-based position, 0 for none.
std::size_t position(std::size_t offset) { return offset == none ? 0 : offset + 1; }
std::size_t position(void const* found, string_view text) {
    return found == nullptr ? 0 : static_cast<std::size_t>(static_cast<char const*>(found) - text.data()) + 1;
}

// Registration

using Sizes = std::vector<std::int64_t>;
using Input = string (*)(std::size_t);
Sizes const texts = {64, 1024, 1 << 16, 1 << 20};
Sizes const numbers = {64, 1024, 4096, 16384};
Sizes const wordCounts = {6250, 100000};

/// One work, done by several contenders on the same input. The first one sets the result.
template <class Reference>
class Work {
public:
    Work(char const* name, Sizes sizes, Input input, Reference reference)
        : name_(name), sizes_(std::move(sizes)), input_(input), reference_(reference) {}

    /// `make` turns the text into what `run` works on, outside of what is timed.
    template <class Make, class Run>
    Work& by(char const* who, Make make, Run run) {
        auto* const benchmark = benchmark::RegisterBenchmark(
            (string(name_) + "/" + who).c_str(),
            [make, run, input = input_, reference = reference_](benchmark::State& state) {
                string const text = input(static_cast<std::size_t>(state.range(0)));
                auto const subject = make(text);
                if (plain(run(subject)) != plain(reference(text))) {
                    state.SkipWithError("the result differs");
                    return;
                }
                for (auto step : state) {
                    auto const* source = &subject;
                    benchmark::DoNotOptimize(source);
                    auto result = run(*source);
                    benchmark::DoNotOptimize(result);
                    benchmark::ClobberMemory();
                }
                state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(text.size()));
            });
        for (std::int64_t const size : sizes_)
            benchmark->Arg(size);
        return *this;
    }
    template <class Run>
    Work& byKelcl(Run run) {
        return by(
            "kelcl", [](string const& text) { return DString(text); }, run);
    }
    template <class Run>
    Work& byStandard(char const* who, Run run) {
        return by(
            who, [](string const& text) { return text; }, run);
    }
#if KELCL_BENCH_QT
    template <class Run>
    Work& byQt(Run run) {
        return by(
            "qt", [](string const& text) { return QByteArray::fromStdString(text); }, run);
    }
#endif

private:
    char const* name_;
    Sizes sizes_;
    Input input_;
    Reference reference_;
};

// Searches

constexpr char pattern[] = "taneiset";       // in none of the texts, but its letters are common
constexpr char const strangers[] = "#%&$@!"; // a set without a hit
constexpr char const letters[] = "abcdefghijklmnopqrstuvwxyz \n";

void registerSearches() {
    auto const byte = [](string const& text) { return position(text.find('#')); };
    Work("indexOf_byte", texts, proseOf, byte)
        .byKelcl([](DString const& s) { return s.indexOf('#'); })
        .byStandard("memchr",
                    [](string const& t) { return position(std::memchr(t.data(), '#', t.size()), t); })
#if KELCL_BENCH_QT
        .byQt([](QByteArray const& t) { return static_cast<std::size_t>(t.indexOf('#') + 1); })
#endif
        .byStandard("std", byte);

    auto const text = [](string const& t) { return position(t.find(pattern)); };
    Work("indexOf_pattern", texts, proseOf, text)
        .byKelcl([](DString const& s) { return s.indexOf(pattern); })
        .byStandard("memmem",
                    [](string const& t) {
                        return position(memmem(t.data(), t.size(), pattern, sizeof pattern - 1), t);
                    })
#if KELCL_BENCH_QT
        .byQt([](QByteArray const& t) { return static_cast<std::size_t>(t.indexOf(pattern) + 1); })
#endif
        .byStandard("std", text);

    auto const anyOf = [](string const& t) { return position(t.find_first_of(strangers)); };
    Work("indexOfAnyOf", texts, proseOf, anyOf)
        .byKelcl([](DString const& s) { return s.indexOfAnyOf(strangers); })
        .byStandard("strcspn",
                    [](string const& t) {
                        std::size_t const n = std::strcspn(t.c_str(), strangers);
                        return n == t.size() ? 0 : n + 1;
                    })
        .byStandard("std", anyOf);

    auto const anyBut = [](string const& t) { return position(t.find_first_not_of(letters)); };
    Work("indexOfAnyBut", texts, proseOf, anyBut)
        .byKelcl([](DString const& s) { return s.indexOfAnyBut(letters); })
        .byStandard("strspn",
                    [](string const& t) {
                        std::size_t const n = std::strspn(t.c_str(), letters);
                        return n == t.size() ? 0 : n + 1;
                    })
        .byStandard("std", anyBut);

    auto const last = [](string const& t) { return position(t.rfind(pattern)); };
    Work("lastIndexOf_pattern", texts, proseOf, last)
        .byKelcl([](DString const& s) { return s.lastIndexOf(pattern); })
#if KELCL_BENCH_QT
        .byQt([](QByteArray const& t) { return static_cast<std::size_t>(t.lastIndexOf(pattern) + 1); })
#endif
        .byStandard("std", last);

    auto const commas = [](string const& t) {
        return static_cast<std::size_t>(std::count(t.begin(), t.end(), ','));
    };
    Work("occurrencesOf", texts, manyCommas, commas)
        .byKelcl([](DString const& s) { return s.occurrencesOf(','); })
#if KELCL_BENCH_QT
        .byQt([](QByteArray const& t) { return static_cast<std::size_t>(t.count(',')); })
#endif
        .byStandard("std", commas);

    auto const digits = [](string const& t) {
        return std::all_of(t.begin(), t.end(), [](unsigned char c) { return std::isdigit(c) != 0; });
    };
    Work("isDigits", texts, decimalDigits, digits)
        .byKelcl([](DString const& s) { return s.isDigits(); })
        .byStandard("strspn", [](string const& t) { return t[std::strspn(t.c_str(), "0123456789")] == '\0'; })
        .byStandard("std", digits);
}

// Editing

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

// Notations

string hexOf(string const& bytes) {
    string digits;
    digits.reserve(bytes.size() * 2);
    for (char const c : bytes) {
        auto const value = static_cast<unsigned char>(c);
        digits += "0123456789ABCDEF"[value >> 4];
        digits += "0123456789ABCDEF"[value & 15];
    }
    return digits;
}

int valueOf(char digit) { return digit <= '9' ? digit - '0' : digit - 'A' + 10; }

string ofHex(string const& digits) {
    string bytes(digits.size() / 2, '\0');
    for (std::size_t i = 0; i < bytes.size(); ++i)
        bytes[i] = static_cast<char>(valueOf(digits[2 * i]) * 16 + valueOf(digits[2 * i + 1]));
    return bytes;
}

string bitsOf(string const& bytes) {
    string digits(bytes.size() * 8, '0');
    for (std::size_t i = 0; i < digits.size(); ++i)
        if ((static_cast<unsigned char>(bytes[i / 8]) >> (7 - i % 8) & 1) != 0) digits[i] = '1';
    return digits;
}

string ofBits(string const& digits) {
    string bytes(digits.size() / 8, '\0');
    for (std::size_t i = 0; i < digits.size(); ++i)
        bytes[i / 8] = static_cast<char>(bytes[i / 8] * 2 + (digits[i] - '0'));
    return bytes;
}

/// Longhand, nine digits a step: least significant limb first.
string decimalOf(string const& bytes) {
    constexpr std::uint64_t base = 1000000000;
    std::vector<std::uint64_t> limbs;
    for (char const byte : bytes) {
        std::uint64_t carry = static_cast<unsigned char>(byte);
        for (std::uint64_t& limb : limbs) {
            carry += limb * 256;
            limb = carry % base;
            carry /= base;
        }
        if (carry != 0) limbs.push_back(carry);
    }
    std::ostringstream digits;
    digits << (limbs.empty() ? 0 : limbs.back());
    digits.fill('0');
    for (std::size_t i = limbs.size(); i-- > 1;) {
        digits.width(9);
        digits << limbs[i - 1];
    }
    return digits.str();
}

string ofDecimal(string const& digits) {
    std::vector<std::uint64_t> limbs;
    for (char const digit : digits) {
        std::uint64_t carry = static_cast<std::uint64_t>(digit - '0');
        for (std::uint64_t& limb : limbs) {
            carry += limb * 10;
            limb = carry & 0xFFFFFFFF;
            carry >>= 32;
        }
        if (carry != 0) limbs.push_back(carry);
    }
    string bytes;
    for (std::size_t i = limbs.size(); i-- > 0;)
        for (int shift = 24; shift >= 0; shift -= 8)
            bytes += static_cast<char>(limbs[i] >> shift);
    return bytes.substr(std::min(bytes.find_first_not_of('\0'), bytes.size() - 1));
}

#if KELCL_BENCH_GMP
string decimalByGmp(string const& bytes) {
    mpz_t number;
    mpz_init(number);
    mpz_import(number, bytes.size(), 1, 1, 1, 0, bytes.data());
    string digits(mpz_sizeinbase(number, 10) + 2, '\0');
    mpz_get_str(digits.data(), 10, number);
    mpz_clear(number);
    digits.resize(std::strlen(digits.c_str()));
    return digits;
}

string ofDecimalByGmp(string const& digits) {
    mpz_t number;
    mpz_init_set_str(number, digits.c_str(), 10);
    string bytes((mpz_sizeinbase(number, 2) + 7) / 8, '\0');
    mpz_export(bytes.data(), nullptr, 1, 1, 1, 0, number);
    mpz_clear(number);
    return bytes;
}
#endif

void registerNotations() {
    Work("c2x", texts, randomBytes, hexOf)
        .byKelcl([](DString const& s) { return DString(s).c2x(); })
#if KELCL_BENCH_QT
        .byQt([](QByteArray const& t) { return t.toHex().toUpper(); })
#endif
        .byStandard("std", hexOf);
    Work("x2c", texts, hexDigits, ofHex)
        .byKelcl([](DString const& s) { return DString(s).x2c(); })
#if KELCL_BENCH_QT
        .byQt([](QByteArray const& t) { return QByteArray::fromHex(t); })
#endif
        .byStandard("std", ofHex);
    Work("c2b", texts, randomBytes, bitsOf)
        .byKelcl([](DString const& s) { return DString(s).c2b(); })
        .byStandard("std", bitsOf);
    Work("b2c", texts, binaryDigits, ofBits)
        .byKelcl([](DString const& s) { return DString(s).b2c(); })
        .byStandard("std", ofBits);
    Work("c2d", numbers, numberBytes, decimalOf)
        .byKelcl([](DString const& s) { return DString(s).c2d(); })
#if KELCL_BENCH_GMP
        .byStandard("gmp", decimalByGmp)
#endif
        .byStandard("longhand", decimalOf);
    Work("d2c", numbers, decimalDigits, ofDecimal)
        .byKelcl([](DString const& s) { return DString(s).d2c(); })
#if KELCL_BENCH_GMP
        .byStandard("gmp", ofDecimalByGmp)
#endif
        .byStandard("longhand", ofDecimal);
}

// Words and matching

constexpr char separators[] = "\t\n\v\f\r ";

std::vector<string_view> split(string_view text) {
    std::vector<string_view> words;
    for (std::size_t at = text.find_first_not_of(separators); at != none;) {
        std::size_t const end = std::min(text.find_first_of(separators, at), text.size());
        words.push_back(text.substr(at, end - at));
        at = text.find_first_not_of(separators, end);
    }
    return words;
}

std::size_t phraseIn(string const& text, string_view phrase) {
    std::vector<string_view> const own = split(text);
    std::vector<string_view> const wanted = split(phrase);
    auto const found = std::search(own.begin(), own.end(), wanted.begin(), wanted.end());
    return found == own.end() ? 0 : static_cast<std::size_t>(found - own.begin()) + 1;
}

string joined(string const& text) {
    string result;
    for (string_view const word : split(text)) {
        if (!result.empty()) result += ' ';
        result += word;
    }
    return result;
}

/// The usual greedy matcher with one place to come back to.
bool matches(string_view text, string_view wanted) {
    std::size_t t = 0;
    std::size_t w = 0;
    std::size_t run = none;
    std::size_t runEnd = 0;
    while (t < text.size()) {
        if (w < wanted.size() && wanted[w] == '*') {
            run = w++;
            runEnd = t;
        } else if (w < wanted.size() && (wanted[w] == '?' || wanted[w] == text[t])) {
            ++w;
            ++t;
        } else if (run != none) {
            w = run + 1;
            t = ++runEnd;
        } else {
            return false;
        }
    }
    return wanted.find_first_not_of('*', w) == none;
}

constexpr char manyRuns[] = "*et*ta*in*no*sh*rd*lu*ae*oe*it*zz*";

void registerWords() {
    auto const counted = [](string const& t) { return split(t).size(); };
    Work("numWords", wordCounts, wordsOf, counted)
        .byKelcl([](DString const& s) { return s.numWords(); })
#if KELCL_BENCH_ABSEIL
        .byStandard("abseil",
                    [](string const& t) {
                        std::vector<absl::string_view> const words =
                            absl::StrSplit(t, absl::ByAnyChar(separators), absl::SkipEmpty());
                        return words.size();
                    })
#endif
        .byStandard("std", counted);

    auto const third = [](string const& t) {
        std::vector<string_view> const words = split(t);
        std::size_t const n = words.size() / 3;
        return string(words[n].data(),
                      static_cast<std::size_t>(words[2 * n].data() + words[2 * n].size() - words[n].data()));
    };
    Work("words", wordCounts, wordsOf, third)
        .byKelcl([](DString const& s) {
            unsigned int const n = s.numWords() / 3;
            return s.words(n + 1, n + 1);
        })
        .byStandard("std", third);

    Work("space", wordCounts, wordsOf, joined)
        .byKelcl([](DString const& s) { return DString(s).space(); })
#if KELCL_BENCH_QT
        .byQt([](QByteArray const& t) { return t.simplified(); })
#endif
        .byStandard("std", joined);

    auto const phrase = [](string const& t) { return phraseIn(t, "w17 w18 w18"); };
    Work("findPhrase", wordCounts, wordsOf, phrase)
        .byKelcl([](DString const& s) { return s.findPhrase("w17 w18 w18"); })
        .byStandard("std", phrase);

    auto const like = [](string const& t) { return matches(t, manyRuns); };
    Work("isLike", texts, proseOf, like)
        .byKelcl([](DString const& s) { return s.isLike(manyRuns); })
        .byStandard("greedy", like);
    Work("isLike_fnmatch", {64, 1024}, proseOf, like)
        .byKelcl([](DString const& s) { return s.isLike(manyRuns); })
        .byStandard("fnmatch", [](string const& t) { return fnmatch(manyRuns, t.c_str(), 0) == 0; });
}

[[maybe_unused]] bool const registered = [] {
    registerSearches();
    registerEdits();
    registerNotations();
    registerWords();
    return true;
}();

} // namespace
