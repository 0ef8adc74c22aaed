// A host in small: does what its arguments say, in their order, and prints what it gets.
//
//     root                 prints the installation root, or the exception
//     pcbenv               prints the user's environment directory
//     set NAME VALUE       sets a variable
//     chdir DIRECTORY      changes the current directory
//     common-library KIND  loads the stand-in of that kind for the common library
//     tools PATH           has that stand-in answer the tools directory
//     init-done 0|1        has it tell whether its initialisation is over
#include <zelutil/file/hierarchy.h>

#include <cstdio>
#include <filesystem>
#include <string>

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

void printPcbEnv() { std::printf("pcbenv \"%s\"\n", static_cast<const char*>(Hierarchy::GetPcbEnv())); }

class Probe {
public:
    explicit Probe(char** arguments) : next_(arguments) {}

    bool atEnd() const { return *next_ == nullptr; }

    void step() {
        const std::string command = argument();
        if (command == "root") {
            printRoot();
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
        } else {
            std::printf("unknown command %s\n", command.c_str());
        }
    }

private:
    std::string argument() { return *next_++; }

    char** next_;
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
