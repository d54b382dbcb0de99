// What the tests of this room share: a trace function that records, the facts of a thrown exception, standard
// error of a child process, and catalogs that are compiled on the spot.
#ifndef KELCL_TESTS_EXCEPT_SUPPORT_H
#define KELCL_TESTS_EXCEPT_SUPPORT_H

#include <kelcl/dbase.h>
#include <kelcl/dexception.h>

#include <gtest/gtest.h>

#include <cstdlib>
#include <exception>
#include <fstream>
#include <functional>
#include <string>
#include <sys/wait.h>
#include <tuple>
#include <typeindex>
#include <unistd.h>
#include <vector>

/// Null shown as a text of its own, so that it cannot be taken for an empty one.
inline std::string shown(char const* text) { return text != nullptr ? text : "(null)"; }

/// The current trace function while it lives: keeps lines instead of writing them.
class RecordingTrace : public DException::TraceFn {
public:
    RecordingTrace() : before_(DExceptStaticPtr::userFunction) { DException::setTraceFunction(*this); }
    virtual ~RecordingTrace() { DExceptStaticPtr::userFunction = before_; }
    RecordingTrace(RecordingTrace const&) = delete;
    RecordingTrace& operator=(RecordingTrace const&) = delete;

    void write(char const* line) override { lines.emplace_back(line); }
    TraceFn& logData(DException& exception) override {
        ++reports;
        exceptionsInFlight = std::uncaught_exceptions();
        return TraceFn::logData(exception);
    }
    void exceptionLogged() override { ++completed; }

    std::vector<std::string> lines;
    int reports = 0;
    int completed = 0;
    int exceptionsInFlight = 0;

private:
    DException::TraceFn* before_;
};

/// What a handler can see of an exception.
struct Facts {
    explicit Facts(DException const& exception)
        : type(typeid(exception)), name(exception.name()), errorId(exception.errorId()),
          recoverable(exception.isRecoverable()), group(shown(exception.errorCodeGroup())) {
        for (unsigned long i = 0; i < exception.textCount(); ++i)
            texts.push_back(shown(exception.text(i)));
        for (unsigned long i = 0; i < exception.locationCount(); ++i) {
            DExceptionLocation const& location = *exception.locationAtIndex(i);
            locations.emplace_back(shown(location.fileName()), location.functionName(),
                                   location.lineNumber());
        }
    }

    std::type_index type;
    std::string name;
    unsigned long errorId;
    bool recoverable;
    std::string group;
    std::vector<std::string> texts;
    std::vector<std::tuple<std::string, std::string, unsigned long>> locations;
};

/// The facts of what `action` throws, which must have been logged exactly once, before it was thrown.
template <class Action>
Facts thrownBy(Action const& action) {
    RecordingTrace trace;
    try {
        action();
    } catch (DException const& exception) {
        EXPECT_EQ(trace.reports, 1);
        EXPECT_EQ(trace.completed, 1);
        EXPECT_EQ(trace.exceptionsInFlight, 0);
        return Facts(exception);
    }
    ADD_FAILURE() << "nothing was thrown";
    return Facts(DException(nullptr));
}

/// The class in `facts` is exactly `Exception`, and says so.
template <class Exception>
void expectClass(Facts const& facts, char const* name) {
    EXPECT_EQ(facts.type, std::type_index(typeid(Exception))) << facts.name;
    EXPECT_EQ(facts.name, name);
}

/// What `action` writes to standard error, run in a child process.
inline std::string standardErrorOf(std::function<void()> const& action) {
    int ends[2];
    if (pipe(ends) != 0) return "(no pipe)";
    pid_t const child = fork();
    if (child == 0) {
        dup2(ends[1], STDERR_FILENO);
        close(ends[0]);
        close(ends[1]);
        action();
        _exit(0);
    }
    close(ends[1]);
    std::string output;
    char block[4096];
    for (ssize_t n; (n = read(ends[0], block, sizeof block)) > 0;)
        output.append(block, static_cast<std::size_t>(n));
    close(ends[0]);
    int status = -1;
    waitpid(child, &status, 0);
    EXPECT_EQ(status, 0) << "the child process failed";
    return output;
}

/// The library's catalog for the life of this object, and then the default one again.
class MessageFile {
public:
    explicit MessageFile(std::string const& file) { DBase::setMessageFile(file.c_str()); }
    ~MessageFile() { DBase::setMessageFile("kelcl.cat"); }
    MessageFile(MessageFile const&) = delete;
    MessageFile& operator=(MessageFile const&) = delete;
};

inline std::string const englishCatalog = KELCL_TEST_CATALOG_DIR "/kelcl.cat";
inline std::string const noCatalog = KELCL_TEST_WORK_DIR "/there-is-no-such.cat";
inline char const* const fallbackText = "Unable to load text from message file.";

/// Compiles a catalog and gives its path, which has a slash, so that NLSPATH is not asked.
inline std::string compiledCatalog(std::string const& name, std::string const& source) {
    std::string const path = KELCL_TEST_WORK_DIR "/" + name;
    std::remove((path + ".cat").c_str());
    std::ofstream(path + ".msg", std::ios::binary) << source;
    std::string const command = "LC_ALL=C.UTF-8 gencat '" + path + ".cat' '" + path + ".msg'";
    EXPECT_EQ(std::system(command.c_str()), 0) << command;
    return path + ".cat";
}

#endif
