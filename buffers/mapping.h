// Mapping the characters of a text by their wide values, for changes of case and translation. Plain UTF-8 is
// found to be so on the way; any other text is converted as a whole.
#ifndef KELCL_BUFFERS_MAPPING_H
#define KELCL_BUFFERS_MAPPING_H

#include "buffers/wide_path.h"
#include "characters/narrowing.h"
#include "characters/utf8.h"

#include <kelcl/dnlsutil.h>

#include <algorithm>
#include <cstddef>
#include <cstring>
#include <iterator>
#include <memory>
#include <span>
#include <string_view>

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

/// A new buffer of plain UTF-8 with its characters mapped, which `mapAll(values, count)` does for some at a
/// time, telling whether any became another. It is made in the hope that the length stays. Null when the text
/// is not plain, or a value becomes one that is none of plain UTF-8.
template <class MapAll>
DBuffer* mappedPlain(DBuffer const& buffer, MapAll mapAll) {
    OwnedBuffer result(allocateLike(buffer, buffer.length));
    std::unique_ptr<char[]> scratch; // where the text has grown
    char* out = result->contents();
    std::size_t room = buffer.length;
    std::size_t bytes = 0;
    for (std::size_t at = 0; at < buffer.length;) {
        wchar_t values[1024];
        std::size_t const most = std::min(buffer.length - at, std::size(values));
        Extent const from = widenUtf8(values, buffer.contents() + at, most);
        if (from.bytes == 0) return nullptr;
        if (!mapAll(values, from.characters) && from.bytes <= room - bytes) {
            std::memcpy(out + bytes, buffer.contents() + at, from.bytes);
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
    if (isUtf8Locale())
        if (DBuffer* const result = mappedPlain(buffer, mapAll)) return result;
    DWBuffer const wide(buffer.contents(), buffer.length);
    mapAll(wide.wide, wide.length);
    std::size_t const room = maxBytesOf(wide.length);
    return written(buffer, {room, false},
                   [&](char* out) { return narrowWhole(out, room, wide.wide, wide.length).bytes; });
}

} // namespace kelcl

#endif
