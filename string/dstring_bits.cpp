// DString: bitwise operators.
#include "buffers/buffer_block.h"
#include "bytes/byte_edit.h"
#include "string/dstring_edit.h"

#include <string>

static_assert(static_cast<int>(kelcl::BitOperation::bitAnd) == DString::bitAnd);
static_assert(static_cast<int>(kelcl::BitOperation::bitOr) == DString::bitOr);
static_assert(static_cast<int>(kelcl::BitOperation::bitExclusiveOr) == DString::bitExclusiveOr);

DString& DString::applyBitOp(char const* operand, unsigned int operandLength, BitOperator op) {
    if (operandLength == 0 || isEmpty()) return *this;
    if (op > bitExclusiveOr) return prepareToChange();
    auto const operation = static_cast<kelcl::BitOperation>(op);
    if (!buffer()->hasOneOwner()) {
        DBuffer* const combined = kelcl::allocateLike(*buffer(), length());
        kelcl::combine(combined->contents(), text_, length(), operand, operandLength, operation);
        return install(combined);
    }

    bool const sameText = operand == text_ && operandLength >= length() && operandLength > 1;
    std::string copy; // an operand that is part of the text must not change while it is used
    if (kelcl::pointsInto(*buffer(), operand) && !sameText) {
        copy.assign(operand, operandLength);
        operand = copy.data();
    }
    kelcl::combine(text_, text_, length(), operand, operandLength, operation);
    return *this;
}

DString DString::operator~() const {
    if (isEmpty()) return DString(nullptr, 0, ' ');
    DString result(kelcl::allocateLike(*DBuffer::fromContents(sharedEmpty()), length()));
    kelcl::copyComplement(result.text_, text_, length());
    return result;
}
