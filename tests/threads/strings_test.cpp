// Strings in several threads: those that share a text, those of one thread alone, and the empty ones, which
// all share. What a string does in one thread is tested in the other folders.
#include "tests/threads/together.h"

#include <kelcl/kelcl.h>

#include <atomic>
#include <cstdlib>
#include <string>
#include <unordered_map>
#include <vector>

#include <gtest/gtest.h>

namespace {

constexpr int threads = 4;
constexpr int rounds = 20000;
constexpr unsigned int pinned = 0x80000000;

DBuffer* bufferOf(DString const& string) { return DBuffer::fromContents(string.c_str()); }

TEST(SharedText, IsCopiedReadAndDroppedByAllThreads) {
    DString const text("a text that all threads share");
    std::atomic<int> wrong = 0;
    together(threads, [&](int) {
        for (int i = 0; i < rounds; ++i) {
            DString const copy(text);
            DString assigned;
            assigned = copy;
            if (assigned.length() != 29 || assigned.indexOf("threads") != 17) ++wrong;
        }
    });
    EXPECT_EQ(wrong, 0);
    EXPECT_EQ(text, "a text that all threads share");
    EXPECT_EQ(bufferOf(text)->owners(), 1U);
}

TEST(SharedText, BecomesTheThreadsOwnWhenItIsEdited) {
    DString const text("shared by threads");
    std::atomic<int> wrong = 0;
    together(threads, [&](int number) {
        std::string const mark(1, static_cast<char>('a' + number));
        std::string const expected = "SHARED BY THREADS" + mark;
        for (int i = 0; i < rounds; ++i) {
            DString copy(text);
            copy.upperCase();
            copy += mark;
            copy[1] = 'S';
            if (copy != expected) ++wrong;
        }
    });
    EXPECT_EQ(wrong, 0);
    EXPECT_EQ(text, "shared by threads");
    EXPECT_EQ(bufferOf(text)->owners(), 1U);
}

// Each round has a text of its own, which all threads edit through copies and give up in any order: who is
// the last owner, who edits in place and who copies is different each time.
TEST(SharedText, IsEditedInPlaceByTheLastOwnerAlone) {
    constexpr int texts = 2000;
    std::vector<std::vector<DString>> copies(threads);
    for (int i = 0; i < texts; ++i) {
        DString const text("text " + DString(i));
        for (std::vector<DString>& ofThread : copies)
            ofThread.push_back(text);
    }
    std::atomic<int> wrong = 0;
    together(threads, [&](int number) {
        for (int i = 0; i < texts; ++i) {
            DString& mine = copies[static_cast<std::size_t>(number)][static_cast<std::size_t>(i)];
            if (number % 2 == 0)
                mine.change("text", "TEXT");
            else
                mine.reverse().reverse();
            std::string const word = number % 2 == 0 ? "TEXT " : "text ";
            if (mine != word + std::to_string(i)) ++wrong;
            mine = DString();
        }
    });
    EXPECT_EQ(wrong, 0);
}

TEST(SharedText, IsDestroyedOnceByWhicheverThreadIsTheLast) {
    static std::atomic<int> destroyed;
    destroyed = 0;
    class Counted : public DBuffer {
    public:
        using DBuffer::DBuffer;
        ~Counted() override { ++destroyed; }
    };
    constexpr int texts = 200;
    for (int i = 0; i < texts; ++i) {
        DString shared(::new (::operator new[](sizeof(Counted) + 8)) Counted(0));
        std::vector<DString> copies(threads, shared);
        shared = DString();
        together(threads, [&](int number) { copies[static_cast<std::size_t>(number)] = DString("own"); });
    }
    EXPECT_EQ(destroyed, texts);
}

TEST(OwnText, IsMadeMovedAndDestroyedWithoutMeetingOtherThreads) {
    std::atomic<int> wrong = 0;
    together(threads, [&](int number) {
        for (int i = 0; i < rounds; ++i) {
            DString first("text of thread " + DString(number));
            DString second(std::move(first));
            first = std::move(second);
            if (!second.isEmpty() || first.length() != 16) ++wrong;
            DString empty;
            empty = second;
            empty += first;
            if (empty != first) ++wrong;
        }
    });
    EXPECT_EQ(wrong, 0);
    EXPECT_TRUE(DString().isEmpty());
}

TEST(OwnText, CountsWordsInAMapPerThread) {
    std::vector<std::unordered_map<DString, int>> counts(threads);
    together(threads, [&](int number) {
        std::unordered_map<DString, int>& mine = counts[static_cast<std::size_t>(number)];
        for (int i = 0; i < 2000; ++i) {
            DString const line("alpha beta alpha " + DString(i % 10));
            for (unsigned int word = 1; word <= line.numWords(); ++word)
                ++mine[line.word(word)];
        }
    });
    for (std::unordered_map<DString, int> const& mine : counts) {
        EXPECT_EQ(mine.size(), 12U);
        EXPECT_EQ(mine.at("alpha"), 4000);
        EXPECT_EQ(mine.at("beta"), 2000);
        EXPECT_EQ(mine.at("7"), 200);
    }
}

TEST(EmptyText, IsPinnedOnceThereAreThreadsSoThatNobodyCountsOnIt) {
    std::vector<DString> before(5); // counted while there may have been one thread
    together(threads, [&](int) {
        for (int i = 0; i < rounds; ++i) {
            DString const empty;
            DString const copy(empty);
        }
    });
    unsigned int const known = DBuffer::nullBuffer->owners();
    EXPECT_GE(known, pinned);
    EXPECT_FALSE(DBuffer::nullBuffer->hasOneOwner());
    before.clear();
    EXPECT_EQ(DBuffer::nullBuffer->owners(), known) << "neither taken nor given back is counted any more";
}

TEST(EmptyText, OfAHostIsCountedAndDestroyedAsAnyOther) {
    DBuffer* const own = DBuffer::initialize();
    together(threads, [&](int) {
        for (int i = 0; i < rounds; ++i) {
            own->take();
            own->release();
        }
    });
    EXPECT_EQ(own->owners(), 1U);
    own->release();
}

TEST(EmptyText, StaysWhenAHostGivesBackMoreThanItTook) {
    DString const empty;
    DBuffer* const shared = bufferOf(empty);
    shared->refs = 1;
    shared->release();
    EXPECT_GE(shared->owners(), pinned);
    EXPECT_STREQ(shared->className(), MB_CUR_MAX > 1 ? "DDBCSBuffer" : "DBuffer");
    DString text("still");
    text = DString();
    EXPECT_TRUE(text.isEmpty());
}

TEST(EmptyText, OfMultiByteProcessesStaysAliveWhenItIsReplaced) {
    DBuffer::defaultBuffer();
    DBuffer* const former = DBuffer::nullDBuffer;
    DString const fresh(DBuffer::initialize());
    if (MB_CUR_MAX == 1) {
        EXPECT_EQ(DBuffer::nullDBuffer, nullptr);
        return;
    }
    ASSERT_NE(former, nullptr);
    EXPECT_NE(DBuffer::nullDBuffer, former);
    EXPECT_STREQ(former->className(), "DBuffer");
    EXPECT_EQ(former->length, 0U);
}

TEST(PinnedCount, NoLongerChangesAndIsNotAnOnlyOwner) {
    together(2, [](int) {});
    DString const text("pinned");
    DBuffer* const buffer = bufferOf(text);
    unsigned int const real = buffer->refs;
    buffer->refs = pinned;
    {
        DString const copy(text);
        EXPECT_EQ(buffer->owners(), pinned);
        EXPECT_FALSE(buffer->hasOneOwner());
        DString edited(text);
        edited.upperCase();
        EXPECT_EQ(edited, "PINNED");
    }
    EXPECT_EQ(buffer->owners(), pinned);
    EXPECT_EQ(text, "pinned");
    buffer->refs = real;
}

} // namespace
