// The C interface: the status of calls, texts, and the start.
#include <zelutil/file/hierarchy.h>
#include <zelutil/host/c_api.h>
#include <zelutil/host/native_path.h>
#include <zelutil/host/start.h>

#include <filesystem>
#include <string>
#include <system_error>

#include "host/c_api_guard.h"
#include "host/c_api_records.h"

namespace c = zelutil::host::c;

namespace {

struct StatusText {
    zelutil_status status;
    const char* text;
};

constexpr StatusText kStatusTexts[] = {
    {ZELUTIL_OK, "All is well."},
    {ZELUTIL_BAD_ARGUMENT, "An argument is null, negative or unknown where it must not be."},
    {ZELUTIL_UNKNOWN, "There is no such setting or action."},
    {ZELUTIL_WRONG_TYPE, "The setting's value is not of that type."},
    {ZELUTIL_REFUSED, "Another action is in the way of that shortcut."},
    {ZELUTIL_TOO_LATE, "The call comes too late in the life of the process."},
    {ZELUTIL_NO_INSTALLATION, "No installation was found."},
    {ZELUTIL_NO_MEMORY, "There is not enough memory."},
    {ZELUTIL_FAILED, "Something failed unexpectedly."},
    {ZELUTIL_NO_DEFAULTS, "There are no shipped preferences, so nothing is saved."},
    {ZELUTIL_NO_PATH, "There is no place for the user's file, so nothing is saved."},
    {ZELUTIL_NOT_KEPT, "The user's file cannot be read, and no copy of it could be kept, so it was left as it is."},
    {ZELUTIL_NOT_WRITTEN, "The user's file could not be written and is as it was before."},
    {ZELUTIL_TORN, "The writing of the user's file failed in the middle."},
    {ZELUTIL_TOO_DEEP, "A save inside its own notification went too deep and was stopped."},
    {ZELUTIL_STARTING, "The preferences are just being read, so nothing is saved yet."},
};

template <typename Action>
zelutil_status textInto(const zelutil_text** out, Action make) {
    return c::guardedInto(out, [&] { return new c::TextHandedOut(make()); });
}

template <typename Action>
zelutil_status textInto(const zelutil_text** out, const char* text, Action make) {
    return c::guardedInto(out, text, [&](const std::string& given) { return new c::TextHandedOut(make(given)); });
}

/// Returns the library's path of a file; empty where the bytes are no text that the system could name a file by.
std::string pathOfNative(const std::string& native) {
    std::filesystem::path path;
    try {
        path = std::filesystem::u8path(native);
    } catch (const std::system_error&) {
        return {};
    }
    return std::string(zelutil::host::fromNative(path));
}

}  // namespace

const char* zelutil_status_text(int status) {
    for (const StatusText& row : kStatusTexts) {
        if (row.status == status) {
            return row.text;
        }
    }
    return "The status is unknown.";
}

void zelutil_text_free(const zelutil_text* text) { c::TextHandedOut::free(text); }

zelutil_status zelutil_set_option(int option, bool on) {
    if (option != ZELUTIL_PATHS_WITH_BLANKS) {
        return ZELUTIL_BAD_ARGUMENT;
    }
    return c::guarded([&] {
        zelutil::host::Options options = zelutil::host::options();
        options.pathsWithBlanks = on;
        return zelutil::host::setOptions(options) ? ZELUTIL_OK : ZELUTIL_TOO_LATE;
    });
}

zelutil_status zelutil_get_option(int option, bool* on) {
    if (option != ZELUTIL_PATHS_WITH_BLANKS || on == nullptr) {
        return ZELUTIL_BAD_ARGUMENT;
    }
    return c::guarded([&] {
        *on = zelutil::host::options().pathsWithBlanks;
        return ZELUTIL_OK;
    });
}

zelutil_status zelutil_get_root(const zelutil_text** root) {
    return textInto(root, [] { return std::string(ZelU::File::Hierarchy::GetRoot()); });
}

zelutil_status zelutil_get_user_file_path(const zelutil_text** path) {
    return textInto(path, [] { return zelutil::host::userFilePath(); });
}

zelutil_status zelutil_diagnose(const zelutil_text** lines) {
    return textInto(lines, [] { return zelutil::host::diagnose(); });
}

zelutil_status zelutil_native_path(const char* path, const zelutil_text** native) {
    return textInto(native, path, [](const std::string& text) {
        const std::filesystem::path file = zelutil::host::nativePath(text);
        return file.u8string();
    });
}

zelutil_status zelutil_path_from_native(const char* native, const zelutil_text** path) {
    return textInto(path, native, pathOfNative);
}

zelutil_status zelutil_get_start_warnings(const zelutil_warning_list** warnings) {
    using List = c::HandedOut<zelutil_warning_list, c::Warnings>;
    return c::guardedInto(warnings, [] { return new List(zelutil::host::startWarnings()); });
}

void zelutil_warning_list_free(const zelutil_warning_list* warnings) {
    c::HandedOut<zelutil_warning_list, c::Warnings>::free(warnings);
}
