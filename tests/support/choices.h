// Where random operations take their choices from: a generator with a seed, or the bytes that a fuzzer made
// up. What is chosen between is not here.
#ifndef KELCL_TESTS_SUPPORT_CHOICES_H
#define KELCL_TESTS_SUPPORT_CHOICES_H

#include <cstddef>
#include <cstdint>
#include <random>
#include <string>

class Choices {
public:
    Choices() = default;
    Choices(Choices const&) = delete;
    Choices& operator=(Choices const&) = delete;
    virtual ~Choices() = default;

    /// A number from 0 to `last`.
    virtual std::uint32_t upTo(std::uint32_t last) = 0;

    std::uint32_t below(std::uint32_t n) { return upTo(n - 1); }
    std::uint32_t any() { return upTo(0xFFFFFFFF); }
    bool oneIn(std::uint32_t n) { return below(n) == 0; }
};

class SeededChoices final : public Choices {
public:
    explicit SeededChoices(std::uint32_t seed) : random_(seed) {}
    std::uint32_t upTo(std::uint32_t last) override {
        return static_cast<std::uint32_t>(random_() % (std::uint64_t{last} + 1));
    }

private:
    std::mt19937_64 random_;
};

/// Takes each choice from as many of the bytes as it needs; after the last one every choice is 0.
class ByteChoices final : public Choices {
public:
    ByteChoices(std::uint8_t const* bytes, std::size_t n) : next_(bytes), left_(n) {}

    bool isAtEnd() const { return left_ == 0; }
    std::uint32_t upTo(std::uint32_t last) override {
        std::uint64_t value = 0;
        for (std::uint64_t most = last; most != 0; most >>= 8)
            value = value << 8 | byte();
        return static_cast<std::uint32_t>(value % (std::uint64_t{last} + 1));
    }
    /// A length, then so many bytes.
    std::string text(std::uint32_t most) {
        std::string result(upTo(most), '\0');
        for (char& c : result)
            c = static_cast<char>(byte());
        return result;
    }
    /// The same without NULs.
    std::string characters(std::uint32_t most) {
        std::string result = text(most);
        result.resize(result.find('\0') == std::string::npos ? result.size() : result.find('\0'));
        return result;
    }

private:
    std::uint8_t byte() {
        if (left_ == 0) return 0;
        --left_;
        return *next_++;
    }

    std::uint8_t const* next_;
    std::size_t left_;
};

#endif
