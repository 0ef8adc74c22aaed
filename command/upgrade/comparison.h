#ifndef ZELUTIL_COMMAND_UPGRADE_COMPARISON_H
#define ZELUTIL_COMMAND_UPGRADE_COMPARISON_H

#include <optional>
#include <string>
#include <vector>

#include "command/upgrade/version.h"

namespace zelutil::command::upgrade {

/// A value that the user's file sets with the old defaults and that is not in force with the new ones.
struct DroppedValue {
    std::string name;
    std::string value;
    /// The value in force with the new defaults; nothing where they have no such setting.
    std::optional<std::string> now;
};

/// A value that the user's file sets with the new defaults only: an entry that had no effect, or set another setting.
struct GainedValue {
    std::string name;
    std::string value;
};

/// A shipped value that changes, and that this user does not get.
struct MaskedDefault {
    std::string name;
    std::string value;
    std::string oldDefault;
    std::string newDefault;
};

/// An entry of the user's file that had an effect with the old defaults and has none with the new ones.
struct MeaninglessEntry {
    std::string section;  ///< Empty for an entry of the actions.
    std::string name;     ///< Empty for the section as a whole.
    int action = 0;       ///< 0 for an entry of a setting.
    std::string text;     ///< A sentence for an entry of the actions.
};

/// An entry of the user's file that gave an action a shortcut with the old actions, and that the new ones refuse. The
/// action may have the shortcut all the same, from a later entry.
struct RefusedShortcut {
    int action = 0;
    int holder = 0;
    std::string text;
};

/// A shortcut that the user gave an action and that it does not have with the new defaults.
struct LostShortcut {
    int action = 0;
    std::string shortcut;
    /// Nothing where there is no such action.
    std::optional<std::string> now;
    /// Identifies the action that has its command in its context now, where there is none; 0 for none.
    int successor = 0;
};

struct LostMenuFlag {
    int action = 0;
    bool inMenu = false;
    std::optional<bool> now;
    int successor = 0;
};

/// A key that ran one action and runs another one, or none any more.
struct ChangedKey {
    struct Owner {
        int action = 0;
        std::string command;
        /// Whether the key runs it because the context has none of its own for it, where a host asks for the fallback.
        bool byFallback = false;
    };

    std::string context;
    std::string shortcut;
    Owner before;
    std::optional<Owner> now;
    /// Identifies the action that has its command in its context now, where the one of before is gone; 0 for none.
    int successor = 0;
};

/// A key that the new defaults change, and that runs the same for one user, who has set keys.
struct SparedKey {
    std::string context;
    std::string shortcut;
};

/// Lists what an upgrade does to one user's file.
struct Effect {
    std::vector<DroppedValue> dropped;
    std::vector<MeaninglessEntry> meaningless;
    std::vector<RefusedShortcut> refused;
    std::vector<LostShortcut> shortcuts;
    std::vector<LostMenuFlag> menuFlags;
    std::vector<MaskedDefault> masked;
    std::vector<GainedValue> gained;
    /// Without those that change in the same way for a user who has set no key.
    std::vector<ChangedKey> keys;
    std::vector<SparedKey> sparedKeys;

    /// Returns whether something of the user's is in force with the old defaults and not with the new ones.
    bool losesAnything() const { return !(dropped.empty() && shortcuts.empty() && menuFlags.empty()); }

    bool isNothing() const { return tellsNothing() && sparedKeys.empty(); }

    /// Returns whether people have nothing to hear.
    bool tellsNothing() const {
        return !losesAnything() && meaningless.empty() && refused.empty() && masked.empty() && gained.empty() &&
               keys.empty();
    }
};

/// Compares users' files one after another. Each thread has its own.
class Comparison {
public:
    /// Takes the texts of both versions of the shipped defaults.
    Comparison(std::string oldDefaults, std::string newDefaults);

    /// Returns what the upgrade does to a user's text.
    Effect effectOn(json::View user);

    /// Returns the keys that change for a user who has set none, ordered by context and shortcut.
    const std::vector<ChangedKey>& shippedKeys() const { return shippedKeys_; }

private:
    void compareValues(const Start& before, const Start& after, Effect& effect) const;
    void compareKeys(const Actions& before, const Actions& after, Effect& effect) const;
    void compareFindings(const Start& before, const Start& after, Effect& effect) const;
    bool hadEffect(const Start& before, const PlacedFinding& now) const;

    Version old_;
    Version new_;
    bool hasSameActions_ = false;
    std::vector<ChangedKey> shippedKeys_;
};

}  // namespace zelutil::command::upgrade

#endif
