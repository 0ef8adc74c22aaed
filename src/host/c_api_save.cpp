// The C interface: saves and resets.
#include <zelutil/actions/action_manager.h>
#include <zelutil/host/c_api.h>
#include <zelutil/host/save.h>
#include <zelutil/prefs/user_preference_manager.h>

#include <algorithm>
#include <map>
#include <string>
#include <utility>
#include <vector>

#include "host/c_api_guard.h"
#include "host/c_api_records.h"
#include "host/current_preferences.h"

namespace c = zelutil::host::c;
namespace host = zelutil::host;
namespace prefs = zelutil::prefs;

namespace {

using Status = host::SaveResult::Status;

zelutil_status codeOf(Status status) {
    switch (status) {
        case Status::Saved:
        case Status::Unchanged:
            return ZELUTIL_OK;
        case Status::NoDefaults:
            return ZELUTIL_NO_DEFAULTS;
        case Status::NoPath:
            return ZELUTIL_NO_PATH;
        case Status::NotKept:
            return ZELUTIL_NOT_KEPT;
        case Status::NotWritten:
            return ZELUTIL_NOT_WRITTEN;
        case Status::Torn:
            return ZELUTIL_TORN;
        case Status::TooDeep:
            return ZELUTIL_TOO_DEEP;
        case Status::Starting:
            return ZELUTIL_STARTING;
    }
    return ZELUTIL_FAILED;
}

zelutil_ids viewOf(const std::vector<int>& ids) { return {c::countOf(ids.size()), ids.data()}; }

/// The result of a save, as C sees it.
class Result {
public:
    explicit Result(host::SaveResult source)
        : source_(std::move(source)),
          changedSettings_(source_.changedSettings),
          unknownSettings_(source_.unknownSettings),
          settingsOfOthers_(source_.settingsOfOthers),
          notRestored_(source_.notRestored),
          conflicts_(source_.conflicts) {}

    zelutil_save_result view() const {
        zelutil_save_result result{};
        result.status = codeOf(source_.status);
        result.written = source_.status == Status::Saved;
        result.text = source_.text.c_str();
        result.path = source_.path.c_str();
        result.keptCopy = source_.keptCopy.c_str();
        result.changedSettings = changedSettings_.view();
        result.unknownSettings = unknownSettings_.view();
        result.savedActions = viewOf(source_.savedActions);
        result.notRestored = notRestored_.view();
        result.conflicts = conflicts_.view();
        result.settingsOfOthers = settingsOfOthers_.view();
        result.actionsOfOthers = viewOf(source_.actionsOfOthers);
        return result;
    }

private:
    host::SaveResult source_;
    c::Names changedSettings_;
    c::Names unknownSettings_;
    c::Names settingsOfOthers_;
    c::NotRestoredList notRestored_;
    c::Conflicts conflicts_;
};

using ResultHandedOut = c::HandedOut<zelutil_save_result, Result>;

/// Does what a save or a reset does, where what it was given is `valid`, and hands its result out, where there is a
/// place for it.
template <typename Action>
zelutil_status saveInto(const zelutil_save_result** out, bool valid, Action save) {
    if (out != nullptr) {
        *out = nullptr;
    }
    if (!valid) {
        return ZELUTIL_BAD_ARGUMENT;
    }
    return c::guarded([&] {
        host::SaveResult result = save();
        const zelutil_status status = codeOf(result.status);
        if (out != nullptr) {
            *out = new ResultHandedOut(std::move(result));
        }
        return status;
    });
}

template <typename Item>
bool isArray(const Item* items, int count) {
    return count == 0 || (count > 0 && items != nullptr);
}

/// Collects values by the names that they are saved by; a later one for the same setting takes the place of one before,
/// however both name it.
class Values {
public:
    void add(const std::string& name, const char* value) {
        const prefs::Setting* const setting = preferences_ == nullptr ? nullptr : preferences_->catalogue.find(name);
        if (setting != nullptr) {
            const auto [named, isNew] = names_.try_emplace(setting, name);
            if (!isNew) {
                values_.erase(std::exchange(named->second, name));
            }
        }
        values_[name] = value;
    }

    const std::map<std::string, std::string>& all() const { return values_; }

private:
    const prefs::Preferences* preferences_ = host::currentPreferences();
    std::map<std::string, std::string> values_;
    std::map<const prefs::Setting*, std::string> names_;
};

bool isWhole(const zelutil_value& value) { return value.name != nullptr && value.value != nullptr; }

class RestorableText {
public:
    explicit RestorableText(host::RestorableText source)
        : text_(std::move(source.text)), notRestored_(std::move(source.notRestored)) {}

    zelutil_restorable_text view() const { return {text_.c_str(), notRestored_.view()}; }

private:
    std::string text_;
    c::NotRestoredList notRestored_;
};

using RestorableTextHandedOut = c::HandedOut<zelutil_restorable_text, RestorableText>;

}  // namespace

zelutil_status zelutil_save(const zelutil_value* values, int count, const zelutil_save_result** result) {
    const bool valid = isArray(values, count) && std::all_of(values, values + count, isWhole);
    return saveInto(result, valid, [&] {
        Values settings;
        std::for_each(values, values + count,
                      [&](const zelutil_value& value) { settings.add(value.name, value.value); });
        return host::save(settings.all());
    });
}

zelutil_status zelutil_reset(const char* const* names, int count, const zelutil_save_result** result) {
    const bool valid = isArray(names, count) && std::find(names, names + count, nullptr) == names + count;
    return saveInto(result, valid, [&] { return host::reset(std::vector<std::string>(names, names + count)); });
}

zelutil_status zelutil_reset_shortcuts(const int* ids, int count, const zelutil_save_result** result) {
    return saveInto(result, isArray(ids, count),
                    [&] { return host::resetShortcuts(std::vector<int>(ids, ids + count)); });
}

zelutil_status zelutil_reset_all_shortcuts(const zelutil_save_result** result) {
    return saveInto(result, true, [] { return host::resetAllShortcuts(); });
}

void zelutil_save_result_free(const zelutil_save_result* result) { ResultHandedOut::free(result); }

zelutil_status zelutil_get_restorable_actions_text(const zelutil_restorable_text** text) {
    return c::guardedInto(text, [] {
        if (!host::arePreferencesBeingMade()) {
            UserPreferenceManager::GetInstance();
        }
        return new RestorableTextHandedOut(host::restorableActionsText(UCPActionManager::instance()));
    });
}

void zelutil_restorable_text_free(const zelutil_restorable_text* text) { RestorableTextHandedOut::free(text); }
