#include "support/prefs_pair.h"

#include <zelutil/actions/action_manager.h>

#include <set>

namespace zelutil::test {
namespace {

/// Returns what the action manager of this process holds.
std::string actionsText() {
    std::string text;
    for (const UCPActionItem& item : UCPActionManager::instance().getAllActions()) {
        text += std::to_string(item.id) + " " + item.context + " " + item.command + " " + item.shortcut.defaultValue +
                " " + item.shortcut.userValue + "\n";
    }
    return text + UCPActionManager::instance().getAllUserSettings();
}

/// Tells whether anything is loaded afterwards.
void loadMarkedActions() {
    UCPActionManager::instance().load(R"({"actions":[{"id":99,"context":"mark","command":"m","shortcut":"M"}]})", "{}");
}

bool same(const std::string* real, const std::string* expected) {
    return real == nullptr || expected == nullptr ? real == expected : *real == *expected;
}

std::string shown(const std::string* text) { return text == nullptr ? "nothing" : "\"" + *text + "\""; }

std::string differenceOf(const std::string& what, const std::string& real, const std::string& expected) {
    return what + " is " + real + "\ninstead of " + expected;
}

std::string listOf(const std::set<std::string>& names) {
    std::string list;
    for (const std::string& name : names) {
        list += "\"" + name + "\" ";
    }
    return list;
}

std::string listOf(const std::map<std::int32_t, std::string>& texts) {
    std::string list;
    for (const auto& [type, text] : texts) {
        list += std::to_string(type) + ": " + text + "; ";
    }
    return list;
}

}  // namespace

std::string PrefsPair::compareSections() const {
    const auto real = subject_.sections();
    for (const auto& [path, section] : twin_.sections()) {
        const auto found = real.find(path);
        if (found == real.end() || !(found->second == section)) {
            return "section \"" + path + "\"";
        }
    }
    return real.size() == twin_.sections().size() ? "" : "a section too many";
}

std::string PrefsPair::compareActions() {
    loadMarkedActions();
    const bool registered = subject_.initializeSubManagers();
    const std::string real = actionsText();
    loadMarkedActions();
    const auto loads = twin_.actionLoads();
    for (const TwinActionTexts& texts : loads) {
        UCPActionManager::instance().load(texts.defaults, texts.user);
    }
    if (registered == loads.empty()) {
        return registered ? "the action manager is registered" : "the action manager is not registered";
    }
    const std::string expected = actionsText();
    return real == expected ? "" : differenceOf("the actions' text", real, expected);
}

std::string PrefsPair::compareValues(const std::vector<std::string>& names) const {
    for (const std::string& name : names) {
        const std::string difference = compareValue(name);
        if (!difference.empty()) {
            return difference;
        }
    }
    for (const auto& [hash, setting] : twin_.settings()) {
        const std::string difference = compareValue(setting->name) + compareValue(setting->fullName);
        if (!difference.empty()) {
            return difference;
        }
    }
    return "";
}

std::string PrefsPair::compareValue(const std::string& name) const {
    const TwinSetting* const setting = twin_.find(name);
    const std::string* const value = setting == nullptr ? nullptr : &setting->value();
    if (!same(subject_.value(name), value)) {
        return differenceOf("the value of \"" + name + "\"", shown(subject_.value(name)), shown(value));
    }
    const std::string* const defaultValue = setting == nullptr ? nullptr : &setting->defaultValue;
    if (!same(subject_.defaultValue(name), defaultValue)) {
        return differenceOf("the default of \"" + name + "\"", shown(subject_.defaultValue(name)), shown(defaultValue));
    }
    return "";
}

std::string PrefsPair::compareSave(const std::map<std::string, std::string>& settings,
                                   const std::map<std::int32_t, std::string>& subManagerTexts, PrefsSaved& saved) {
    const PrefsSaved real = subject_.save(settings, subManagerTexts);
    saved = twin_.save(settings, subManagerTexts);
    if (real.told != saved.told) {
        return real.told ? "the save is told" : "the save is not told";
    }
    if (real.text != saved.text) {
        return differenceOf("the file", real.text.value_or("(not written)"), saved.text.value_or("(not written)"));
    }
    if (real.changedNames != saved.changedNames) {
        return differenceOf("the list of names", listOf(real.changedNames), listOf(saved.changedNames));
    }
    if (real.changedTexts != saved.changedTexts) {
        return differenceOf("the list of texts", listOf(real.changedTexts), listOf(saved.changedTexts));
    }
    return "";
}

}  // namespace zelutil::test
