// The texts of the root classes: what an object of no special class says of itself.
#include <kelcl/dbase.h>
#include <kelcl/dstring.h>

#include <ostream>

namespace {

/// "className(@ADDRESS)" with the address in hexadecimal, as many digits as its bytes need.
DString description(char const* className, void const* object) {
    DString address(reinterpret_cast<unsigned long>(object));
    DString text(className);
    text += "(@";
    text += address.d2c().c2x();
    text += ")";
    return text;
}

} // namespace

DString DBase::asString() const { return DString("DBase object"); }
DString DBase::asDebugInfo() const { return description("DBase", this); }

DString DVBase::asString() const { return DString("DVBase object"); }
DString DVBase::asDebugInfo() const { return description("DVBase", this); }

// Not virtual: an object of a derived class that is written as a DBase still says that it is one.
std::ostream& operator<<(std::ostream& out, DBase const&) { return out << "DBase object"; }
std::ostream& operator<<(std::ostream& out, DVBase const& object) { return out << object.asString(); }
