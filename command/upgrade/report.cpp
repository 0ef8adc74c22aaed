#include "command/upgrade/report.h"

#include <utility>

#include "command/command_line_text.h"
#include "command/lint/file_kind.h"
#include "command/spelling_advice.h"
#include "command/text.h"
#include "json/document.h"
#include "json/writer.h"

namespace zelutil::command::upgrade {
namespace {

using Status = UserResult::Status;

// --- JSON -----------------------------------------------------------------------------------------------------------

/// Writes what takes the place of something; nothing where there is no such thing any more.
template <typename Value>
void writeNow(JsonWriter& json, const std::optional<Value>& now) {
    if (now) {
        json.member("now", *now);
    }
}

void writeSuccessor(JsonWriter& json, int successor) {
    if (successor != 0) {
        json.member("successor", successor);
    }
}

void writeSettings(JsonWriter& json, const Effect& effect) {
    json.objects("dropped", effect.dropped, [&](const DroppedValue& value) {
        json.member("name", value.name);
        json.member("value", value.value);
        writeNow(json, value.now);
    });
    json.objects("meaningless", effect.meaningless, [&](const MeaninglessEntry& entry) {
        json.member("section", entry.section);
        json.member("name", entry.name);
        if (entry.section.empty()) {
            json.member("action", entry.action);
            json.member("text", entry.text);
        }
    });
    json.objects("masked", effect.masked, [&](const MaskedDefault& value) {
        json.member("name", value.name);
        json.member("value", value.value);
        json.member("oldDefault", value.oldDefault);
        json.member("newDefault", value.newDefault);
    });
    json.objects("gained", effect.gained, [&](const GainedValue& value) {
        json.member("name", value.name);
        json.member("value", value.value);
    });
}

void writeOwner(JsonWriter& json, const char* name, const ChangedKey::Owner& owner) {
    json.key(name);
    json.beginObject();
    json.member("action", owner.action);
    json.member("command", owner.command);
    json.member("fallback", owner.byFallback);
    json.endObject();
}

void writeKeys(JsonWriter& json, const char* name, const std::vector<ChangedKey>& keys) {
    json.objects(name, keys, [&](const ChangedKey& key) {
        json.member("context", key.context);
        json.member("shortcut", key.shortcut);
        writeOwner(json, "before", key.before);
        if (key.now) {
            writeOwner(json, "now", *key.now);
        }
        writeSuccessor(json, key.successor);
    });
}

void writeActions(JsonWriter& json, const Effect& effect) {
    json.objects("refused", effect.refused, [&](const RefusedShortcut& refused) {
        json.member("action", refused.action);
        json.member("holder", refused.holder);
        json.member("text", refused.text);
    });
    json.objects("shortcuts", effect.shortcuts, [&](const LostShortcut& lost) {
        json.member("action", lost.action);
        json.member("shortcut", lost.shortcut);
        writeNow(json, lost.now);
        writeSuccessor(json, lost.successor);
    });
    json.objects("menuFlags", effect.menuFlags, [&](const LostMenuFlag& lost) {
        json.member("action", lost.action);
        json.member("inMenu", lost.inMenu);
        writeNow(json, lost.now);
        writeSuccessor(json, lost.successor);
    });
    writeKeys(json, "keys", effect.keys);
    json.objects("sparedKeys", effect.sparedKeys, [&](const SparedKey& key) {
        json.member("context", key.context);
        json.member("shortcut", key.shortcut);
    });
}

void writeUser(JsonWriter& json, const UserResult& result) {
    json.member("file", textOf(result.file));
    json.member("status", nameOf(result.status));
    json.member("loses", result.effect.losesAnything());
    if (!result.effect.isNothing()) {
        writeSettings(json, result.effect);
        writeActions(json, result.effect);
    }
}

void writeNotSeen(JsonWriter& json, const NotSeen& notSeen) {
    json.member("path", textOf(notSeen.path));
    json.member("why", nameOf(notSeen.why));
}

void writeSummary(JsonWriter& json, const Summary& summary) {
    const auto count = [&](const char* name, std::size_t users) { json.member(name, static_cast<int>(users)); };
    json.key("summary");
    json.beginObject();
    count("users", summary.users);
    count("notUsers", summary.notUsers);
    count("notSeen", summary.notSeen);
    count("losing", summary.losing);
    count("unread", summary.unread);
    count("dropped", summary.dropped);
    count("meaningless", summary.meaningless);
    count("refused", summary.refused);
    count("shortcuts", summary.shortcuts);
    count("masked", summary.masked);
    count("keys", summary.keys);
    json.endObject();
}

/// Adds a line that is an object with the number of the form and with what `write` writes.
template <typename Write>
bool addLine(std::string& lines, Write write) {
    JsonWriter json;
    json.beginObject();
    json.member("format", Output::kFormat);
    write(json);
    json.endObject();
    const auto text = json.take();
    if (!text) {
        return false;
    }
    lines += json::compactText(json::Document(*text).root()).value_or("") + '\n';
    return true;
}

// --- Text -----------------------------------------------------------------------------------------------------------

class Lines {
public:
    explicit Lines(Output& output) : output_(output) {}

