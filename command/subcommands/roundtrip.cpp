// zelutil roundtrip: what of the user's shortcuts a restart does not bring back, and the cure.
#include <zelutil/actions/action_manager.h>

#include <algorithm>
#include <iterator>
#include <map>
#include <set>
#include <sstream>
#include <string>
#include <vector>

#include "command/arguments.h"
#include "command/explain/unread_user_file.h"
#include "command/obstacle_advice.h"
#include "command/shortcuts/known_shortcuts.h"
#include "command/shortcuts/round_trip.h"
#include "command/shortcuts/shortcut_changes.h"
#include "command/subcommands/table.h"
#include "command/text.h"

namespace zelutil::command {
namespace {

using shortcuts::KeyWish;
using shortcuts::KnownShortcuts;
using shortcuts::RoundTrip;

/// Says what to do about an entry for an action that takes over what its parent has; empty for another entry.
std::string cureOf(const host::StartWarning& warning, const KnownShortcuts& known) {
    const shortcuts::ShortcutRow* const row = findRow(known.rows(), warning.action);
    const int parent = row == nullptr ? 0 : row->action.item.parent_id;
    return parent < 1 ? "" : "Write the entry for its parent, action " + labelOf(known.rows(), parent) + '.';
}

/// Returns the wishes that can be granted.
std::vector<KeyWish> curable(const RoundTrip& trip) {
    const std::set<int> refused(trip.cure.refused.begin(), trip.cure.refused.end());
    std::vector<KeyWish> wishes;
    std::copy_if(trip.wishes.begin(), trip.wishes.end(), std::back_inserter(wishes),
                 [&](const KeyWish& wish) { return refused.count(wish.action) == 0; });
    return wishes;
}

/// Writes the member "actions" of a wish list in the form of a profile.
void writeCure(JsonWriter& json, const std::vector<KeyWish>& wishes, const std::map<int, bool>& menuFlags) {
    std::map<int, const KeyWish*> byAction;
    for (const auto& [id, inMenu] : menuFlags) {
        byAction[id] = nullptr;
    }
    for (const KeyWish& wish : wishes) {
        byAction[wish.action] = &wish;
    }
    json.objects("actions", byAction, [&](const auto& entry) {
        const auto flag = menuFlags.find(entry.first);
        json.member("id", entry.first);
        if (entry.second != nullptr) {
            json.member("shortcut", entry.second->shortcut);
        }
        if (flag != menuFlags.end()) {
            json.member("inMenu", flag->second);
        }
    });
}

/// A list with a wish a line has no menu flags, and the form of a profile has.
std::vector<std::string> linesOfWishes(const std::vector<KeyWish>& wishes, const std::map<int, bool>& menuFlags) {
    std::vector<std::string> lines;
    for (const KeyWish& wish : wishes) {
        lines.push_back(std::to_string(wish.action) + " = " + printable(wish.shortcut));
    }
    if (menuFlags.empty()) {
        return lines;
    }
    JsonWriter json;
    json.beginObject();
    writeCure(json, wishes, menuFlags);
    json.endObject();
    std::istringstream text(json.take().value_or(""));
    lines.clear();
    for (std::string line; std::getline(text, line);) {
        lines.push_back(line);
    }
    return lines;
}

/// Tells the wish list that grants what the entries ask for, and who is in the way of the rest.
void tellCure(const RoundTrip& trip, const KnownShortcuts& known, Output& output) {
    const std::vector<KeyWish> wishes = curable(trip);
    if (!wishes.empty() || !trip.menuWishes.empty()) {
        output.line("The user's file asks for what its actions did not get. \"zelutil plan --apply\" of a file with");
        output.line("these lines gives it:");
        for (const std::string& line : linesOfWishes(wishes, trip.menuWishes)) {
            output.line("  {}", line);
        }
    }
    tellInTheWay(trip.cure.inTheWay, known.rows(), output);
}

void tellOldCalls(const RoundTrip& trip, const KnownShortcuts& known, Output& output) {
    for (const int id : trip.lostByOldCalls) {
        output.add({Severity::Note,
                    "An application that saves by the old calls loses something of action " +
                        labelOf(known.rows(), id) + " or of its place.",
                    "Such an application hands over the text of zelutil::host::restorableActionsText instead.",
                    std::nullopt});
    }
}

void writeTrip(const RoundTrip& trip, const KnownShortcuts& known, JsonWriter& json) {
    json.objects("withoutEffect", trip.withoutEffect, [&](const host::StartWarning& warning) {
        json.member("action", warning.action);
        json.member("holder", warning.holder);
        json.member("refused", warning.kind == host::StartWarning::Kind::ShortcutRefused);
        json.member("text", warning.text);
        json.member("cure", cureOf(warning, known));
    });
    json.objects("wishes", trip.wishes, [&](const KeyWish& wish) {
        json.member("id", wish.action);
        json.member("shortcut", wish.shortcut);
    });
    shortcuts::writeMenuFlags(json, trip.menuWishes);
    writeEdits(json, trip.cure.plan.edits);
    writeInTheWay(json, trip.cure.inTheWay);
    json.objects("notRestored", trip.notRestored, [&](const host::NotRestored& item) {
        json.member("action", item.action);
        json.member("otherAction", item.otherAction);
        json.member("text", item.text);
        json.member("cure", adviceOn(item.obstacle));
    });
    json.member("userFileRead", !isUserFileUnread());
    json.list("lostByOldCalls", trip.lostByOldCalls, [&](int id) { json.integer(id); });
    json.member("text", trip.text);
}

void tellRoundTrip(Output& output) {
    const KnownShortcuts known(output);
    if (!known.areThere()) {
        return;
    }
    const RoundTrip trip = shortcuts::roundTrip(UCPActionManager::instance(), shortcuts::unreadActions());
    for (const host::StartWarning& warning : trip.withoutEffect) {
        output.add({Severity::Warning, warning.text, cureOf(warning, known), std::nullopt});
    }
    for (const host::NotRestored& item : trip.notRestored) {
        output.add({Severity::Warning, item.text, adviceOn(item.obstacle), std::nullopt});
    }
    tellCure(trip, known, output);
    tellOldCalls(trip, known, output);
    output.members([&](JsonWriter& json) { writeTrip(trip, known, json); });
    if (isUserFileUnread()) {
        output.line("Nothing is known of what a restart brings back: the user's file is not read.");
    } else if (trip.withoutEffect.empty() && trip.wishes.empty() && trip.menuWishes.empty() &&
               trip.notRestored.empty()) {
        output.line("A restart brings back all shortcuts and menu flags.");
    }
}

Work declareRoundTrip(CLI::App& /*arguments*/) { return tellRoundTrip; }

}  // namespace

const Subcommand kRoundTrip{"roundtrip",
                            "Say which shortcuts and menu flags a restart does not bring back, and the cure",
                            "$ zelutil roundtrip\n"
                            "A restart brings back all shortcuts and menu flags.",
                            FindingsAre::TheResult, declareRoundTrip};

}  // namespace zelutil::command
