// What the tests of buffers and strings share: owners of buffers, texts as std::string, buffers of a host's
// own classes, and the check of the length overflow failure. No tests are here.
#ifndef KELCL_TESTS_BUFFERS_BUFFER_SUPPORT_H
#define KELCL_TESTS_BUFFERS_BUFFER_SUPPORT_H

#include "tests/support/owned_buffer.h"

#include <kelcl/dbuffer.h>
#include <kelcl/dexception.h>
#include <kelcl/dstring.h>

#include <gtest/gtest.h>

#include <cstdlib>
#include <cstring>
#include <new>
#include <string>
#include <string_view>
#include <vector>

namespace support {

using namespace std::string_literals;
using namespace std::string_view_literals;

/// Texts of so many bytes, and longer ones, overflow.
inline constexpr unsigned int lengthLimit = 0xFFFFFFE7;

inline bool isMultiByte() { return MB_CUR_MAX >= 2; }

/// The class that new buffers have in the locale of the test.
inline std::string defaultClass() { return isMultiByte() ? "DDBCSBuffer" : "DBuffer"; }

inline std::string textOf(DBuffer const* buffer) { return {buffer->contents(), buffer->length}; }
inline std::string textOf(DString const& text) { return {text.c_str(), text.length()}; }
inline DBuffer* bufferOf(DString const& text) { return DBuffer::fromContents(text.c_str()); }
inline unsigned int refsOf(DString const& text) { return bufferOf(text)->refs; }

/// Out of line: a compiler that sees both pairs array new with the class's own delete, which gives back
/// arrays.
[[gnu::noinline]] inline void* makeStorage(std::size_t size) { return ::operator new[](size); }

/// A buffer of the given class with `text`, in storage that has `spare` bytes of 0xA5 after its NUL.
template <class Buffer>
Buffer* makeIn(std::string_view text, std::size_t spare) {
    std::size_t const used = sizeof(DBuffer) + text.size() + 1;
    void* const block = makeStorage(used + spare);
    std::memset(block, 0xA5, used + spare);
    auto* const buffer = ::new (block) Buffer(static_cast<unsigned int>(text.size()));
    if (!text.empty()) std::memcpy(buffer->contents(), text.data(), text.size());
    return buffer;
}

/// A single-byte buffer whatever the locale, with more room after it than `allocate` leaves.
inline Owned plainBuffer(std::string_view text) { return Owned(makeIn<DBuffer>(text, 64 + 2 * text.size())); }

/// A buffer of the class that the locale asks for.
inline Owned defaultBuffer(std::string_view text) {
    return Owned(DBuffer::defaultBuffer()->newBuffer(text.data(), static_cast<unsigned int>(text.size())));
}

/// Bytes after the NUL of a host's buffer that nobody but the host may write.
constexpr std::size_t guardSize = 256;

/// Whether the bytes after the NUL of a text of `length` bytes are what `makeIn` left there.
inline bool guardIsIntact(DBuffer const* buffer, std::size_t length) {
    std::string const guard(guardSize, '\xA5');
    return std::memcmp(buffer->contents() + length + 1, guard.data(), guardSize) == 0;
}

/// A class of a host that overrides nothing: its buffers are not the library's, and their blocks are exact.
class HostBuffer : public DBuffer {
public:
    using DBuffer::DBuffer;
};

/// A class of a host that makes its own kind.
class HostFactoryBuffer : public DBuffer {
public:
    using DBuffer::DBuffer;
    DBuffer* allocate(unsigned int size) const override {
        lastAllocated = size;
        return makeIn<HostFactoryBuffer>(std::string(size, '?'), guardSize);
    }
    char const* className() const override { return "HostFactoryBuffer"; }

    inline static unsigned int lastAllocated = 0;
};

/// A class of a host that refuses to make buffers, and tells how long they would have been.
class RefusingBuffer : public DBuffer {
public:
    struct Refused {
        unsigned int length;
    };
    using DBuffer::DBuffer;
    DBuffer* allocate(unsigned int size) const override { throw Refused{size}; }
};

struct Location {
    std::string file;
    std::string function;
    unsigned long line;
};

/// Everything that an exception says.
struct Failure {
    explicit Failure(DException const& exception)
        : name(exception.name()), id(exception.errorId()), recoverable(exception.isRecoverable()),
          group(exception.errorCodeGroup()) {
        for (unsigned long i = 0; i < exception.textCount(); ++i)
            texts.emplace_back(exception.text(i));
        for (unsigned long i = 0; i < exception.locationCount(); ++i) {
            DExceptionLocation const& place = *exception.locationAtIndex(i);
            locations.push_back({place.fileName(), place.functionName(), place.lineNumber()});
        }
    }

    std::string name;
    unsigned long id;
    bool recoverable;
    std::string group;
    std::vector<std::string> texts;
    std::vector<Location> locations;
};

/// The trace function of the test program: keeps what is reported instead of printing it.
class ReportedFailures final : public DException::TraceFn {
public:
    static ReportedFailures& installed() {
        static ReportedFailures* const instance = [] {
            auto* const made = new ReportedFailures;
            DException::setTraceFunction(*made);
            return made;
        }();
        return *instance;
    }
    DException::TraceFn& logData(DException& exception) override {
        failures.emplace_back(exception);
        return *this;
    }

    std::vector<Failure> failures;
};

inline void expectLengthOverflow(Failure const& failure, std::string const& text) {
    EXPECT_EQ(failure.name, "DInvalidRequest");
    EXPECT_EQ(failure.id, 1010U);
    EXPECT_TRUE(failure.recoverable);
    EXPECT_EQ(failure.group, "Kel Class Library");
    ASSERT_EQ(failure.texts.size(), 1U);
    EXPECT_EQ(failure.texts[0], text);
    ASSERT_EQ(failure.locations.size(), 1U);
    EXPECT_EQ(failure.locations[0].file, "dbuffer0");
    EXPECT_EQ(failure.locations[0].function, "Unknown");
    EXPECT_EQ(failure.locations[0].line, 557U);
}

inline char const* const textWithoutCatalog = "Unable to load text from message file.";

/// Expects that `action` raises the length overflow, reported exactly once before it is thrown.
template <class Action>
void expectLengthOverflow(Action action, std::string const& text = textWithoutCatalog) {
    std::vector<Failure>& reported = ReportedFailures::installed().failures;
    reported.clear();
    bool thrown = false;
    try {
        action();
    } catch (DInvalidRequest const& exception) {
        thrown = true;
        EXPECT_EQ(reported.size(), 1U) << "reported before the handler runs";
        expectLengthOverflow(Failure(exception), text);
    }
    EXPECT_TRUE(thrown);
    ASSERT_EQ(reported.size(), 1U);
    expectLengthOverflow(reported[0], text);
}

} // namespace support

#endif
