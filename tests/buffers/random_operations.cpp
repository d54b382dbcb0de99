// Every operation of the multi-byte buffer on random texts, beside a slow and plain model that walks its
// texts a character at a time with the C library: valid text, bytes that are no character, truncated
// characters, NULs, starts inside of characters, sole and shared receivers. The families of operations are
// put together here; the model is in model.h.
#include "tests/buffers/random_operations.h"

#include "tests/buffers/random_trial.h"

#include <iterator>

namespace {

constexpr void (*families[])(mb::Trial&) = {mb::search, mb::editBuffer, mb::editString};

class OperationsOnMultiByteText final : public RandomOperations {
public:
    explicit OperationsOnMultiByteText(Choices& choices, unsigned int poolSeed)
        : pool_(poolOf(poolSeed)), trial_(choices, pool_) {}

    bool runOne() override {
        trial_.prepare();
        families[trial_.below(std::size(families))](trial_);
        return trial_.isAsExpected();
    }
    std::string report() const override { return trial_.report(); }

private:
    static mb::Pool const& poolOf(unsigned int seed) {
        static mb::Pool const pool = [seed] {
            SeededChoices choices(seed);
            return mb::makePool(choices);
        }();
        return pool;
    }

    mb::Pool const& pool_;
    mb::Trial trial_;
};

} // namespace

std::unique_ptr<RandomOperations> operationsOnMultiByteText(Choices& choices, unsigned int poolSeed) {
    return std::make_unique<OperationsOnMultiByteText>(choices, poolSeed);
}
