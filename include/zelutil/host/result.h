#ifndef ZELUTIL_HOST_RESULT_H
#define ZELUTIL_HOST_RESULT_H

#include <zelutil/export.h>

#include <set>
#include <string>
#include <vector>

namespace zelutil::host {

/// Why a new process will not have a setting or an action as it is now.
enum class Obstacle {
    /// Another setting is found under every name that a file could use for this one.
    NameBelongsToAnother,
    /// The shipped actions give one shortcut to two actions of one context, and only the first of them gets it.
    ShippedTwice,
    /// Another action of the same context, or of the context linked with it, has the shortcut by then.
    TakenByAnother,
    /// A child of the action cannot follow it, or follows it where it stands alone now.
    ChildRefuses,
    /// A child takes over what its parent has, and this one has something else now.
    FollowsParent,
    /// The shipped defaults have no section for actions, or no place for this one's text, or no section whose settings
    /// are read.
    NoPlaceInFile,
};

/// A setting or an action that a save could not, or had to, treat in a way that the user may want to know of.
struct NotRestored {
    /// Full name of the setting; empty for an action.
    std::string setting;
    /// Id of the action; 0 for a setting.
    int action = 0;
    /// The reason.
    Obstacle obstacle = Obstacle::TakenByAnother;
    /// Id of the action that stands in the way; 0 where none does.
    int otherAction = 0;
    /// The setting that stands in the way; empty where none does.
    std::string otherSetting;
    /// The same for people: one sentence in English.
    std::string text;
};

/// Something that two processes of the user changed in different ways. What this process saved is in the file.
struct Conflict {
    /// Full name of the setting; empty for an action.
    std::string setting;
    /// Id of the action; 0 for a setting.
    int action = 0;
    /// The value that is in the file now.
    std::string ours;
    /// The value that the other process had put there.
    std::string theirs;
};

/// The outcome of a save or a reset.
struct SaveResult {
    /// Tells what became of the file.
    enum class Status {
        /// The file holds what is to be kept.
        Saved,
        /// The file held it already; nothing was written.
        Unchanged,
        /// There are no shipped defaults, without which no file is written.
        NoDefaults,
        /// There is no place for the file: its path is empty or names none.
        NoPath,
        /// The file that is there could not be read, or holds something that a new one would lack, and no copy of it
        /// could be kept, so it stays as it is.
        NotKept,
        /// The system refused the writing; the file is as it was before.
        NotWritten,
        /// The writing failed in the middle, where the system has no single step for it.
        Torn,
        /// The call came from inside a notification of a save that came from inside a notification, and so on, deeper
        /// than `kMaximumSaveDepth`. Nothing was done.
        TooDeep,
        /// The call came from inside the first use of the preferences, by an observer of the actions or by the common
        /// library, while this thread was reading them. Nothing was done.
        Starting,
    };

    /// Tells what became of the file.
    Status status = Status::Unchanged;
    /// One sentence in English, for people.
    std::string text;
    /// The file that was written, or would have been.
    std::string path;
    /// The copy that was kept of a file that could not be read, or that holds something that the new one lacks. An
    /// earlier save that failed may have kept it. Empty for none.
    std::string keptCopy;
    /// Full names of the settings whose value in force has changed.
    std::set<std::string> changedSettings;
    /// Names that were handed over and that no setting has, as they were given.
    std::vector<std::string> unknownSettings;
    /// Ids of the actions that the file has an entry for, ascending.
    std::vector<int> savedActions;
    /// The settings and actions that a new process will not have as they are now.
    std::vector<NotRestored> notRestored;
    /// The settings and actions that another process has changed too.
    std::vector<Conflict> conflicts;
    /// Full names of settings for which the file has what another process saved, which is not what is in force here.
    std::vector<std::string> settingsOfOthers;
    /// Ids of such actions, ascending.
    std::vector<int> actionsOfOthers;

    /// Returns whether the file holds what is to be kept.
    bool ok() const { return status == Status::Saved || status == Status::Unchanged; }
};

/// The number of saves that may be in progress inside each other's notifications.
inline constexpr int kMaximumSaveDepth = 8;

}  // namespace zelutil::host

#endif