    void tell(const UserResult& result) {
        if (result.effect.tellsNothing()) {
            return;
        }
        output_.line("{}", output_.shown(Role::Name, textOf(result.file)));
        tellSettings(result.effect);
        tellActions(result.effect);
    }

    void tellShipped(const std::vector<ChangedKey>& keys) {
        if (!keys.empty()) {
            output_.line("For every user who has not set them, the new defaults change these keys:");
            tellKeys(keys);
        }
    }

private:
    std::string old(const std::string& text) const { return output_.shownValue(Role::Old, text); }
    std::string value(const std::string& text) const { return output_.shownValue(Role::Value, text); }
    std::string quoted(Role role, const std::string& text) const { return '"' + output_.shown(role, text) + '"'; }
    std::string name(const std::string& text) const { return output_.shown(Role::Name, text); }

    void tellSettings(const Effect& effect) {
        for (const DroppedValue& one : effect.dropped) {
            output_.line("  dropped: {}={}, {}", name(one.name), old(one.value),
                         one.now ? "now " + value(*one.now) : "there is no such setting");
        }
        for (const MeaninglessEntry& one : effect.meaningless) {
            output_.line("  meaningless: {}",
                         one.action != 0 || one.section.empty() ? output_.shown(Role::Faint, one.text)
                         : one.name.empty()                     ? "the section " + name(one.section)
                                            : name(one.name) + " in the section " + name(one.section));
        }
        for (const MaskedDefault& one : effect.masked) {
            output_.line("  masked: {} stays {}, the default {} is now {}", name(one.name), value(one.value),
                         old(one.oldDefault), value(one.newDefault));
        }
        for (const GainedValue& one : effect.gained) {
            output_.line("  gained: {}={}", name(one.name), value(one.value));
        }
    }

    void tellActions(const Effect& effect) {
        for (const RefusedShortcut& one : effect.refused) {
            output_.line("  refused: {}", output_.shown(Role::Faint, one.text));
        }
        for (const LostShortcut& one : effect.shortcuts) {
            output_.line("  shortcut: action {} had {}, {}", one.action, quoted(Role::Old, one.shortcut),
                         one.now ? "now " + quoted(Role::Value, *one.now) : noSuchAction(one.successor));
        }
        for (const LostMenuFlag& one : effect.menuFlags) {
            output_.line("  menu: action {} was {}, {}", one.action, one.inMenu ? "shown" : "hidden",
                         !one.now   ? noSuchAction(one.successor)
                         : *one.now ? "now it is shown"
                                    : "now it is hidden");
        }
        tellKeys(effect.keys);
    }

    void tellKeys(const std::vector<ChangedKey>& keys) {
        for (const ChangedKey& one : keys) {
            const bool isElsewhere = one.successor != 0 && !(one.now && one.now->action == one.successor);
            output_.line(
                "  key: {} in {} ran {}, now {}{}", quoted(Role::Value, one.shortcut), name(one.context),
                owner(Role::Old, one.before), one.now ? owner(Role::Value, *one.now) : "nothing",
                isElsewhere ? fmt::format(", and {} is action {} now", name(one.before.command), one.successor) : "");
        }
    }

    static std::string noSuchAction(int successor) {
        return successor == 0 ? "there is no such action"
                              : fmt::format("there is no such action, and its command is action {} now", successor);
    }

    std::string owner(Role role, const ChangedKey::Owner& owner) const {
        return fmt::format("{} (action {}{})", output_.shown(role, owner.command), owner.action,
                           owner.byFallback ? ", by the fallback" : "");
    }

