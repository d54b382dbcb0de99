/// @file
/// Texts from an X/Open message catalog with numbered-variable substitution. The library's own catalog is
/// looked up through DBase::messageText() in dbase.h.
#ifndef KELCL_DMESSAGETEXT_H
#define KELCL_DMESSAGETEXT_H

#include <kelcl/detail/owned_text.h>
#include <kelcl/dexport.h>

/// One message of a catalog, its markers `%1` to `%9` replaced by the caller's texts.
///
/// Where the catalog or the message is missing there is still a text to show, which setDefaultText() replaces
/// by a better one. Each object opens and closes its catalog and owns its text; nothing is kept between them.
///
/// @code
/// DMessageText text(17, "editor.cat", "letter.txt");
/// text.setDefaultText("The file cannot be opened.");
/// std::cout << text.isLoaded() << ' ' << text << '\n'; // 0 The file cannot be opened.
/// @endcode
///
/// Nothing here throws; if out of memory, a text is null or stays what it was. The process's new-handler is
/// not called while a text is being stored.
class KELCL_EXPORT DMessageText {
public:
    /// Fetches message `messageId` of set 1 of `catalogFile` and replaces its markers by `t1` to `t9`.
    ///
    /// The catalog is a path, or a name that is looked for along NLSPATH. Only the leading non-null texts
    /// count: what follows a null is ignored, and markers without a text stay. One carriage return and line
    /// feed at the end of the message are dropped. A null or missing catalog and a missing message give the
    /// text "Unable to load text from message file.".
    explicit DMessageText(unsigned long messageId, char const* catalogFile, char const* t1 = nullptr,
                          char const* t2 = nullptr, char const* t3 = nullptr, char const* t4 = nullptr,
                          char const* t5 = nullptr, char const* t6 = nullptr, char const* t7 = nullptr,
                          char const* t8 = nullptr, char const* t9 = nullptr) noexcept;

    /// Copies the text; null, or no memory, gives null.
    DMessageText(DMessageText const& source) noexcept;

    /// Copies the text; null, or no memory, gives null. Assigning an object to itself changes nothing.
    DMessageText& operator=(DMessageText const& source) noexcept;

    /// Frees the text.
    ~DMessageText();

    /// The text, owned by this object; null only if memory ran out.
    char const* text() const noexcept KELCL_LIFETIME_BOUND { return text_.get(); }

    /// The same as text().
    operator char const*() const noexcept KELCL_LIFETIME_BOUND { return text_.get(); }

    /// Whether the text came from the catalog.
    bool isLoaded() const noexcept { return loaded_; }

    /// Replaces the fallback text by a copy of `defaultText`, in which no marker is replaced, and returns
    /// `*this`.
    ///
    /// A text that came from the catalog is kept. Null, or a copy that cannot be allocated, changes nothing.
    DMessageText& setDefaultText(char const* defaultText) noexcept;

    /// Makes a copy of `pattern` with its markers replaced: `%1` becomes `values[0]`, up to `%9` and `count`.
    ///
    /// The caller frees it with `delete[]`; null if out of memory. A null pattern counts as empty. Values are
    /// inserted as they are; markers inside them are not replaced. A marker above `count` or whose value is
    /// null, `%0`, and any other `%` stay. `%%` stays as it is, and the character after it is no marker
    /// digit.
    /// @code
    /// char const* const values[] = {"letter.txt", "12"};
    /// char* const text = DMessageText::replaceVars("line %2 of %1, 50 %", values, 2);
    /// std::cout << text << '\n'; // line 12 of letter.txt, 50 %
    /// delete[] text;
    /// @endcode
    [[nodiscard]] static char* replaceVars(char const* pattern, char const* const* values,
                                           unsigned long count) noexcept;

private:
    kelcl::OwnedText text_;
    bool loaded_ = false;
};

#endif
