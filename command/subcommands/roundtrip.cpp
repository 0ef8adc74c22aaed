// zelutil roundtrip: what of the user's shortcuts a restart does not bring back, and the cure.
#include <zelutil/actions/action_manager.h>

#include "command/arguments.h"
#include "command/shortcuts/known_shortcuts.h"
#include "command/shortcuts/round_trip.h"
#include "command/shortcuts/shortcut_changes.h"
#include "command/subcommands/table.h"

namespace zelutil::command {
namespace {

using shortcuts::KeyWish;
using shortcuts::KnownShortcuts;
using shortcuts::RoundTrip;

std::string cureOf(host::Obstacle obstacle) {
    switch (obstacle) {
        case host::Obstacle::ShippedTwice:
            return "Give one of the two another shortcut, or have the shipped actions mended.";
        case host::Obstacle::TakenByAnother:
            return "Give one of the two another shortcut; \"zelutil free\" lists some.";
        case host::Obstacle::ChildRefuses:
            return "Give the action that holds the shortcut in the child's context another one.";
        case host::Obstacle::FollowsParent:
            return "Change the parent instead.";
        case host::Obstacle::NoPlaceInFile:
            return "The shipped defaults need a section for actions, whose \"submanagerId\" is 100.";
        case host::Obstacle::NameBelongsToAnother:
            break;
    }
    return "";
}

/// Tells the wish list that grants what the entries ask for, or who is in the way.
void tellCure(const RoundTrip& trip, const KnownShortcuts& known, Output& output) {
    if (trip.wishes.empty()) {
        return;
    }
    if (trip.cure.outcome == shortcuts::WishPlan::Outcome::Possible) {
        output.line("The user's file asks for shortcuts that their actions did not get. \"zelutil plan --apply\" of a");
        output.line("file with these lines gives them:");
        for (const KeyWish& wish : trip.wishes) {
            output.line("  {} = {}", wish.action, output.shown(Role::Value, wish.shortcut));
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

void writeTrip(const RoundTrip& trip, JsonWriter& json) {
    json.objects("withoutEffect", trip.withoutEffect, [&](const host::StartWarning& warning) {
        json.member("action", warning.action);
        json.member("holder", warning.holder);
        json.member("refused", warning.kind == host::StartWarning::Kind::ShortcutRefused);
        json.member("text", warning.text);
    });
    json.objects("wishes", trip.wishes, [&](const KeyWish& wish) {
        json.member("id", wish.action);
        json.member("shortcut", wish.shortcut);
    });
    writeEdits(json, trip.cure.edits);
    writeInTheWay(json, trip.cure.inTheWay);
    json.objects("notRestored", trip.notRestored, [&](const host::NotRestored& item) {
        json.member("action", item.action);
        json.member("otherAction", item.otherAction);
        json.member("text", item.text);
        json.member("cure", cureOf(item.obstacle));
    });
    json.list("lostByOldCalls", trip.lostByOldCalls, [&](int id) { json.integer(id); });
    json.member("text", trip.text);
}

void tellRoundTrip(Output& output) {
    const KnownShortcuts known(output);
    if (!known.areThere()) {
        return;
    }
    const RoundTrip trip = shortcuts::roundTrip(UCPActionManager::instance());
    for (const host::StartWarning& warning : trip.withoutEffect) {
        output.add({Severity::Warning, warning.text, "", std::nullopt});
    }
    for (const host::NotRestored& item : trip.notRestored) {
        output.add({Severity::Warning, item.text, cureOf(item.obstacle), std::nullopt});
    }
    tellCure(trip, known, output);
    tellOldCalls(trip, known, output);
    output.members([&](JsonWriter& json) { writeTrip(trip, json); });
    if (trip.withoutEffect.empty() && trip.wishes.empty() && trip.notRestored.empty()) {
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
