// The two roots of the class tree: DBase without, DVBase with virtual functions. DBase also names the
// library's message catalog; what a catalog text is, dmessagetext.h tells.
#ifndef KELCL_DBASE_H
#define KELCL_DBASE_H

#include <kelcl/dexception.h>
#include <kelcl/dexport.h>
#include <kelcl/dmessagetext.h>

#include <cstdint>
#include <iosfwd>

class DString;

/// Root of the class tree. Include <kelcl/dstring.h> to call what returns a DString.
class KELCL_EXPORT DBase {
public:
    /// The severities of an exception, at hand in every class of the tree.
    ///@{
    static constexpr DException::Severity recoverable = DException::recoverable;
    static constexpr DException::Severity unrecoverable = DException::unrecoverable;
    ///@}

    /// The two numbers of a version.
    struct Version {
        std::uint16_t number;
        std::uint16_t revision;
    };

    /// The version of the class tree: `auto [number, revision] = DBase::version();` gives 310 and 1.
    static Version version() noexcept;

    /// "DBase object".
    DString asString() const;

    /// "DBase(@", the object's address in hexadecimal and ")".
    DString asDebugInfo() const;

    /// The name of the library's message catalog, owned by the library and valid until setMessageFile().
    /// First asked for, it is the value of the environment variable "KORVA MSGFILE" (with a blank), or
    /// "kelcl.cat" without that variable and in programs that run with more rights than their caller. Null
    /// only if out of memory.
    static char const* messageFile() noexcept;

    /// Makes a copy of \p fileName the name of the catalog from now on. Null, or a copy that cannot be
    /// allocated, changes nothing. Meant for start-up, before other threads look messages up.
    static void setMessageFile(char const* fileName) noexcept;

    /// Message \p messageId of the library's catalog with \p t1 to \p t9 in place of its markers; see
    /// DMessageText.
    static DMessageText messageText(unsigned long messageId, char const* t1 = nullptr,
                                    char const* t2 = nullptr, char const* t3 = nullptr,
                                    char const* t4 = nullptr, char const* t5 = nullptr,
                                    char const* t6 = nullptr, char const* t7 = nullptr,
                                    char const* t8 = nullptr, char const* t9 = nullptr) noexcept;

private:
    static char* msgFile;
};

/// Root of the classes with virtual functions.
class KELCL_EXPORT DVBase : public DBase {
public:
    DVBase() = default;
    DVBase(DVBase const&) = default;
    DVBase& operator=(DVBase const&) = default;
    virtual ~DVBase() = default;

    /// The object as a text: "DVBase object" here.
    virtual DString asString() const;

    /// The object as a text for debugging: "DVBase(@", its address in hexadecimal and ")" here.
    virtual DString asDebugInfo() const;
};

/// Writes "DBase object", whatever class the object really has.
KELCL_EXPORT std::ostream& operator<<(std::ostream& stream, DBase const& object);

/// Writes what the virtual asString() gives.
KELCL_EXPORT std::ostream& operator<<(std::ostream& stream, DVBase const& object);

#endif
