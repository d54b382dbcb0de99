// DMessageText, a text of a message catalog with its variables filled in. Which catalog the library's own
// texts come from is told in dbase.h.
#ifndef KELCL_DMESSAGETEXT_H
#define KELCL_DMESSAGETEXT_H

#include <kelcl/dexport.h>

/// Message `messageId` of set 1 of an X/Open message catalog, with %1 to %9 replaced by the given texts.
///
/// The catalog is found by `catopen` through NLSPATH. When it, or the message, cannot be found, the text is
/// "Unable to load text from message file.". Nothing here throws.
///
/// Replacing: %n stands for the n-th text, as it is; only one digit is read. A marker without a text, %0, %%
/// and any other % stay as they are.
class KELCL_EXPORT DMessageText {
public:
    /// The texts end with the first null. A null `catalogFile` finds nothing.
    DMessageText(unsigned long messageId, char const* catalogFile, char const* t1 = nullptr,
                 char const* t2 = nullptr, char const* t3 = nullptr, char const* t4 = nullptr,
                 char const* t5 = nullptr, char const* t6 = nullptr, char const* t7 = nullptr,
                 char const* t8 = nullptr, char const* t9 = nullptr);
    DMessageText(DMessageText const& other);
    DMessageText& operator=(DMessageText const& other);
    ~DMessageText();

    /// Owned by this object. Null only when there was no memory for the text.
    char const* text() const;
    operator char const*() const;
    /// Whether the text came from the catalog.
    bool isLoaded() const;

    /// Puts a copy of `defaultText` in place of the text that says that nothing was found. Null, and a text
    /// that came from the catalog, change nothing.
    DMessageText& setDefaultText(char const* defaultText);

    /// A copy of `pattern` with the first `count` of `values` put in, made with array new; the caller deletes
    /// it. Null when there is no memory.
    static char* replaceVars(char const* pattern, char** values, unsigned long count);

private:
    char* text_;
    bool loaded_;
};

#endif
