// DString: conversions between bytes and hexadecimal, binary and decimal digits. The digit work is in the
// kernels.
#include "buffers/buffer_block.h"
#include "buffers/host_classes.h"
#include "buffers/length.h"
#include "buffers/owned_buffer.h"
#include "bytes/byte_search.h"
#include "bytes/decimal.h"
#include "bytes/digits.h"
#include "string/dstring_edit.h"

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <string>
#include <string_view>

namespace {

/// Makes a buffer of the default class whose text `write` fills; it returns how many of the `room` bytes it
/// used.
template <class Write>
DBuffer* converted(unsigned int room, Write write) {
    DBuffer const& like = *DBuffer::defaultBuffer();
    if (room == 0) return like.newBuffer(nullptr, 0);
    kelcl::OwnedBuffer buffer(kelcl::allocateLike(like, room)); // released if `write` throws
    buffer->length = static_cast<unsigned int>(write(buffer->contents()));
    buffer->contents()[buffer->length] = '\0';
    return buffer.release();
}

/// Bytes of five and more zeros give this many digits: each byte after the fourth adds three that nothing
/// removes.
unsigned int zerosOfZeroBytes(unsigned int bytes) { return bytes <= 4 ? 1 : 3 * bytes - 11; }

/// Decimal digits of the number in the first four bytes.
unsigned int digitsOfHead(std::string_view bytes) {
    unsigned long head = 0;
    for (char const byte : bytes.substr(0, 4))
        head = head << 8 | static_cast<unsigned char>(byte);
    unsigned int count = 1;
    for (; head >= 10; head /= 10)
        ++count;
    return count;
}

bool isAll(std::string_view text, char byte) {
    return kelcl::findByteOtherThan(text, byte) == kelcl::notFound;
}

/// Writes the bytes that hexadecimal digits stand for, whatever the text holds: a class that a host derived
/// may call any text digits. Other bytes count as letters, with the value that is theirs by their code.
void readHexOfAnyText(char* out, std::string_view text) {
    auto const valueOf = [](char digit) {
        int const code = static_cast<unsigned char>(digit);
        if (digit >= '0' && digit <= '9') return code - '0';
        return digit >= 'a' && digit <= 'f' ? code - 'a' + 10 : code - 'A' + 10;
    };
    bool isHigh = text.size() % 2 == 0; // an odd number of digits is led by a zero
    int high = 0;
    for (char const digit : text) {
        if (isHigh)
            high = valueOf(digit);
        else
            *out++ = static_cast<char>(high * 16 + valueOf(digit));
        isHigh = !isHigh;
    }
}

/// The decimal digits of the number that d2c makes of a text that a class of a host's called digits: the
/// first eighteen bytes as strtol reads them, a negative number as its 64 bits, and each byte after them as
/// far from '0' as it is, carried into the digits in front of it.
std::string digitsOfAnyText(std::string_view text) {
    constexpr std::size_t readAtOnce = 18;
    std::string const head(text.substr(0, readAtOnce));
    auto const value = static_cast<unsigned long>(std::strtol(head.c_str(), nullptr, 10));
    std::string digits = "00" + std::to_string(value); // room for what is carried
    digits += text.substr(head.size());
    unsigned int carry = 0;
    for (std::size_t i = digits.size(); i-- > 0;) {
        unsigned int const sum = static_cast<unsigned char>(digits[i] - '0') + carry;
        digits[i] = static_cast<char>('0' + sum % 10);
        carry = sum / 10;
    }
    return digits;
}

} // namespace

DString& DString::c2x() {
    if (isEmpty()) return *this;
    return edit<During::heldAlive>([](DBuffer& text) {
        unsigned int const room = kelcl::lengthProduct(text.length, 2);
        return converted(room, [&](char* out) {
            kelcl::writeHex(out, text.contents(), text.length);
            return room;
        });
    });
}

DString& DString::x2c() {
    if (isEmpty()) return *this;
    bool const plain = kelcl::isHexDigits(*this);
    if (!(fgI18NState == 1 || kelcl::isSingleByteClass(*buffer()) ? plain : isHexDigits()))
        return *this = DString();
    return edit<During::heldAlive>([plain](DBuffer& text) {
        unsigned int const room = text.length / 2 + text.length % 2;
        return converted(room, [&text, room, plain](char* out) {
            if (plain)
                kelcl::readHex(out, text.contents(), text.length);
            else
                readHexOfAnyText(out, {text.contents(), text.length});
            return room;
        });
    });
}

