// Mapping the characters of a text by their wide values, for changes of case and translation. Plain UTF-8 is
// found to be so on the way; any other text is converted as a whole.
#ifndef KELCL_BUFFERS_MAPPING_H
#define KELCL_BUFFERS_MAPPING_H

#include "buffers/wide_path.h"
#include "bytes/byte_edit.h"
#include "characters/narrowing.h"
#include "characters/utf8.h"

#include <kelcl/dnlsutil.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <iterator>
#include <memory>
#include <optional>
#include <span>
#include <string_view>
#include <type_traits>

namespace kelcl {

/// Maps values in their places, and tells whether any became another. A function of its own, so that the
/// mapping is part of the loop.
template <class Mapped>
[[gnu::noinline]] bool mapEach(wchar_t* values, std::size_t count, Mapped& mapped) {
    bool areOthers = false;
    for (wchar_t& value : std::span(values, count)) {
        wchar_t const old = value;
        value = mapped(old);
        areOthers |= value != old;
    }
    return areOthers;
}

/// What a mapping makes of ASCII, as a table of bytes, if that is ASCII again. Made when it is first asked
/// for.
class AsciiMapping {
public:
    /// Maps bytes of ASCII, or returns false.
    template <class Mapped>
    bool write(char* out, char const* in, std::size_t n, Mapped& mapped) {
        if (!staysAscii_) staysAscii_ = make(mapped);
        if (*staysAscii_) copyTranslated(out, in, n, table_);
        return *staysAscii_;
    }

private:
    template <class Mapped>
    bool make(Mapped& mapped) {
        for (unsigned int byte = 0; byte < 0x80; ++byte) {
            auto const other = static_cast<std::uint32_t>(mapped(static_cast<wchar_t>(byte)));
            if (other >= 0x80) return false;
            table_[byte] = static_cast<unsigned char>(other);
        }
        // No other bytes come, and rows without a change cost nothing.
        for (unsigned int byte = 0x80; byte < std::size(table_); ++byte)
            table_[byte] = static_cast<unsigned char>(byte);
        return true;
    }

    std::optional<bool> staysAscii_;
    unsigned char table_[256];
};

/// A new buffer of plain UTF-8 with its characters mapped, which `mapAll(values, count)` does for some at a
/// time, telling whether any became another; `mapAscii(out, in, n)`, if given, does it for bytes of ASCII or
/// returns false. It is made in the hope that the length stays. Null when the text is not plain, or a value
/// becomes one that is none of plain UTF-8.
template <class MapAll, class MapAscii = std::nullptr_t>
DBuffer* mappedPlain(DBuffer const& buffer, MapAll mapAll, MapAscii mapAscii = nullptr) {
    OwnedBuffer result(allocateLike(buffer, buffer.length));
    std::unique_ptr<char[]> scratch; // where the text has grown
    char* out = result->contents();
    std::size_t room = buffer.length;
    std::size_t bytes = 0;
    for (std::size_t at = 0; at < buffer.length;) {
        wchar_t values[1024];
        char const* const in = buffer.contents() + at;
        std::size_t const most = std::min(buffer.length - at, std::size(values));
        // In a shorter text asking about all of ASCII takes longer.
        if constexpr (!std::is_null_pointer_v<MapAscii>)
            if (most == std::size(values) && most <= room - bytes && asciiRun(in, most) == most &&
                mapAscii(out + bytes, in, most)) {
                at += most;
                bytes += most;
                continue;
            }
        Extent const from = widenUtf8(values, in, most);
        if (from.bytes == 0) return nullptr;
        if (!mapAll(values, from.characters) && from.bytes <= room - bytes) {
            std::memcpy(out + bytes, in, from.bytes);
            at += from.bytes;
            bytes += from.bytes;
            continue;
        }
        Extent to = narrowUtf8(out + bytes, room - bytes, values, from.characters);
        if (to.characters != from.characters && !scratch) {
            constexpr std::size_t longest = 4;
            room = bytes + longest * (buffer.length - at);
            scratch.reset(new char[room]);
            std::memcpy(scratch.get(), out, bytes);
            out = scratch.get();
            to = narrowUtf8(out + bytes, room - bytes, values, from.characters);
        }
        if (to.characters != from.characters) return nullptr;
        at += from.bytes;
        bytes += to.bytes;
    }
    bool const isWhole = !scratch && bytes == buffer.length;
    return isWhole ? result.release() : newBufferOf(buffer, {out, bytes});
}

/// A new buffer with each character of a text mapped. `mapped(value)` must give the same each time.
/// @throws DInvalidRequest at a text that does not convert.
template <class Mapped>
DBuffer* mapped(DBuffer const& buffer, Mapped mapped) {
    if (buffer.length == 0) return buffer.newBuffer(nullptr, 0);
    auto const mapAll = [&mapped](wchar_t* values, std::size_t count) {
        return mapEach(values, count, mapped);
    };
    if (isUtf8Locale()) {
        AsciiMapping ascii;
        auto const mapAscii = [&](char* out, char const* in, std::size_t n) {
            return ascii.write(out, in, n, mapped);
        };
        if (DBuffer* const result = mappedPlain(buffer, mapAll, mapAscii)) return result;
    }
    DWBuffer const wide(buffer.contents(), buffer.length);
    mapAll(wide.wide, wide.length);
    std::size_t const room = maxBytesOf(wide.length);
    return written(buffer, {room, false},
                   [&](char* out) { return narrowWhole(out, room, wide.wide, wide.length).bytes; });
}

} // namespace kelcl

#endif
