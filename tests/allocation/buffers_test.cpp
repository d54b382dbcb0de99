// The operations of buffers that strings do not pass on, and the national-language functions, without memory.
#include "tests/allocation/sweep.h"

#include <kelcl/ddbcsbuffer.h>
#include <kelcl/dnlsutil.h>

#include <gtest/gtest.h>

#include <vector>

namespace {

using sweep::bufferOf;
using sweep::character;
using sweep::expectNoHarm;
using sweep::Owned;

int isWide(int c) { return c > 127; }
DStringTest const test(isWide);

volatile unsigned int sink;
void use(unsigned int value) { sink = value; }

unsigned int lengthOf(DString const& s) { return s.length(); }

TEST(WithoutMemory, OperationsOfBuffersDoNoHarm) {
    expectNoHarm({
        {"allocate", [](DString& s) { Owned const made(bufferOf(s).allocate(300)); }},
        {"newBuffer", [](DString& s) { Owned const made(bufferOf(s).newBuffer("ab", 2, nullptr, 300)); }},
        {"initialize", [](DString&) { Owned const made(DBuffer::initialize()); }},
        {"subString", [](DString& s) { Owned const made(bufferOf(s).subString(4)); }},
        {"a padded subString", [](DString& s) { Owned const made(bufferOf(s).subString(4, 2000, '.')); }},
        {"remove of nothing", [](DString& s) { Owned const made(bufferOf(s).remove(3, 0)); }},
        {"compare", [](DString& s) { use(static_cast<unsigned int>(bufferOf(s).compare("ab\0c", 4))); }},
        {"asDebugInfo",
         [](DString& s) { use(bufferOf(s).asDebugInfo().length() + bufferOf(s).asString().length()); }},
        {"asDebugInfo of the root",
         [](DString&) { use(DBase().asDebugInfo().length() + DBase().asString().length()); }},
        {"next and the starts of searches",
         [](DString& s) { use(bufferOf(s).startSearch(5, 1) + bufferOf(s).startBackwardsSearch(5, 1)); }},
    });
}

TEST(WithoutMemory, OperationsOfMultiByteBuffersDoNoHarm) {
    expectNoHarm({
        {"isCharValid and windexOfAnyBut",
         [](DString& s) {
             auto const* const buffer = dynamic_cast<DDBCSBuffer const*>(&bufferOf(s));
             if (buffer == nullptr) return;
             std::string const& set = character();
             use(static_cast<unsigned int>(
                     buffer->isCharValid(1, set.data(), static_cast<unsigned int>(set.size()))) +
                 buffer->windexOfAnyBut(test, 1) + buffer->prevCharLength(5));
         }},
    });
}

TEST(WithoutMemory, NationalLanguageFunctionsDoNoHarm) {
    expectNoHarm({
        {"DWBuffer", [](DString& s) { DWBuffer const wide(s.data(), lengthOf(s)); }},
        {"DWBuffer of characters", [](DString& s) { DWBuffer const wide(s.c_str()); }},
        {"searches in wide text",
         [](DString& s) {
             DWBuffer const wide(s.data(), lengthOf(s));
             DWBuffer const set(character().c_str());
             use(wide.positionOf(set, 1) + wide.positionOfAnyOf(set, 1) + wide.positionOfAnyBut(set, 1) +
                 wide.lastPositionOf(set, 99) + wide.lastPositionOfAnyOf(set, 99) +
                 wide.lastPositionOfAnyBut(set, 99));
         }},
        {"getRemainString",
         [](DString& s) {
             static char room[4096];
             use(getRemainString(s.c_str(), lengthOf(s), 5, '.', room));
         }},
        {"getSubString",
         [](DString& s) {
             static char room[4096];
             use(static_cast<unsigned char>(*getSubString(s.c_str(), lengthOf(s), 5, '.', room, 40)));
         }},
        {"positions",
         [](DString& s) {
             use(findBytePos(s.c_str(), lengthOf(s), 4) + findCharNum(s.c_str(), lengthOf(s), 4) +
                 findCurPos(s.c_str(), lengthOf(s), 4) + findNextPos(s.c_str(), lengthOf(s), 4) +
                 findNextCharNum(s.c_str(), lengthOf(s), 4));
         }},
    });
}

} // namespace
