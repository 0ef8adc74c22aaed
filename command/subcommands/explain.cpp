// zelutil explain: why settings have the values that they have.
#include <memory>
#include <set>
#include <utility>

#include "command/arguments.h"
#include "command/command_line_text.h"
#include "command/doctor/candidate_text.h"
#include "command/explain/setting_account.h"
#include "command/explain/unread_user_file.h"
#include "command/known_settings.h"
#include "command/subcommands/table.h"
#include "command/text.h"
#include "host/typed_values.h"
#include "prefs/setting.h"
#include "prefs/setting_name.h"

namespace zelutil::command {
namespace {

/// A name that was asked for and the setting that it finds.
struct Explained {
    std::string asked;
    bool isFullName = false;
    SettingAccount account;
    std::vector<SettingAccount::Namesake> lenders;
};

Place explainedPlace(const std::string& file, const json::Position& position) {
    return {file, static_cast<int>(position.line), static_cast<int>(position.column)};
}

std::string textOfPlace(const Place& place) {
    return place.file + ':' + std::to_string(place.line.value_or(0)) + ':' + std::to_string(place.column.value_or(0));
}

/// Returns the text in quotes, with a backslash before each quote and backslash in it.
std::string quotedAnswer(std::string_view text) {
    std::string quoted = "\"";
    for (const char c : text) {
        quoted += c == '"' || c == '\\' ? std::string("\\") + c : std::string(1, c);
    }
    return quoted + '"';
}

std::string textOfCharacters(const std::string& value) {
    const char* const characters = prefs::charactersOrNull(value);
    return characters == nullptr ? "null" : quotedAnswer(characters);
}

/// Says what a typed read gives of a value.
template <typename T>
std::string typedText(const std::optional<T>& value) {
    return value ? host::textOf(*value) : "ZELUTIL_WRONG_TYPE";
}

class Explanation {
public:
    explicit Explanation(Output& output) : output_(output) {
        defaultsFile_ = nativeOrAsItStands(accounts_.defaultsFile().path);
        userFile_ = nativeOrAsItStands(accounts_.userFile().path);
    }

    void run(const std::vector<std::string>& names) {
        if (accounts_.empty()) {
            failWithoutDefaults("setting", output_);
            return;
        }
        tellUnreadUserFile(accounts_, output_);
        std::vector<Explained> all;
        for (const std::string& name : names) {
            if (const auto number = accounts_.find(name)) {
                all.push_back({name, accounts_.isFullName(name, *number), accounts_.account(*number),
                               accounts_.lenders(*number)});
            } else {
                tellUnknown(name);
            }
        }
        for (const Explained& one : all) {
            print(one);
            addFindings(one.account);
        }
        output_.members(
            [&](JsonWriter& json) { json.objects("settings", all, [&](const Explained& one) { write(json, one); }); });
    }

private:
    void tellUnknown(const std::string& name);
    void addFinding(const UserEntry& entry);
    void addFindings(const SettingAccount& account);
    void print(const Explained& one);
    void printEntry(const UserEntry& entry, const std::string& section);
    void printNamesakes(const Explained& one);
    void write(JsonWriter& json, const Explained& one);
    void writeFunctions(JsonWriter& json, const host::SettingInfo& setting);
    void writePlace(JsonWriter& json, const std::string& file, const PairPlace& place);
    void writeEntry(JsonWriter& json, const UserEntry& entry);

