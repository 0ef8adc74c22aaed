#ifndef ZELUTIL_HOST_ACTION_WARNINGS_H
#define ZELUTIL_HOST_ACTION_WARNINGS_H

#include <zelutil/host/start.h>

#include "actions/action_catalogue.h"
#include "json/view.h"

#include <string_view>
#include <vector>

namespace zelutil::host {

/// Something in the user's text that does not do what it says.
struct ActionEntryFinding {
    enum class Kind {
        NotOfTheForm,     ///< The text is not [{"actions":[...]}].
        WithoutId,        ///< Nothing is read from this element on.
        UnknownAction,    ///< The entry is for none of the shipped actions.
        SaysNothing,      ///< The entry has neither a shortcut nor a menu flag.
        NoText,           ///< The shortcut is none.
        NoTruth,          ///< The menu flag is none.
        ShortcutRefused,  ///< Another action holds the shortcut.
        InVain,           ///< A child is given what it takes over from its parent.
    };

    Kind kind = Kind::NotOfTheForm;
    json::View entry;  ///< The element; the whole value for one that is not of the form.
    StartWarning warning;
    bool isOfShortcut = false;  ///< For `InVain`: whether it is about the shortcut, and not about the menu flag.
};

/// Returns what is found when this user's value is loaded after the shipped text, in the order of the elements. An
/// absent value is none of the form.
std::vector<ActionEntryFinding> actionEntryFindings(std::string_view defaultsText, json::View user);

/// Does the same and leaves in the catalogue what that load brings about.
std::vector<ActionEntryFinding> actionEntryFindings(actions::ActionCatalogue& catalogue, std::string_view defaultsText,
                                                    json::View user);

/// Return which entries of the user's text have no effect when it is loaded after the shipped one, in the order of the
/// text; of a catalogue those of its last load.
std::vector<StartWarning> actionWarnings(std::string_view defaultsText, std::string_view userText);
std::vector<StartWarning> actionWarnings(const actions::ActionCatalogue& catalogue);

}  // namespace zelutil::host

#endif
