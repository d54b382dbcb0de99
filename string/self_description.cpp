// What objects say of themselves, in strings: the root classes, buffers and strings. Their classes promise it
// in rooms before this one, the root classes as virtual functions. So these are the only functions that an
// earlier room uses of a later one.
#include <kelcl/dbase.h>
#include <kelcl/dbuffer.h>
#include <kelcl/dstring.h>

#include <ostream>
#include <string_view>

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

DString DBuffer::asDebugInfo() const {
    constexpr unsigned int longestShownWhole = 23;
    constexpr unsigned int shownAtEachEnd = 10;
    DString info(className());
    info += "(@";
    info += DString(reinterpret_cast<unsigned long>(this));
    info += ",refs=";
    info += DString(owners());
    info += ",len=";
    info += DString(length);
    info += ",data=[";
    if (length <= longestShownWhole) {
        info += contents();
    } else {
        info += std::string_view(contents(), shownAtEachEnd);
        info += "...";
        info += std::string_view(contents() + length - shownAtEachEnd, shownAtEachEnd);
    }
    info += "])";
    return info;
}

DString DString::asDebugInfo() const {
    DString info("DString(@");
    info += DString(reinterpret_cast<unsigned long>(this));
    info += ",pBuffer->";
    info += buffer()->asDebugInfo();
    info += ")";
    return info;
}