    Output& output_;
    SettingAccounts accounts_;
    /// Is there once a name is not known.
    std::optional<UnknownSettings> unknown_;
    std::string defaultsFile_;
    std::string userFile_;
    /// The places of the entries that were told of, and the texts.
    std::set<std::pair<std::size_t, std::string>> told_;
};

void Explanation::tellUnknown(const std::string& name) {
    if (!unknown_) {
        unknown_.emplace(accounts_.names());
    }
    output_.add(unknown_->finding(name));
    for (const UserEntry& entry : accounts_.entriesWithoutSetting()) {
        const std::string fullName = entry.section + std::string(prefs::kNameSeparator) + entry.name;
        if (prefs::keyOf(name) == prefs::keyOf(entry.name) || prefs::keyOf(name) == prefs::keyOf(fullName)) {
            addFinding(entry);
        }
    }
}

void Explanation::addFinding(const UserEntry& entry) {
    std::string text = "The entry \"" + entry.name + "\" " + outcomeOf(entry) + ". " + reasonOf(entry);
    // Two names may find the same entry.
    if (!told_.emplace(entry.place.name.offset, text).second) {
        return;
    }
    output_.add({Severity::Warning, std::move(text),
                 "This checks the whole file: " + commandLineFor(userFile_, defaultsFile_),
                 explainedPlace(userFile_, entry.place.name)});
}

void Explanation::addFindings(const SettingAccount& account) {
    for (const UserEntry& entry : account.entries) {
        if (entry.effect != UserEntry::Effect::InForce) {
            addFinding(entry);
        }
    }
}

void Explanation::print(const Explained& one) {
    const SettingAccount& account = one.account;
    const host::SettingInfo& info = account.info;
    const auto value = [&](const std::string& text) { return output_.shownValue(Role::Value, text); };
    const auto place = [&](const std::string& file, const json::Position& at) {
        return output_.shown(Role::Faint, textOfPlace(explainedPlace(file, at)));
    };
    output_.line("{}={}", output_.shown(Role::Name, info.fullName), value(info.value));
    output_.line("  asked for as {}, its {} name", output_.shown(Role::Name, one.asked),
                 one.isFullName ? "full" : "bare");
    output_.line("  section: {}", output_.shown(Role::Name, info.section));
    output_.line("  default: {}, at {}", value(info.defaultValue), place(defaultsFile_, account.definition.value));
    if (const UserEntry* const entry = account.entryInForce()) {
        output_.line("  user's value: {}, at {}", value(*entry->value), place(userFile_, entry->place.value));
    } else {
        output_.line("  user's value: none");
    }
    output_.line("  get_user_setting: {}", value(textOfCharacters(info.value)));
    output_.line("  get_default_user_setting: {}", value(textOfCharacters(info.defaultValue)));
    output_.line("  zelutil_read_bool: {}, zelutil_read_int: {}, zelutil_read_double: {}",
                 value(typedText(host::boolOf(info.value))), value(typedText(host::intOf(info.value))),
                 value(typedText(host::doubleOf(info.value))));
    printNamesakes(one);
    for (const UserEntry& entry : account.entries) {
        printEntry(entry, info.section);
    }
}

void Explanation::printNamesakes(const Explained& one) {
    const auto line = [&](const char* text, const SettingAccount::Namesake& other) {
        output_.line("  {} {}, at {}", text, output_.shown(Role::Name, other.fullName),
                     output_.shown(Role::Faint, textOfPlace(explainedPlace(defaultsFile_, other.place.name))));
    };
    if (one.lenders.size() > 1) {
        for (const SettingAccount::Namesake& lender : one.lenders) {
            line("the bare name is lent by", lender);
        }
    }
    for (const SettingAccount::Namesake& repetition : one.account.repetitions) {
        line("defined again, without effect:", repetition);
    }
}

void Explanation::printEntry(const UserEntry& entry, const std::string& section) {
    const std::string at = output_.shown(Role::Faint, textOfPlace(explainedPlace(userFile_, entry.place.name)));
    const std::string reason = reasonOf(entry);
    const std::string effect = !reason.empty()            ? std::string(outcomeOf(entry)) + ". " + reason
                               : entry.section == section ? "in force."
                                                          : "in force, from the section \"" + entry.section + "\".";
    output_.line("  entry {}, at {}: {}", output_.shown(Role::Name, entry.name), at,
                 output_.shown(reason.empty() ? Role::Value : Role::Old, effect));
}

void Explanation::writePlace(JsonWriter& json, const std::string& file, const PairPlace& place) {
    json.member("file", file);
    json.member("line", static_cast<int>(place.name.line));
    json.member("column", static_cast<int>(place.name.column));
    json.member("valueLine", static_cast<int>(place.value.line));
    json.member("valueColumn", static_cast<int>(place.value.column));
}

void Explanation::writeEntry(JsonWriter& json, const UserEntry& entry) {
    json.member("section", entry.section);
    json.member("name", entry.name);
    if (entry.value) {
        json.member("value", *entry.value);
    }
    json.member("effect", nameOf(entry.effect));
    if (!entry.other.empty()) {
        json.member("other", entry.other);
    }
    if (entry.overruledBy) {
        json.key("overruledBy");
        json.beginObject();
        json.member("line", static_cast<int>(entry.overruledBy->line));
        json.member("column", static_cast<int>(entry.overruledBy->column));
        json.endObject();
    }
    writePlace(json, userFile_, entry.place);
}

/// Writes what the functions return; one that returns null, or says that the value is of another type, is left out.
void Explanation::writeFunctions(JsonWriter& json, const host::SettingInfo& setting) {
    json.key("functions");
    json.beginObject();
    if (const char* const text = prefs::charactersOrNull(setting.value)) {
        json.member("get_user_setting", text);
    }
    if (const char* const text = prefs::charactersOrNull(setting.defaultValue)) {
        json.member("get_default_user_setting", text);
    }
    if (const auto truth = host::boolOf(setting.value)) {
        json.member("zelutil_read_bool", *truth);
    }
    if (const auto number = host::intOf(setting.value)) {
        json.member("zelutil_read_int", *number);
    }
    if (const auto number = host::doubleOf(setting.value)) {
        json.member("zelutil_read_double", host::textOf(*number));
    }
    json.endObject();
}

void Explanation::write(JsonWriter& json, const Explained& one) {
    const SettingAccount& account = one.account;
    writeMembers(json, account.info);
    json.member("asked", one.asked);
    json.member("foundBy", one.isFullName ? "full-name" : "bare-name");
    writeFunctions(json, account.info);
    json.key("definition");
    json.beginObject();
    writePlace(json, defaultsFile_, account.definition);
    json.endObject();
    json.objects("entries", account.entries, [&](const UserEntry& entry) { writeEntry(json, entry); });
    const auto namesakes = [&](const char* name, const std::vector<SettingAccount::Namesake>& others) {
        json.objects(name, others, [&](const SettingAccount::Namesake& other) {
            json.member("name", other.fullName);
            writePlace(json, defaultsFile_, other.place);
        });
    };
    namesakes("lenders", one.lenders);
    namesakes("repetitions", account.repetitions);
}

Work declareExplain(CLI::App& arguments) {
    const auto names = std::make_shared<std::vector<std::string>>();
    addTexts(arguments, "NAME", *names, "Settings, by bare or full name")->required();
    return [names](Output& output) { Explanation(output).run(*names); };
}

}  // namespace

const Subcommand kExplain{"explain",
                          "Say why settings have their values: default, user's value, places, names",
                          "$ zelutil explain grid\n"
                          "display::grids::grid=0.635\n"
                          "  asked for as grid, its bare name\n"
                          "  section: display::grids\n"
                          "  default: 0.635, at /opt/product/.../tessel_settings.cfg:154:51\n"
                          "  user's value: none",
                          FindingsAre::BesideResult,
                          declareExplain,
                          Completes::Settings};

}  // namespace zelutil::command
