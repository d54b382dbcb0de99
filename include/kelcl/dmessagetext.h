// Texts from an X/Open message catalog with numbered-variable substitution. The library's own catalog is
// looked up through DBase::messageText() in dbase.h.
#ifndef KELCL_DMESSAGETEXT_H
#define KELCL_DMESSAGETEXT_H

#include <kelcl/dexport.h>

#include <memory>

/// One message of a catalog, its markers `%1` to `%9` replaced by the caller's texts:
///
/// @code
/// DMessageText text(17, "editor.cat", "letter.txt");
/// text.setDefaultText("The file cannot be opened.");
/// std::cout << text.isLoaded() << ' ' << text << '\n'; // 0 The file cannot be opened.
/// @endcode
///
/// Nothing here throws. The process's new-handler is not called while a text is being stored.
class KELCL_EXPORT DMessageText {
public:
    /// Fetches message \p messageId of set 1 of \p catalogFile (a path, or a name that is looked for along
    /// NLSPATH) and replaces its markers by the leading non-null texts among \p t1 to \p t9; what follows a
    /// null is ignored. One carriage return and line feed at the end are dropped. A null or missing catalog
    /// and a missing message give the text "Unable to load text from message file.".
    explicit DMessageText(unsigned long messageId, char const* catalogFile, char const* t1 = nullptr,
                          char const* t2 = nullptr, char const* t3 = nullptr, char const* t4 = nullptr,
                          char const* t5 = nullptr, char const* t6 = nullptr, char const* t7 = nullptr,
                          char const* t8 = nullptr, char const* t9 = nullptr) noexcept;

    /// Copies the text; null (or no memory) gives null.
    DMessageText(DMessageText const& source) noexcept;

    /// Copies the text; null (or no memory) gives null. Assigning an object to itself changes nothing.
    DMessageText& operator=(DMessageText const& source) noexcept;

    ~DMessageText();

    /// The text, owned by this object; null only after memory ran out.
    char const* text() const noexcept { return text_.get(); }

    /// The same as text().
    operator char const*() const noexcept { return text_.get(); }

    /// True when the text came from the catalog.
    bool isLoaded() const noexcept { return loaded_; }

    /// Replaces the fallback text by a copy of \p defaultText, in which no marker is replaced. A text that
    /// came from the catalog, a null \p defaultText and a copy that cannot be allocated change nothing.
    DMessageText& setDefaultText(char const* defaultText) noexcept;

    /// A new array, which the caller frees with `delete[]`: \p pattern (null counts as empty) with its
    /// markers replaced. The marker `%n` (n one digit, 1 to \p count) becomes `values[n-1]`, inserted as it
    /// is; a `%n` beyond \p count or whose value is null, `%0`, and any other `%` stay. `%%` stays as it is,
    /// and the character behind it is no marker digit. Null when memory is out.
    static char* replaceVars(char const* pattern, char const* const* values, unsigned long count) noexcept;

private:
    std::unique_ptr<char[]> text_;
    bool loaded_ = false;
};

#endif
