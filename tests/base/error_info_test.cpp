// Error-information classes and throw helpers: what each captures, and which exception each path throws.
#include "tests/except/except_support.h"

#include <kelcl/derrorinfo.h>
#include <kelcl/dstring.h>

#include <cerrno>
#include <cstring>
#include <sstream>

namespace {

// The C library has a text for every number, so one without is brought about here.
bool withoutErrorTexts = false;

} // namespace

extern "C" char* strerror(int number) noexcept {
    static char none[] = "";
    if (withoutErrorTexts) return none;
    char const* const description = strerrordesc_np(number);
    return const_cast<char*>(description != nullptr ? description : "Unknown error");
}

namespace {

using Texts = std::vector<std::string>;
using Type = DBaseErrorInfo::ExceptionType;

DExceptionLocation const here("unit", "function", 77);

void expectLocation(Facts const& facts) {
    ASSERT_EQ(facts.locations.size(), 1u);
    EXPECT_EQ(facts.locations[0], std::make_tuple("unit", "function", 77ul));
}

/// `path(type)` throws the class that belongs to each type, and nothing for any other type.
template <class Path>
void expectMapping(Path const& path) {
    struct Row {
        unsigned int value;
        Type type;
        std::type_index thrown;
    };
    Row const rows[] = {
        {0, DBaseErrorInfo::accessError, typeid(DAccessError)},
        {1, DBaseErrorInfo::deviceError, typeid(DDeviceError)},
        {2, DBaseErrorInfo::invalidParameter, typeid(DInvalidParameter)},
        {3, DBaseErrorInfo::invalidRequest, typeid(DInvalidRequest)},
        {4, DBaseErrorInfo::outOfSystemResource, typeid(DOutOfSystemResource)},
        {5, DBaseErrorInfo::outOfWindowResource, typeid(DOutOfWindowResource)},
        {6, DBaseErrorInfo::outOfMemory, typeid(DOutOfMemory)},
        {7, DBaseErrorInfo::resourceExhausted, typeid(DResourceExhausted)},
    };
    for (Row const& row : rows) {
        EXPECT_EQ(static_cast<unsigned int>(row.type), row.value);
        Facts const facts = thrownBy([&] { path(row.type); });
        EXPECT_EQ(facts.type, row.thrown) << facts.name;
        expectLocation(facts);
    }
    RecordingTrace trace;
    for (unsigned int value : {8u, 9u, 255u, 256u, 0x8000'0000u, 0xFFFF'FFFFu})
        EXPECT_NO_THROW(path(static_cast<Type>(value))) << value;
    EXPECT_EQ(trace.reports, 0) << "nothing is thrown, so nothing is logged";
}

class HostErrorInfo : public DBaseErrorInfo {
public:
    operator char const*() const override { return "converted"; }
    char const* text() const override { return "host text"; }
    unsigned long errorId() const override { return 321; }
};

} // namespace

TEST(ErrorType, IsStoredAsUnsignedInt) {
    EXPECT_TRUE((std::is_same_v<std::underlying_type_t<Type>, unsigned int>));
}

TEST(AssertParameter, ThrowsInvalidParameterWithMessageOne) {
    MessageFile const catalog(englishCatalog);
    Facts const facts = thrownBy([] { DExcept__assertParameter("index", here); });
    expectClass<DInvalidParameter>(facts, "DInvalidParameter");
    EXPECT_EQ(facts.texts, Texts{"The condition does not hold: index"});
    EXPECT_EQ(facts.errorId, 1u);
    EXPECT_TRUE(facts.recoverable);
    EXPECT_EQ(facts.group, "Other Error Group");
    expectLocation(facts);
}

TEST(AssertParameter, WithNullTextKeepsTheMarker) {
    MessageFile const catalog(englishCatalog);
    Facts const facts = thrownBy([] { DExcept__assertParameter(nullptr, here); });
    EXPECT_EQ(facts.texts, Texts{"The condition does not hold: %1"});
}

TEST(AssertParameter, WithoutCatalogThrowsWithTheFallbackText) {
    MessageFile const catalog(noCatalog);
    Facts const facts = thrownBy([] { DExcept__assertParameter("index", here); });
    expectClass<DInvalidParameter>(facts, "DInvalidParameter");
    EXPECT_EQ(facts.texts, Texts{fallbackText});
}

