// What dates and times say where TZ is not set but was set before. The machine's zone is read from a fixed
// file, so each test runs in a child process whose file system has another zone there.
#include <kelcl/ddate.h>
#include <kelcl/dtime.h>

#include <cstdlib>
#include <ctime>
#include <string>

#include <fcntl.h>
#include <sched.h>
#include <sys/mount.h>
#include <sys/wait.h>
#include <unistd.h>

#include <gtest/gtest.h>

namespace {

constexpr char const* machineZone = "/etc/localtime";

bool writeFile(char const* name, std::string const& text) {
    int const file = open(name, O_WRONLY);
    bool const written = write(file, text.data(), text.size()) == static_cast<ssize_t>(text.size());
    close(file);
    return written;
}

/// Lets the process see the zone of the given name as the machine's, in a view of the file system of its own.
bool takeMachineZone(std::string const& zone) {
    uid_t const user = getuid();
    gid_t const group = getgid();
    if (unshare(user == 0 ? CLONE_NEWNS : CLONE_NEWUSER | CLONE_NEWNS) != 0) return false;
    if (user != 0 && (!writeFile("/proc/self/setgroups", "deny") ||
                      !writeFile("/proc/self/uid_map", "0 " + std::to_string(user) + " 1") ||
                      !writeFile("/proc/self/gid_map", "0 " + std::to_string(group) + " 1")))
        return false;
    return mount("none", "/", nullptr, MS_REC | MS_PRIVATE, nullptr) == 0 &&
           mount(("/usr/share/zoneinfo/" + zone).c_str(), machineZone, nullptr, MS_BIND, nullptr) == 0;
}

/// What `text` gives in a child process on a machine in the given zone.
template <class Text>
std::string onMachineIn(std::string const& zone, Text text) {
    int ends[2];
    if (pipe(ends) != 0) return "no pipe";
    pid_t const child = fork();
    if (child == 0) {
        std::string const said = takeMachineZone(zone) ? text() : "the zone was not taken";
        _exit(write(ends[1], said.data(), said.size()) < 0 ? 1 : 0);
    }
    close(ends[1]);
    char said[256];
    ssize_t const length = read(ends[0], said, sizeof said);
    close(ends[0]);
    int status = 0;
    waitpid(child, &status, 0);
    return length < 0 ? "nothing" : std::string(said, static_cast<std::size_t>(length));
}

void takeZoneAndLeaveIt(char const* zone) {
    setenv("TZ", zone, 1);
    tzset();
    unsetenv("TZ");
}

std::string asString(DString const& text) { return std::string(std::string_view(text)); }

std::string dateAndTime() {
    return asString(DDate(DDate::July, 4, 2021).asString("%Y-%m-%d %H %Z, ")) +
           asString(DTime(1, 2, 3).asString("%H:%M:%S"));
}

TEST(MachineZone, HoldsAgainOnceTzIsUnset) {
    EXPECT_EQ(onMachineIn("Asia/Tokyo",
                          [] {
                              takeZoneAndLeaveIt("UTC");
                              return dateAndTime();
                          }),
              "2021-07-04 00 JST, 01:02:03");
}

TEST(MachineZone, HoldsAgainEachTimeThatTzIsUnset) {
    EXPECT_EQ(onMachineIn("Asia/Tokyo",
                          [] {
                              std::string const first = dateAndTime();
                              takeZoneAndLeaveIt("UTC");
                              return first == dateAndTime() ? first : "another";
                          }),
              "2021-07-04 00 JST, 01:02:03");
}

TEST(MachineZone, MayBeUtcAfterAnotherOneWasSet) {
    EXPECT_EQ(onMachineIn("UTC",
                          [] {
                              std::string const first = dateAndTime();
                              takeZoneAndLeaveIt("JST-9");
                              return first == dateAndTime() ? first : "another";
                          }),
              "2021-07-04 00 UTC, 01:02:03");
}

TEST(MachineZone, IsThatOfTheMomentToo) {
    EXPECT_EQ(onMachineIn("Asia/Tokyo",
                          [] {
                              takeZoneAndLeaveIt("UTC");
                              long const now = DTime::now().secondsOfDay();
                              long const there = (std::time(nullptr) + 9 * 3600) % 86400;
                              long const passed = (there - now + 86400) % 86400;
                              return std::string(passed <= 5 ? "the time there" : "another time");
                          }),
              "the time there");
}

} // namespace
