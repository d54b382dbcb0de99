// Every operation of strings on random texts, beside a plain model on std::string: odd starts and counts,
// embedded NULs and high bytes, sole and shared receivers, arguments that point into the receiver. After each
// operation all strings are compared with their models, so that a change of a copy shows.
#include "tests/string/random_operations.h"

#include "tests/string/random_trial.h"

#include <vector>

namespace {

using random_strings::Operation;
using std::string;

/// All families in one table.
std::vector<Operation> const& operations() {
    static std::vector<Operation> const table = [] {
        std::vector<Operation> all;
        for (auto const& family : {random_strings::searches(), random_strings::edits(),
                                   random_strings::wordOperations(), random_strings::radixOperations()})
            all.insert(all.end(), family.begin(), family.end());
        return all;
    }();
    return table;
}

class OperationsOnStrings final : public RandomOperations {
public:
    explicit OperationsOnStrings(Choices& choices) : choices_(choices), trial_(choices) {}

    bool runOne() override {
        trial_.prepare();
        operation_ = &operations()[choices_.below(static_cast<unsigned int>(operations().size()))];
        operation_->run(trial_);
        return trial_.allAsExpected();
    }
    string report() const override { return string(operation_->name) + ": " + trial_.report(); }

private:
    operations::LogOfExceptions log_;
    Choices& choices_;
    random_strings::Trial trial_;
    Operation const* operation_ = nullptr;
};

} // namespace

std::unique_ptr<RandomOperations> operationsOnStrings(Choices& choices) {
    return std::make_unique<OperationsOnStrings>(choices);
}
