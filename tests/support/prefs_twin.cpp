#include "support/prefs_twin.h"

#include <algorithm>
#include <cstdlib>
#include <limits>
#include <tuple>
#include <utility>

namespace zelutil::test {
namespace {

using Kind = TwinJson::Kind;

constexpr std::int32_t kActions = 100;
constexpr std::int32_t kNoSubManager = 101;

std::string lower(std::string name) {
    for (char& c : name) {
        if (c >= 'A' && c <= 'Z') {
            c = static_cast<char>(c - 'A' + 'a');
        }
    }
    return name;
}

/// FNV-1a, 64 bits, of the lower-cased name.
std::uint64_t hashOf(const std::string& name) {
    std::uint64_t hash = 0xcbf29ce484222325U;
    for (const char c : lower(name)) {
        hash ^= static_cast<unsigned char>(c);
        hash *= 0x100000001b3U;
    }
    return hash;
}

std::string join(const std::string& parent, const std::string& child) {
    return parent.empty() ? child : parent + "::" + child;
}

/// The member, where it is of that kind; otherwise it counts as missing.
const TwinJson* memberOf(const TwinJson& object, std::string_view name, Kind kind) {
    const TwinJson* const member = test::memberOf(object, name);
    return member != nullptr && member->is(kind) ? member : nullptr;
}

std::int32_t subManagerIdOf(const TwinJson& section) {
    const TwinJson* const id = memberOf(section, "submanagerId", Kind::Integer);
    if (id == nullptr) {
        return kNoSubManager;
    }
    const long long number = std::atoll(id->text.c_str());
    const bool fits = number >= std::numeric_limits<std::int32_t>::min() &&  //
                      number <= std::numeric_limits<std::int32_t>::max();
    return fits ? static_cast<std::int32_t>(number) : kNoSubManager;
}

/// Removes the first member of that name; those behind it move up.
void removeMember(TwinJson& object, std::string_view name) {
    const auto found = std::find(object.names.begin(), object.names.end(), name);
    if (found != object.names.end()) {
        object.values.erase(object.values.begin() + (found - object.names.begin()));
        object.names.erase(found);
    }
}

/// The first member of that name becomes `value`, or else a new one at the end.
void setMember(TwinJson& object, const std::string& name, TwinJson value) {
    if (TwinJson* const member = test::memberOf(object, name)) {
        *member = std::move(value);
        return;
    }
    object.names.push_back(name);
    object.values.push_back(std::move(value));
}

TwinJson stringOf(const std::string& text) {
    TwinJson value;
    value.kind = Kind::String;
    value.text = text;
    return value;
}

TwinJson emptyArray() {
    TwinJson value;
    value.kind = Kind::Array;
    return value;
}

}  // namespace

bool TwinSection::operator==(const TwinSection& other) const {
    return std::tie(parentHeader, header, attributePath, tclCommand, unique, submanagerId, hasChildren) ==
           std::tie(other.parentHeader, other.header, other.attributePath, other.tclCommand, other.unique,
                    other.submanagerId, other.hasChildren);
}

PrefsTwin::PrefsTwin(const std::string& defaultsText, const std::string& userText) : defaultsText_(defaultsText) {
    if (const auto defaults = readTwinJson(defaultsText)) {
        parseDefaults(test::memberOf(*defaults, "meta"), "", "");
    }
    if (const auto user = readTwinJson(userText)) {
        parseUser(test::memberOf(*user, "meta"), "");
    }
}

const TwinSetting* PrefsTwin::find(const std::string& name) const {
    const auto found = settings_.find(hashOf(name));
    return found == settings_.end() ? nullptr : found->second.get();
}

std::vector<TwinActionTexts> PrefsTwin::actionLoads() const {
    std::vector<TwinActionTexts> loads;
    for (const auto& [path, section] : sections_) {
        const auto defaults = defaultTexts_.find(section.submanagerId);
        if (section.submanagerId != kActions || defaults == defaultTexts_.end()) {
            continue;
        }
        const auto user = userTexts_.find(section.submanagerId);
        loads.push_back({defaults->second, user == userTexts_.end() ? "{}" : user->second});
    }
    return loads;
}

void PrefsTwin::parseDefaults(const TwinJson* array, const std::string& parentHeader,
                              const std::string& parentAttribute) {
    if (array == nullptr || !array->is(Kind::Array)) {
        return;
    }
    for (const TwinJson& element : array->values) {
        const TwinJson* const header = memberOf(element, "header", Kind::String);
        const TwinJson* const attribute = memberOf(element, "attribute", Kind::String);
        if (header == nullptr || attribute == nullptr) {
            continue;
        }
        const std::string headerPath = join(parentHeader, header->text);
        const std::string attributePath = join(parentAttribute, attribute->text);
        const TwinJson* const children = memberOf(element, "children", Kind::Array);

        const TwinJson* const tclCommand = memberOf(element, "tclCommand", Kind::String);
        const TwinJson* settings = test::memberOf(element, "defaultsettings");
        const std::int32_t id = subManagerIdOf(element);
        if (settings != nullptr && id == kNoSubManager && !settings->is(Kind::Array)) {
            settings = nullptr;
        }
        if (tclCommand != nullptr && settings != nullptr) {
            TwinSection section;
            section.parentHeader = parentHeader;
            section.header = header->text;
            section.attributePath = attributePath;
            section.tclCommand = tclCommand->text;
            const TwinJson* const unique = test::memberOf(element, "unique");
            section.unique = unique == nullptr || unique->is(Kind::True);
            section.submanagerId = id;
            section.hasChildren = children != nullptr;
            if (id != kNoSubManager) {
                defaultTexts_.emplace(id, compactText(*settings));
            } else {
                parseSettings(*settings, section);
            }
            sections_.emplace(attributePath, section);
        }

        parseDefaults(children, headerPath, attributePath);
    }
}

void PrefsTwin::parseSettings(const TwinJson& settings, const TwinSection& section) {
    for (const TwinJson& element : settings.values) {
        const TwinJson* const name = memberOf(element, "name", Kind::String);
        const TwinJson* const value = memberOf(element, "value", Kind::String);
        if (name == nullptr || value == nullptr) {
            continue;
        }
        const auto setting = std::make_shared<TwinSetting>();
        setting->name = name->text;
        setting->fullName = section.attributePath + "::" + name->text;
        setting->defaultValue = value->text;
        definitions_.push_back({setting->name, setting->fullName, section.unique});
        settings_.emplace(hashOf(setting->fullName), setting);
        if (section.unique) {
            settings_.emplace(hashOf(setting->name), setting);
        }
    }
}

void PrefsTwin::parseUser(const TwinJson* array, const std::string& parentAttribute) {
    if (array == nullptr || !array->is(Kind::Array)) {
        return;
    }
    for (const TwinJson& element : array->values) {
        const TwinJson* const header = memberOf(element, "header", Kind::String);
        const TwinJson* const attribute = memberOf(element, "attribute", Kind::String);
        if (header == nullptr || attribute == nullptr) {
            continue;
        }
        const std::string attributePath = join(parentAttribute, attribute->text);
        const TwinJson* const overridden = test::memberOf(element, "overriddensettings");
        const auto section = sections_.find(attributePath);
        if (overridden != nullptr && section != sections_.end()) {
            if (section->second.submanagerId != kNoSubManager) {
                userTexts_.emplace(section->second.submanagerId, compactText(*overridden));
            } else if (overridden->is(Kind::Array)) {
                parseUserValues(*overridden, attributePath);
            }
        }
        parseUser(memberOf(element, "children", Kind::Array), attributePath);
    }
}

void PrefsTwin::parseUserValues(const TwinJson& overridden, const std::string& attributePath) {
    for (const TwinJson& element : overridden.values) {
        for (std::size_t i = 0; i < element.names.size(); ++i) {
            if (!element.names[i].empty() && element.values[i].is(Kind::String)) {
                setUserValue(attributePath, element.names[i], element.values[i].text);
            }
        }
    }
}

void PrefsTwin::setUserValue(const std::string& attributePath, const std::string& key, const std::string& value) {
    auto found = settings_.find(hashOf(key));
    if (found == settings_.end()) {
        found = settings_.find(hashOf(attributePath + "::" + key));
    }
    if (found != settings_.end()) {
        found->second->userValue = value;
        found->second->hasUserValue = true;
    }
}

PrefsSaved PrefsTwin::save(const std::map<std::string, std::string>& settings,
                           const std::map<std::int32_t, std::string>& subManagerTexts) {
    const ValuesByHash values = valuesToSave(settings);
    const Texts texts = textsToSave(subManagerTexts);
    PrefsSaved saved;
    auto document = readTwinJson(defaultsText_);
    if (!document) {
        return saved;
    }
    saved.told = overrideSections(test::memberOf(*document, "meta"), "", values, texts, saved);
    if (saved.told) {
        saved.text = prettyText(*document);
    }
    return saved;
}

PrefsTwin::ValuesByHash PrefsTwin::valuesToSave(const std::map<std::string, std::string>& settings) const {
    ValuesByHash values;
    for (const auto& [hash, setting] : settings_) {
        if (setting->hasUserValue) {
            values[hashOf(setting->fullName)] = setting->userValue;
        }
    }
    for (const auto& [name, value] : settings) {
        if (const TwinSetting* const setting = find(name)) {
            values[hashOf(setting->fullName)] = value;
        }
    }
    return values;
}

PrefsTwin::Texts PrefsTwin::textsToSave(const Texts& subManagerTexts) const {
    Texts texts;
    for (const auto& [type, text] : userTexts_) {
        const auto value = readTwinJson(text);
        if (value && value->is(Kind::Array) && !value->values.empty()) {
            texts.emplace(type, compactText(*value));
        }
    }
    for (const auto& [type, text] : subManagerTexts) {
        // A text that is no JSON counts as not handed over.
        if (readTwinJson(text)) {
            texts[type] = text;
        }
    }
    return texts;
}

bool PrefsTwin::overrideSections(TwinJson* array, const std::string& parentAttribute, const ValuesByHash& values,
                                 const Texts& texts, PrefsSaved& saved) {
    if (array == nullptr || !array->is(Kind::Array)) {
        return false;
    }
    bool changed = false;
    for (TwinJson& element : array->values) {
        const TwinJson* const header = memberOf(element, "header", Kind::String);
        const TwinJson* const attribute = memberOf(element, "attribute", Kind::String);
        // A section that was not read is left as it stands.
        if (header == nullptr || attribute == nullptr) {
            continue;
        }
        const std::string attributePath = join(parentAttribute, attribute->text);
        removeMember(element, "tclCommand");
        TwinJson overridden = emptyArray();
        const auto section = sections_.find(attributePath);
        if (section != sections_.end() && section->second.submanagerId != kNoSubManager) {
            const auto text = texts.find(section->second.submanagerId);
            if (text != texts.end()) {
                overridden = *readTwinJson(text->second);
                saved.changedTexts[text->first] = text->second;
                changed = true;
            }
        } else if (const TwinJson* const settings = memberOf(element, "defaultsettings", Kind::Array)) {
            changed = overrideSettings(*settings, attributePath, values, overridden, saved) || changed;
        }
        removeMember(element, "defaultsettings");
        setMember(element, "overriddensettings", std::move(overridden));
        changed = overrideSections(test::memberOf(element, "children"), attributePath, values, texts, saved) || changed;
    }
    return changed;
}

bool PrefsTwin::overrideSettings(const TwinJson& settings, const std::string& attributePath, const ValuesByHash& values,
                                 TwinJson& overridden, PrefsSaved& saved) {
    bool changed = false;
    for (const TwinJson& element : settings.values) {
        const TwinJson* const name = memberOf(element, "name", Kind::String);
        const TwinJson* const defaultValue = memberOf(element, "value", Kind::String);
        if (name == nullptr || defaultValue == nullptr) {
            continue;
        }
        const std::string fullName = attributePath + "::" + name->text;
        const std::uint64_t hash = hashOf(fullName);
        const auto value = values.find(hash);
        if (value == values.end()) {
            continue;
        }
        const auto found = settings_.find(hash);
        TwinSetting* const setting = found == settings_.end() ? nullptr : found->second.get();
        const std::string current = setting == nullptr ? "" : setting->value();
        if (value->second == current && (setting == nullptr || !setting->hasUserValue)) {
            continue;
        }
        TwinJson object;
        object.kind = Kind::Object;
        setMember(object, name->text, stringOf(value->second));
        overridden.values.push_back(object);
        if (value->second != current) {
            if (setting != nullptr) {
                setting->userValue = value->second;
                setting->hasUserValue = true;
            }
            saved.changedNames.insert(fullName);
            changed = true;
        }
    }
    return changed;
}

}  // namespace zelutil::test
