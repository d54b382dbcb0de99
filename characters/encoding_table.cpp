// Fills the tables of encodings by asking the C library, and keeps them. How they are used is in stepping.h.
#include "characters/encoding_table.h"

#include "characters/one_character.h"

#include <algorithm>
#include <atomic>
#include <cerrno>
#include <climits>
#include <cstdlib>
#include <cstring>
#include <cwchar>
#include <new>
#include <string>

namespace kelcl {

namespace {

/// Tables are only ever added, in front, so that threads read without a lock. Each is complete before it is
/// added, and stays for the life of the process.
std::atomic<EncodingTable const*> newestTable = nullptr;

CharacterRead ask(char const* bytes, std::size_t count) {
    std::mbstate_t state{};
    return readCharacter(bytes, count, state);
}

bool encodesAs(wchar_t wide, char byte) {
    char bytes[MB_LEN_MAX];
    return writeCharacter(wide, bytes) == 1 && bytes[0] == byte;
}

bool isAscii(char byte) { return static_cast<unsigned char>(byte) < 0x80; }

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

void EncodingTable::noteEveryByteAsPartOfCharacters() {
    mayContinue_.fill(true);
    trailFloor_ = 0;
    hasAsciiNeighbours_ = true;
}

/// Finds the bytes that follow the first two of longer characters. The C library calls some sequences
/// incomplete that no byte completes, so a byte counts only if a character is found with it. What may follow
/// a pair is taken not to depend on which pair it is: the first one with characters stands for all.
class EncodingTable::Continuations {
public:
    explicit Continuations(EncodingTable& table) : table_(table) {}

    /// Explores what may follow an incomplete pair.
    void addPair(std::string pair) {
        if (!isKnown_) isKnown_ = explore(pair);
    }
    bool tookTooLong() const { return questions_ > maxQuestions; }

private:
    /// Whether a character begins with an incomplete sequence; notes the bytes that follow it in
    /// characters. Those after one continuation are taken to be those after the others.
    bool explore(std::string& prefix) {
        bool isFront = false;
        for (unsigned int value = 0; value < 256 && !tookTooLong(); ++value) {
            auto const byte = static_cast<char>(value);
            if (isFront && !isAscii(byte) && table_.mayContinue(byte)) continue; // nothing new
            prefix.push_back(byte);
            if (isInCharacter(prefix)) {
                isFront = true;
                table_.noteTrail(value);
                if (isAscii(byte) && isAscii(prefix[prefix.size() - 2])) table_.hasAsciiNeighbours_ = true;
            }
            prefix.pop_back();
        }
        return isFront;
    }

    /// Whether a character is, or begins with, a sequence.
    bool isInCharacter(std::string& sequence) {
        constexpr std::size_t longest = 6;
        ++questions_;
        CharacterRead const answer = ask(sequence.data(), sequence.size());
        if (answer.length != incompleteSequence) return answer.isCharacter();
        if (sequence.size() == longest || !explore(sequence)) return false;
        table_.mayContinue_[static_cast<unsigned char>(sequence.back())] = true;
        return true;
    }

    static constexpr unsigned int maxQuestions = 0x10000; // a few milliseconds

    EncodingTable& table_;
    bool isKnown_ = false;
    unsigned int questions_ = 0;
};

/// Whether the encoding can be tabulated: the bytes below 0x80 are characters of their own at the start of a
/// character.
bool EncodingTable::fill() {
    if (!fillSingles()) return false;
    std::array<bool, 256> const isLead = mayContinue_;
    Row* row = rows_.data();
    Continuations continuations(*this);
    for (unsigned int byte = 0; byte < 256; ++byte) {
        if (!isLead[byte]) continue;
        pairs_[byte] = row;
        if (!fillPairs(static_cast<char>(byte), *row++, continuations)) return false;
    }
    if (continuations.tookTooLong()) noteEveryByteAsPartOfCharacters();
    return true;
}

bool EncodingTable::fillSingles() {
    for (unsigned int byte = 0; byte < 256; ++byte) {
        char const bytes[1] = {static_cast<char>(byte)};
        CharacterRead const answer = ask(bytes, 1);
        mayContinue_[byte] = answer.length == incompleteSequence;
        if (byte < 0x80 && !answer.isCharacter()) return false;
        if (answer.isCharacter() && byte != 0 && answer.value == 0) return false;
        singles_[byte] = !answer.isCharacter() ? invalid
                         : answer.second != 0  ? severalValues
                                               : static_cast<Cell>(answer.value);
        if (singles_[byte] == static_cast<Cell>(byte) && byte < 0x80 && encodesAs(answer.value, bytes[0]))
            ownValues_.insert(bytes[0]);
    }
    return true;
}

bool EncodingTable::fillPairs(char first, Row& row, Continuations& continuations) {
    for (unsigned int second = 0; second < 256; ++second) {
        std::string const pair{first, static_cast<char>(second)};
        CharacterRead const answer = ask(pair.data(), pair.size());
        bool const isCharacter = answer.length == 2 && answer.value != 0;
        bool const isLonger = answer.length == incompleteSequence;
        if (answer.isCharacter() && !isCharacter) return false;
        row[second] = isLonger             ? longer
                      : !isCharacter       ? invalid
                      : answer.second != 0 ? severalValues
                                           : static_cast<Cell>(answer.value);
        if (isCharacter || isLonger) noteTrail(second);
        if (!isLonger) continue;
        mayContinue_[second] = true;
        continuations.addPair(pair);
    }
    return true;
}

} // namespace kelcl