DString& DString::c2b() {
    constexpr unsigned int longest = 0x1FFFFFFE;
    if (isEmpty()) return *this;
    if (length() > longest) buffer()->overflow();
    return edit<During::heldAlive>([](DBuffer& text) {
        unsigned int const room = text.length * 8;
        return converted(room, [&](char* out) {
            kelcl::writeBinary(out, text.contents(), text.length);
            return room;
        });
    });
}

DString& DString::b2c() {
    if (!isBinaryDigits()) return *this = DString();
    return edit<During::heldAlive>([](DBuffer& text) {
        unsigned int const room = text.length / 8 + (text.length % 8 != 0 ? 1 : 0);
        return converted(room, [&](char* out) {
            kelcl::readBinary(out, text.contents(), text.length);
            return room;
        });
    });
}

bool DString::isBinaryDigits() const { return !isEmpty() && kelcl::isBinaryDigits(*this); }

DString& DString::c2d() {
    constexpr unsigned int head = 4;
    constexpr unsigned int longestTail = 0x55555555;
    if (isEmpty()) return *this;
    unsigned int const tail = length() > head ? length() - head : 0;
    if (tail >= longestTail) buffer()->overflow();
    if (kelcl::lengthSum(digitsOfHead(*this), 3 * tail) >= kelcl::lengthLimit) buffer()->overflow();
    return edit<During::heldAlive>([](DBuffer& text) {
        std::string_view const bytes(text.contents(), text.length);
        if (isAll(bytes, '\0')) {
            unsigned int const zeros = zerosOfZeroBytes(text.length);
            return converted(zeros, [zeros](char* out) {
                std::memset(out, '0', zeros);
                return zeros;
            });
        }
        unsigned int const room = kelcl::checkedLength(kelcl::decimalDigitsBound(bytes.size()));
        return converted(room, [bytes](char* out) { return kelcl::writeDecimal(out, bytes); });
    });
}

DString& DString::d2c() {
    bool const plain = kelcl::isDecimalDigits(*this);
    if (!(fgI18NState == 1 ? plain : isDigits())) return *this = DString();
    if (isEmpty()) return *this;
    return edit<During::heldAlive>([plain](DBuffer& text) {
        std::string_view number(text.contents(), text.length);
        std::string digits;
        if (!plain) number = digits = digitsOfAnyText(number);
        unsigned int const room = kelcl::checkedLength(kelcl::bytesBound(number.size()));
        return converted(room, [number](char* out) { return kelcl::readDecimal(out, number); });
    });
}

DString& DString::decimalMath(unsigned char byte) {
    return edit<During::heldAlive>([byte](DBuffer& text) {
        constexpr unsigned int maxNewDigits = 3;
        std::string_view const number(text.contents(), text.length);
        std::size_t const nonZero = kelcl::findByteOtherThan(number, '0');
        std::size_t const zeros = nonZero == kelcl::notFound ? number.size() : nonZero;
        unsigned int const added =
            maxNewDigits - static_cast<unsigned int>(std::min<std::size_t>(zeros, maxNewDigits));
        unsigned int const room = kelcl::lengthSum(text.length, added);
        return converted(room, [=](char* out) {
            std::memset(out, '0', room);
            char* place = out + room;
            unsigned int carry = byte;
            for (std::size_t i = number.size(); i-- > 0;) {
                unsigned int const value = static_cast<unsigned char>(number[i] - '0') * 256U + carry;
                *--place = static_cast<char>('0' + value % 10);
                carry = value / 10;
            }
            for (; carry != 0 && place != out; carry /= 10)
                *--place = static_cast<char>('0' + carry % 10);
            return room;
        });
    });
}

DString& DString::binaryMath(unsigned char digit) {
    return edit<During::heldAlive>([digit](DBuffer& text) {
        // With the switch off the test for a leading zero byte searches with an empty set and always finds
        // position 1, so the number grows by a byte each time: callers rely on it.
        bool const grows = text.length != 0 && (fgI18NState != 1 || text.contents()[0] != '\0');
        unsigned int const room = kelcl::lengthSum(text.length, grows ? 1 : 0);
        return converted(room, [&text, room, grows, digit](char* out) {
            unsigned int carry = digit;
            char* place = out + room;
            for (unsigned int i = text.length; i-- > 0;) {
                unsigned int const value = static_cast<unsigned char>(text.contents()[i]) * 10U + carry;
                *--place = static_cast<char>(value % 256);
                carry = value / 256;
            }
            if (grows) *out = static_cast<char>(carry);
            return room;
        });
    });
}
