// The sweep over the allocations of an operation, and the texts that it is given.
#include "tests/allocation/sweep.h"

#include "tests/characters/multi_byte_support.h"
#include "tests/support/failing_allocations.h"

#include <kelcl/dbase.h>
#include <kelcl/dexception.h>

#include <new>
#include <typeinfo>

namespace sweep {

namespace {

/// Counts the reports; allocates nothing.
class Counting final : public DException::TraceFn {
public:
    TraceFn& logData(DException&) override {
        ++reports;
        return *this;
    }
    void write(char const*) override {}
    long reports = 0;
};

Counting counting;

enum class Came { through, toOutOfMemory, toAnythingElse };

Came run(Operation const& operation, DString& receiver, long fails, bool onlyOnce) {
    allocations.failing = Failing::byHandler;
    allocations.failures = allocations.handlerCalls = counting.reports = 0;
    allocations.onlyOnce = onlyOnce;
    allocations.countdown = fails;
    Came came = Came::through;
    try {
        operation.run(receiver);
    } catch (DException const& exception) {
        came = typeid(exception) == typeid(DOutOfMemory) ? Came::toOutOfMemory : Came::toAnythingElse;
    } catch (...) {
        came = Came::toAnythingElse;
    }
    allocations.countdown = -1;
    return came;
}

/// One receiver, and what it was.
struct Trial {
    DString receiver;
    DString copy;
    std::string before;
    char const* data;
    unsigned int refs;

    Trial(std::string const& text, bool shared)
        : receiver(text), copy(shared ? receiver : DString()), before(text), data(receiver.data()),
          refs(bufferOf(receiver).refs) {}

    bool receiverIsAsItWas() const {
        return receiver.data() == data && bufferOf(receiver).refs == refs &&
               std::string(receiver.data(), receiver.length()) == before && data[before.size()] == '\0';
    }
    bool copyIsAsItWas(bool shared) const {
        return std::string(copy.data(), copy.length()) == (shared ? before : "");
    }
};

/// Whether the operation got through without a failure, so that no later allocation is left to fail.
bool runAndCheck(Operation const& operation, std::string const& text, bool shared, long fails,
                 bool onlyOnce) {
    long const live = allocations.live;
    bool failed = false;
    {
        Trial trial(text, shared);
        Came const came = run(operation, trial.receiver, fails, onlyOnce);
        failed = allocations.failures != 0;
        EXPECT_NE(came, Came::toAnythingElse);
        EXPECT_EQ(counting.reports, allocations.handlerCalls) << "each call of the handler is reported";
        if (came == Came::toOutOfMemory) {
            EXPECT_TRUE(failed);
            EXPECT_TRUE(trial.receiverIsAsItWas());
        }
        EXPECT_TRUE(trial.copyIsAsItWas(shared));
    }
    EXPECT_EQ(allocations.live, live) << "a block was lost";
    return !failed;
}

void sweepOne(Operation const& operation, std::string const& text, bool shared, bool onlyOnce) {
    {
        Trial warm(text, shared); // makes what is made once and kept
        operation.run(warm.receiver);
    }
    constexpr long most = 5000;
    for (long fails = 0; fails < most; ++fails) {
        SCOPED_TRACE(testing::Message() << operation.name << ", text of " << text.size() << " bytes"
                                        << (shared ? ", shared" : "") << ", allocation " << fails
                                        << (onlyOnce ? "" : " and all later ones"));
        if (runAndCheck(operation, text, shared, fails, onlyOnce) || testing::Test::HasFailure()) return;
    }
    ADD_FAILURE() << operation.name << " never gets through";
}

} // namespace

std::string const& character() {
    static std::string const one = [] {
        for (mb::Sample const& sample : mb::samples().longCharacters())
            return sample.bytes;
        return std::string("x");
    }();
    return one;
}

std::string const& shortText() {
    static std::string const text = "ab " + character() + " 12 " + character() + "cQ";
    return text;
}

std::string const& longText() {
    static std::string const text = [] {
        std::string made;
        for (int i = 0; i < 60; ++i)
            made += shortText() + " ";
        return made;
    }();
    return text;
}

void expectNoHarm(std::initializer_list<Operation> operations) {
    std::new_handler const handler = std::set_new_handler(DKORVA_Init::newHandler);
    DException::setTraceFunction(counting);
    (void)DBase::messageFile(); // is made once and kept
    for (Operation const& operation : operations)
        for (std::string const& text : {shortText(), longText()})
            for (bool const shared : {false, true})
                for (bool const onlyOnce : {true, false})
                    sweepOne(operation, text, shared, onlyOnce);
    EXPECT_EQ(std::set_new_handler(handler), &DKORVA_Init::newHandler) << "the handler is still in place";
}

} // namespace sweep
