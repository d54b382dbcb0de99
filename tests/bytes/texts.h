// Texts to try the byte kernels on: every length and alignment that a vector loop may treat differently, and
// texts that lie between two pages that must not be touched.
#ifndef KELCL_TESTS_BYTES_TEXTS_H
#define KELCL_TESTS_BYTES_TEXTS_H

#include <sys/mman.h>
#include <unistd.h>

#include <array>
#include <cstddef>
#include <cstring>
#include <new>
#include <random>
#include <string>
#include <string_view>

namespace bytes_test {

inline constexpr std::size_t longest = 130;

/// Some pages of memory with an inaccessible page before and after them.
class GuardedPages {
public:
    explicit GuardedPages(std::size_t pages = 1)
        : page_(static_cast<std::size_t>(sysconf(_SC_PAGESIZE))), size_(pages * page_) {
        void* const mapped = mmap(nullptr, size_ + 2 * page_, PROT_NONE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
        if (mapped == MAP_FAILED) throw std::bad_alloc();
        whole_ = static_cast<char*>(mapped);
        if (mprotect(whole_ + page_, size_, PROT_READ | PROT_WRITE) != 0) throw std::bad_alloc();
    }
    ~GuardedPages() { munmap(whole_, size_ + 2 * page_); }
    GuardedPages(GuardedPages const&) = delete;
    GuardedPages& operator=(GuardedPages const&) = delete;

    /// Room for n bytes that begins right after the first guard page (that ends right at the second).
    char* roomAtBegin() { return whole_ + page_; }
    char* roomAtEnd(std::size_t n) { return whole_ + page_ + size_ - n; }

    std::string_view atBegin(std::string_view text) { return put(roomAtBegin(), text); }
    std::string_view atEnd(std::string_view text) { return put(roomAtEnd(text.size()), text); }

private:
    static std::string_view put(char* room, std::string_view text) {
        if (!text.empty()) std::memcpy(room, text.data(), text.size());
        return {room, text.size()};
    }

    std::size_t page_;
    std::size_t size_;
    char* whole_ = nullptr;
};

/// Calls `check` with copies of the text at every alignment to 64 bytes, amid other bytes, and beside guard
/// pages.
template <class Check>
void atEveryPlace(std::string_view text, char surroundings, Check check) {
    alignas(64) std::array<char, longest + 192> room;
    for (std::size_t alignment = 0; alignment < 64; ++alignment) {
        room.fill(surroundings);
        if (!text.empty()) std::memcpy(room.data() + 64 + alignment, text.data(), text.size());
        check(std::string_view(room.data() + 64 + alignment, text.size()));
    }
    static GuardedPages pages;
    check(pages.atBegin(text));
    check(pages.atEnd(text));
}

inline std::string randomText(std::mt19937& random, std::size_t n, std::string_view alphabet) {
    std::string text(n, '\0');
    for (char& byte : text)
        byte = alphabet[random() % alphabet.size()];
    return text;
}

inline std::string randomBytes(std::mt19937& random, std::size_t n) {
    std::string text(n, '\0');
    for (char& byte : text)
        byte = static_cast<char>(random());
    return text;
}

/// All 256 byte values in order.
inline std::string allBytes() {
    std::string text;
    for (int value = 0; value < 256; ++value)
        text.push_back(static_cast<char>(value));
    return text;
}

} // namespace bytes_test

#endif
