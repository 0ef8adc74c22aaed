#ifndef ZELUTIL_COMMAND_SHORTCUTS_WISH_ATTEMPT_H
#define ZELUTIL_COMMAND_SHORTCUTS_WISH_ATTEMPT_H

#include <cstddef>
#include <map>
#include <set>
#include <string>
#include <vector>

#include "actions/action_catalogue.h"
#include "command/shortcuts/wish_plan.h"
#include "host/action_families.h"

namespace zelutil::shortcuts {

/// Returns whether the action shows the shortcut and has it, alone or together with a child.
bool isGranted(const actions::ActionCatalogue& catalogue, const KeyWish& wish);

/// A copy of what is in force, in which wishes are granted as far as they can be.
class Attempt {
public:
    /// All three live longer than the attempt.
    Attempt(const host::ShippedActions& shipped, const std::string& userText, const std::vector<KeyWish>& wishes);

    const actions::ActionCatalogue& catalogue() const { return catalogue_; }
    const std::vector<KeyWish>& edits() const { return edits_; }

    /// Returns the wishes that are not granted now.
    std::vector<KeyWish> open() const;

    /// Takes away what these have, and then gives what can be given until nothing more can.
    void run(const std::set<int>& first);

private:
    void giveAll();
    bool edit(const KeyWish& wish);

    const host::ShippedActions& shipped_;
    actions::ObserverRegistry nobody_;
    actions::ActionCatalogue catalogue_;
    const std::vector<KeyWish>& wishes_;
    std::vector<KeyWish> edits_;
};

}  // namespace zelutil::shortcuts

#endif
