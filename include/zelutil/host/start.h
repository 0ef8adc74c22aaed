#ifndef ZELUTIL_HOST_START_H
#define ZELUTIL_HOST_START_H

#include <zelutil/export.h>

#include <string>
#include <vector>

/// Before the first use, and what the first use found.
namespace zelutil::host {

/// Departures from what the library does by itself, all off unless a host asks for them.
struct Options {
    /// Opens the preference and facet files of an installation or a home whose path has a blank in it. Otherwise they
    /// are neither read nor written, since their paths come in double quotes.
    bool pathsWithBlanks = false;
};

/// Sets the options of this process. They must be set before the first use of preferences or facets, which every other
/// call of this namespace may be, `startWarnings`, `userFilePath` and `diagnose` too: afterwards this changes nothing
/// and returns false, unless the options are the ones in force. `Hierarchy::GetRoot` may come before it.
ZELUTIL_API bool setOptions(const Options& options);

/// Returns the options in force.
ZELUTIL_API Options options();

/// Something that the start found in the user's file and that a host can show.
struct StartWarning {
    /// Tells what is wrong.
    enum class Kind {
        /// The file is there and could not be read, or is no JSON: it is kept beside its place before the first save.
        /// A directory of its name is told of, too.
        FileNotRead,
        /// An entry does not do what it says: the shipped defaults have no such section, setting or action, its value
        /// is of a type that is not read, it says nothing, or it gives a child a shortcut or menu flag that its parent
        /// decides about.
        EntryWithoutEffect,
        /// An entry whose name means a setting of another section, which it sets.
        EntryForAnotherSection,
        /// A shortcut that could not be given to its action because another one holds it.
        ShortcutRefused,
    };

    /// Tells what is wrong.
    Kind kind = Kind::EntryWithoutEffect;
    /// The setting, as the file names it, the section, or the member of the file that is not of the form that is read;
    /// empty for an action and for the file.
    std::string name;
    /// The action; 0 for none.
    int action = 0;
    /// The action that holds the shortcut; 0 for none.
    int holder = 0;
    /// One sentence in English, for people.
    std::string text;
};

/// Returns what the start found: in the file as a whole, in its settings and in its actions. Settings come in the order
/// of the file, and then what is not in the form that is read; actions come in their order. Empty when all is well. Of
/// more than a hundred entries for children that might do nothing, only the first hundred are looked at one by one.
ZELUTIL_API std::vector<StartWarning> startWarnings();

/// Returns the file that a save writes; empty for none. Where the environment has no home (HOMEDRIVE and HOMEPATH,
/// which Windows sets), the file lies in pcbenv below the directory that is the current one at the first use.
ZELUTIL_API std::string userFilePath();

/// Returns, for people, what was looked for where: installation, home, shipped defaults, user's file, common library,
/// each with the place where it was found or the places where it was not. Several lines, each ended. Throws nothing but
/// for lack of memory; where nothing has been used yet, it uses it.
ZELUTIL_API std::string diagnose();

}  // namespace zelutil::host

#endif
