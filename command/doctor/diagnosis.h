#ifndef ZELUTIL_COMMAND_DOCTOR_DIAGNOSIS_H
#define ZELUTIL_COMMAND_DOCTOR_DIAGNOSIS_H

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "command/finding.h"
#include "text/search_trace.h"

namespace zelutil::command {

/// A file that a search leads to, as the library finds it when it opens the text.
struct FileState {
    enum class Kind {
        NoPath,        ///< The search leads to none.
        InQuotes,      ///< The path has a blank and stands in double quotes, so that it is not opened.
        NotSpellable,  ///< The text can name no file.
        Missing,
        Directory,
        TooLarge,
        NotRegular,   ///< It is a pipe or something else that is not read.
        LinkCircle,   ///< A link on the way to it, or it itself, leads round in a circle.
        DeadLink,     ///< A link on the way to it, or it itself, leads to nothing.
        NameTooLong,  ///< Its path, or a name in it, is longer than the system takes.
        Unreadable,
        Malformed,  ///< It is no JSON that the library reads.
        Fine,
    };

    /// A place in the file and something about it.
    struct Remark {
        std::string text;
        int line = 0;
        int column = 0;
    };

    Kind kind = Kind::NoPath;
    std::int64_t size = 0;
    /// Whether the file can be written, and one that is missing can be made.
    bool writeable = true;
    /// The directory, the system's own, that may not be entered, or in which the missing file may not be made; empty
    /// where there is none.
    std::string shutDirectory;
    /// The link that leads round in a circle or to nothing, and in the second case that nothing. Both are the system's
    /// own, and empty for none.
    std::string link;
    std::string linkTarget;
    /// The name that is too long; empty where the path is as a whole.
    std::string longName;
    /// The system's words for another reason why it cannot be looked at; empty for none.
    std::string reason;
    /// The first byte that is no part of UTF-8.
    std::optional<Remark> notUtf8;
    /// Why it is no JSON, with the text there.
    std::optional<Remark> malformed;
    /// Whether it is JSON of which no section has default settings.
    bool lacksDefaults = false;
    /// Whether it is JSON without the array of the groups of facets.
    bool lacksGroups = false;
    /// Whether it is JSON that holds something and no section, so that nothing of it is read.
    bool holdsNoSection = false;
    /// Names in words what a save would leave out of the user's file.
    std::vector<std::string> leftOut;
    /// The attribute paths that an earlier section has too, where the later one stands.
    std::vector<Remark> repeatedSections;
    /// Names of files beside it that an earlier save kept, or left when it was killed. Both are the system's own.
    std::vector<std::string> keptCopies;
    std::vector<std::string> leftovers;
};

/// A search and what came of it.
struct SearchStep {
    /// Identifies the step in the form for programs: "root", "user-file-read".
    const char* name = "";
    /// Names it for people.
    const char* title = "";
    /// The text that the library has as the result; empty for none.
    std::string result;
    std::vector<text::Candidate> candidates;
    /// The state of the file that the result names, for a search for one.
    std::optional<FileState> file;
};

/// Something that is wrong or worth knowing.
struct Symptom {
    enum class Kind {
        NoInstallation,
        OtherProduct,
        NoProduct,
        NoSite,
        NoHome,
        CommonLibraryLacks,
        NotReady,
        Blank,
        NotSpellable,
        Missing,
        IsDirectory,
        TooLarge,
        NotRegular,
        LinkCircle,
        DeadLink,
        NameTooLong,
        Unreadable,
        NotJson,
        NotUtf8,
        NoSettings,
        NoFacets,
        NoEffect,
        LeftOut,
        ReadOnly,
        Blocked,
        KeptCopy,
        Leftover,
        SectionTwice,
        Shadowed,
    };

    Kind kind = Kind::NoInstallation;
    /// The name of the step; empty where it concerns none alone.
    std::string step;
    Finding finding;
};

/// Returns the name in the form for programs: "not-json".
const char* nameOf(Symptom::Kind kind);

struct Diagnosis {
    /// The directory that stands in for an installation after a failed search; empty for none.
    std::string standIn;
    bool hasInstallation = false;
    /// Whether the common library says that its initialisation is over.
    bool isReady = true;
    /// The functions that the common library lacks; nothing where there is no such library.
    std::optional<std::vector<std::string>> missingFunctions;
    std::vector<SearchStep> steps;
    std::vector<Symptom> symptoms;

    /// Returns the step of that name, which is one of those below.
    const SearchStep& step(const char* name) const;
};

inline constexpr char kCommonLibraryStep[] = "common-library";
inline constexpr char kRootStep[] = "root";
inline constexpr char kSiteStep[] = "site";
inline constexpr char kEnvironmentStep[] = "environment";
inline constexpr char kDefaultsStep[] = "defaults";
inline constexpr char kUserFileReadStep[] = "user-file-read";
inline constexpr char kUserFileWrittenStep[] = "user-file-written";
inline constexpr char kFacetsStep[] = "facets";

/// Makes every search that the library makes at its start, with traces, and looks at what they lead to. Nothing is
/// printed or written. To be called before anything else that needs the common library, so that its search is told.
Diagnosis diagnose();

/// Looks at the files of the steps, whatever was known of them.
void lookAtFiles(Diagnosis& diagnosis);

/// Returns the symptoms of what was found.
std::vector<Symptom> symptomsOf(const Diagnosis& diagnosis);

/// Returns what keeps a save from writing the user's file; nothing where nothing is known to.
std::optional<Finding> obstacleToSaving(const Diagnosis& diagnosis);

}  // namespace zelutil::command

#endif
