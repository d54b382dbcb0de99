// The queries of strings, which ask the buffer through its virtual operations.
#include "tests/buffers/buffer_support.h"

namespace {

using namespace support;

TEST(StringQueries, AskTheBufferThroughItsVirtualOperations) {
    class Yes : public DBuffer {
    public:
        using DBuffer::DBuffer;
        bool isAlphanumeric() const override { return says("isAlphanumeric"); }
        bool isAlphabetic() const override { return says("isAlphabetic"); }
        bool isASCII() const override { return says("isASCII"); }
        bool isControl() const override { return says("isControl"); }
        bool isDigits() const override { return says("isDigits"); }
        bool isGraphics() const override { return says("isGraphics"); }
        bool isHexDigits() const override { return says("isHexDigits"); }
        bool isLowerCase() const override { return says("isLowerCase"); }
        bool isPrintable() const override { return says("isPrintable"); }
        bool isPunctuation() const override { return says("isPunctuation"); }
        bool isUpperCase() const override { return says("isUpperCase"); }
        bool isWhiteSpace() const override { return says("isWhiteSpace"); }
        bool isMBCS() const override { return says("isMBCS"); }
        bool isDBCS() const override { return says("isDBCS"); }
        bool isSBCS() const override { return says("isSBCS"); }
        bool isValidMBCS() const override { return says("isValidMBCS"); }
        bool isValidDBCS() const override { return says("isValidDBCS"); }
        bool includesMBCS() const override { return says("includesMBCS"); }
        bool includesDBCS() const override { return says("includesDBCS"); }
        bool includesSBCS() const override { return says("includesSBCS"); }
        unsigned int charType(unsigned int index) const override { return index + 40; }

    private:
        bool says(std::string_view query) const { return query == std::string_view(contents(), length); }
    };
    std::vector<std::pair<std::string, bool (DString::*)() const>> const queries = {
        {"isAlphanumeric", &DString::isAlphanumeric},
        {"isAlphabetic", &DString::isAlphabetic},
        {"isASCII", &DString::isASCII},
        {"isControl", &DString::isControl},
        {"isDigits", &DString::isDigits},
        {"isGraphics", &DString::isGraphics},
        {"isHexDigits", &DString::isHexDigits},
        {"isLowerCase", &DString::isLowerCase},
        {"isPrintable", &DString::isPrintable},
        {"isPunctuation", &DString::isPunctuation},
        {"isUpperCase", &DString::isUpperCase},
        {"isWhiteSpace", &DString::isWhiteSpace},
        {"isMBCS", &DString::isMBCS},
        {"isDBCS", &DString::isDBCS},
        {"isSBCS", &DString::isSBCS},
        {"isValidMBCS", &DString::isValidMBCS},
        {"isValidDBCS", &DString::isValidDBCS},
        {"includesMBCS", &DString::includesMBCS},
        {"includesDBCS", &DString::includesDBCS},
        {"includesSBCS", &DString::includesSBCS}};
    for (auto const& [name, query] : queries) {
        DString const asked(makeIn<Yes>(name, guardSize));
        EXPECT_TRUE((asked.*query)()) << name;
        DString const other(makeIn<Yes>("another", guardSize));
        EXPECT_FALSE((other.*query)()) << name;
        EXPECT_EQ(asked.charType(2), 42U);
    }
}

} // namespace
