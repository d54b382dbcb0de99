// Which class a buffer is of, and what of it a host has overridden.
#include "buffers/host_classes.h"

#include "characters/locale_encoding.h"

#include <kelcl/ddbcsbuffer.h>

#include <bit>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <new>

namespace kelcl {

bool findsByBytesInMultiByteClass(DBuffer const& buffer, char first) {
    if (!isMultiByteClass(buffer)) return false;
    constexpr unsigned char firstLead = 0xC0; // in UTF-8, where the other bytes of a character are smaller
    return standsAlone(first, false) ||
           (isUtf8Codeset() && (standsAlone(first, true) || static_cast<unsigned char>(first) >= firstLead));
}

// What a host overrides is seen by comparing entries of virtual tables, which lie as the Itanium C++ ABI
// says: an object begins with the pointer to its table, and a pointer to a virtual member function holds the
// offset of the entry in it. If a function had two addresses, in two shared objects, it would count as
// overridden, and be asked.

namespace {

template <class Operation>
void const* functionOf(DBuffer const& buffer, Operation operation) {
    struct Representation {
        std::uintptr_t offset; // plus 1, on most processors, to tell it from an address
        std::ptrdiff_t adjustment;
    };
    std::uintptr_t const offset = std::bit_cast<Representation>(operation).offset & ~std::uintptr_t{1};
    char const* table;
    std::memcpy(&table, static_cast<void const*>(&buffer), sizeof table);
    void const* function;
    std::memcpy(&function, table + offset, sizeof function);
    return function;
}

/// An object of the library's class to compare with.
class Sample {
public:
    Sample() : buffer_(::new (static_cast<void*>(room_)) DDBCSBuffer(0)) {}
    Sample(Sample const&) = delete;
    Sample& operator=(Sample const&) = delete;
    ~Sample() { buffer_->~DDBCSBuffer(); }

    template <class... Operations>
    bool isLike(DBuffer const& buffer, Operations... operations) const {
        return ((functionOf(*buffer_, operations) == functionOf(buffer, operations)) && ...);
    }

private:
    static constexpr std::size_t terminator = 1;
    alignas(DDBCSBuffer) std::byte room_[sizeof(DDBCSBuffer) + terminator];
    DDBCSBuffer* buffer_;
};

using SearchForBytes = unsigned int (DBuffer::*)(char const*, unsigned int, unsigned int) const;
using SearchForTested = unsigned int (DBuffer::*)(DStringTest const&, unsigned int) const;

} // namespace

bool hasMultiByteIndexOf(DBuffer const& buffer) {
    return Sample().isLike(buffer, SearchForBytes{&DBuffer::indexOf}, SearchForBytes{&DBuffer::indexOfAnyOf},
                           &DBuffer::startSearch, &DBuffer::charType);
}

bool hasMultiByteTestedIndexOf(DBuffer const& buffer) {
    return Sample().isLike(buffer, SearchForTested{&DBuffer::indexOf},
                           SearchForTested{&DBuffer::indexOfAnyOf}, &DBuffer::startSearch,
                           &DBuffer::charType);
}

bool hasMultiByteCharType(DBuffer const& buffer) { return Sample().isLike(buffer, &DBuffer::charType); }

} // namespace kelcl
