// DDBCSBuffer: upper and lower case, by wide characters with the switch on, and by bytes with it off.
#include "buffers/host_classes.h"
#include "buffers/mapping.h"
#include "buffers/virtual_answers.h"
#include "buffers/wide_path.h"
#include "bytes/byte_edit.h"
#include "bytes/byte_search.h"
#include "characters/answer_cache.h"
#include "characters/stepping.h"

#include <kelcl/ddbcsbuffer.h>

#include <algorithm>
#include <cstddef>
#include <cwctype>
#include <string_view>

namespace {

using kelcl::shared;

DBuffer* mapWide(DBuffer& buffer, std::wint_t (*map)(std::wint_t)) {
    if (buffer.length == 0) return shared(buffer);
    auto const ask = [map](int c) { return static_cast<wchar_t>(map(static_cast<std::wint_t>(c))); };
    auto const same = [](int c) { return static_cast<wchar_t>(c); };
    return kelcl::withAnswers<wchar_t>(buffer.length, ask, same,
                                       [&buffer](auto mapped) { return kelcl::mapped(buffer, mapped); });
}

/// Where the letters of one case are among the bytes of a text, and how they get the other case.
struct CaseChange {
    std::string_view letters;
    int distance; ///< From a letter to the same in the other case.
    std::size_t (*find)(std::string_view);
};

/// The offset of the first character that is one of the letters.
std::size_t firstLetter(std::string_view text, CaseChange const& change, kelcl::BufferSteps& steps) {
    kelcl::RisingStarts starts(text.data(), 0, steps);
    auto const find = [text, &change](std::size_t from) {
        std::size_t const found = change.find(text.substr(std::min(from, text.size())));
        return found == kelcl::notFound ? found : from + found;
    };
    return kelcl::firstAtStart(starts, find(0), find);
}

/// Changes the letters that the virtual search of a class of a host's finds, where it calls them characters
/// of one byte.
DBuffer* mapFound(DBuffer& buffer, CaseChange const& change) {
    return kelcl::editFound(buffer, change.letters, [&](char& letter, unsigned int position) {
        if (buffer.charType(position) == 0) letter = static_cast<char>(letter + change.distance);
    });
}

/// Changes the single-byte letters.
DBuffer* mapBytes(DBuffer& buffer, CaseChange const& change) {
    if (!kelcl::isLibraryClass(buffer)) return mapFound(buffer, change);
    kelcl::BufferSteps steps;
    std::size_t const first = firstLetter({buffer.contents(), buffer.length}, change, steps);
    if (first == kelcl::notFound) return shared(buffer);
    DBuffer* const result =
        buffer.hasOneOwner() ? shared(buffer) : kelcl::copyLike(buffer, buffer.contents(), buffer.length);
    char* const text = result->contents();
    for (std::size_t at = first; at < result->length;) {
        unsigned int const bytes = steps.length(text + at);
        if (bytes == 1 && text[at] >= change.letters.front() && text[at] <= change.letters.back())
            text[at] = static_cast<char>(text[at] + change.distance);
        at += bytes;
    }
    return result;
}

/// Whether letters are never part of longer characters, so that their bytes tell.
bool hasLettersByTheirBytes(DBuffer const& buffer) {
    return kelcl::isLibraryClass(buffer) && kelcl::BufferSteps().standsAlone('z');
}

} // namespace

DBuffer* DDBCSBuffer::upperCase() {
    if (kelcl::isWideMode()) return mapWide(*this, std::towupper);
    if (hasLettersByTheirBytes(*this)) return DBuffer::upperCase();
    return mapBytes(*this, {"abcdefghijklmnopqrstuvwxyz", -32, kelcl::findLowerCase});
}

DBuffer* DDBCSBuffer::lowerCase() {
    if (kelcl::isWideMode()) return mapWide(*this, std::towlower);
    if (hasLettersByTheirBytes(*this)) return DBuffer::lowerCase();
    return mapBytes(*this, {"ABCDEFGHIJKLMNOPQRSTUVWXYZ", 32, kelcl::findUpperCase});
}
