// A host in small: does what its arguments say, in their order, and prints what it gets.
//
//     root                 prints the installation root, or the exception
//     threads N            asks for the root on N threads at once; prints each answer that differs from those before
//     pcbenv               prints the user's environment directory
//     set NAME VALUE       sets a variable
//     chdir DIRECTORY      changes the current directory
//     common-library KIND  loads the stand-in of that kind for the common library
//     tools PATH           has that stand-in answer the tools directory
//     init-done 0|1        has it tell whether its initialisation is over
//     nested WHAT          has it call back while it is asked for the tools directory: "root" asks for the root, and
//                          "wait" has another thread ask and waits for that
#include <zelutil/file/hierarchy.h>

#include <atomic>
#include <cstdio>
#include <filesystem>
#include <set>
#include <string>
#include <thread>
#include <vector>

#include "support/common_library_stand_in.h"
#include "support/environment.h"

namespace {

using ZelU::File::Hierarchy;
using ZelU::File::Path;

void printRoot() {
    try {
        std::printf("root \"%s\"\n", static_cast<const char*>(Hierarchy::GetRoot()));
    } catch (const ZelU::File::Exceptions::HierarchyNotFound&) {
        std::puts("HierarchyNotFound");
    }
}

std::string rootOrException() {
    try {
        return static_cast<const char*>(Hierarchy::GetRoot());
    } catch (const ZelU::File::Exceptions::HierarchyNotFound&) {
        return "HierarchyNotFound";
    }
}

void printRootsOfThreads(std::size_t count) {
    std::atomic<std::size_t> ready{0};
    std::vector<std::string> answers(count);
    std::vector<std::thread> threads;
    for (std::string& answer : answers) {
        threads.emplace_back([&ready, &answer, count] {
            for (++ready; ready < count;) {
            }
            answer = rootOrException();
        });
    }
    for (std::thread& thread : threads) {
        thread.join();
    }
    for (const std::string& answer : std::set<std::string>(answers.begin(), answers.end())) {
        std::printf("root \"%s\"\n", answer.c_str());
    }
}

void printPcbEnv() { std::printf("pcbenv \"%s\"\n", static_cast<const char*>(Hierarchy::GetPcbEnv())); }

class Probe {
public:
    explicit Probe(char** arguments) : next_(arguments) {}

    bool atEnd() const { return *next_ == nullptr; }

    void step() {
        const std::string command = argument();
        if (command == "root") {
            printRoot();
        } else if (command == "threads") {
            printRootsOfThreads(std::stoul(argument()));
        } else if (command == "pcbenv") {
            printPcbEnv();
        } else if (command == "set") {
            const std::string name = argument();
            zelutil::test::setVariable(name.c_str(), argument());
        } else if (command == "chdir") {
            std::filesystem::current_path(argument());
        } else if (command == "common-library") {
            commonLibrary_ = &zelutil::test::loadCommonLibrary(argument());
        } else if (command == "tools") {
            commonLibrary_->toolsPath = argument();
        } else if (command == "init-done") {
            commonLibrary_->initDone = argument() == "1";
        } else if (command == "nested") {
            commonLibrary_->duringToolsPath = [this, what = argument()] { callBack(what); };
        } else {
            std::printf("unknown command %s\n", command.c_str());
        }
    }

private:
    /// Once: the search of this question asks the common library too.
    void callBack(const std::string& what) {
        if (hasCalledBack_) {
            return;
        }
        hasCalledBack_ = true;
        if (what == "root") {
            std::puts("nested");
            printRoot();
        } else {
            std::puts("on another thread");
            std::thread(printRoot).join();
        }
    }

    std::string argument() { return *next_++; }

    char** next_;
    bool hasCalledBack_ = false;
    zelutil::test::CommonLibraryState* commonLibrary_ = nullptr;
};

}  // namespace

int main(int, char** arguments) {
    Probe probe(arguments + 1);
    while (!probe.atEnd()) {
        probe.step();
    }
    return 0;
}
