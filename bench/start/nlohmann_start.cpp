// Both files by nlohmann::json, flattened into a map of full and bare names: the reference.
#include <nlohmann/json.hpp>
#include <utility>

#include "start/child.h"
#include "start/flat_map.h"

namespace {

using namespace zelutil::bench::start;
using Json = nlohmann::json;

void addDefaults(const Json& section, const std::string& path, Flat& flat) {
    const bool isUnique = section.value("unique", true);
    for (const Json& setting : section.at("defaultsettings")) {
        const auto& name = setting.at("name").get_ref<const std::string&>();
        const auto& value = setting.at("value").get_ref<const std::string&>();
        flat.emplace(folded(path + "::" + name), value);
        if (isUnique) {
            flat.emplace(folded(name), value);
        }
    }
}

void addUserValues(const Json& section, const std::string& path, Flat& flat) {
    for (const Json& object : section.at("overriddensettings")) {
        for (const auto& [name, value] : object.items()) {
            flat[folded(path + "::" + name)] = value.get_ref<const std::string&>();
            const auto bare = flat.find(folded(name));
            if (bare != flat.end()) {
                bare->second = value.get_ref<const std::string&>();
            }
        }
    }
}

void flatten(const Json& sections, const std::string& outer, Flat& flat) {
    for (const Json& section : sections) {
        const auto& attribute = section.at("attribute").get_ref<const std::string&>();
        const std::string path = outer.empty() ? attribute : outer + "::" + attribute;
        if (section.contains("defaultsettings")) {
            addDefaults(section, path, flat);
        }
        if (section.contains("overriddensettings")) {
            addUserValues(section, path, flat);
        }
        if (section.contains("children")) {
            flatten(section.at("children"), path, flat);
        }
    }
}

}  // namespace

int main(int argc, char** argv) {
    return run(argc, argv, [](const std::string& name) {
        Flat flat;
        for (const std::string& file : {defaultsFile(), userFile()}) {
            flatten(Json::parse(read(file)).at("meta"), "", flat);
        }
        const std::size_t length = flat.find(folded(name))->second.size();
        return std::pair(std::move(flat), length);
    });
}
