/// @file
/// The two roots of the class tree: DBase without, DVBase with virtual functions. DBase also names the
/// library's message catalog; dmessagetext.h tells what a catalog text is.
#ifndef KELCL_DBASE_H
#define KELCL_DBASE_H

#include <kelcl/dexception.h>
#include <kelcl/dexport.h>
#include <kelcl/dmessagetext.h>

#include <cstdint>
#include <iosfwd>

class DString;

/// Root of the class tree, and the place to ask for the library's version and its messages.
///
/// It has no data and no virtual functions: a derived object that is handed on as a DBase shows itself as
/// one. Include <kelcl/dstring.h> to call what returns a DString.
///
/// @code
/// auto const [number, revision] = DBase::version();
/// std::cout << number << '.' << revision << '\n'; // 310.1
/// std::cout << DBase().asString() << '\n'; // DBase object
/// std::cout << DBase::messageFile() << '\n'; // kelcl.cat
/// @endcode
class KELCL_EXPORT DBase {
public:
    /// DException::recoverable, at hand in every class of the tree.
    static constexpr DException::Severity recoverable = DException::recoverable;
    /// DException::unrecoverable, at hand in every class of the tree.
    static constexpr DException::Severity unrecoverable = DException::unrecoverable;

    /// The two numbers of a version, for a structured binding.
    struct Version {
        /// The first number, 310.
        std::uint16_t number;
        /// The second number, 1.
        std::uint16_t revision;
    };

    /// The version of the class tree: 310 and 1.
    static Version version() noexcept;

    /// "DBase object".
    DString asString() const;

    /// "DBase(@", the object's address in hexadecimal and ")".
    DString asDebugInfo() const;

    /// The name of the library's message catalog, owned by the library and valid until setMessageFile().
    ///
    /// First asked for, it is the value of the environment variable "KORVA MSGFILE" (with a blank), or
    /// "kelcl.cat" without that variable and in programs that run with more rights than their caller. Null
    /// only if out of memory.
    static char const* messageFile() noexcept;

    /// Makes a copy of `fileName` the name of the catalog from now on.
    ///
    /// Null, or a copy that cannot be allocated, changes nothing. Meant for start-up, before other threads
    /// look messages up.
    static void setMessageFile(char const* fileName) noexcept;

    /// Message `messageId` of the library's catalog with `t1` to `t9` in place of its markers; see
    /// DMessageText.
    ///
    /// The catalog is opened, read and closed for each call.
    static DMessageText messageText(unsigned long messageId, char const* t1 = nullptr,
                                    char const* t2 = nullptr, char const* t3 = nullptr,
                                    char const* t4 = nullptr, char const* t5 = nullptr,
                                    char const* t6 = nullptr, char const* t7 = nullptr,
                                    char const* t8 = nullptr, char const* t9 = nullptr) noexcept;

private:
    static char* msgFile;
};

/// Root of the classes with virtual functions: passed on as a DVBase, an object still shows what it is.
///
/// Include <kelcl/dstring.h> to derive from it.
///
/// @code
/// struct Account final : DVBase {
///     DString asString() const override { return "account 12"; }
/// };
/// Account const account;
/// DVBase const& object = account;
/// std::cout << object << '\n'; // account 12
/// @endcode
class KELCL_EXPORT DVBase : public DBase {
public:
    /// Makes an object, which has no data.
    DVBase() = default;
    /// Copies nothing: there is no data.
    DVBase(DVBase const&) = default;
    /// Copies nothing: there is no data.
    DVBase& operator=(DVBase const&) = default;
    /// Virtual, so that an object may be deleted through a pointer to this class.
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
