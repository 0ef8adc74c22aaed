#include <gtest/gtest.h>
#include <windows.h>

#include <string>

namespace {

/// The exit code of a host that has ended by itself; -1 when it had to be ended.
int runHost() {
    std::string command = std::string("\"") + ZELUTIL_TEST_HOST + "\" \"" + ZELUTIL_TEST_PLUGIN + "\"";
    STARTUPINFOA startup{};
    startup.cb = sizeof(startup);
    PROCESS_INFORMATION host{};
    EXPECT_NE(CreateProcessA(nullptr, command.data(), nullptr, nullptr, FALSE, 0, nullptr, nullptr, &startup, &host),
              0);
    constexpr DWORD kAmpleTime = 20000;
    DWORD code = 0;
    const bool ended = WaitForSingleObject(host.hProcess, kAmpleTime) == WAIT_OBJECT_0;
    if (!ended) {
        TerminateProcess(host.hProcess, 1);
    }
    GetExitCodeProcess(host.hProcess, &code);
    CloseHandle(host.hThread);
    CloseHandle(host.hProcess);
    return ended ? static_cast<int>(code) : -1;
}

// Nearly every process hangs if the lock stays with a thread that is gone; five are enough to see it.
TEST(WindowsProcessEnd, IsNotHeldUpByALockOfAThreadThatIsGone) {
    for (int i = 0; i < 5; ++i) {
        ASSERT_EQ(runHost(), 0) << "process " << i;
    }
}

}  // namespace
