// What the wide paths of DDBCSBuffer share: whether they are taken, and the way back from wide characters.
#ifndef KELCL_BUFFERS_WIDE_PATH_H
#define KELCL_BUFFERS_WIDE_PATH_H

#include "characters/conversion.h"

#include <kelcl/dbuffer.h>
#include <kelcl/dstring.h>

namespace kelcl {

/// Whether operations on multi-byte text take their wide paths: the national-language switch is on.
inline bool isWideMode() { return DString::fgI18NState == 1; }

/// Whether the text converts to wide characters and back to itself, so that an edit that only moves or leaves
/// out characters need not convert.
inline bool isPlainUtf8(DBuffer const& buffer) { return isPlainUtf8Text(buffer.contents(), buffer.length); }

/// A new buffer of wide characters in multi-byte form, as long as they need.
DBuffer* narrowed(DBuffer const& like, wchar_t const* wide, unsigned int count);

/// A new buffer of exactly `width` bytes: as many whole characters as fit, padded.
DBuffer* narrowedTo(DBuffer const& like, unsigned int width, wchar_t const* wide, unsigned int count,
                    char padCharacter);

} // namespace kelcl

#endif
