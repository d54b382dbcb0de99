// A host program for the trace tests: does what its arguments say, one after the other. What comes out is
// judged by the tests beside it.
#include <kelcl/dexception.h>
#include <kelcl/dtrace.h>

#include <cerrno>
#include <clocale>
#include <cstdio>
#include <cstdlib>
#include <functional>
#include <map>
#include <memory>
#include <string>
#include <vector>

namespace {

std::vector<std::unique_ptr<DTrace>> open;

/// What is in front of the first ':' of `text`, which is taken off.
std::string takeFront(char const*& text) {
    std::string front;
    while (*text != '\0' && *text != ':')
        front += *text++;
    if (*text == ':') ++text;
    return front;
}

void enter(char const* argument) {
    long const line = std::atol(takeFront(argument).c_str());
    try {
        open.push_back(std::make_unique<DTrace>(argument, line));
    } catch (DException const&) {
        std::puts("the entry line threw");
    }
}

void setVariable(char const* argument) {
    std::string const name = takeFront(argument);
    setenv(name.c_str(), argument, 1);
}

void showState() {
    std::printf("state %d to %d stack %u sequence %lu indentation %u\n", DTrace::iClState,
                DTrace::iClTraceLocation, static_cast<unsigned int>(DTrace::fCheckStack), DTrace::ulSequence,
                static_cast<unsigned int>(DTrace::uClIndent[1]));
}

void showErrno() {
    errno = 4711;
    DTrace::write("between");
    std::printf("errno %d\n", errno);
}

std::map<std::string, std::function<void(char const*)>> const commands = {
    {"enter", enter}, // LINE:NAME
    {"enter-null", [](char const*) { open.push_back(std::make_unique<DTrace>(nullptr, 1)); }},
    {"leave", [](char const*) { open.pop_back(); }},
    {"write", [](char const* text) { DTrace::write(text); }},
    {"write-null", [](char const*) { DTrace::write(static_cast<char const*>(nullptr)); }},
    {"write-string", [](char const* text) { DTrace::write(DString(text)); }},
    {"write-with-nul", [](char const*) { DTrace::write(DString("ab\0cd", 5)); }},
    {"write-long", [](char const* length) { DTrace::write(std::string(std::stoul(length), 'x')); }},
    {"format",
     [](char const* argument) {
         std::string const marker = takeFront(argument);
         DTrace::writeFormattedString(argument, marker.c_str());
     }},
    {"format-null-marker", [](char const* text) { DTrace::writeFormattedString(text, nullptr); }},
    {"send", [](char const* text) { DTrace::writeString(text); }},
    {"send-null", [](char const*) { DTrace::writeString(nullptr); }},
    {"initialize", [](char const*) { DTraceSetup::initialize(); }},
    {"set", setVariable}, // NAME:VALUE
    {"unset", [](char const* name) { unsetenv(name); }},
    {"destination", [](char const* code) { DTrace::iClTraceLocation = std::atoi(code); }},
    {"state", [](char const* state) { DTrace::iClState = std::atoi(state); }},
    {"sequence", [](char const* number) { DTrace::ulSequence = std::stoul(number); }},
    {"indentation",
     [](char const* blanks) { DTrace::uClIndent[1] = static_cast<std::uint32_t>(std::stoul(blanks)); }},
    {"print", [](char const* text) { std::printf("%s", text); }},
    {"show-state", [](char const*) { showState(); }},
    {"show-errno", [](char const*) { showErrno(); }},
    {"show-thread",
     [](char const*) { std::printf("thread %lu stack %lu\n", DTrace::threadId(), DTrace::remainingStack()); }},
    {"show-catalog", [](char const*) { std::printf("%s\n", DBase::messageFile()); }},
    {"show-switch", [](char const*) { std::printf("%d\n", DString::fgI18NState); }},
    {"show-process", [](char const*) { std::printf("process %lu\n", DTrace::ulClProcessId); }},
};

} // namespace

int main(int count, char** arguments) {
    if (std::setlocale(LC_ALL, "") == nullptr) return EXIT_FAILURE;
    for (int index = 1; index < count; ++index) {
        char const* argument = arguments[index];
        auto const command = commands.find(takeFront(argument));
        if (command == commands.end()) return EXIT_FAILURE;
        command->second(argument);
    }
    while (!open.empty())
        open.pop_back();
    return EXIT_SUCCESS;
}
