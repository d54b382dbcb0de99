// The places where a pattern may stand, told by each form that this processor has, against a plain loop over
// the places.

#include "bytes/pattern_candidates.h"
#include "tests/bytes/texts.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <vector>

#if KELCL_HAS_BLOCKS

namespace {

using namespace bytes_test;
using kelcl::Candidates;

struct Form {
    char const* name;
    Candidates (*first)(char const*, std::size_t, std::string_view);
    Candidates (*last)(char const*, std::size_t, std::string_view);
};

std::vector<Form> forms() {
    std::vector<Form> result;
    if (kelcl::processorHasBlocks()) {
        result.push_back({"blocks", kelcl::blocks::firstCandidates, kelcl::blocks::lastCandidates});
        result.push_back({"chosen", kelcl::firstCandidates, kelcl::lastCandidates});
    }
#if KELCL_HAS_WIDE
    if (kelcl::processorHasWide())
        result.push_back({"wide", kelcl::wide::firstCandidates, kelcl::wide::lastCandidates});
#endif
    return result;
}

enum class Agreement { none, ends, all };

/// Whether first and last byte of the pattern stand at a place, and the middle one too.
Agreement agreementAt(std::string_view text, std::size_t place, std::string_view pattern) {
    std::size_t const middle = pattern.size() / 2;
    if (text[place] != pattern.front() || text[place + pattern.size() - 1] != pattern.back())
        return Agreement::none;
    return text[place + middle] == pattern[middle] ? Agreement::all : Agreement::ends;
}

bool isIn(Candidates const& candidates, std::size_t place) {
    return place >= candidates.at && place - candidates.at < 64 &&
           (candidates.mask >> (place - candidates.at) & 1U) != 0;
}

void expectOnlyPlacesThatAgree(std::string_view text, std::string_view pattern,
                               Candidates const& candidates) {
    std::size_t const places = text.size() - pattern.size() + 1;
    for (std::size_t bit = 0; bit < 64; ++bit) {
        if ((candidates.mask >> bit & 1U) == 0) continue;
        ASSERT_LT(candidates.at + bit, places);
        ASSERT_NE(agreementAt(text, candidates.at + bit, pattern), Agreement::none);
    }
}

/// No place that agrees is left out: those told are all up to (from) the place where the search goes on.
void expectCandidatesAsPlain(Form const& form, std::string_view text, std::string_view pattern) {
    SCOPED_TRACE(form.name);
    std::size_t const places = text.size() - pattern.size() + 1;
    Candidates const first = form.first(text.data(), places, pattern);
    Candidates const last = form.last(text.data(), places, pattern);
    expectOnlyPlacesThatAgree(text, pattern, first);
    expectOnlyPlacesThatAgree(text, pattern, last);
    for (std::size_t place = 0; place < places; ++place) {
        if (agreementAt(text, place, pattern) != Agreement::all) continue;
        ASSERT_TRUE(place >= first.at + 64 || isIn(first, place)) << place;
        ASSERT_TRUE(place < last.at || isIn(last, place)) << place;
        ASSERT_NE(first.mask, 0U);
        ASSERT_NE(last.mask, 0U);
    }
    ASSERT_TRUE(first.mask != 0 || first.at + 64 >= places) << "the search would not end";
    ASSERT_TRUE(last.mask != 0 || last.at == 0) << "the search would not end";
}

std::vector<std::string> const patterns{
    "xy", "xyz", "x2345678", "\xE4\xB8\x96\xE7\x95\x8C", "x\x80\x81", "x" + std::string(70, '2') + "y"};

TEST(PatternCandidates, HoldTheSingleMatchAtEveryOffsetOfEveryLengthAtPageEnds) {
    static GuardedPages pages;
    for (Form const& form : forms())
        for (std::string const& pattern : patterns)
            for (std::size_t n = pattern.size(); n <= pattern.size() + 400; n += n < longest ? 1 : 29)
                for (std::size_t hit = 0; hit + pattern.size() <= n; ++hit) {
                    std::string text(n, '.');
                    text.replace(hit, pattern.size(), pattern);
                    expectCandidatesAsPlain(form, pages.atEnd(text), pattern);
                    expectCandidatesAsPlain(form, pages.atBegin(text), pattern);
                }
}

TEST(PatternCandidates, AgreeWithPlainOnesAtEveryAlignment) {
    std::mt19937 random(211);
    for (Form const& form : forms())
        for (std::string const& pattern : patterns)
            for (std::size_t n = pattern.size(); n <= longest; ++n)
                atEveryPlace(randomText(random, n, "..............." + pattern), 'x',
                             [&](std::string_view text) { expectCandidatesAsPlain(form, text, pattern); });
}

TEST(PatternCandidates, AgreeWithPlainOnesOnLongTextsOfFewAndManyOfThem) {
    std::mt19937 random(212);
    std::string const dots(200, '.');
    for (Form const& form : forms())
        for (int round = 0; round < 4'000; ++round) {
            std::string const& pattern = patterns[random() % patterns.size()];
            std::string const alphabet = dots.substr(0, random() % 200) + pattern;
            std::string const text = randomText(random, pattern.size() + random() % 1'500, alphabet);
            std::string_view const later =
                std::string_view(text).substr(random() % (text.size() - pattern.size() + 1));
            expectCandidatesAsPlain(form, later, pattern);
        }
}

} // namespace

#endif
