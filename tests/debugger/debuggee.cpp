// A program for the debugger to stop in, with one object of each kind that the printers know. Checks nothing
// itself.
#include <kelcl/kelcl.h>

#include <clocale>
#include <cstddef>
#include <cstring>
#include <iostream>
#include <new>

namespace {

/// A host's exception with data of its own.
class HostError : public DException {
public:
    using DException::DException;
    char const* name() const override { return "HostError"; }

    int detail = 5;
};

struct Calendar {
    DDate firstDay;
    DDate before = firstDay - 1;
    DDate lastJulian{DDate::September, 2, 1752};
    DDate firstGregorian = lastJulian + 1;
    DDate leapDay{DDate::February, 29, 2000};
    DDate early{DDate::March, 1, 85};
};

[[gnu::noinline]] void inspect(DException const& exception, DException const* hostError, DBuffer& buffer,
                               DBuffer const* none) {
    // The debugger stops here. The output keeps everything alive until then.
    std::cout << exception.text(0) << hostError->text(0) << buffer.length << (none == nullptr) << '\n';
}

} // namespace

int main() {
    std::setlocale(LC_ALL, "");
    DString const plain("abc");
    DString const shared = plain;
    DString const escaped("\"a\\b\"\n\t\0\x01\xC3\xA4\xE6\x97\xA5\xFFz", 16);
    DString const empty("");
    DString const pinned("held");
    DBuffer::fromContents(pinned.c_str())->refs = 0xC0000000;
    DString const longText(nullptr, 5000, 'x');
    DString const& reference = plain;

    // What stands in memory when a string was never made, or its buffer has been released.
    alignas(DString) std::byte garbage[3][sizeof(DString)] = {};
    std::size_t const nowhere = 0x1234;
    std::memcpy(garbage[1], &nowhere, sizeof nowhere);
    static char const zeroes[64] = {};
    char const* const text = zeroes + 32;
    std::memcpy(garbage[2], &text, sizeof text);
    auto const& null = *std::launder(reinterpret_cast<DString const*>(garbage[0]));
    auto const& wild = *std::launder(reinterpret_cast<DString const*>(garbage[1]));
    auto const& released = *std::launder(reinterpret_cast<DString const*>(garbage[2]));

    Calendar const calendar;
    DTime const midnight;
    DTime const afternoon(15, 4, 5);
    DInvalidRequest object("an object of its own", 1011, DException::recoverable);
    HostError const hostError("from the host");
    try {
        DAccessError error("no such file", 2, DException::recoverable);
        error.setText("the letter is lost").setErrorCodeGroup(DException::operatingSystem);
        error.addLocation(DExceptionLocation("post.cpp", "open", 12)).addLocation(DExceptionLocation());
        throw error;
    } catch (DException const& exception) {
        inspect(exception, &hostError, *DBuffer::fromContents(plain.c_str()), nullptr);
    }
    return (plain == shared && escaped != empty && pinned != empty && longText != reference &&
            &null != &wild && &null != &released && calendar.before < calendar.leapDay &&
            midnight < afternoon && object.isRecoverable())
               ? 0
               : 1;
}
