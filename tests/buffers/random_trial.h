// One random operation on multi-byte text: its inputs, and what it gave beside what the model says. Which
// operations there are is in random_searches.cpp and random_edits.cpp.
#ifndef KELCL_TESTS_BUFFERS_RANDOM_TRIAL_H
#define KELCL_TESTS_BUFFERS_RANDOM_TRIAL_H

#include "tests/buffers/operation_support.h"
#include "tests/buffers/random_inputs.h"

#include <kelcl/dexception.h>

#include <algorithm>
#include <cstring>
#include <memory>
#include <optional>
#include <sstream>
#include <string>
#include <utility>

namespace mb {

class Trial {
public:
    Trial(Choices& choices, Pool const& pool) : choices_(choices), pool_(pool) {}

    /// Chooses the inputs of the next operation.
    void prepare();
    bool isAsExpected() const { return failed_.empty(); }
    std::string report() const;

    unsigned int below(unsigned int n) { return choices_.below(n); }
    Inputs const& inputs() const { return inputs_; }
    /// For searches: now and then makes the first number, where they start, any at all.
    void takeAnyStart();
    /// Whether the receiver is to be shared with somebody.
    bool chooseSharing();

    void name(std::string operation) { name_ = std::move(operation); }
    void fail(std::string what) { failed_ = std::move(what); }

    /// Compares what an operation of that name gives, or how it fails, with what the model does.
    template <class Is, class ShouldBe>
    void found(char const* name, Is is, ShouldBe shouldBe) {
        name_ = name;
        check(outcomeOf(is), outcomeOf(shouldBe));
    }

    /// What an operation gave or how it failed, in a form to be compared and printed.
    template <class Operation>
    static std::string outcomeOf(Operation operation) {
        operations::LogOfExceptions const log;
        std::ostringstream out;
        try {
            out << operation();
        } catch (model::Failure const& f) {
            out << "throws " << f.id << " line " << f.line;
        } catch (DInvalidRequest const& f) {
            out << "throws " << f.errorId() << " line " << f.locationAtIndex(0)->lineNumber();
            if (log.count() != 1) out << " logged " << log.count() << " times";
        }
        return out.str();
    }
    void check(std::string const& is, std::string const& shouldBe);

private:
    Choices& choices_;
    Pool const& pool_;
    Inputs inputs_;
    bool shared_ = false;
    std::string name_;
    std::string failed_;
};

/// A buffer of the text.
class Receiver {
public:
    explicit Receiver(Trial& trial) : buffer_(trial.inputs().text) {
        if (trial.chooseSharing()) other_.emplace(buffer_);
    }
    DBuffer& operator*() const { return *buffer_; }
    std::string text() const { return buffer_.text(); }

private:
    operations::Owned buffer_;
    std::optional<operations::SharedWith> other_;
};

/// As many bytes as a text has, so that a sanitizer sees a read past them.
class ExactBytes {
public:
    explicit ExactBytes(std::string const& text)
        : length(operations::lengthOf(text)), bytes_(new char[std::max<std::size_t>(text.size(), 1)]) {
        std::memcpy(bytes_.get(), text.data(), text.size());
    }
    char const* data() const { return bytes_.get(); }

    unsigned int const length;

private:
    std::unique_ptr<char[]> bytes_;
};

// Each of these chooses one of its operations and tries it.

void search(Trial& trial);
void editBuffer(Trial& trial);
/// The same through a string, which takes the result in place of its own text; a copy of it must not notice.
void editString(Trial& trial);

} // namespace mb

#endif
