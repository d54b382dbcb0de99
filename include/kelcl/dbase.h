// DBase and DVBase, the roots of the class tree, and the message catalog of the library.
#ifndef KELCL_DBASE_H
#define KELCL_DBASE_H

#include <kelcl/dexception.h>
#include <kelcl/dexport.h>
#include <kelcl/dmessagetext.h>

#include <cstdint>
#include <iosfwd>

class DString; // include <kelcl/dstring.h> to use the texts

/// The root of classes without virtual functions.
class KELCL_EXPORT DBase {
public:
    /// Severities of exceptions under their short names.
    static constexpr DException::Severity unrecoverable = DException::unrecoverable;
    static constexpr DException::Severity recoverable = DException::recoverable;

    struct Version {
        std::uint16_t version;
        std::uint16_t revision;
    };
    /// 310 and 1: `auto [version, revision] = DBase::version();`
    static Version version();

    DString asString() const;    ///< "DBase object"
    DString asDebugInfo() const; ///< "DBase(@ADDRESS)" with the address in hexadecimal.

    /// The name of the catalog that the library's texts come from: what setMessageFile set, else the value of
    /// the environment variable "KORVA MSGFILE" (with a blank) at the first call, else "kelcl.cat". Owned by
    /// the library.
    static char const* messageFile();
    /// Keeps a copy of `fileName` for all later texts. Null is ignored.
    static void setMessageFile(char const* fileName);
    /// A text of that catalog; the texts that replace %1 to %9 end with the first null.
    static DMessageText messageText(unsigned long messageId, char const* t1 = nullptr,
                                    char const* t2 = nullptr, char const* t3 = nullptr,
                                    char const* t4 = nullptr, char const* t5 = nullptr,
                                    char const* t6 = nullptr, char const* t7 = nullptr,
                                    char const* t8 = nullptr, char const* t9 = nullptr);

private:
    static char* msgFile;
};

/// The root of classes with virtual functions.
class KELCL_EXPORT DVBase : public DBase {
public:
    virtual ~DVBase();
    virtual DString asString() const;    ///< "DVBase object"
    virtual DString asDebugInfo() const; ///< "DVBase(@ADDRESS)" with the address in hexadecimal.
};

/// Writes "DBase object", whatever the object's class is.
KELCL_EXPORT std::ostream& operator<<(std::ostream& out, DBase const& object);
/// Writes what the virtual `asString` says.
KELCL_EXPORT std::ostream& operator<<(std::ostream& out, DVBase const& object);

#endif
