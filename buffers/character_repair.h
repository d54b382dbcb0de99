// What is left of a character that a byte edit cut is overwritten: its head before the cut, its tail after
// it.
#ifndef KELCL_BUFFERS_CHARACTER_REPAIR_H
#define KELCL_BUFFERS_CHARACTER_REPAIR_H

#include <kelcl/dbuffer.h>

namespace kelcl {

/// If byte `cut` of the old text is inside a character, overwrites that character's head, which ends at
/// position `last` of the result, with `padCharacter`. Nothing in front of the result is written.
void blankCutHead(DBuffer const& old, unsigned int cut, DBuffer& result, unsigned int last,
                  char padCharacter);

/// If byte `cut` of the old text is inside a character, overwrites that character's tail, which begins at
/// position `first` of the result, with `padCharacter`. Nothing past the end of the result is written.
void blankCutTail(DBuffer const& old, unsigned int cut, DBuffer& result, unsigned int first,
                  char padCharacter);

} // namespace kelcl

#endif
