#include "command/world/manifest.h"

#include <algorithm>
#include <iterator>
#include <utility>

#include "command/text.h"
#include "json/document.h"
#include "json/writer.h"

namespace zelutil::command::world {
namespace {

namespace fs = std::filesystem;
using json::View;
using platform::ModulePlace;

/// Writes the texts byte by byte, as variables and paths have them, which need not be UTF-8.
class ManifestWriter {
public:
    std::optional<std::string> run(const Manifest& manifest) {
        json_.beginObject();
        key("zelutilWorld", [&] { json_.integer(Manifest::kFormat); });
        text("system", manifest.system);
        key("redacted", [&] { json_.truth(manifest.redacted); });
        text("directory", manifest.directory.u8string());
        text("module", manifest.module);
        key("variables", [&] { writeVariables(manifest.variables); });
        key("links", [&] { writeLinks(manifest.links); });
        key("deadDirectories", [&] { writeLinks(manifest.deadDirectories); });
        key("account", [&] { write(manifest.account); });
        key("unreadable", [&] { writePaths(manifest.unreadable); });
        key("writeable", [&] { writeRights(manifest.writeable); });
        key("hidden", [&] { writeReasons(manifest.hidden); });
        key("commonLibrary", [&] { write(manifest.commonLibrary); });
        json_.endObject();
        return json_.take();
    }

private:
    template <typename Write>
    void key(std::string_view name, Write write) {
        json_.key(name);
        write();
    }

    void text(std::string_view name, std::string_view value) {
        key(name, [&] { json_.text(value); });
    }

    void optionalText(std::string_view name, const std::optional<std::string>& value) {
        if (value) {
            text(name, *value);
        }
    }

    void writeVariables(const std::map<std::string, std::string>& variables) {
        json_.beginObject();
        for (const auto& [name, value] : variables) {
            text(name, value);
        }
        json_.endObject();
    }

    void writeLinks(const Links& links) {
        json_.beginArray();
        for (const auto& [from, to] : links) {
            json_.beginObject();
            text("from", from.u8string());
            text("to", to.u8string());
            json_.endObject();
        }
        json_.endArray();
    }

    void write(const Account& account) {
        json_.beginObject();
        text("user", account.user);
        text("host", account.host);
        json_.endObject();
    }

    void writePaths(const std::set<fs::path>& paths) {
        json_.beginArray();
        for (const fs::path& path : paths) {
            json_.text(path.u8string());
        }
        json_.endArray();
    }

    void writeRights(const Rights& rights) {
        json_.beginObject();
        for (const auto& [path, holds] : rights) {
            json_.key(path.u8string());
            json_.truth(holds);
        }
        json_.endObject();
    }

    /// A missing right is "true", as in bundles of earlier versions, which have no other reason.
    void writeReasons(const Reasons& reasons) {
        json_.beginObject();
        for (const auto& [path, reason] : reasons) {
            json_.key(path.u8string());
            if (reason == std::errc() || reason == std::errc::permission_denied) {
                json_.truth(reason != std::errc());
            } else {
                json_.integer(static_cast<int>(reason));
            }
        }
        json_.endObject();
    }

    void write(const CommonLibrary& library) {
        json_.beginObject();
        key("places", [&] {
            json_.beginArray();
            for (const ModulePlace& place : library.places) {
                json_.beginObject();
                key("kind", [&] { json_.integer(static_cast<int>(place.kind)); });
                text("file", place.file);
                key("taken", [&] { json_.truth(place.taken); });
                json_.endObject();
            }
            json_.endArray();
        });
        key("isThere", [&] { json_.truth(library.isThere); });
        key("missingFunctions", [&] {
            json_.beginArray();
            for (const std::string& name : library.missingFunctions) {
                json_.text(name);
            }
            json_.endArray();
        });
        optionalText("toolsPath", library.toolsPath);
        key("initDone", [&] { json_.truth(library.initDone); });
        key("canSearch", [&] { json_.truth(library.canSearch); });
        optionalText("found", library.found);
        json_.endObject();
    }

