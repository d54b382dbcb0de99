// Numbers in locales whose decimal point is long. The compiler of locales takes a single character for it,
// but the C library that reads its files takes any text: the locales of these tests are one of the compiled
// ones with another decimal point.
#include "tests/buffers/buffer_support.h"

#include <clocale>
#include <cstdint>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>

#include <gtest/gtest.h>

namespace {

using support::textOf;

std::string bytesOf(std::filesystem::path const& file) {
    std::ifstream in(file, std::ios::binary);
    return {std::istreambuf_iterator<char>(in), {}};
}

/// The file of a category: a magic number, the number of its items, the offset of each. Of LC_NUMERIC the
/// first item is the decimal point, a text that ends in a NUL.
std::string withDecimalPoint(std::string file, std::string const& point) {
    constexpr std::size_t offsetOfFirstItem = 2 * sizeof(std::uint32_t);
    auto const end = static_cast<std::uint32_t>(file.size());
    file.replace(offsetOfFirstItem, sizeof end, reinterpret_cast<char const*>(&end), sizeof end);
    return file + point + '\0';
}

class LongDecimalPoint : public ::testing::Test {
protected:
    void SetUp() override {
        char const* const locales = std::getenv("LOCPATH");
        ASSERT_NE(locales, nullptr);
        compiled_ = bytesOf(std::filesystem::path(locales) / "en_US.UTF-8" / "LC_NUMERIC");
        ASSERT_FALSE(compiled_.empty());
        before_ = locales;
        setenv("LOCPATH", ".", 1);
    }
    void TearDown() override {
        std::setlocale(LC_NUMERIC, "C");
        setenv("LOCPATH", before_.c_str(), 1);
    }

    void take(std::string const& point) {
        std::string const name = "point" + std::to_string(point.size());
        std::filesystem::create_directories(name);
        std::ofstream(name + "/LC_NUMERIC", std::ios::binary) << withDecimalPoint(compiled_, point);
        ASSERT_NE(std::setlocale(LC_NUMERIC, name.c_str()), nullptr) << name;
        ASSERT_EQ(std::localeconv()->decimal_point, point);
    }

private:
    std::string compiled_;
    std::string before_;
};

TEST_F(LongDecimalPoint, IsWrittenWhole) {
    for (std::size_t const length : {2U, 20U, 25U, 26U, 27U, 45U, 46U, 47U, 48U, 49U, 50U, 1000U, 100000U}) {
        std::string point;
        while (point.size() < length)
            point += static_cast<char>('a' + point.size() % 26);
        ASSERT_NO_FATAL_FAILURE(take(point));
        EXPECT_EQ(textOf(DString(1.5)), "1" + point + "5") << length;
        EXPECT_EQ(textOf(DString(-1.79769313486231e+308)), "-1" + point + "79769313486231e+308") << length;
        EXPECT_EQ(textOf(DString(3.0)), "3") << length;
    }
}

} // namespace