TEST(AssertState, ThrowsInvalidRequestWithMessageOne) {
    MessageFile const catalog(englishCatalog);
    Facts const facts = thrownBy([] { DExcept__assertState("isOpen()", here); });
    expectClass<DInvalidRequest>(facts, "DInvalidRequest");
    EXPECT_EQ(facts.texts, Texts{"The condition does not hold: isOpen()"});
    EXPECT_EQ(facts.errorId, 1u);
    EXPECT_TRUE(facts.recoverable);
    EXPECT_EQ(facts.group, "Other Error Group");
    expectLocation(facts);
}

TEST(ThrowError, ThrowsTheMessageOfTheGivenCatalogWithoutSubstitution) {
    std::string const catalog = compiledCatalog("throw_error", "$set 1\n20 Disk %1 is full\n");
    Facts const facts = thrownBy([&] {
        DExcept__throwError(20, here, "reserved", "My Group", DBaseErrorInfo::deviceError,
                            DException::recoverable, catalog.c_str());
    });
    expectClass<DDeviceError>(facts, "DDeviceError");
    EXPECT_EQ(facts.texts, Texts{"Disk %1 is full"});
    EXPECT_EQ(facts.errorId, 20u);
    EXPECT_TRUE(facts.recoverable);
    EXPECT_EQ(facts.group, "My Group");
    expectLocation(facts);
}

TEST(ThrowError, WithoutCatalogThrowsWithTheFallbackTextAndTheGivenGroup) {
    Facts const facts = thrownBy([] {
        DExcept__throwError(20, here, nullptr, nullptr, DBaseErrorInfo::accessError,
                            DException::unrecoverable, nullptr);
    });
    EXPECT_EQ(facts.texts, Texts{fallbackText});
    EXPECT_EQ(facts.group, "(null)");
    EXPECT_FALSE(facts.recoverable);
}

TEST(ThrowError, ThrowsTheClassOfEachTypeAndReturnsForEightAndMore) {
    expectMapping([](Type type) {
        DExcept__throwError(4, here, nullptr, DException::other, type, DException::recoverable,
                            englishCatalog.c_str());
    });
}

TEST(ThrowLibraryError, ThrowsTheMessageOfTheLibraryCatalogWithTheValue) {
    MessageFile const catalog(englishCatalog);
    Facts const facts = thrownBy([] {
        DExcept__throwLibraryError(1, here, DBaseErrorInfo::accessError, DException::unrecoverable, "x > y");
    });
    expectClass<DAccessError>(facts, "DAccessError");
    EXPECT_EQ(facts.texts, Texts{"The condition does not hold: x > y"});
    EXPECT_EQ(facts.errorId, 1u);
    EXPECT_FALSE(facts.recoverable);
    EXPECT_EQ(facts.group, "Kel Class Library");
    expectLocation(facts);
}

TEST(ThrowLibraryError, OfOutOfMemoryWithoutValueThrowsOutOfMemory) {
    MessageFile const catalog(englishCatalog);
    Facts const facts = thrownBy([] {
        DExcept__throwLibraryError(4, here, DBaseErrorInfo::outOfMemory, DException::unrecoverable, nullptr);
    });
    expectClass<DOutOfMemory>(facts, "DOutOfMemory");
    EXPECT_EQ(facts.texts, Texts{"There is not enough memory for the operation."});
    EXPECT_EQ(facts.group, "Kel Class Library");
}

TEST(ThrowLibraryError, DefaultsToRecoverableWithoutValue) {
    MessageFile const catalog(englishCatalog);
    Facts const facts = thrownBy([] { DExcept__throwLibraryError(1, here, DBaseErrorInfo::invalidRequest); });
    EXPECT_TRUE(facts.recoverable);
    EXPECT_EQ(facts.texts, Texts{"The condition does not hold: %1"});
}

TEST(ThrowLibraryError, ThrowsTheClassOfEachTypeAndReturnsForEightAndMore) {
    expectMapping([](Type type) { DExcept__throwLibraryError(4, here, type); });
}