    json::PrettyWriter json_;
};

std::string stringOf(View value) { return std::string(value.text().value_or("")); }

std::optional<std::string> optionalStringOf(View value) {
    return value.text() ? std::optional<std::string>(stringOf(value)) : std::nullopt;
}

/// Returns the empty path for a text that names no file. The system does not look behind a null character, so a name
/// of ".." could hide before one, and wide paths have no bytes that are no part of UTF-8.
fs::path pathOfText(std::string_view text) {
    constexpr bool kIsWide = sizeof(fs::path::value_type) > 1;
    const bool isNone = text.find('\0') != std::string_view::npos || (kIsWide && badBytesOf(text));
    return isNone ? fs::path() : fs::u8path(text);
}

fs::path pathIn(View value) { return pathOfText(value.text().value_or("")); }

/// Whether a path leads to a place in the bundle's world and not past it: a manifest may come from a stranger.
bool staysInWorld(const fs::path& path) {
    const auto leadsAway = [](const fs::path& component) {
        // A drive within a path, which a component tells only as a path of its own, would replace all before it.
        return component == ".." || component == "." || fs::path(component.native()).has_root_name();
    };
    return path.is_absolute() && path.root_name().u8string().find("..") == std::string::npos &&
           std::none_of(path.has_root_name() ? std::next(path.begin()) : path.begin(), path.end(), leadsAway);
}

/// Returns nothing where one of them leads past the world.
std::optional<Links> linksOf(View value) {
    Links links;
    for (const View link : value.elements()) {
        const fs::path target = pathIn(link.member("to"));
        if (!staysInWorld(target)) {
            return std::nullopt;
        }
        links[pathIn(link.member("from"))] = target;
    }
    return links;
}

Rights rightsOf(View value) {
    Rights rights;
    for (const json::Member one : value.members()) {
        rights[pathOfText(one.key)] = one.value.isTrue();
    }
    return rights;
}

Reasons reasonsOf(View value) {
    Reasons reasons;
    for (const json::Member one : value.members()) {
        const std::errc right = one.value.isTrue() ? std::errc::permission_denied : std::errc();
        const auto other = one.value.integer();
        reasons[pathOfText(one.key)] = other ? static_cast<std::errc>(*other) : right;
    }
    return reasons;
}

CommonLibrary commonLibraryOf(View value) {
    CommonLibrary library;
    for (const View place : value.member("places").elements()) {
        const auto kind = static_cast<ModulePlace::Kind>(place.member("kind").integer().value_or(0));
        library.places.push_back({kind, stringOf(place.member("file")), place.member("taken").isTrue()});
    }
    library.isThere = value.member("isThere").isTrue();
    for (const View name : value.member("missingFunctions").elements()) {
        library.missingFunctions.push_back(stringOf(name));
    }
    library.toolsPath = optionalStringOf(value.member("toolsPath"));
    library.initDone = value.member("initDone").isTrue();
    library.canSearch = value.member("canSearch").isTrue();
    library.found = optionalStringOf(value.member("found"));
    return library;
}

}  // namespace

const char* nameOfThisSystem() { return fs::path::preferred_separator == '/' ? "posix" : "windows"; }

std::optional<std::string> textOfManifest(const Manifest& manifest) { return ManifestWriter().run(manifest); }

std::optional<Manifest> manifestOf(std::string_view text) {
    const json::Document document(text);
    const View root = document.root();
    if (root.member("zelutilWorld").integer() != Manifest::kFormat) {
        return std::nullopt;
    }
    Manifest manifest;
    manifest.system = stringOf(root.member("system"));
    if (manifest.system != nameOfThisSystem()) {
        return manifest;
    }
    manifest.redacted = root.member("redacted").isTrue();
    manifest.directory = pathIn(root.member("directory"));
    manifest.module = stringOf(root.member("module"));
    for (const json::Member variable : root.member("variables").members()) {
        manifest.variables.emplace(variable.key, variable.value.text().value_or(""));
    }
    auto links = linksOf(root.member("links"));
    auto deadDirectories = linksOf(root.member("deadDirectories"));
    if (!links || !deadDirectories) {
        return std::nullopt;
    }
    manifest.links = *std::move(links);
    manifest.deadDirectories = *std::move(deadDirectories);
    if (!manifest.directory.empty() && !staysInWorld(manifest.directory)) {
        return std::nullopt;
    }
    manifest.account = {stringOf(root.member("account").member("user")),
                        stringOf(root.member("account").member("host"))};
    for (const View path : root.member("unreadable").elements()) {
        manifest.unreadable.insert(pathIn(path));
    }
    manifest.writeable = rightsOf(root.member("writeable"));
    manifest.hidden = reasonsOf(root.member("hidden"));
    manifest.commonLibrary = commonLibraryOf(root.member("commonLibrary"));
    return manifest;
}

}  // namespace zelutil::command::world
