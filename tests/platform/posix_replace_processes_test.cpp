// Several processes that replace one file at once.
#include <fcntl.h>
#include <gtest/gtest.h>
#include <signal.h>
#include <sys/file.h>
#include <sys/mman.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <atomic>
#include <chrono>
#include <cstdio>
#include <filesystem>
#include <string>
#include <vector>

#include "platform/replace_file.h"
#include "support/ordinary_user.h"
#include "support/temp_directory.h"
#include "support/text_file.h"

namespace zelutil::platform {
namespace {

namespace fs = std::filesystem;
using std::chrono::steady_clock;
using test::OrdinaryUser;
using test::readTextFile;
using test::TempDirectory;
using test::windowsText;
using test::writeTextFile;

/// Counters that the processes of a test share.
struct Counts {
    std::atomic<int> ready{0};
    std::atomic<int> written{0};
    std::atomic<int> notWritten{0};
    std::atomic<int> torn{0};
};

class ReplaceByProcesses : public testing::Test {
protected:
    ReplaceByProcesses()
        : counts_(new (::mmap(nullptr, sizeof(Counts), PROT_READ | PROT_WRITE, MAP_SHARED | MAP_ANONYMOUS, -1, 0))
                      Counts) {
        fs::permissions(directory_.path(), fs::perms::all);
    }
    ~ReplaceByProcesses() override { ::munmap(counts_, sizeof(Counts)); }

    void replace(const std::string& bytes) {
        switch (replaceFile(windowsText(file_).c_str(), bytes)) {
            case Replaced::Yes:
                ++counts_->written;
                break;
            case Replaced::No:
                ++counts_->notWritten;
                break;
            case Replaced::Torn:
                ++counts_->torn;
                break;
        }
    }

    /// Runs `work(number)` in so many processes, which begin together.
    template <typename Work>
    void runTogether(int processes, Work work) {
        counts_->ready = 0;
        std::vector<pid_t> children;
        for (int number = 0; number < processes; ++number) {
            const pid_t child = ::fork();
            if (child == 0) {
                ++counts_->ready;
                while (counts_->ready < processes) {
                }
                work(number);
                ::_exit(0);
            }
            children.push_back(child);
        }
        for (const pid_t child : children) {
            int status = 0;
            EXPECT_EQ(::waitpid(child, &status, 0), child);
            EXPECT_TRUE(WIFEXITED(status) && WEXITSTATUS(status) == 0);
        }
    }

    std::ptrdiff_t entries() const { return std::distance(fs::directory_iterator(directory_.path()), {}); }

