// A flat INI file with the values in force by GKeyFile.
#include <glib.h>

#include <cstring>
#include <utility>

#include "start/child.h"

int main(int argc, char** argv) {
    return zelutil::bench::start::run(argc, argv, [](const std::string& name) {
        GKeyFile* const file = g_key_file_new();
        g_key_file_load_from_file(file, zelutil::bench::start::iniFile().c_str(), G_KEY_FILE_NONE, nullptr);
        char* const value = g_key_file_get_string(file, "settings", name.c_str(), nullptr);
        return std::pair(file, value == nullptr ? 0 : std::strlen(value));
    });
}
