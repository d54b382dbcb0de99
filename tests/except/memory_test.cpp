// What happens when memory runs out: every single allocation of each operation is made to fail in turn, and
// nothing may escape, leak, or call the new-handler while a text is stored. A program of its own, because it
// replaces operator new.
#include "tests/except/except_support.h"
#include "tests/except/memory_support.h"
#include "tests/support/failing_allocations.h"

#include <kelcl/derrorinfo.h>

#include <cerrno>
#include <memory>

namespace {

class OutOfMemory : public ::testing::Test {
protected:
    OutOfMemory() : before_(DExceptStaticPtr::userFunction) { DException::setTraceFunction(silent_); }
    ~OutOfMemory() override { DExceptStaticPtr::userFunction = before_; }

private:
    Silent silent_;
    DException::TraceFn* before_;
};

} // namespace

TEST_F(OutOfMemory, AConstructedExceptionHasItsTextOrNone) {
    sweep("construction", [] {
        DException const exception("text", 3, DException::recoverable);
        return isWhole(exception) && isEither(exception.text(0), "text", nullptr) &&
               exception.errorId() == 3 && exception.isRecoverable();
    });
}

TEST_F(OutOfMemory, SetTextAddsTheTextOrChangesNothing) {
    DException exception("old");
    sweep("setText", [&] {
        DException changed(exception);
        if (changed.textCount() == 0) return true;
        changed.setText("new");
        return isWhole(changed) && isSame(changed.text(changed.textCount() - 1), "old") &&
               (changed.textCount() == 1 || isSame(changed.text(0), "new"));
    });
}

TEST_F(OutOfMemory, SetTextThatFailsKeepsTheVeryTexts) {
    DException exception("old");
    char const* const text = exception.text(0);
    runUnder({1, true}, [&] { exception.setText("new"); });
    EXPECT_EQ(exception.textCount(), 1u);
    EXPECT_EQ(exception.text(0), text);
}

TEST_F(OutOfMemory, AppendTextThatFailsKeepsTheVeryText) {
    DException exception("old");
    char const* const text = exception.text(0);
    Outcome const outcome = runUnder({1, true}, [&] { exception.appendText("er"); });
    EXPECT_GT(outcome.failures, 0);
    EXPECT_EQ(outcome.handlerCalls, 0);
    EXPECT_TRUE(outcome.handlerIsBack);
    EXPECT_EQ(exception.text(0), text);
    EXPECT_STREQ(exception.text(0), "old");
    exception.appendText("er");
    EXPECT_STREQ(exception.text(0), "older");
}

TEST_F(OutOfMemory, ACopyHasAllTextsOrNone) {
    DException source("one");
    source.setText("two").setText("three").addLocation(here);
    sweep("copy", [&] {
        DException copy(source);
        bool const all = copy.textCount() == 3 && isSame(copy.text(0), "three") &&
                         isSame(copy.text(1), "two") && isSame(copy.text(2), "one");
        return isWhole(copy) && (all || copy.textCount() == 0) && copy.locationCount() == 1;
    });
    EXPECT_EQ(Facts(source).texts, (std::vector<std::string>{"three", "two", "one"}));
}

TEST_F(OutOfMemory, ACopyWithoutMemoryForItsFirstTextHasNone) {
    DException source("one", 5);
    source.setText("two");
    runUnder({1, true}, [&] {
        DException const copy(source);
        follow({});
        EXPECT_EQ(copy.textCount(), 0u);
        EXPECT_EQ(copy.text(0), nullptr);
        EXPECT_EQ(copy.errorId(), 5u);
    });
}