    TempDirectory directory_;
    const fs::path file_ = directory_ / "tessel_settings.cfg";
    Counts* counts_;
};

TEST_F(ReplaceByProcesses, EveryCallOfFourWrites) {
    constexpr int kProcesses = 4;
    constexpr int kCalls = 1'500;
    runTogether(kProcesses, [&](int number) {
        const std::string bytes(2'000, static_cast<char>('a' + number));
        for (int i = 0; i < kCalls; ++i) {
            replace(bytes);
        }
    });
    std::printf("%d written, %d not written, %d torn\n", counts_->written.load(), counts_->notWritten.load(),
                counts_->torn.load());
    EXPECT_EQ(counts_->written, kProcesses * kCalls);
    const std::string text = readTextFile(file_);
    EXPECT_EQ(text, std::string(2'000, text.at(0)));
    // A file that one process gave up while another looked at it goes with the next call.
    replace("last");
    EXPECT_EQ(entries(), 1);
}

TEST_F(ReplaceByProcesses, AFileThatTwoWriteIntoIsNeverTorn) {
    constexpr int kRounds = 40;
    const std::string texts[] = {std::string(200'000, 'a'), std::string(120'000, 'b')};
    writeTextFile(file_, "old");
    fs::create_hard_link(file_, directory_ / "other.cfg");
    int damaged = 0;
    for (int round = 0; round < kRounds; ++round) {
        runTogether(2, [&](int number) { replace(texts[number]); });
        const std::string text = readTextFile(file_);
        damaged += text == texts[0] || text == texts[1] ? 0 : 1;
    }
    EXPECT_EQ(damaged, 0);
    EXPECT_EQ(counts_->written, 2 * kRounds);
    EXPECT_EQ(fs::hard_link_count(file_), 2U);
}

/// A file that is longer than the process may make one: the writing fails where the limit is.
TEST_F(ReplaceByProcesses, AWritingThatFailsHalfWayIsUndone) {
    const std::string old = std::string(100'000, 'o') + "end";
    writeTextFile(file_, old);
    fs::create_hard_link(file_, directory_ / "other.cfg");
    runTogether(1, [&](int) {
        ::signal(SIGXFSZ, SIG_IGN);
        const rlimit limit{40'000, 40'000};
        ASSERT_EQ(::setrlimit(RLIMIT_FSIZE, &limit), 0);
        replace(std::string(90'000, 'n'));
    });
    EXPECT_EQ(counts_->notWritten, 1);
    EXPECT_EQ(counts_->torn, 0);
    EXPECT_TRUE(readTextFile(file_) == old);
    replace("new");
    EXPECT_EQ(counts_->written, 1);
    EXPECT_EQ(readTextFile(file_), "new");
    EXPECT_EQ(fs::hard_link_count(file_), 2U);
}

TEST_F(ReplaceByProcesses, AFileOfAnotherOwnerIsNeverTorn) {
    if (::geteuid() != 0) {
        GTEST_SKIP() << "needs root to make another user's file";
    }
    constexpr int kRounds = 40;
    const std::string texts[] = {std::string(200'000, 'a'), std::string(120'000, 'b')};
    writeTextFile(file_, "old");
    ASSERT_EQ(::chmod(file_.c_str(), 0666), 0);
    int damaged = 0;
    for (int round = 0; round < kRounds; ++round) {
        runTogether(2, [&](int number) {
            const OrdinaryUser user;
            replace(texts[number]);
        });
        const std::string text = readTextFile(file_);
        damaged += text == texts[0] || text == texts[1] ? 0 : 1;
    }
    EXPECT_EQ(damaged, 0);
    EXPECT_EQ(counts_->written, 2 * kRounds);
    EXPECT_EQ(entries(), 1);
}

TEST_F(ReplaceByProcesses, AFileThatIsLockedForLongIsNotWrittenInto) {
    writeTextFile(file_, "old");
    fs::create_hard_link(file_, directory_ / "other.cfg");
    const int other = ::open(file_.c_str(), O_RDWR);
    ASSERT_EQ(::flock(other, LOCK_EX), 0);
    const auto start = steady_clock::now();
    EXPECT_EQ(replaceFile(windowsText(file_).c_str(), "new"), Replaced::No);
    EXPECT_FALSE(keepCopy(windowsText(file_).c_str()));
    EXPECT_LT(steady_clock::now() - start, std::chrono::seconds(20));
    EXPECT_EQ(readTextFile(file_), "old");
    EXPECT_EQ(entries(), 2);
    ::close(other);
    EXPECT_EQ(replaceFile(windowsText(file_).c_str(), "new"), Replaced::Yes);
    EXPECT_EQ(readTextFile(file_), "new");
}

TEST_F(ReplaceByProcesses, AFileThatIsLockedForAMomentIsWrittenInto) {
    writeTextFile(file_, "old");
    fs::create_hard_link(file_, directory_ / "other.cfg");
    runTogether(2, [&](int number) {
        if (number == 0) {
            replace("new");
            return;
        }
        const int other = ::open(file_.c_str(), O_RDWR);
        if (::flock(other, LOCK_EX) == 0) {
            ::usleep(200'000);
        }
    });
    EXPECT_EQ(counts_->written, 1);
    EXPECT_EQ(readTextFile(file_), "new");
}

TEST_F(ReplaceByProcesses, EachOfFourKeepsACopyOfItsOwn) {
    writeTextFile(file_, "half {");
    runTogether(4, [&](int) {
        for (int i = 0; i < 20; ++i) {
            counts_->written += keepCopy(windowsText(file_).c_str()) ? 1 : 0;
        }
    });
    EXPECT_EQ(counts_->written, 80);
    EXPECT_EQ(entries(), 81);
    EXPECT_EQ(readTextFile(file_.string() + ".bad.80"), "half {");
}

}  // namespace
}  // namespace zelutil::platform
