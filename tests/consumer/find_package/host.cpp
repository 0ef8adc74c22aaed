// A host in C++: texts cross the library's boundary in both directions, and an exception leaves the library and is
// caught by its type.

#include <zelutil/zelutil.h>

#include <iostream>
#include <string>

namespace {

bool textsCross() {
    UCPActionManager& actions = UCPActionManager::instance();
    actions.load(R"({"actions":[{"id":7,"context":"edit","command":"copy","shortcut":"Ctrl+C"}]})", "");
    return actions.getShortcut(7) == "Ctrl+C" && actions.getCommand("edit", "Ctrl+C", false) == "copy";
}

bool exceptionCrosses() {
    try {
        ZelU::File::Hierarchy::GetRoot();
    } catch (const ZelU::File::Exceptions::HierarchyNotFound&) {
        return true;
    }
    return false;
}

int expect(bool holds, const char* what) {
    std::cout << what << ": " << (holds ? "yes" : "no") << '\n';
    return holds ? 0 : 1;
}

}  // namespace

int main() { return expect(textsCross(), "texts cross") + expect(exceptionCrosses(), "an exception crosses"); }
