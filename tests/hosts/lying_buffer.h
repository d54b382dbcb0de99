// Buffers of a host's class that lies: each virtual operation answers now and then what is not so. Which
// lies, the choices of the run say. Whether somebody believed one shows in the bytes around the text.
#ifndef KELCL_TESTS_HOSTS_LYING_BUFFER_H
#define KELCL_TESTS_HOSTS_LYING_BUFFER_H

#include "tests/hosts/answered_positions.h"
#include "tests/support/choices.h"

#include <kelcl/ddbcsbuffer.h>
#include <kelcl/dstring.h>

#include <algorithm>
#include <cstring>
#include <new>
#include <string>
#include <string_view>
#include <unordered_map>

namespace hosts {

/// What all lying buffers of a run have in common.
struct Lies {
    Choices* choices = nullptr;
    bool told = true; ///< Whether there are any: else every answer is true.
    std::unordered_map<void const*, std::string_view> guards; ///< Of each block that lives.
    bool guardsAreIntact = true;

    static Lies& ofRun() {
        static Lies lies;
        return lies;
    }

    bool oneIn(unsigned int n) { return told && choices->oneIn(n); }
    unsigned int number(unsigned int length, unsigned int start) {
        unsigned int const usual[] = {0,          1,          start,      start - 1,  start + 1,  length,
                                      length + 1, length - 1, 0xFFFFFFFF, 0x80000000, 0xFFFFFFFE, 2};
        return choices->oneIn(2) ? usual[choices->below(std::size(usual))] : choices->below(2 * length + 2);
    }
};

/// A block for a text of so many bytes. After the NUL are bytes that nobody may write, or in every other
/// block none, so that tools that watch the memory see who goes there.
inline void* makeBlock(unsigned int room) {
    constexpr unsigned int guardSize = 64;
    std::size_t const used = sizeof(DBuffer) + room + 1;
    std::size_t const guarded = Lies::ofRun().choices->oneIn(2) ? guardSize : 0;
    void* const block = ::operator new[](used + guarded);
    std::memset(block, '\xA5', used + guarded);
    Lies::ofRun().guards[block] = {static_cast<char const*>(block) + used, guarded};
    return block;
}

inline void checkBlock(void const* block) {
    auto& lies = Lies::ofRun();
    auto const found = lies.guards.find(block);
    std::string_view const guard = found->second;
    lies.guardsAreIntact = lies.guardsAreIntact && guard == std::string(guard.size(), '\xA5');
    lies.guards.erase(found);
}

template <class Base>
class LyingBuffer final : public AnsweredPositions<LyingBuffer<Base>, Base> {
public:
    using AnsweredPositions<LyingBuffer, Base>::AnsweredPositions;
    ~LyingBuffer() override { checkBlock(this); }

    static LyingBuffer* make(std::string_view text) {
        auto const size = static_cast<unsigned int>(text.size());
        auto* const buffer = ::new (makeBlock(size)) LyingBuffer(size);
        text.copy(buffer->contents(), size);
        return buffer;
    }

    // Making buffers
    DBuffer* allocate(unsigned int size) const override {
        Lies& lies = Lies::ofRun();
        if (lies.oneIn(16)) return nullptr;
        unsigned int room = size;
        if (lies.oneIn(8)) room = lies.choices->below(2 * std::min(size, 1000U) + 1);
        if (lies.oneIn(16)) return Base::allocate(size);
        auto* const made = ::new (makeBlock(room)) LyingBuffer(room);
        std::memset(made->contents(), '?', room);
        return made;
    }
    char const* className() const override {
        if (Lies::ofRun().oneIn(8)) return DBuffer::defaultBuffer()->className();
        return Lies::ofRun().oneIn(8) ? nullptr : "LyingBuffer";
    }
    DString asDebugInfo() const override { return Base::asDebugInfo(); }

    // Characters
    char* next(char const* p) override { return Base::next(p); }
    char const* next(char const* p) const override { return Base::next(p); }
    int compare(void const* other, unsigned int n) const override {
        return Lies::ofRun().oneIn(4) ? static_cast<int>(Lies::ofRun().choices->below(9)) - 4
                                      : Base::compare(other, n);
    }

