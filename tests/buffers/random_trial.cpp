// How a random operation on multi-byte text is judged and reported.
#include "tests/buffers/random_trial.h"

namespace mb {

using std::string;

void Trial::prepare() {
    inputs_ = chooseInputs(choices_, pool_);
    failed_.clear();
}

string Trial::report() const {
    std::ostringstream out;
    out << name_ << ": " << failed_ << "\n  " << inputs_ << (shared_ ? ", shared" : "");
    return out.str();
}

void Trial::takeAnyStart() {
    if (choices_.oneIn(10)) inputs_.a = choices_.any();
}

bool Trial::chooseSharing() { return shared_ = choices_.oneIn(2); }

void Trial::check(string const& is, string const& shouldBe) {
    bool const agrees = shouldBe == "throws 1012 line 0"
                            ? is == "throws 1012 line 725" || is == "throws 1012 line 760"
                            : is == shouldBe;
    if (!agrees) failed_ = "is " + is + ", should be " + shouldBe;
}

} // namespace mb
