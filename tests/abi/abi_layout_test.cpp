// The binary interface: sizes and offsets of the public classes, and the order of their virtual tables, read
// from the tables themselves and from what the compiler makes of the headers. Which symbols are exported is
// checked elsewhere.
#include <kelcl/dbuffer.h>
#include <kelcl/ddbcsbuffer.h>
#include <kelcl/dexception.h>
#include <kelcl/dstring.h>

#include <gtest/gtest.h>

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <new>
#include <string>
#include <string_view>
#include <vector>

#include <dlfcn.h>

namespace {

std::size_t lastBlock = 0; // the size that was asked for last

} // namespace

void* operator new[](std::size_t size) {
    lastBlock = size;
    if (void* const block = std::malloc(size)) return block;
    throw std::bad_alloc();
}
void* operator new[](std::size_t size, std::nothrow_t const&) noexcept { return std::malloc(size); }
void operator delete[](void* block) noexcept { std::free(block); }
void operator delete[](void* block, std::size_t) noexcept { std::free(block); }

namespace {

// Sizes and offsets
// ------------------------------------------------------------------------------------------

std::size_t offsetIn(void const* object, void const* member) {
    return static_cast<std::size_t>(static_cast<char const*>(member) - static_cast<char const*>(object));
}

TEST(BinaryLayout, AStringIsOnePointer) {
    EXPECT_EQ(sizeof(DString), sizeof(void*));
    EXPECT_EQ(alignof(DString), alignof(void*));
}

TEST(BinaryLayout, ABufferHasAHeaderOfSixteenBytesWithTheTextRightAfterIt) {
    EXPECT_EQ(sizeof(DBuffer), 16U);
    EXPECT_EQ(sizeof(DDBCSBuffer), 16U) << "no data of its own";
    DString const text("abc");
    DBuffer const* const buffer = DBuffer::fromContents(text.c_str());
    EXPECT_EQ(offsetIn(buffer, &buffer->refs), 8U);
    EXPECT_EQ(offsetIn(buffer, &buffer->length), 12U);
    EXPECT_EQ(offsetIn(buffer, text.c_str()), 16U);
    EXPECT_EQ(offsetIn(buffer, buffer->contents()), 16U);
    EXPECT_EQ(sizeof buffer->refs, 4U);
    EXPECT_EQ(sizeof buffer->length, 4U);
}

// Programs have compiled in how much room there is after a text, and append to it.
TEST(BinaryLayout, ABlockHasTheRoomAfterItsTextThatProgramsCountOn) {
    struct Case {
        unsigned int length, room;
    };
    for (auto const [length, room] :
         {Case{1, 6},     {6, 1},      {7, 0},       {8, 15},          {22, 1},     {23, 0},    {24, 15},
          {102, 1},       {103, 0},    {104, 15},    {230, 1},         {231, 0},    {232, 31},  {998, 1},
          {999, 0},       {1000, 255}, {1255, 0},    {1256, 255},      {2024, 511}, {65510, 1}, {65511, 0},
          {65512, 32767}, {98279, 0},  {1048551, 0}, {1048552, 524287}}) {
        std::string const text(length, 'x');
        DString appended(text);
        EXPECT_GE(lastBlock, 16 + length + room + 1) << "for a text of " << length;
        char const* const place = appended.c_str();
        for (unsigned int i = 0; i < room; ++i)
            appended += 'y';
        EXPECT_EQ(appended.c_str(), place) << "a text of " << length << " grows where it stands";
        EXPECT_TRUE(appended == text + std::string(room, 'y'));
    }
}

TEST(BinaryLayout, TheRootClassesAreEmptyAndOnePointer) {
    EXPECT_EQ(sizeof(DBase), 1U);
    EXPECT_EQ(sizeof(DVBase), sizeof(void*));
}

TEST(BinaryLayout, APredicateHoldsItsKindAndItsFunction) {
    EXPECT_EQ(sizeof(DStringTest), 24U);
    int (*const function)(int) = [](int) { return 1; };
    DStringTest const test(function);
    std::uint32_t kind = 0;
    int (*stored)(int) = nullptr;
    char const* const bytes = reinterpret_cast<char const*>(&test);
    std::memcpy(&kind, bytes + 8, sizeof kind);
    std::memcpy(&stored, bytes + 16, sizeof stored);
    EXPECT_EQ(kind, 1U) << "a plain function";
    EXPECT_EQ(stored, function);
}

TEST(BinaryLayout, AnExceptionHoldsItsFieldsInOrder) {
    EXPECT_EQ(sizeof(DExceptionLocation), 24U);
    EXPECT_EQ(sizeof(DException::Severity), 4U);
    EXPECT_EQ(sizeof(DException), 176U);
    EXPECT_EQ(sizeof(DOutOfMemory), sizeof(DException));
    DException exception("text", 77, DException::recoverable);
    exception.addLocation(DExceptionLocation("file", "function", 5));
    char const* const bytes = reinterpret_cast<char const*>(&exception);
    auto const numberAt = [bytes](std::size_t offset) {
        std::uint64_t number = 0;
        std::memcpy(&number, bytes + offset, sizeof number);
        return number;
    };
    std::uint32_t severity = 0;
    std::memcpy(&severity, bytes + 8, sizeof severity);
    EXPECT_EQ(severity, 1U);
    EXPECT_EQ(numberAt(16), 77U) << "error id";
    EXPECT_EQ(offsetIn(&exception, exception.locationAtIndex(0)), 24U);
    EXPECT_EQ(numberAt(24 + 16), 5U) << "line of the first location";
    EXPECT_EQ(numberAt(144), 1U) << "number of locations";
    EXPECT_EQ(numberAt(152), 1U) << "number of texts";
    EXPECT_NE(numberAt(160), 0U) << "the texts";
    EXPECT_EQ(numberAt(168), reinterpret_cast<std::uintptr_t>(DException::baseLibrary)) << "group";
}

// Virtual tables
// ---------------------------------------------------------------------------------------------

/// A virtual operation: its slot as the compiler sees it in the headers, counted from 1, and its symbol.
struct Slot {
    int inHeader; ///< 0 where it cannot be asked for: destructors
    char const* symbol;
};

/// A pointer to a virtual member function holds the offset of its slot in the table, on x86-64 with the
/// lowest bit set.
template <class Member>
int slotOf(Member member) {
    std::ptrdiff_t representation = 0;
    static_assert(sizeof member >= sizeof representation);
    std::memcpy(&representation, &member, sizeof representation);
    return static_cast<int>(representation / static_cast<std::ptrdiff_t>(sizeof(void*))) + 1;
}

void const* const* tableOf(void const* object) {
    void const* const* table = nullptr;
    std::memcpy(&table, object, sizeof table);
    return table;
}

/// Expects that the table of `object` holds exactly the functions with these symbols, in this order.
void expectTable(void const* object, std::vector<std::string> const& symbols) {
    void const* const* const table = tableOf(object);
    for (std::size_t i = 0; i < symbols.size(); ++i) {
        if (symbols[i].empty()) continue;
        void const* const function = dlsym(RTLD_DEFAULT, symbols[i].c_str());
        ASSERT_NE(function, nullptr) << symbols[i] << " is not exported";
        Dl_info found{};
        dladdr(table[i], &found);
        EXPECT_EQ(table[i], function) << "slot " << i + 1 << " should be " << symbols[i] << " and is "
                                      << (found.dli_sname != nullptr ? found.dli_sname : "unknown");
    }
}

void expectHeaderOrder(std::vector<Slot> const& slots) {
    for (std::size_t i = 0; i < slots.size(); ++i) {
        if (slots[i].inHeader != 0) {
            EXPECT_EQ(slots[i].inHeader, static_cast<int>(i + 1)) << slots[i].symbol;
        }
    }
}

template <class Class>
std::vector<Slot> bufferSlots() {
    using Text = char const*;
    using N = unsigned int;
    using Test = DStringTest const&;
    using Mode = DStringEnum::StripMode;
    using Query = bool (Class::*)() const;
    using SearchText = N (Class::*)(Text, N, N) const;
    using SearchTest = N (Class::*)(Test, N) const;
    using ToWidth = DBuffer* (Class::*)(N, char);
    using Whole = DBuffer* (Class::*)();
    using Place = DBuffer* (Class::*)(Text, N, N, char);
    using Start = N (Class::*)(N, N) const;
    return {
        {0, "_ZN7DBufferD1Ev"},
        {0, "_ZN7DBufferD0Ev"},
        {slotOf<DString (Class::*)() const>(&Class::asString), "_ZNK6DVBase8asStringEv"},
        {slotOf<DString (Class::*)() const>(&Class::asDebugInfo), "_ZNK7DBuffer11asDebugInfoEv"},
        {slotOf<N (Class::*)(N) const>(&Class::charType), "_ZNK7DBuffer8charTypeEj"},
        {slotOf<char* (Class::*)(Text)>(&Class::next), "_ZN7DBuffer4nextEPKc"},
        {slotOf<Text (Class::*)(Text) const>(&Class::next), "_ZNK7DBuffer4nextEPKc"},
        {slotOf<int (Class::*)(void const*, N) const>(&Class::compare), "_ZNK7DBuffer7compareEPKvj"},
        {slotOf<DBuffer* (Class::*)(N, N, char) const>(&Class::subString), "_ZNK7DBuffer9subStringEjjc"},
        {slotOf<DBuffer* (Class::*)(N) const>(&Class::subString), "_ZNK7DBuffer9subStringEj"},
        {slotOf<Query>(&Class::isAlphanumeric), "_ZNK7DBuffer14isAlphanumericEv"},
        {slotOf<Query>(&Class::isAlphabetic), "_ZNK7DBuffer12isAlphabeticEv"},
        {slotOf<Query>(&Class::isASCII), "_ZNK7DBuffer7isASCIIEv"},
        {slotOf<Query>(&Class::isControl), "_ZNK7DBuffer9isControlEv"},
        {slotOf<Query>(&Class::isDigits), "_ZNK7DBuffer8isDigitsEv"},
        {slotOf<Query>(&Class::isGraphics), "_ZNK7DBuffer10isGraphicsEv"},
        {slotOf<Query>(&Class::isHexDigits), "_ZNK7DBuffer11isHexDigitsEv"},
        {slotOf<Query>(&Class::isLowerCase), "_ZNK7DBuffer11isLowerCaseEv"},
        {slotOf<Query>(&Class::isPrintable), "_ZNK7DBuffer11isPrintableEv"},
        {slotOf<Query>(&Class::isPunctuation), "_ZNK7DBuffer13isPunctuationEv"},
        {slotOf<Query>(&Class::isUpperCase), "_ZNK7DBuffer11isUpperCaseEv"},
        {slotOf<Query>(&Class::isWhiteSpace), "_ZNK7DBuffer12isWhiteSpaceEv"},
        {slotOf<Query>(&Class::isMBCS), "_ZNK7DBuffer6isMBCSEv"},
        {slotOf<Query>(&Class::isDBCS), "_ZNK7DBuffer6isDBCSEv"},
        {slotOf<Query>(&Class::isSBCS), "_ZNK7DBuffer6isSBCSEv"},
        {slotOf<Query>(&Class::isValidMBCS), "_ZNK7DBuffer11isValidMBCSEv"},
        {slotOf<Query>(&Class::isValidDBCS), "_ZNK7DBuffer11isValidDBCSEv"},
        {slotOf<Query>(&Class::includesMBCS), "_ZNK7DBuffer12includesMBCSEv"},
        {slotOf<Query>(&Class::includesDBCS), "_ZNK7DBuffer12includesDBCSEv"},
        {slotOf<Query>(&Class::includesSBCS), "_ZNK7DBuffer12includesSBCSEv"},
        {slotOf<SearchText>(&Class::indexOf), "_ZNK7DBuffer7indexOfEPKcjj"},
        {slotOf<SearchTest>(&Class::indexOf), "_ZNK7DBuffer7indexOfERK11DStringTestj"},
        {slotOf<SearchText>(&Class::indexOfAnyBut), "_ZNK7DBuffer13indexOfAnyButEPKcjj"},
        {slotOf<SearchTest>(&Class::indexOfAnyBut), "_ZNK7DBuffer13indexOfAnyButERK11DStringTestj"},
        {slotOf<SearchText>(&Class::indexOfAnyOf), "_ZNK7DBuffer12indexOfAnyOfEPKcjj"},
        {slotOf<SearchTest>(&Class::indexOfAnyOf), "_ZNK7DBuffer12indexOfAnyOfERK11DStringTestj"},
        {slotOf<SearchText>(&Class::lastIndexOf), "_ZNK7DBuffer11lastIndexOfEPKcjj"},
        {slotOf<SearchTest>(&Class::lastIndexOf), "_ZNK7DBuffer11lastIndexOfERK11DStringTestj"},
        {slotOf<SearchText>(&Class::lastIndexOfAnyBut), "_ZNK7DBuffer17lastIndexOfAnyButEPKcjj"},
        {slotOf<SearchTest>(&Class::lastIndexOfAnyBut), "_ZNK7DBuffer17lastIndexOfAnyButERK11DStringTestj"},
        {slotOf<SearchText>(&Class::lastIndexOfAnyOf), "_ZNK7DBuffer16lastIndexOfAnyOfEPKcjj"},
        {slotOf<SearchTest>(&Class::lastIndexOfAnyOf), "_ZNK7DBuffer16lastIndexOfAnyOfERK11DStringTestj"},
        {slotOf<ToWidth>(&Class::center), "_ZN7DBuffer6centerEjc"},
        {slotOf<DBuffer* (Class::*)(Text, N, Text, N, N, N)>(&Class::change),
         "_ZN7DBuffer6changeEPKcjS1_jjj"},
        {slotOf<DBuffer* (Class::*)(N)>(&Class::copy), "_ZN7DBuffer4copyEj"},
        {slotOf<Place>(&Class::insert), "_ZN7DBuffer6insertEPKcjjc"},
        {slotOf<ToWidth>(&Class::leftJustify), "_ZN7DBuffer11leftJustifyEjc"},
        {slotOf<Whole>(&Class::lowerCase), "_ZN7DBuffer9lowerCaseEv"},
        {slotOf<Place>(&Class::overlayWith), "_ZN7DBuffer11overlayWithEPKcjjc"},
        {slotOf<DBuffer* (Class::*)(N, N)>(&Class::remove), "_ZN7DBuffer6removeEjj"},
        {slotOf<Whole>(&Class::reverse), "_ZN7DBuffer7reverseEv"},
        {slotOf<ToWidth>(&Class::rightJustify), "_ZN7DBuffer12rightJustifyEjc"},
        {slotOf<DBuffer* (Class::*)(Text, N, Mode)>(&Class::strip),
         "_ZN7DBuffer5stripEPKcjN11DStringEnum9StripModeE"},
        {slotOf<DBuffer* (Class::*)(Test, Mode)>(&Class::strip),
         "_ZN7DBuffer5stripERK11DStringTestN11DStringEnum9StripModeE"},
        {slotOf<DBuffer* (Class::*)(Text, N, Text, N, char)>(&Class::translate),
         "_ZN7DBuffer9translateEPKcjS1_jc"},
        {slotOf<Whole>(&Class::upperCase), "_ZN7DBuffer9upperCaseEv"},
        {slotOf<Start>(&Class::startSearch), "_ZNK7DBuffer11startSearchEjj"},
        {slotOf<Start>(&Class::startBackwardsSearch), "_ZNK7DBuffer20startBackwardsSearchEjj"},
        {slotOf<DBuffer* (Class::*)(N) const>(&Class::allocate), "_ZNK7DBuffer8allocateEj"},
        {slotOf<Text (Class::*)() const>(&Class::className), "_ZNK7DBuffer9classNameEv"},
    };
}

/// The symbols of the slots; with `own` in place of the class's name where the class overrides.
std::vector<std::string> symbolsOf(std::vector<Slot> const& slots, std::string_view own) {
    std::vector<std::string> symbols;
    for (Slot const& slot : slots) {
        std::string symbol = slot.symbol;
        std::size_t const place = symbol.find("7DBuffer");
        bool const inherited =
            symbol.find("11asDebugInfo") != std::string::npos || symbol == "_ZN7DBuffer4copyEj";
        if (place != std::string::npos && !inherited) symbol.replace(place, std::strlen("7DBuffer"), own);
        symbols.push_back(symbol);
    }
    return symbols;
}

/// A buffer of exactly the class, released at the end of the test.
template <class Buffer>
class Sample {
public:
    Sample() : buffer_(::new (::operator new[](64)) Buffer(3)) { std::memcpy(buffer_->contents(), "abc", 3); }
    ~Sample() { delete buffer_; }
    Sample(Sample const&) = delete;
    Sample& operator=(Sample const&) = delete;
    void const* get() const { return buffer_; }

private:
    Buffer* buffer_;
};

TEST(VirtualTable, OfABufferHasItsSixtySlotsInOrder) {
    std::vector<Slot> const slots = bufferSlots<DBuffer>();
    ASSERT_EQ(slots.size(), 60U);
    expectHeaderOrder(slots);
    Sample<DBuffer> const plain;
    expectTable(plain.get(), symbolsOf(slots, "7DBuffer"));
}

TEST(VirtualTable, OfAMultiByteBufferHasTheSameSlotsAndInheritsThree) {
    std::vector<Slot> const slots = bufferSlots<DDBCSBuffer>();
    ASSERT_EQ(slots.size(), 60U);
    expectHeaderOrder(slots);
    Sample<DDBCSBuffer> const multiByte;
    expectTable(multiByte.get(), symbolsOf(slots, "11DDBCSBuffer"));
}

TEST(VirtualTable, OfTheBufferThatAStringHasIsTheOneOfDBuffer) {
    DString const text("abc");
    Sample<DBuffer> const plain;
    EXPECT_EQ(tableOf(DBuffer::fromContents(text.c_str())), tableOf(plain.get()));
}

TEST(VirtualTable, OfTheVirtualRootHasItsFourSlotsInOrder) {
    DVBase const object;
    expectTable(&object, {"", "", "_ZNK6DVBase8asStringEv", "_ZNK6DVBase11asDebugInfoEv"});
    EXPECT_EQ(slotOf(&DVBase::asString), 3);
    EXPECT_EQ(slotOf(&DVBase::asDebugInfo), 4);
}

/// Counts what the two destructors in a table do.
class Watched : public DVBase {
public:
    ~Watched() override { ++destroyed; }
    static void operator delete(void*) noexcept { ++released; }

