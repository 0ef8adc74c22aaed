#include <gtest/gtest.h>

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "file/hierarchy_root.h"

namespace {

using ZelU::File::Path;
using zelutil::file::entriesOf;
using zelutil::file::rootOfLibraryFile;
using zelutil::file::toolsDirectoryOf;

TEST(HierarchyRootText, RootOfTheLibrarysFile) {
    struct Row {
        const char* file;
        const char* root;  // null: none
    };
    constexpr Row kRows[] = {
        {"C:/p/tools/bin/zelutil.dll", "C:\\p"},
        {"C:/a/b/tools/bin/other.exe", "C:\\a\\b"},
        {"C:/tools/bin/zelutil.dll", "C:"},
        {"//server/p/tools/bin/zelutil.dll", "\\\\server\\p"},
        // The names need only begin so.
        {"C:/p/tools/bin64/zelutil.dll", "C:\\p"},
        {"C:/p/tools.new/binaries/zelutil.dll", "C:\\p"},
        {"C:/p/toolsmith/bin/zelutil.dll", "C:\\p"},
        // Near misses.
        {"C:/p/tools/zelutil.dll", nullptr},
        {"C:/p/bin/zelutil.dll", nullptr},
        {"C:/p/tool/bin/zelutil.dll", nullptr},
        {"C:/p/tools/bi/zelutil.dll", nullptr},
        {"C:/p/tools/64bin/zelutil.dll", nullptr},
        {"C:/p/mytools/bin/zelutil.dll", nullptr},
        {"C:/p/Tools/bin/zelutil.dll", nullptr},
        {"C:/p/tools/Bin/zelutil.dll", nullptr},
        {"C:/p/tools/bin/plugins/zelutil.dll", nullptr},
        {"C:/p/tools/x/bin/zelutil.dll", nullptr},
        {"C:/zelutil.dll", nullptr},
        {"", nullptr},
    };
    for (const Row& row : kRows) {
        const std::optional<Path> root = rootOfLibraryFile(Path(std::string(row.file)));
        EXPECT_EQ(root.has_value(), row.root != nullptr) << row.file;
        EXPECT_STREQ(root.value_or(Path()), row.root == nullptr ? "" : row.root) << row.file;
    }
}

TEST(HierarchyRootText, ToolsDirectoryOfADirectoryOfLibraries) {
    struct Row {
        const char* directory;
        const char* tools;
    };
    constexpr Row kRows[] = {
        {"C:/p/tools/bin", "C:\\p\\tools"},
        {"C:/p/tools/lib/64bit", "C:\\p\\tools"},
        {"C:/p/tools/lib/64bits", "C:\\p\\tools\\lib"},
        {"C:/p/tools/lib/64Bit", "C:\\p\\tools\\lib"},
        {"C:/p/tools/lib/x64bit", "C:\\p\\tools\\lib"},
        {"C:/64bit", "C:"},
        {"C:/bin", "C:"},
        {"C:", "C:"},
        {"", ""},
    };
    for (const Row& row : kRows) {
        EXPECT_STREQ(toolsDirectoryOf(Path(std::string(row.directory))), row.tools) << row.directory;
    }
}

TEST(HierarchyRootText, EntriesOfAList) {
    struct Row {
        const char* list;
        std::vector<std::string_view> entries;
    };
    const Row rows[] = {
        {"", {}},
        {"a", {"a"}},
        {"a;b", {"a", "b"}},
        {"a b;c", {"a b", "c"}},
        {";a", {"", "a"}},
        {"a;;b", {"a", "", "b"}},
        // The end after the last separator is no entry.
        {"a;", {"a"}},
        {";", {""}},
        {"a;;", {"a", ""}},
        {";;", {"", ""}},
    };
    for (const Row& row : rows) {
        EXPECT_EQ(entriesOf(row.list), row.entries) << '"' << row.list << '"';
    }
}

}  // namespace
