// Buffers of a host's class that notes what it is asked, and answers some of it as a test wants. Everything
// else it answers as the class that it is derived from.
#ifndef KELCL_TESTS_HOSTS_HOST_BUFFER_H
#define KELCL_TESTS_HOSTS_HOST_BUFFER_H

#include "tests/hosts/answered_positions.h"
#include "tests/support/switch_at.h"

#include <kelcl/ddbcsbuffer.h>
#include <kelcl/dstring.h>

#include <functional>
#include <new>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace hosts {

using support::SwitchAt;
using Questions = std::vector<std::string>;

/// What a host's class answers in a test, and what it was asked. One at a time.
class Host {
public:
    Host() { current_ = this; }
    Host(Host const&) = delete;
    Host& operator=(Host const&) = delete;
    ~Host() { current_ = nullptr; }

    Questions asked; ///< Those of the test, not those that the host's own answers lead to.

    // Answers: none where it has nothing else to say than the library.
    std::function<std::optional<unsigned int>(std::string const& question, unsigned int start)> position;
    std::function<std::optional<bool>(std::string const& question)> truth;
    std::function<std::optional<int>(std::string_view other)> order;
    std::function<std::optional<unsigned int>(unsigned int size)> lengthMade;

    static Host* current() { return current_; }

    /// Notes the question; the library's answer is not asked for where the host has one of its own.
    template <class Library>
    unsigned int answer(std::string const& question, unsigned int start, Library library) {
        note(question + " " + std::to_string(start));
        if (position)
            if (auto const own = position(question, start)) return *own;
        return quietly(library);
    }
    void note(std::string const& question) {
        if (depth_ == 0) asked.push_back(question);
    }
    template <class Library>
    auto quietly(Library library) {
        ++depth_;
        auto const result = library();
        --depth_;
        return result;
    }

private:
    inline static Host* current_ = nullptr;
    int depth_ = 0;
};

/// A `Base` whose answers the current Host gives. What an operation that is called by itself asks is noted.
template <class Base>
class HostBuffer : public AnsweredPositions<HostBuffer<Base>, Base> {
public:
    using AnsweredPositions<HostBuffer, Base>::AnsweredPositions;

    static HostBuffer* make(std::string_view text) {
        auto const size = static_cast<unsigned int>(text.size());
        auto* const buffer = ::new (storage(size)) HostBuffer(size);
        text.copy(buffer->contents(), size);
        return buffer;
    }

    DBuffer* allocate(unsigned int size) const override {
        unsigned int made = size;
        if (host().lengthMade)
            if (auto const own = host().lengthMade(size)) made = *own;
        return ::new (storage(made)) HostBuffer(made);
    }
    char const* className() const override { return "HostBuffer"; }

    int compare(void const* other, unsigned int n) const override {
        if (host().order)
            if (auto const own = host().order({static_cast<char const*>(other), n})) return *own;
        return Base::compare(other, n);
    }
    bool isDigits() const override {
        return truth("isDigits", [&] { return Base::isDigits(); });
    }
    bool isHexDigits() const override {
        return truth("isHexDigits", [&] { return Base::isHexDigits(); });
    }

    template <class Argument, class Library>
    unsigned int position(char const* question, Argument const& argument, unsigned int start,
                          Library library) const {
        return host().answer(question + argumentOf(argument), start, library);
    }

private:
    static void* storage(unsigned int size) { return ::operator new[](sizeof(DBuffer) + size + 1); }
    static Host& host() { return *Host::current(); }

    template <class Library>
    static bool truth(char const* question, Library library) {
        host().note(question);
        if (host().truth)
            if (auto const own = host().truth(question)) return *own;
        return host().quietly(library);
    }
};

using HostsPlain = HostBuffer<DBuffer>;
using HostsMultiByte = HostBuffer<DDBCSBuffer>;

inline std::string bytesOf(DString const& text) { return {text.c_str(), text.length()}; }
inline DBuffer* bufferOf(DString const& text) { return DBuffer::fromContents(text.c_str()); }
inline bool isHosts(DString const& text) {
    return std::string_view(bufferOf(text)->className()) == "HostBuffer";
}

} // namespace hosts

#endif
