// Both files by RapidJSON, parsed in situ and flattened as for the reference.
#include <rapidjson/document.h>

#include <string_view>
#include <utility>

#include "start/child.h"
#include "start/flat_map.h"

namespace {

using namespace zelutil::bench::start;
using rapidjson::Value;

std::string textOf(const Value& value) { return {value.GetString(), value.GetStringLength()}; }

void addDefaults(const Value& section, const std::string& path, Flat& flat) {
    const auto unique = section.FindMember("unique");
    const bool isUnique = unique == section.MemberEnd() || unique->value.GetBool();
    for (const Value& setting : section["defaultsettings"].GetArray()) {
        const std::string name = textOf(setting["name"]);
        flat.emplace(folded(path + "::" + name), textOf(setting["value"]));
        if (isUnique) {
            flat.emplace(folded(name), textOf(setting["value"]));
        }
    }
}

void addUserValues(const Value& section, const std::string& path, Flat& flat) {
    for (const Value& object : section["overriddensettings"].GetArray()) {
        for (const auto& member : object.GetObject()) {
            const std::string name = textOf(member.name);
            flat[folded(path + "::" + name)] = textOf(member.value);
            const auto bare = flat.find(folded(name));
            if (bare != flat.end()) {
                bare->second = textOf(member.value);
            }
        }
    }
}

void flatten(const Value& sections, const std::string& outer, Flat& flat) {
    for (const Value& section : sections.GetArray()) {
        const std::string attribute = textOf(section["attribute"]);
        const std::string path = outer.empty() ? attribute : outer + "::" + attribute;
        if (section.HasMember("defaultsettings")) {
            addDefaults(section, path, flat);
        }
        if (section.HasMember("overriddensettings")) {
            addUserValues(section, path, flat);
        }
        if (section.HasMember("children")) {
            flatten(section["children"], path, flat);
        }
    }
}

}  // namespace

int main(int argc, char** argv) {
    return run(argc, argv, [](const std::string& name) {
        Flat flat;
        for (const std::string& file : {defaultsFile(), userFile()}) {
            std::string text = read(file);
            rapidjson::Document document;
            document.ParseInsitu(text.data());
            flatten(document["meta"], "", flat);
        }
        const std::size_t length = flat.find(folded(name))->second.size();
        return std::pair(std::move(flat), length);
    });
}