    Output& output_;
};

Finding aboutUncompared(const UserResult& result) {
    const auto warning = [&](const std::string& text, const std::string& advice) {
        return Finding{Severity::Warning, text, advice, Place{textOf(result.file), std::nullopt, std::nullopt}};
    };
    switch (result.status) {
        case Status::Defaults:
            return warning("The file holds shipped defaults and is no user's, so it is not compared.",
                           "Name OLD and NEW first, and users' files behind them.");
        case Status::Foreign:
            return warning(std::string("This is not a user's file, but holds ") + lint::nameOf(result.kind) +
                               ", so it is not compared.",
                           "Name the files that the application saves, tessel_settings.cfg.");
        case Status::Missing:
            return warning("The file is not there.", "Name a user's file.");
        case Status::NoPath:
            return warning("The file was not looked at, because the library has no spelling for its path.",
                           kOnlySpellable);
        default:
            return warning("The file cannot be read or is no JSON, so nothing of it counts.",
                           "This shows where it is wrong: " + commandLineFor(textOf(result.file)));
    }
}

bool isNoUsers(const UserResult& result) {
    return result.status == Status::Defaults || result.status == Status::Foreign;
}

Finding aboutNotSeen(const NotSeen& notSeen) {
    const bool isShut = notSeen.why == NotSeen::Why::Shut;
    return {Severity::Warning,
            isShut ? "This may not be looked at, so that users' files there do not count."
                   : "This link leads nowhere, so that users' files behind it do not count.",
            isShut ? "Ask as somebody who may look there." : "See whether what it leads to has to be mounted first.",
            Place{textOf(notSeen.path), std::nullopt, std::nullopt}};
}

Finding aboutLoss(const UserResult& result) {
    const Effect& effect = result.effect;
    return {Severity::Warning,
            fmt::format("The upgrade takes from this user: values {}, shortcuts {}, menu flags {}.",
                        effect.dropped.size(), effect.shortcuts.size(), effect.menuFlags.size()),
            "Tell the user, or have the new defaults keep these names and shortcuts.",
            Place{textOf(result.file), std::nullopt, std::nullopt}};
}

}  // namespace

Summary summaryOf(const Outcome& outcome) {
    Summary summary;
    summary.notSeen = outcome.notSeen.size();
    for (const UserResult& user : outcome.results.users) {
        const Effect& effect = user.effect;
        summary.users += isNoUsers(user) ? 0 : 1;
        summary.notUsers += isNoUsers(user) ? 1 : 0;
        summary.losing += effect.losesAnything() ? 1 : 0;
        summary.unread += isNoUsers(user) || user.status == Status::Compared ? 0 : 1;
        summary.dropped += effect.dropped.empty() ? 0 : 1;
        summary.meaningless += effect.meaningless.empty() ? 0 : 1;
        summary.refused += effect.refused.empty() ? 0 : 1;
        summary.shortcuts += effect.shortcuts.empty() ? 0 : 1;
        summary.masked += effect.masked.empty() ? 0 : 1;
        summary.keys += effect.keys.empty() ? 0 : 1;
    }
    return summary;
}

void tell(const Outcome& outcome, Output& output) {
    Lines lines(output);
    for (const UserResult& result : outcome.results.users) {
        lines.tell(result);
        if (result.status != Status::Compared) {
            output.add(aboutUncompared(result));
        } else if (result.effect.losesAnything()) {
            output.add(aboutLoss(result));
        }
    }
    for (const NotSeen& notSeen : outcome.notSeen) {
        output.add(aboutNotSeen(notSeen));
    }
    const Summary summary = summaryOf(outcome);
    lines.tellShipped(outcome.results.shippedKeys);
    output.line(
        "Users: {}. Losing something: {}. With a value over a changed default: {}. With another changed key: {}. "
        "Not read: {}. Not a user's file: {}. Not seen: {}.",
        summary.users, summary.losing, summary.masked, summary.keys, summary.unread, summary.notUsers, summary.notSeen);
    output.members([&](JsonWriter& json) {
        json.objects("users", outcome.results.users, [&](const UserResult& result) { writeUser(json, result); });
        json.objects("notSeen", outcome.notSeen, [&](const NotSeen& notSeen) { writeNotSeen(json, notSeen); });
        writeKeys(json, "shippedKeys", outcome.results.shippedKeys);
        writeSummary(json, summary);
    });
}

std::optional<std::string> jsonLines(const Outcome& outcome) {
    std::string lines;
    bool isWhole = true;
    for (const UserResult& result : outcome.results.users) {
        isWhole = isWhole && addLine(lines, [&](JsonWriter& json) { writeUser(json, result); });
    }
    for (const NotSeen& notSeen : outcome.notSeen) {
        isWhole = isWhole && addLine(lines, [&](JsonWriter& json) {
                      json.key("notSeen");
                      json.beginObject();
                      writeNotSeen(json, notSeen);
                      json.endObject();
                  });
    }
    isWhole = isWhole && addLine(lines, [&](JsonWriter& json) {
                  writeKeys(json, "shippedKeys", outcome.results.shippedKeys);
                  writeSummary(json, summaryOf(outcome));
              });
    return isWhole ? std::optional<std::string>(std::move(lines)) : std::nullopt;
}

}  // namespace zelutil::command::upgrade
