#ifndef ZELUTIL_TEXT_SEARCH_TRACE_H
#define ZELUTIL_TEXT_SEARCH_TRACE_H

#include <string>
#include <vector>

/// Records of what a search looked at. A search is a template over the trace that it tells its candidates, in the order
/// in which it looks at them: the library's own trace does nothing and leaves nothing in the machine code, and another
/// one records them, so that the code that finds is also the code that explains.
namespace zelutil::text {

/// A candidate of a search.
struct Candidate {
    /// The rule by which it is one.
    enum class Source {
        CommonLibrary,     ///< The tools directory that the common library names.
        OwnFile,           ///< The tree around this library's own file.
        Variable,          ///< The value of a variable.
        SearchList,        ///< None: the search through a list of directories begins.
        ListEntry,         ///< A directory of that list.
        SiteDirectory,     ///< A directory of the site as it is below the share of sites.
        Site,              ///< The site itself.
        Installation,      ///< A directory below the installation root.
        SetupPath,         ///< The setup path, which the common library searches.
        UserEnvironment,   ///< A file below the user's environment directory.
        CurrentDirectory,  ///< A file in the current directory.
        Process,           ///< A module that is in the process already.
        BesideLibrary,     ///< A file beside this library.
        Loader,            ///< The places where the system's loader looks.
    };

    enum class Verdict {
        Taken,
        Shadowed,    ///< It would have been taken, but an earlier candidate was.
        Noted,       ///< It decides nothing by itself.
        Hidden,      ///< An earlier variable is defined, so that this one does not count.
        NotDefined,  ///< There is no such variable.
        Unknown,     ///< Whoever was asked knows none.
        NoPath,      ///< The text is no path.
        NotThere,    ///< No such file or directory is there.
        NoPrograms,  ///< The library's own file is in no directory of programs.
        NoLibrary,   ///< The directory has no file named as this library.
        NoMarker,    ///< The directory's tree lacks the file by which an installation is known.
    };

    Source source = Source::Variable;
    Verdict verdict = Verdict::NotThere;
    /// The variable that it comes from; empty for none.
    std::string variable;
    /// The text that was looked at; empty where there is none.
    std::string seen;
    /// The text that it leads to, where that is another one.
    std::string found;
};

/// Tells nobody.
struct NoTrace {
    static constexpr bool goesOn() { return false; }

    template <typename... Parts>
    void tell(const Parts&...) {}
};

/// Records the candidates. One that is taken after another was is recorded as shadowed.
class SearchTrace {
public:
    enum class Until {
        Found,  ///< The search ends where it ends for the library.
        End,    ///< It goes on to find the candidates that are shadowed. Its result stays the same.
    };
    explicit SearchTrace(Until until = Until::End) : until_(until) {}

    /// Returns whether a search that has its result looks at further candidates.
    bool goesOn() const { return until_ == Until::End; }

    void tell(Candidate::Source source, Candidate::Verdict verdict, const char* seen = "", const char* found = "",
              const char* variable = "") {
        const bool taken = verdict == Candidate::Verdict::Taken;
        candidates_.push_back(
            {source, taken && taken_ ? Candidate::Verdict::Shadowed : verdict, variable, seen, found});
        taken_ = taken_ || taken;
    }

    const std::vector<Candidate>& candidates() const { return candidates_; }

private:
    Until until_;
    bool taken_ = false;
    std::vector<Candidate> candidates_;
};

}  // namespace zelutil::text

#endif