// One large text among small ones, and memory for small blocks only.
TEST_F(OutOfMemory, ACopySharesTheTextsThatItCannotCopy) {
    std::string const large(100'000, 'x');
    for (int position = 0; position < 3; ++position) {
        long const blocks = allocations.live;
        auto source = std::make_unique<DException>(position == 2 ? large.c_str() : "a");
        source->setText(position == 1 ? large.c_str() : "b").setText(position == 0 ? large.c_str() : "c");
        auto const index = static_cast<unsigned long>(position);
        std::unique_ptr<DException> copy;
        Outcome const outcome =
            runUnder({0, false, 50'000}, [&] { copy = std::make_unique<DException>(*source); });
        EXPECT_GT(outcome.failures, 0);
        EXPECT_EQ(outcome.handlerCalls, 0);
        ASSERT_EQ(copy->textCount(), 3u);
        for (unsigned long i = 0; i < 3; ++i) {
            EXPECT_STREQ(copy->text(i), source->text(i));
            if (i >= index)
                EXPECT_EQ(copy->text(i), source->text(i)) << "the same text and the same successors";
            else
                EXPECT_NE(copy->text(i), source->text(i));
        }

        // Each array is freed once, when the last node that holds it is destroyed; and a change to one shows
        // in no other.
        DException const second(*copy);
        copy->appendText("+").setText("newest");
        EXPECT_EQ(source->text(0)[position == 0 ? large.size() : 1], '\0');
        char const* const shared = source->text(index);
        source.reset();
        EXPECT_EQ(copy->text(index + 1), index == 0 ? copy->text(1) : shared);
        EXPECT_EQ(copy->textCount(), 4u);
        copy.reset();
        EXPECT_EQ(second.textCount(), 3u);
        EXPECT_STREQ(second.text(index), large.c_str());
        EXPECT_GT(allocations.live, blocks);
    }
}

TEST_F(OutOfMemory, SharedTextsAreFreedInWhicheverOrderTheirOwnersGo) {
    std::string const large(100'000, 'x');
    long const before = allocations.live;
    for (unsigned int order = 0; order < 6; ++order) {
        auto source = std::make_unique<DException>("old");
        source->setText(large.c_str());
        std::unique_ptr<DException> copies[2];
        runUnder({0, false, 50'000}, [&] {
            copies[0] = std::make_unique<DException>(*source);
            copies[1] = std::make_unique<DException>(*copies[0]); // shares what is shared already
            copies[1]->setText("on top");
        });
        EXPECT_EQ(copies[0]->text(0), source->text(0));
        EXPECT_EQ(copies[1]->text(1), source->text(0));
        EXPECT_EQ(copies[1]->text(2), source->text(1));
        std::unique_ptr<DException>* const owners[] = {&source, &copies[0], &copies[1]};
        unsigned int const first = order / 2;
        unsigned int const second = (first + 1 + order % 2) % 3;
        unsigned int const third = 3 - first - second;
        owners[first]->reset();
        owners[second]->reset();
        DException const& last = **owners[third];
        EXPECT_EQ(last.text(last.textCount() - 2), large);
        EXPECT_STREQ(last.text(last.textCount() - 1), "old");
        owners[third]->reset();
    }
    EXPECT_EQ(allocations.live, before);
}

TEST_F(OutOfMemory, AnAssignedExceptionHasAllTextsOfItsSourceOrNone) {
    DException source("one");
    source.setText("two");
    sweep("assignment", [&] {
        DException target("old", 1);
        target = source;
        bool const all =
            target.textCount() == 2 && isSame(target.text(0), "two") && isSame(target.text(1), "one");
        return isWhole(target) && (all || target.textCount() == 0) && target.errorId() == 0;
    });
}

TEST_F(OutOfMemory, AMessageTextIsTheMessageOrTheFallbackOrNull) {
    sweep("message", [] {
        DMessageText const text(1, englishCatalog.c_str(), "x");
        return (text.isLoaded() && isSame(text, "The condition does not hold: x")) ||
               (!text.isLoaded() && isEither(text, fallbackText, nullptr));
    });
}

TEST_F(OutOfMemory, ACopiedMessageTextIsTheTextOrNull) {
    DMessageText const source(4, nullptr);
    sweep("message copy", [&] {
        DMessageText const copy(source);
        DMessageText assigned(source);
        assigned = source;
        return isEither(copy, fallbackText, nullptr) && isEither(assigned, fallbackText, nullptr);
    });
}

TEST_F(OutOfMemory, AMessageTextAssignedToItselfKeepsItsText) {
    DMessageText text(4, nullptr);
    DMessageText const& itself = text;
    runUnder({1, true}, [&] { text = itself; });
    EXPECT_STREQ(text, fallbackText);
}

TEST_F(OutOfMemory, SetDefaultTextThatFailsKeepsTheText) {
    DMessageText text(4, nullptr);
    Outcome const outcome = runUnder({1, true}, [&] { text.setDefaultText("custom"); });
    EXPECT_GT(outcome.failures, 0);
    EXPECT_EQ(outcome.handlerCalls, 0);
    EXPECT_STREQ(text, fallbackText);
}

TEST_F(OutOfMemory, ReplaceVarsGivesNull) {
    char const* const values[] = {"x"};
    Outcome const outcome =
        runUnder({1, true}, [&] { EXPECT_EQ(DMessageText::replaceVars("%1", values, 1), nullptr); });
    EXPECT_EQ(outcome.handlerCalls, 0);
}

TEST_F(OutOfMemory, SetMessageFileThatFailsKeepsTheName) {
    DBase::setMessageFile("first.cat");
    Outcome const outcome = runUnder({1, true}, [] { DBase::setMessageFile("second.cat"); });
    EXPECT_EQ(outcome.handlerCalls, 0);
    EXPECT_STREQ(DBase::messageFile(), "first.cat");
    DBase::setMessageFile("kelcl.cat");
}

TEST_F(OutOfMemory, ErrorInformationHasItsTextOrNone) {
    MessageFile const catalog(noCatalog);
    sweep("C library error", [] {
        errno = ENOENT;
        DCLibErrorInfo const info("open");
        return info.errorId() == ENOENT && isEither(info.text(), "open:No such file or directory", nullptr);
    });
    sweep("system error", [] {
        DSystemErrorInfo const info(7, "ioctl");
        std::string_view const text = info.text() != nullptr ? info.text() : "";
        return info.errorId() == 7 && (text.empty() || text.substr(0, 6) == "ioctl:");
    });
    sweep("presentation error", [] {
        DGUIErrorInfo const info(nullptr);
        return info.errorId() == 0 && (isEither(info.text(), fallbackText, nullptr) || *info.text() == '\0');
    });
}

TEST_F(OutOfMemory, ThrowHelpersThrowWhatTheyWereAskedToThrow) {
    MessageFile const catalog(englishCatalog);
    sweep("assertParameter", [] {
        try {
            DExcept__assertParameter("x", here);
        } catch (DInvalidParameter const& exception) {
            return isWhole(exception) && exception.errorId() == 1 && exception.locationCount() == 1 &&
                   isSame(exception.errorCodeGroup(), "Other Error Group");
        }
    });
    sweep("throwLibraryError", [] {
        try {
            DExcept__throwLibraryError(4, here, DBaseErrorInfo::outOfMemory);
        } catch (DOutOfMemory const& exception) {
            return isWhole(exception) && exception.errorId() == 4 && exception.locationCount() == 1;
        }
        return false;
    });
    sweep("throwCLibError", [] {
        errno = ENOENT;
        try {
            DCLibErrorInfo::throwCLibError("open", here, DBaseErrorInfo::accessError,
                                           DException::recoverable);
        } catch (DAccessError const& exception) {
            return isWhole(exception) && exception.errorId() == ENOENT && exception.isRecoverable();
        }
        return false;
    });
    sweep("static assertParameter", [] {
        try {
            DException::assertParameter("x", here);
        } catch (DAssertionFailure const& exception) {
            return isWhole(exception) && isEither(exception.text(0), "x", nullptr);
        }
    });
}