TEST(CLibErrorInfo, TakesErrnoAndItsText) {
    errno = ENOENT;
    DCLibErrorInfo const info("open");
    EXPECT_EQ(info.errorId(), 2u);
    EXPECT_STREQ(info.text(), "open:No such file or directory");
    EXPECT_STREQ(static_cast<char const*>(info), "open:No such file or directory");
    EXPECT_TRUE(info.isAvailable());
}

TEST(CLibErrorInfo, WithNullPrefixHasNoColon) {
    errno = EACCES;
    DCLibErrorInfo const info(nullptr);
    EXPECT_STREQ(info.text(), "Permission denied");
}

TEST(CLibErrorInfo, WithEmptyPrefixKeepsTheColon) {
    errno = EACCES;
    DCLibErrorInfo const info("");
    EXPECT_STREQ(info.text(), ":Permission denied");
}

TEST(CLibErrorInfo, OfErrnoZeroHasATextAndErrorIdZero) {
    errno = 0;
    DCLibErrorInfo const info("open");
    EXPECT_EQ(info.errorId(), 0u);
    EXPECT_EQ(std::string(info.text()).rfind("open:", 0), 0u);
    EXPECT_GT(std::strlen(info.text()), 5u);
}

TEST(CLibErrorInfo, SignExtendsANegativeErrno) {
    errno = -1;
    DCLibErrorInfo const info("x");
    EXPECT_EQ(info.errorId(), ~0ul);
}

TEST(CLibErrorInfo, WithoutATextOfTheCLibrarySaysSo) {
    withoutErrorTexts = true;
    errno = ENOENT;
    DCLibErrorInfo const prefixed("open");
    errno = ENOENT;
    DCLibErrorInfo const bare(nullptr);
    withoutErrorTexts = false;
    EXPECT_FALSE(prefixed.isAvailable());
    EXPECT_STREQ(prefixed.text(), "open:No Error text is available");
    EXPECT_STREQ(bare.text(), "No Error text is available");
    EXPECT_EQ(bare.errorId(), 2u);
}

TEST(CLibErrorInfo, ThrowsInTheGroupOfTheCLibrary) {
    Facts const facts = thrownBy([] {
        errno = ENOENT;
        DCLibErrorInfo::throwCLibError("open", here, DBaseErrorInfo::accessError, DException::recoverable);
    });
    expectClass<DAccessError>(facts, "DAccessError");
    EXPECT_EQ(facts.texts, Texts{"open:No such file or directory"});
    EXPECT_EQ(facts.errorId, 2u);
    EXPECT_TRUE(facts.recoverable);
    EXPECT_EQ(facts.group, "Standard C Library");
    expectLocation(facts);
}

TEST(CLibErrorInfo, ThrowsTheClassOfEachTypeAndReturnsForEightAndMore) {
    expectMapping(
        [](Type type) { DCLibErrorInfo::throwCLibError("x", here, type, DException::unrecoverable); });
}

TEST(SystemErrorInfo, HasTheNumberAndMessage186) {
    MessageFile const catalog(englishCatalog);
    DSystemErrorInfo const info(0x1'0000'0007ul, "ioctl");
    EXPECT_EQ(info.errorId(), 0x1'0000'0007ul);
    EXPECT_STREQ(info.text(), "ioctl:The operating system reported an error.");
    EXPECT_STREQ(static_cast<char const*>(info), info.text());
    EXPECT_TRUE(info.isAvailable());
    EXPECT_STREQ(DSystemErrorInfo(7, nullptr).text(), "The operating system reported an error.");
}

TEST(SystemErrorInfo, WithoutCatalogHasTheFallbackTextAndIsStillAvailable) {
    MessageFile const catalog(noCatalog);
    DSystemErrorInfo const info(7, "ioctl");
    EXPECT_STREQ(info.text(), "ioctl:Unable to load text from message file.");
    EXPECT_TRUE(info.isAvailable());
}

