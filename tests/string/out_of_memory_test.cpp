// What happens when memory runs out: under every core operation each allocation fails in turn. Nothing leaks,
// nothing is lost, and the string is what it was.
#include "tests/buffers/buffer_support.h"
#include "tests/support/failing_allocations.h"

#include <functional>
#include <memory>
#include <sstream>

namespace {

using namespace support;

std::string const longText(300, 'l');

/// A source of characters that allocates nothing.
class Fixed : public std::streambuf {
public:
    Fixed() {
        for (char& c : text_)
            c = 'w';
        text_[600] = '\n';
        setg(text_, text_, text_ + sizeof text_);
    }

private:
    char text_[700];
};

struct Operation {
    char const* name;
    std::function<void(DString&)> run;
    bool changesNothing = false; ///< the string that is passed is only read
    bool allocates = true;
};

/// Every core operation that makes a text.
std::vector<Operation> const& operations() {
    static DString const other("a text that no block of a shorter one has room for");
    static std::string const standard(200, 's');
    static std::vector<Operation> const all = {
        {"from characters", [](DString&) { DString const made("abc"); }, true},
        {"from unsigned characters",
         [](DString&) { DString const made(reinterpret_cast<unsigned char const*>("abc")); }, true},
        {"from a character", [](DString&) { DString const made('c'); }, true},
        {"from an int", [](DString&) { DString const made(-5); }, true},
        {"from an unsigned long", [](DString&) { DString const made(5UL); }, true},
        {"from a double", [](DString&) { DString const made(0.1); }, true},
        {"from one piece", [](DString&) { DString const made(nullptr, 5, '*'); }, true},
        {"from two pieces", [](DString&) { DString const made("ab", 2, nullptr, 5, '*'); }, true},
        {"from three pieces", [](DString&) { DString const made("ab", 2, nullptr, 5, "c", 1, '*'); }, true},
        {"from a standard string", [](DString&) { DString const made(standard); }, true},
        {"from a view", [](DString&) { DString const made{std::string_view(standard)}; }, true},
        {"a copy", [](DString& text) { DString const made(text); }, true, false},
        {"assignment", [](DString& text) { text = other; }, false, false},
        {"assignment of characters", [](DString& text) { text = "another text"; }},
        {"assignment of a number", [](DString& text) { text = 12345; }},
        {"prepareToChange while shared",
         [](DString& text) {
             DString const witness(text);
             text.prepareToChange();
         }},
        {"+= of characters", [](DString& text) { text += longText.c_str(); }},
        {"+= of a string", [](DString& text) { text += other; }},
        {"+= of itself", [](DString& text) { text += text; }},
        {"+= of a character with room after the text", [](DString& text) { text += 'c'; }, false, false},
        {"+= of a view", [](DString& text) { text += std::string_view(longText); }},
        {"+= while shared",
         [](DString& text) {
             DString const witness(text);
             text += "x";
         }},
        {"+ of two strings", [](DString& text) { (void)(text + other); }, true},
        {"+ of characters", [](DString& text) { (void)(text + "abc"); }, true},
        {"characters +", [](DString& text) { (void)("abc" + text); }, true},
        {"a chain of +", [](DString& text) { (void)("abc" + text + 'x' + other + standard); }, true},
        {"remove", [](DString& text) { text.remove(2, 1); }},
        {"remove to the end", [](DString& text) { text.remove(2); }},
        {"static remove", [](DString& text) { (void)DString::remove(text, 2, 1); }, true},
        {"rightJustify wider", [](DString& text) { text.rightJustify(400, '.'); }},
        {"rightJustify narrower", [](DString& text) { text.rightJustify(2, '.'); }},
        {"subString", [](DString& text) { (void)text.subString(2); }, true},
        {"a padded subString", [](DString& text) { (void)text.subString(2, 300, '.'); }, true},
        {"asDebugInfo", [](DString& text) { (void)text.asDebugInfo(); }, true},
        {"asDebugInfo of the buffer", [](DString& text) { (void)bufferOf(text)->asDebugInfo(); }, true},
        {"writing beyond the end", [](DString& text) { text[200U] = 'x'; }},
        {"writing while shared",
         [](DString& text) {
             DString const witness(text);
             text[1U] = 'x';
         }},
        {"DBase::asDebugInfo", [](DString&) { (void)DBase().asDebugInfo(); }, true},
        {"allocate", [](DString&) { Owned const made(DBuffer::defaultBuffer()->allocate(5)); }, true},
        {"newBuffer",
         [](DString& text) { Owned const made(bufferOf(text)->newBuffer("abc", 3, nullptr, 2)); }, true},
        {"the buffer's remove", [](DString& text) { Owned const made(bufferOf(text)->remove(2, 1)); }, true},
        {"the buffer's subString", [](DString& text) { Owned const made(bufferOf(text)->subString(2)); },
         true},
    };
    return all;
}

/// Runs `action` with the allocation number `fails` failing. Answers what came of it.
enum class Came { throughWithoutFailure, toBadAlloc, toOutOfMemory };

template <class Action>
Came run(Action const& action, long fails, bool onlyOnce, Failing failing) {
    allocations.handlerCalls = 0;
    allocations.failing = failing;
    allocations.onlyOnce = onlyOnce;
    allocations.countdown = fails;
    Came came = Came::throughWithoutFailure;
    try {
        action();
    } catch (std::bad_alloc const&) {
        came = Came::toBadAlloc;
    } catch (DOutOfMemory const&) {
        came = Came::toOutOfMemory;
    }
    allocations.countdown = -1;
    return came;
}

/// Discards the reports without allocating.
class Silent final : public DException::TraceFn {
public:
    DException::TraceFn& logData(DException&) override {
        ++reports;
        return *this;
    }
    int reports = 0;
};

Silent silent;

class AllocationFailure : public testing::TestWithParam<std::tuple<Failing, bool>> {
protected:
    /// Whatever is made once and kept is made before anything is counted.
    void SetUp() override {
        DException::setTraceFunction(silent);
        (void)DBase::messageFile();
        for (Operation const& operation : operations()) {
            DString text("initial text");
            operation.run(text);
        }
    }
};

TEST_P(AllocationFailure, LeavesTheStringAsItWasAndLeaksNothing) {
    auto const [failing, onlyOnce] = GetParam();
    for (Operation const& operation : operations()) {
        SCOPED_TRACE(operation.name);
        long failures = 0;
        for (long fails = 0;; ++fails) {
            ASSERT_LT(fails, 200) << "the operation never gets through";
            long const before = allocations.live;
            bool through = false;
            {
                DString text("initial text");
                DBuffer* const buffer = bufferOf(text);
                Came const came = run([&] { operation.run(text); }, fails, onlyOnce, failing);
                through = came == Came::throughWithoutFailure;
                if (!through) {
                    ++failures;
                    ASSERT_EQ(came, failing == Failing::byHandler ? Came::toOutOfMemory : Came::toBadAlloc);
                    ASSERT_EQ(bufferOf(text), buffer);
                    ASSERT_EQ(buffer->refs, 1U);
                    ASSERT_EQ(textOf(text), "initial text");
                    ASSERT_EQ(text.c_str()[text.length()], '\0');
                } else if (operation.changesNothing) {
                    ASSERT_EQ(textOf(text), "initial text");
                }
            }
            ASSERT_EQ(allocations.live, before) << "a block was leaked, failing at " << fails;
            if (through && (!onlyOnce || fails >= 40)) break;
        }
        if (operation.allocates) {
            EXPECT_GE(failures, 1);
        } else {
            EXPECT_EQ(failures, 0);
        }
    }
}

TEST_P(AllocationFailure, WhileAStreamIsReadLeavesTheStringAsItWasAndLeaksNothing) {
    auto const [failing, onlyOnce] = GetParam();
    for (int reader = 0; reader < 2; ++reader) {
        long failures = 0;
        for (long fails = 0; fails < 60; ++fails) {
            Fixed source;
            std::istream in(&source);
            long const before = allocations.live;
            {
                DString text("initial text");
                DBuffer* const buffer = bufferOf(text);
                Came const came = run(
                    [&] {
                        if (reader == 0)
                            text = DString::lineFrom(in);
                        else
                            in >> text;
                    },
                    fails, onlyOnce, failing);
                if (came == Came::throughWithoutFailure) {
                    ASSERT_EQ(textOf(text), std::string(600, 'w'));
                } else {
                    ++failures;
                    ASSERT_EQ(came, failing == Failing::byHandler ? Came::toOutOfMemory : Came::toBadAlloc);
                    ASSERT_EQ(bufferOf(text), buffer);
                    ASSERT_EQ(buffer->refs, 1U);
                    ASSERT_EQ(textOf(text), "initial text");
                }
            }
            ASSERT_EQ(allocations.live, before);
        }
        EXPECT_GE(failures, 1);
    }
}

TEST_P(AllocationFailure, WhileAnOverflowIsReportedNeitherHidesItNorCallsAHandler) {
    auto const [failing, onlyOnce] = GetParam();
    for (long fails = 0; fails < 30; ++fails) {
        long const before = allocations.live;
        {
            DString text("initial text");
            bool overflowed = false;
            (void)run(
                [&] {
                    try {
                        text.rightJustify(0xFFFFFFF0, '.');
                    } catch (DInvalidRequest const& exception) {
                        overflowed = exception.errorId() == 1010;
                    }
                },
                fails, onlyOnce, failing);
            EXPECT_TRUE(overflowed);
            EXPECT_EQ(allocations.handlerCalls, 0) << "no handler is called while a text is stored";
            EXPECT_EQ(textOf(text), "initial text");
        }
        EXPECT_EQ(allocations.live, before);
    }
}

std::string nameOf(testing::TestParamInfo<std::tuple<Failing, bool>> const& info) {
    auto const [failing, onlyOnce] = info.param;
    return std::string(failing == Failing::byHandler ? "ByHandler" : "ByBadAlloc") +
           (onlyOnce ? "Once" : "FromThenOn");
}

INSTANTIATE_TEST_SUITE_P(EveryAllocation, AllocationFailure,
                         testing::Combine(testing::Values(Failing::byBadAlloc, Failing::byHandler),
                                          testing::Bool()),
                         nameOf);

TEST(OutOfMemory, IsReportedOnceThroughTheHandlerOfTheLibrary) {
    DException::setTraceFunction(silent);
    silent.reports = 0;
    DString text("abc");
    EXPECT_EQ(run([&] { text += longText; }, 0, true, Failing::byHandler), Came::toOutOfMemory);
    EXPECT_EQ(allocations.handlerCalls, 1);
    EXPECT_EQ(silent.reports, 1);
    EXPECT_EQ(textOf(text), "abc");
}

} // namespace
