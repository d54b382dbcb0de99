// The host program's child process and its pipes.
#include "tests/trace/host_run.h"

#include <cerrno>
#include <cstdlib>
#include <stdexcept>
#include <thread>

#include <sys/wait.h>
#include <unistd.h>

namespace {

class Pipe {
public:
    Pipe() {
        if (::pipe(ends_) != 0) throw std::runtime_error("pipe");
    }
    Pipe(Pipe const&) = delete;
    Pipe& operator=(Pipe const&) = delete;
    ~Pipe() {
        ::close(ends_[0]);
        closeWriting();
    }

    void become(int descriptor) {
        ::dup2(ends_[1], descriptor);
        ::close(ends_[0]);
        closeWriting();
    }

    std::string readAll() {
        std::string all;
        char block[4096];
        while (true) {
            ssize_t const length = ::read(ends_[0], block, sizeof block);
            if (length < 0 && errno == EINTR) continue;
            if (length <= 0) return all;
            all.append(block, static_cast<std::size_t>(length));
        }
    }

    void closeWriting() {
        if (ends_[1] >= 0) ::close(ends_[1]);
        ends_[1] = -1;
    }

private:
    int ends_[2];
};

[[noreturn]] void becomeHost(Variables const& variables, std::vector<std::string> const& commands) {
    for (auto const& [name, value] : variables)
        setenv(name.c_str(), value.c_str(), 1);
    std::vector<char*> arguments{const_cast<char*>(KELCL_TEST_TRACE_HOST)};
    for (std::string const& command : commands)
        arguments.push_back(const_cast<char*>(command.c_str()));
    arguments.push_back(nullptr);
    ::execv(KELCL_TEST_TRACE_HOST, arguments.data());
    ::_exit(127);
}

} // namespace

HostRun runHost(Variables const& variables, std::vector<std::string> const& commands) {
    Pipe output;
    Pipe errors;
    HostRun run;
    run.process = ::fork();
    if (run.process < 0) throw std::runtime_error("fork");
    if (run.process == 0) {
        output.become(STDOUT_FILENO);
        errors.become(STDERR_FILENO);
        becomeHost(variables, commands);
    }
    output.closeWriting();
    errors.closeWriting();
    // Both at once, so that the child never waits for room in one of them.
    std::thread errorReader([&] { run.errors = errors.readAll(); });
    run.output = output.readAll();
    errorReader.join();
    int status = 0;
    while (::waitpid(run.process, &status, 0) < 0 && errno == EINTR) {
    }
    run.succeeded = WIFEXITED(status) && WEXITSTATUS(status) == EXIT_SUCCESS;
    return run;
}
