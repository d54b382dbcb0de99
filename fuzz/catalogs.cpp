// Message catalogs that nobody made with gencat: random bytes, and files with everything in its place but its
// contents. Whatever the C library finds in them, the message is that text with its markers replaced, or the
// fallback text.
#include "fuzz/target.h"

#include <kelcl/dmessagetext.h>

#include <algorithm>
#include <climits>
#include <cstring>
#include <nl_types.h>
#include <sys/mman.h>
#include <unistd.h>
#include <vector>

namespace {

using std::string;

/// A file of its own for the bytes of a catalog, without a place on any disk.
class CatalogFile {
public:
    CatalogFile() : file_(memfd_create("catalog", 0)), name_("/proc/self/fd/" + std::to_string(file_)) {}
    void write(string const& bytes) const {
        if (ftruncate(file_, 0) != 0 ||
            pwrite(file_, bytes.data(), bytes.size(), 0) != static_cast<ssize_t>(bytes.size()))
            fuzz::fail("the catalog cannot be written");
    }
    char const* name() const { return name_.c_str(); }

private:
    int file_;
    string name_;
};

using Word = std::uint32_t;

void put(string& bytes, Word word) {
    char raw[sizeof word];
    std::memcpy(raw, &word, sizeof word);
    bytes.append(raw, sizeof raw);
}

constexpr Word magic = 0x960408DE;

Word swapped(Word word) { return __builtin_bswap32(word); }

/// The C library's form: the magic number, breadth and depth of a hash table; the table, of set (counted from
/// 2), number and offset, in this machine's byte order and again in the other; the texts. Now and then a word
/// is not what it should be.
string wellFormed(ByteChoices& choices, Word number, string const& text) {
    Word const breadth = 1 + choices.below(4);
    Word const depth = 1 + choices.below(3);
    auto const odd = [&](Word word) { return choices.oneIn(12) ? choices.any() : word; };
    string table;
    string other;
    for (Word i = 0; i < breadth * depth; ++i) {
        bool const isMessage = i == 2 * number % breadth;
        for (Word const word : {odd(isMessage ? 2 : 0), odd(isMessage ? number : choices.below(3)),
                                odd(isMessage ? 0 : choices.below(20))}) {
            put(table, word);
            put(other, swapped(word));
        }
    }
    string bytes;
    put(bytes, magic);
    put(bytes, odd(breadth));
    put(bytes, odd(depth));
    bytes += table + other + text;
    if (!choices.oneIn(12)) bytes += '\0';
    return bytes;
}

/// Whether the C library can be asked: it ends the process, in catopen or catgets, for a table that is empty
/// or reaches beyond the file.
bool hasTableWithinFile(string const& bytes) {
    Word head[3];
    if (bytes.size() < sizeof head) return true; // refused
    std::memcpy(head, bytes.data(), sizeof head);
    if (head[0] == swapped(magic)) std::for_each(head, head + 3, [](Word& word) { word = swapped(word); });
    if (head[0] != magic) return true; // refused
    std::uint64_t const room = bytes.size() - sizeof head;
    return head[1] != 0 && head[2] != 0 && head[1] < room && head[2] < room &&
           std::uint64_t{head[1]} * head[2] * 6 * sizeof(Word) < room;
}

/// What the C library has for the message.
bool find(char const* file, unsigned long number, string& message) {
    nl_catd const catalog = catopen(file, 0);
    if (reinterpret_cast<long>(catalog) == -1) return false;
    char const* const found =
        number > INT_MAX ? nullptr : catgets(catalog, 1, static_cast<int>(number), nullptr);
    if (found != nullptr) message = found;
    catclose(catalog);
    return found != nullptr;
}

void checkMessage(char const* file, unsigned long number, string const& value) {
    string expected = "Unable to load text from message file.";
    string message;
    bool const isThere = find(file, number, message);
    if (isThere) {
        // What replaces markers is checked by the target for messages; here it needs no second model.
        char const* const values[] = {value.c_str()};
        char* const replaced = DMessageText::replaceVars(message.c_str(), values, 1);
        expected = replaced;
        delete[] replaced;
        if (expected.size() >= 2 && expected.substr(expected.size() - 2) == "\r\n")
            expected.resize(expected.size() - 2);
    }
    DMessageText const text(number, file, value.c_str());
    fuzz::same("isLoaded", text.isLoaded(), isThere, number, message);
    fuzz::same("the message", string(text.text()), expected, number, message, value);
}

} // namespace

int LLVMFuzzerInitialize(int*, char***) { return 0; }

int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size) {
    static CatalogFile const file;
    ByteChoices choices(data, size);
    Word const number = 1 + choices.below(6);
    string const value = choices.characters(8);
    bool const isRaw = choices.oneIn(3);
    string const bytes = isRaw ? choices.text(4000) : wellFormed(choices, number, choices.text(60));
    if (!hasTableWithinFile(bytes)) return 0;
    file.write(bytes);
    // One message only: opening the catalog is what takes the time.
    checkMessage(file.name(), choices.oneIn(4) ? choices.any() : number, value);
    return 0;
}
