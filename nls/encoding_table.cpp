// Fills the tables of encodings by asking the C library, and keeps them. How they are used is in stepping.h.
#include "nls/encoding_table.h"

#include <algorithm>
#include <atomic>
#include <cerrno>
#include <climits>
#include <cstdlib>
#include <cstring>
#include <cwchar>
#include <new>
#include <string>
#include <utility>

namespace kelcl {

namespace {

/// Tables are only ever added, in front, so that threads read without a lock. Each is complete before it is
/// added, and stays for the life of the process.
std::atomic<EncodingTable const*> newestTable = nullptr;

struct Answer {
    std::size_t length;
    wchar_t wide;
    bool independent; ///< Whether what follows can be read without knowing these bytes.
};

Answer ask(char const* bytes, std::size_t count) {
    std::mbstate_t state{};
    Answer answer{};
    answer.length = std::mbrtowc(&answer.wide, bytes, count, &state);
    answer.independent = answer.length == incompleteSequence || std::mbsinit(&state) != 0;
    return answer;
}

bool encodesAs(wchar_t wide, char byte) {
    std::mbstate_t state{};
    char bytes[MB_LEN_MAX];
    return std::wcrtomb(bytes, wide, &state) == 1 && bytes[0] == byte;
}

} // namespace

EncodingTable const* EncodingTable::of(char const* name) {
    EncodingTable const* const newest = newestTable.load(std::memory_order_acquire);
    for (EncodingTable const* table = newest; table != nullptr; table = table->next_)
        if (std::strcmp(table->name_.data(), name) == 0) return table->usable_ ? table : nullptr;
    std::size_t const nameLength = std::strlen(name);
    if (nameLength > longestName) return nullptr;
    void* const memory = std::malloc(sizeof(EncodingTable));
    if (memory == nullptr) return nullptr;
    auto* const made = new (memory) EncodingTable;
    std::memcpy(made->name_.data(), name, nameLength);
    int const error = errno; // the questions about sequences that are no characters change it
    made->usable_ = made->fill();
    errno = error;
    made->next_ = newest;
    // Another thread may add the same table at the same time: a second one does no harm.
    while (!newestTable.compare_exchange_weak(made->next_, made, std::memory_order_release,
                                              std::memory_order_relaxed))
        ;
    return made->usable_ ? made : nullptr;
}

void EncodingTable::noteBytes(wchar_t value, char const* bytes, std::size_t length) const {
    auto const index = static_cast<std::uint32_t>(value);
    if (index == 0 || index >= bytesOf_.size() || length > 2) return;
    unsigned int noted = 0;
    for (std::size_t i = 0; i < length; ++i)
        noted = noted << 8U | static_cast<unsigned char>(bytes[i]);
    bytesOf_[index].store(static_cast<std::uint16_t>(noted), std::memory_order_relaxed);
}

void EncodingTable::noteTrail(unsigned int byte) {
    trailFloor_ = std::min(trailFloor_, static_cast<unsigned char>(std::min(byte, 0x80U)));
}

/// Whether the encoding can be tabulated: its characters do not depend on each other, and the bytes below
/// 0x80 are characters of their own at the start of a character.
bool EncodingTable::fill() {
    if (!fillSingles()) return false;
    std::array<bool, 256> const isLead = isOpen_;
    Row* row = rows_.data();
    for (unsigned int byte = 0; byte < 256; ++byte) {
        if (!isLead[byte]) continue;
        pairs_[byte] = row;
        if (!fillPairs(static_cast<char>(byte), *row++)) return false;
    }
    return true;
}

bool EncodingTable::fillSingles() {
    for (unsigned int byte = 0; byte < 256; ++byte) {
        char const bytes[1] = {static_cast<char>(byte)};
        Answer const answer = ask(bytes, 1);
        if (!answer.independent) return false;
        isOpen_[byte] = answer.length == incompleteSequence;
        bool const isCharacter = answer.length == 1 || (answer.length == 0 && byte == 0);
        if (byte < 0x80 && !isCharacter) return false;
        if (answer.length == 1 && answer.wide <= 0) return false;
        singles_[byte] = isCharacter ? answer.wide : invalid;
        if (byte < 0x80 && answer.wide == static_cast<wchar_t>(byte) && encodesAs(answer.wide, bytes[0]))
            ownValues_.insert(bytes[0]);
    }
    return true;
}

bool EncodingTable::fillPairs(char first, Row& row) {
    bool explored = false;
    for (unsigned int second = 0; second < 256; ++second) {
        std::string pair{first, static_cast<char>(second)};
        Answer const answer = ask(pair.data(), pair.size());
        bool const isCharacter = answer.length == 2 && answer.wide > 0;
        bool const isLonger = answer.length == incompleteSequence;
        if (!answer.independent || !(isCharacter || isLonger || answer.length == invalidSequence))
            return false;
        row[second] = isCharacter ? answer.wide : isLonger ? longer : invalid;
        if (isCharacter || isLonger) noteTrail(second);
        if (!isLonger) continue;
        isOpen_[second] = true;
        // What may follow a pair does not depend on which pair of the same first byte it is.
        if (!std::exchange(explored, true)) exploreBehind(pair);
    }
    return true;
}

/// Notes the bytes that may continue an incomplete sequence, and those behind one of its continuations.
void EncodingTable::exploreBehind(std::string& prefix) {
    constexpr std::size_t longest = 6;
    bool deeper = prefix.size() + 1 < longest;
    for (unsigned int byte = 0; byte < 256; ++byte) {
        prefix.push_back(static_cast<char>(byte));
        Answer const answer = ask(prefix.data(), prefix.size());
        if (answer.length != invalidSequence) noteTrail(byte);
        if (answer.length == incompleteSequence) isOpen_[byte] = true;
        if (answer.length == incompleteSequence && deeper) {
            deeper = false;
            exploreBehind(prefix);
        }
        prefix.pop_back();
    }
}

} // namespace kelcl
