// A host in small that ends: does what its arguments say, in their order, and then leaves.
//
//     enter PATH        has the file deleted at exit
//     enter-late PATH   enters it only when this program's static objects are being destroyed
//     make PATH         writes a file
//     temporary DIR     prints a temporary name in the directory, entered for deletion, and writes that file
//     keep DIR          the same, not entered
//     chdir PATH        changes the current directory
//     exit              calls std::exit; the end of the arguments returns from main
#include <zelutil/file/path.h>

#include <cstdio>
#include <cstdlib>
#include <string>

#include "support/temp_directory.h"
#include "support/text_file.h"

namespace {

using ZelU::File::Path;

/// Made before anything is asked of the library, and so destroyed after all that was made since.
struct StaticObject {
    ~StaticObject() {
        if (!text.empty()) {
            Path(text).DeleteMeOnExit();
        }
    }

    std::string text;
};

StaticObject staticObject;

void make(const Path& path) {
    zelutil::test::writeTextFile(zelutil::test::fileOfText(static_cast<const char*>(path)), "x");
}

void makeTemporary(const std::string& directory, bool deleteOnExit) {
    const Path path = Path::GetTempFile(Path(directory), deleteOnExit, "x");
    make(path);
    std::printf("%s\n", path.Name().c_str());
}

void obey(const std::string& command, const std::string& argument) {
    if (command == "enter") {
        // The entry is a copy: this object is gone, and was changed, long before the exit.
        Path path(argument);
        path.DeleteMeOnExit();
        path = "c:/other";
    } else if (command == "enter-late") {
        staticObject.text = argument;
    } else if (command == "make") {
        make(Path(argument));
    } else if (command == "temporary") {
        makeTemporary(argument, true);
    } else if (command == "keep") {
        makeTemporary(argument, false);
    } else if (command == "chdir") {
        Path::Chdir(Path(argument));
    } else {
        std::printf("unknown command %s\n", command.c_str());
    }
}

}  // namespace

int main(int, char** arguments) {
    while (*++arguments != nullptr) {
        const std::string command = *arguments;
        if (command == "exit") {
            std::exit(EXIT_SUCCESS);
        }
        obey(command, *++arguments);
    }
    return 0;
}
