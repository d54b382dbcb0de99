// The virtual operations of buffers that answer with a position, for classes of hosts that answer all of them
// in one place.
#ifndef KELCL_TESTS_HOSTS_ANSWERED_POSITIONS_H
#define KELCL_TESTS_HOSTS_ANSWERED_POSITIONS_H

#include <kelcl/dbuffer.h>

#include <cstddef>
#include <string>

namespace hosts {

/// What a question names besides its start, as the questions are written: the length of a pattern, a test, or
/// nothing.
inline std::string argumentOf(unsigned int length) { return " " + std::to_string(length); }
inline std::string argumentOf(std::nullptr_t) { return {}; }
inline std::string argumentOf(DStringTest const&) { return " test"; }

/// A `Base` in which `Derived` answers each question for a position with
/// `position(char const* question, Argument const& argument, unsigned int start, Library library)`;
/// `library()` is what the library says. The argument has an `argumentOf`; nothing is a null pointer.
template <class Derived, class Base>
class AnsweredPositions : public Base {
public:
    using Base::Base;

    unsigned int charType(unsigned int index) const override {
        return self().position("charType", nullptr, index, [&] { return Base::charType(index); });
    }
#define KELCL_ANSWERED_SEARCH(name)                                                                          \
    unsigned int name(char const* p, unsigned int n, unsigned int start) const override {                    \
        return self().position(#name, n, start, [&] { return Base::name(p, n, start); });                    \
    }                                                                                                        \
    unsigned int name(DStringTest const& test, unsigned int start) const override {                          \
        return self().position(#name, test, start, [&] { return Base::name(test, start); });                 \
    }
    KELCL_ANSWERED_SEARCH(indexOf)
    KELCL_ANSWERED_SEARCH(indexOfAnyOf)
    KELCL_ANSWERED_SEARCH(indexOfAnyBut)
    KELCL_ANSWERED_SEARCH(lastIndexOf)
    KELCL_ANSWERED_SEARCH(lastIndexOfAnyOf)
    KELCL_ANSWERED_SEARCH(lastIndexOfAnyBut)
#undef KELCL_ANSWERED_SEARCH
    unsigned int startSearch(unsigned int start, unsigned int n) const override {
        return self().position("startSearch", nullptr, start, [&] { return Base::startSearch(start, n); });
    }
    unsigned int startBackwardsSearch(unsigned int start, unsigned int n) const override {
        return self().position("startBackwardsSearch", nullptr, start,
                               [&] { return Base::startBackwardsSearch(start, n); });
    }

private:
    Derived const& self() const { return static_cast<Derived const&>(*this); }
};

} // namespace hosts

#endif
