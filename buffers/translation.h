// Translation: which character becomes which, for bytes and for wide characters. Of a character that is
// listed twice the first place counts.
#ifndef KELCL_BUFFERS_TRANSLATION_H
#define KELCL_BUFFERS_TRANSLATION_H

#include <kelcl/dbuffer.h>

#include <string_view>

namespace kelcl {

/// Both give a new buffer always. A character of `from` becomes the one at the same place in `to`, or the pad
/// character where there is none.

/// By bytes, with the searches of a class that a host derived.
DBuffer* translateBytes(DBuffer const& buffer, std::string_view from, std::string_view to, char padCharacter);

/// By wide characters.
/// @throws DInvalidRequest at a text or arguments that do not convert.
DBuffer* translateWide(DBuffer const& buffer, std::string_view from, std::string_view to, char padCharacter);

} // namespace kelcl

#endif