    // Classes and kinds
#define KELCL_LYING_TEST(name)                                                                               \
    bool name() const override {                                                                             \
        return Lies::ofRun().oneIn(2) ? Lies::ofRun().choices->oneIn(2) : Base::name();                      \
    }
    KELCL_LYING_TEST(isAlphanumeric)
    KELCL_LYING_TEST(isAlphabetic)
    KELCL_LYING_TEST(isASCII)
    KELCL_LYING_TEST(isControl)
    KELCL_LYING_TEST(isDigits)
    KELCL_LYING_TEST(isGraphics)
    KELCL_LYING_TEST(isHexDigits)
    KELCL_LYING_TEST(isLowerCase)
    KELCL_LYING_TEST(isPrintable)
    KELCL_LYING_TEST(isPunctuation)
    KELCL_LYING_TEST(isUpperCase)
    KELCL_LYING_TEST(isWhiteSpace)
    KELCL_LYING_TEST(isMBCS)
    KELCL_LYING_TEST(isDBCS)
    KELCL_LYING_TEST(isSBCS)
    KELCL_LYING_TEST(isValidMBCS)
    KELCL_LYING_TEST(isValidDBCS)
    KELCL_LYING_TEST(includesMBCS)
    KELCL_LYING_TEST(includesDBCS)
    KELCL_LYING_TEST(includesSBCS)
#undef KELCL_LYING_TEST

    // Pieces and edits
    DBuffer* subString(unsigned int start, unsigned int n, char pad) const override {
        return text([&] { return Base::subString(start, n, pad); });
    }
    DBuffer* subString(unsigned int start) const override {
        return text([&] { return Base::subString(start); });
    }
    DBuffer* center(unsigned int width, char pad) override {
        return text([&] { return Base::center(width, pad); });
    }
    DBuffer* change(char const* p, unsigned int n, char const* by, unsigned int byLength, unsigned int start,
                    unsigned int most) override {
        return text([&] { return Base::change(p, n, by, byLength, start, most); });
    }
    DBuffer* copy(unsigned int times) override {
        return text([&] { return Base::copy(times); });
    }
    DBuffer* insert(char const* p, unsigned int n, unsigned int at, char pad) override {
        return text([&] { return Base::insert(p, n, at, pad); });
    }
    DBuffer* leftJustify(unsigned int width, char pad) override {
        return text([&] { return Base::leftJustify(width, pad); });
    }
    DBuffer* lowerCase() override {
        return text([&] { return Base::lowerCase(); });
    }
    DBuffer* overlayWith(char const* p, unsigned int n, unsigned int at, char pad) override {
        return text([&] { return Base::overlayWith(p, n, at, pad); });
    }
    DBuffer* remove(unsigned int start, unsigned int n) override {
        return text([&] { return Base::remove(start, n); });
    }
    DBuffer* reverse() override {
        return text([&] { return Base::reverse(); });
    }
    DBuffer* rightJustify(unsigned int width, char pad) override {
        return text([&] { return Base::rightJustify(width, pad); });
    }
    DBuffer* strip(char const* set, unsigned int n, DStringEnum::StripMode mode) override {
        return text([&] { return Base::strip(set, n, mode); });
    }
    DBuffer* strip(DStringTest const& test, DStringEnum::StripMode mode) override {
        return text([&] { return Base::strip(test, mode); });
    }
    DBuffer* translate(char const* from, unsigned int fromLength, char const* to, unsigned int toLength,
                       char pad) override {
        return text([&] { return Base::translate(from, fromLength, to, toLength, pad); });
    }
    DBuffer* upperCase() override {
        return text([&] { return Base::upperCase(); });
    }

    template <class Argument, class Truth>
    unsigned int position(char const*, Argument const&, unsigned int start, Truth truth) const {
        Lies& lies = Lies::ofRun();
        return lies.oneIn(3) ? lies.number(this->length, start) : truth();
    }

private:
    /// Another text in place of the true one: the same as before, none, or any.
    template <class Truth>
    DBuffer* text(Truth truth) const {
        Lies& lies = Lies::ofRun();
        if (!lies.oneIn(4)) return truth();
        auto* const self = const_cast<LyingBuffer*>(this);
        if (lies.choices->oneIn(3)) {
            ++self->refs;
            return self;
        }
        return make(std::string(lies.choices->below(30), '!'));
    }
};

} // namespace hosts

#endif
