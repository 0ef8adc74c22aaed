// The library reads, writes and compares the same bytes whatever the locale of its process is: each case runs a host in
// another locale. In German ones a comma is the decimal point and a point groups digits; in Turkish ones "I" is no
// capital "i"; those with one byte for a letter have letters beyond ASCII, in whose place UTF-8 has no byte.
#include <gtest/gtest.h>

#include <filesystem>
#include <ostream>
#include <string>

#include "support/child_process.h"
#include "support/installation_tree.h"
#include "support/temp_directory.h"
#include "support/text_file.h"

namespace zelutil::test {
namespace {

namespace fs = std::filesystem;

constexpr char kDefaults[] = R"({"version":7.25,"meta":[
    {"header":"Info","attribute":"info","tclCommand":"t","unique":true,"defaultsettings":[
        {"name":"limit","value":"0.5"},{"name":"comma","value":"0,5"},{"name":"digits","value":"1234567"},
        {"name":"grouped","value":"1.234.567"},{"name":"visible","value":"TRUE"},{"name":"title","value":"shipped"}]},
    {"header":"Keys","attribute":"keys","submanagerId":100,"tclCommand":"t","defaultsettings":{"actions":[
        {"id":1,"context":"ucpedit","command":"info","shortcut":"Ctrl+I"},
        {"id":2,"context":"ucpedit","command":"pin","shortcut":"F2"}]}}]})";

constexpr char kUser[] = R"({"meta":[
    {"header":"Info","attribute":"info","overriddensettings":[{"INFO::TITLE":"PIN I"}]},
    {"header":"Other","attribute":"other","overriddensettings":[{"factor":1234.5}]}]})";

// The byte behind the first "PIN" is the delimiter, but a letter where a letter is one byte.
constexpr char kTable[] = "PIN\xE4Net\nPIN;Net\n";

constexpr char kPrinted[] =
    "INFO::LIMIT 0.5\n"
    "INFO::COMMA none\n"
    "INFO::DIGITS 1234567\n"
    "INFO::GROUPED none\n"
    "VISIBLE true\n"
    "title PIN I\n"
    "name info::title\n"
    "number 1234567.25\n"
    "Ctrl+I info\n"
    "Ctrl+i \n"
    "given 1\n"
    "Ctrl+I info\n"
    "Ctrl+i pin\n"
    "wiring 3\n"
    "dotless 11\n"
    "compared 0\n"
    "bytes -32\n"
    "zeros 1.5\n"
    "delimiter 228\n";

constexpr char kSaved[] = R"({
    "version": 7.25,
    "meta": [
        {
            "header": "Info",
            "attribute": "info",
            "unique": true,
            "overriddensettings": [
                {
                    "info::limit": "1234.25"
                },
                {
                    "info::title": "PIN I"
                }
            ]
        },
        {
            "header": "Keys",
            "attribute": "keys",
            "submanagerId": 100,
            "overriddensettings": [
                {
                    "actions": [
                        {
                            "id": 2,
                            "shortcut": "Ctrl+i"
                        }
                    ]
                }
            ]
        },
        {
            "header": "Other",
            "attribute": "other",
            "overriddensettings": [
                {
                    "factor": 1234.5
                }
            ]
        }
    ]
})";

struct LocaleRow {
    const char* name;
    /// The host's first line: a half as C prints it, and whether C has "i" for "I" in lower case.
    const char* shown;
};

std::ostream& operator<<(std::ostream& out, const LocaleRow& row) { return out << row.name; }

class Locale : public testing::TestWithParam<LocaleRow> {
protected:
    Locale() {
        const fs::path root = directory / "product";
        makeInstallation(root);
        writeTextFile(root / "share/qtxsetup/canvas/resources/tessel/tessel_settings.cfg", kDefaults);
        writeTextFile(userFile(), kUser);
        writeTextFile(directory / "table.csv", kTable);
        environment["QTXROOT"] = systemText(root);
        environment["PATH"] = std::nullopt;
        environment["LOCPATH"] = ZELUTIL_TEST_LOCALES;
        environment["LSAN_OPTIONS"] = "suppressions=" ZELUTIL_TEST_DATA "/locale_leaks.supp:print_suppressions=0";
        const std::string home = windowsText(directory.path());
        environment["HOMEDRIVE"] = home.substr(0, 2);
        environment["HOMEPATH"] = home.substr(2);
    }

    fs::path userFile() const { return directory / "pcbenv/tessel/tessel_settings.cfg"; }

    TempDirectory directory;
    EnvironmentChanges environment = withoutProductVariables();
};

TEST_P(Locale, ChangesNothing) {
    const ChildResult result =
        run({ZELUTIL_TEST_LOCALE_HOST, {GetParam().name, directory.path().string()}, environment, directory.path()});
    EXPECT_EQ(result.err, "");
    EXPECT_EQ(result.exitCode, 0);
    EXPECT_EQ(result.out, GetParam().shown + std::string("\n") + kPrinted);
    EXPECT_EQ(readTextFile(userFile()), kSaved);
}

constexpr LocaleRow kLocales[] = {
    {"C", "0.5 i"},
    {"de_DE.UTF-8", "0,5 i"},
    {"de_DE.ISO-8859-1", "0,5 i"},
    {"tr_TR.UTF-8", "0,5 not i"},
    {"tr_TR.ISO-8859-9", "0,5 not i"},
};

INSTANTIATE_TEST_SUITE_P(All, Locale, testing::ValuesIn(kLocales));

}  // namespace
}  // namespace zelutil::test