TEST(SystemErrorInfo, ThrowsInTheGroupOfTheOperatingSystem) {
    MessageFile const catalog(englishCatalog);
    Facts const facts = thrownBy([] {
        DSystemErrorInfo::throwSystemError(9, "ioctl", here, DBaseErrorInfo::outOfSystemResource,
                                           DException::unrecoverable);
    });
    expectClass<DOutOfSystemResource>(facts, "DOutOfSystemResource");
    EXPECT_EQ(facts.texts, Texts{"ioctl:The operating system reported an error."});
    EXPECT_EQ(facts.errorId, 9u);
    EXPECT_FALSE(facts.recoverable);
    EXPECT_EQ(facts.group, "Operating System");
    expectLocation(facts);
}

TEST(SystemErrorInfo, ThrowsTheClassOfEachTypeAndReturnsForEightAndMore) {
    expectMapping(
        [](Type type) { DSystemErrorInfo::throwSystemError(9, "x", here, type, DException::recoverable); });
}

TEST(GUIErrorInfo, HasMessage185AndErrorIdZero) {
    MessageFile const catalog(englishCatalog);
    DGUIErrorInfo const info("window");
    EXPECT_STREQ(info.text(), "window:The presentation system reported an error.");
    EXPECT_STREQ(static_cast<char const*>(info), info.text());
    EXPECT_EQ(info.errorId(), 0u);
    EXPECT_TRUE(info.isAvailable());
    EXPECT_STREQ(DGUIErrorInfo(nullptr).text(), "The presentation system reported an error.");
}

TEST(GUIErrorInfo, ThrowsInTheGroupOfThePresentationSystem) {
    MessageFile const catalog(englishCatalog);
    Facts const facts = thrownBy([] {
        DGUIErrorInfo::throwGUIError("window", here, DBaseErrorInfo::outOfWindowResource,
                                     DException::recoverable);
    });
    expectClass<DOutOfWindowResource>(facts, "DOutOfWindowResource");
    EXPECT_EQ(facts.texts, Texts{"window:The presentation system reported an error."});
    EXPECT_EQ(facts.errorId, 0u);
    EXPECT_EQ(facts.group, "Presentation System");
    expectLocation(facts);
}

TEST(GUIErrorInfo, ThrowsTheClassOfEachTypeAndReturnsForEightAndMore) {
    expectMapping([](Type type) { DGUIErrorInfo::throwGUIError("x", here, type, DException::recoverable); });
}

TEST(ErrorInfo, ThrowErrorTakesTextAndIdFromTheVirtualOperations) {
    HostErrorInfo const info;
    Facts const facts = thrownBy([&] {
        info.throwError(here, DBaseErrorInfo::resourceExhausted, DException::recoverable, "My Group");
    });
    expectClass<DResourceExhausted>(facts, "DResourceExhausted");
    EXPECT_EQ(facts.texts, Texts{"host text"});
    EXPECT_EQ(facts.errorId, 321u);
    EXPECT_EQ(facts.group, "My Group");
    expectLocation(facts);
}

TEST(ErrorInfo, ThrowErrorCanBeCalledAgain) {
    errno = ENOENT;
    DCLibErrorInfo const info("open");
    auto const throwing = [&] {
        info.throwError(here, DBaseErrorInfo::accessError, DException::recoverable, DException::CLibrary);
    };
    EXPECT_EQ(thrownBy(throwing).texts, thrownBy(throwing).texts);
    EXPECT_STREQ(info.text(), "open:No such file or directory");
}

TEST(ErrorInfo, IsAnObjectOfTheVirtualRoot) {
    DGUIErrorInfo const info("x");
    std::ostringstream stream;
    stream << static_cast<DVBase const&>(info);
    EXPECT_EQ(stream.str(), "DVBase object");
    EXPECT_EQ(info.asString(), "DVBase object");
}

// Slots 0 and 1 are the destructor, 2 and 3 asString and asDebugInfo.
TEST(ErrorInfo, VirtualOperationsStandInTheOrderThatHostsRelyOn) {
    HostErrorInfo const info;
    auto const* const table = *reinterpret_cast<void* const* const*>(&info);
    using Text = char const* (*)(DBaseErrorInfo const*);
    using Number = unsigned long (*)(DBaseErrorInfo const*);
    EXPECT_STREQ(reinterpret_cast<Text>(table[4])(&info), "converted");
    EXPECT_STREQ(reinterpret_cast<Text>(table[5])(&info), "host text");
    EXPECT_EQ(reinterpret_cast<Number>(table[6])(&info), 321u);
}
