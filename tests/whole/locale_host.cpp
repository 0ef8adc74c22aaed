// A host whose process has the locale of the first argument, in C and in C++, before it uses the library. It prints, a
// line each, what another locale would read, spell or compare otherwise, and saves; the second argument is the
// directory for a file of its own. The first line shows that the locale is in force.
#include <zelutil/zelutil.h>

#include <cctype>
#include <clocale>
#include <cstdio>
#include <fstream>
#include <locale>
#include <string>
#include <vector>

namespace {

template <typename T>
void printRead(const char* name) {
    const std::optional<T> value = zelutil::host::read<T>(name);
    std::printf("%s %s\n", name, value ? zelutil::host::textOf(*value).c_str() : "none");
}

void printText(const char* label, const std::string& text) { std::printf("%s %s\n", label, text.c_str()); }

void printSettings() {
    printRead<double>("INFO::LIMIT");
    printRead<double>("INFO::COMMA");
    printRead<int>("INFO::DIGITS");
    printRead<int>("INFO::GROUPED");
    printRead<bool>("VISIBLE");
    printText("title", zelutil::host::get("INFO::TITLE", "none"));
    const std::optional<zelutil::host::SettingInfo> setting = zelutil::host::setting("TITLE");
    printText("name", setting ? setting->fullName : "none");
    printText("number", zelutil::host::textOf(1234567.25));
}

void printActions() {
    UCPActionManager& actions = UCPActionManager::instance();
    printText("Ctrl+I", actions.getCommand("ucpedit", "Ctrl+I", false));
    printText("Ctrl+i", actions.getCommand("ucpedit", "Ctrl+i", false));
    std::printf("given %d\n", static_cast<int>(actions.updateShortcut(2, "Ctrl+i")));
    printText("Ctrl+I", actions.getCommand("ucpedit", "Ctrl+I", false));
    printText("Ctrl+i", actions.getCommand("ucpedit", "Ctrl+i", false));
}

void printEnumerations() {
    using ZelU::ZelPanel::ZelWorksheets;
    const auto& worksheets = Smart::Enum::HRES<ZelWorksheets>::Instance();
    std::printf("wiring %d\n", static_cast<int>(worksheets.Lookup("WIRING")));
    std::printf("dotless %d\n", static_cast<int>(worksheets.Lookup("w\xFDring")));
}

void printTexts(const std::string& directory) {
    std::printf("compared %d\n", ZelU::STRUTL::StrNoCaseCompare("PIN", "pin"));
    std::printf("bytes %d\n", ZelU::STRUTL::StrNoCaseCompare("\xC4", "\xE4"));
    printText("zeros", ZelU::STRUTL::RemoveTrailingZeros("1.500"));
    std::ifstream table(directory + "/table.csv", std::ios::binary);
    std::vector<std::string> keys = {"pin"};
    std::printf("delimiter %d\n", static_cast<unsigned char>(ZelU::UTL::CsvFileDelim(table, keys)));
}

}  // namespace

int main(int argc, char** argv) {
    if (argc != 3 || std::setlocale(LC_ALL, argv[1]) == nullptr) {
        std::fputs("there is no such locale\n", stderr);
        return 1;
    }
    std::locale::global(std::locale(argv[1]));
    std::printf("%.1f %s\n", 0.5, std::tolower('I') == 'i' ? "i" : "not i");
    printSettings();
    printActions();
    printEnumerations();
    printTexts(argv[2]);
    return zelutil::host::save({{"INFO::LIMIT", zelutil::host::textOf(1234.25)}}).ok() ? 0 : 1;
}