    inline static int destroyed = 0;
    inline static int released = 0;
};

TEST(VirtualTable, OfTheVirtualRootBeginsWithTheDestructorAndTheReleasingDestructor) {
    using Destructor = void (*)(void*);
    alignas(Watched) unsigned char storage[sizeof(Watched)];
    for (int slot = 0; slot < 2; ++slot) {
        auto* const object = ::new (static_cast<void*>(storage)) Watched;
        Destructor destructor = nullptr;
        std::memcpy(&destructor, tableOf(object) + slot, sizeof destructor);
        Watched::destroyed = 0;
        Watched::released = 0;
        destructor(object);
        EXPECT_EQ(Watched::destroyed, 1);
        EXPECT_EQ(Watched::released, slot);
    }
}

TEST(VirtualTable, OfAPredicateAppendsItsTest) {
    DStringTest const object([](int) { return 0; });
    expectTable(&object, {"_ZN11DStringTestD1Ev", "_ZN11DStringTestD0Ev", "_ZNK6DVBase8asStringEv",
                          "_ZNK6DVBase11asDebugInfoEv", "_ZNK11DStringTest4testEi"});
    EXPECT_EQ(slotOf(&DStringTest::test), 5);
}

/// The table of an exception class; destructors of the subclasses have no symbol of their own.
std::vector<std::string> exceptionTable(std::string const& nameSymbol, bool root) {
    return {root ? "_ZN10DExceptionD1Ev" : "",
            root ? "_ZN10DExceptionD0Ev" : "",
            "_ZNK10DException13isRecoverableEv",
            "_ZN10DException11addLocationERK18DExceptionLocation",
            nameSymbol,
            "_ZN10DException16logExceptionDataEv",
            "_ZN10DException9terminateEv"};
}

TEST(VirtualTable, OfAnExceptionHasItsSevenSlotsInOrder) {
    DException const object("text");
    expectTable(&object, exceptionTable("_ZNK10DException4nameEv", true));
    EXPECT_EQ(slotOf(&DException::isRecoverable), 3);
    EXPECT_EQ(slotOf(&DException::addLocation), 4);
    EXPECT_EQ(slotOf(&DException::name), 5);
    EXPECT_EQ(slotOf(&DException::logExceptionData), 6);
    EXPECT_EQ(slotOf(&DException::terminate), 7);
}

TEST(VirtualTable, OfTheExceptionSubclassesDiffersInTheNameOnly) {
    expectTable(std::vector<DAccessError>(1, DAccessError("")).data(),
                exceptionTable("_ZNK12DAccessError4nameEv", false));
    expectTable(std::vector<DAssertionFailure>(1, DAssertionFailure("")).data(),
                exceptionTable("_ZNK17DAssertionFailure4nameEv", false));
    expectTable(std::vector<DDeviceError>(1, DDeviceError("")).data(),
                exceptionTable("_ZNK12DDeviceError4nameEv", false));
    expectTable(std::vector<DInvalidParameter>(1, DInvalidParameter("")).data(),
                exceptionTable("_ZNK17DInvalidParameter4nameEv", false));
    expectTable(std::vector<DInvalidRequest>(1, DInvalidRequest("")).data(),
                exceptionTable("_ZNK15DInvalidRequest4nameEv", false));
    expectTable(std::vector<DResourceExhausted>(1, DResourceExhausted("")).data(),
                exceptionTable("_ZNK18DResourceExhausted4nameEv", false));
    expectTable(std::vector<DOutOfMemory>(1, DOutOfMemory("")).data(),
                exceptionTable("_ZNK12DOutOfMemory4nameEv", false));
    expectTable(std::vector<DOutOfSystemResource>(1, DOutOfSystemResource("")).data(),
                exceptionTable("_ZNK20DOutOfSystemResource4nameEv", false));
    expectTable(std::vector<DOutOfWindowResource>(1, DOutOfWindowResource("")).data(),
                exceptionTable("_ZNK20DOutOfWindowResource4nameEv", false));
}

TEST(VirtualTable, OfATraceFunctionHasItsThreeSlotsInOrderAndNoDestructor) {
    class Plain final : public DException::TraceFn {};
    Plain const object;
    expectTable(&object, {"_ZN10DException7TraceFn5writeEPKc", "_ZN10DException7TraceFn7logDataERS_",
                          "_ZN10DException7TraceFn15exceptionLoggedEv"});
    EXPECT_EQ(slotOf(&DException::TraceFn::write), 1);
    EXPECT_EQ(slotOf(&DException::TraceFn::logData), 2);
    EXPECT_EQ(slotOf(&DException::TraceFn::exceptionLogged), 3);
}

TEST(VirtualTable, OfTheOutOfMemorySetUpOverridesTheWritingOnly) {
    DException::TraceFn* const before = DExceptStaticPtr::userFunction;
    static DKORVA_Init const object;
    DExceptStaticPtr::userFunction = before;
    expectTable(&object, {"_ZN11DKORVA_Init5writeEPKc", "_ZN10DException7TraceFn7logDataERS_",
                          "_ZN10DException7TraceFn15exceptionLoggedEv"});
}

} // namespace
