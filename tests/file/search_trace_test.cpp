// The trace of a search agrees with the search that the library makes, and with what the tree was made to hold.
#include <gtest/gtest.h>
#include <zelutil/file/hierarchy.h>

#include <algorithm>
#include <filesystem>
#include <optional>
#include <random>
#include <string>
#include <vector>

#include "file/hierarchy_root.h"
#include "file/hierarchy_search.h"
#include "support/child_process.h"
#include "support/environment.h"
#include "support/installation_tree.h"
#include "support/temp_directory.h"
#include "support/text_file.h"

namespace zelutil::test {
namespace {

namespace fs = std::filesystem;
using text::Candidate;
using text::SearchTrace;
using Source = Candidate::Source;
using Verdict = Candidate::Verdict;
using ZelU::File::Hierarchy;
using ZelU::File::Path;

std::string textOf(const Path& path) { return static_cast<const char*>(path); }

std::vector<Candidate> with(const SearchTrace& trace, Verdict verdict) {
    std::vector<Candidate> chosen;
    for (const Candidate& candidate : trace.candidates()) {
        if (candidate.verdict == verdict) {
            chosen.push_back(candidate);
        }
    }
    return chosen;
}

bool isSame(const Candidate& a, const Candidate& b) {
    return a.source == b.source && a.verdict == b.verdict && a.variable == b.variable && a.seen == b.seen &&
           a.found == b.found;
}

/// A trace that ends where the search ends is the beginning of the one that goes on, but for the variables that are
/// only looked at to say that they are hidden.
void expectBeginning(const SearchTrace& whole, const SearchTrace& beginning) {
    auto at = whole.candidates().begin();
    for (const Candidate& candidate : beginning.candidates()) {
        at = std::find_if(at, whole.candidates().end(),
                          [&](const Candidate& other) { return isSame(candidate, other); });
        ASSERT_NE(at, whole.candidates().end()) << candidate.seen;
        ++at;
    }
}

// --- The root -------------------------------------------------------------------------------------------------------

/// A directory that a list names.
struct Entry {
    fs::path directory;
    fs::path tree;
    bool hasLibrary;
    bool hasMarker;

    bool isInstallation() const { return hasLibrary && hasMarker; }
    Verdict refusal() const { return hasLibrary ? Verdict::NoMarker : Verdict::NoLibrary; }
};

class RandomTrees {
public:
    explicit RandomTrees(unsigned seed) : random_(seed) {
        for (int number = static_cast<int>(random_() % 5); number > 0; --number) {
            entries_.push_back(makeEntry("entry" + std::to_string(number), coin() ? "tools/bin" : "tools/lib/64bit"));
        }
        for (const char* const name : file::kRootVariables) {
            if (random_() % 3 == 0) {
                variables_.push_back({name, makeEntry(name, "tools/bin")});
            }
        }
    }

    void nameInEnvironment() const {
        clearProductVariables();
        std::vector<std::string> path;
        for (const Entry& entry : entries_) {
            path.push_back(systemText(entry.directory));
        }
        setVariable("PATH", systemList(path));
        for (const Variable& variable : variables_) {
            setVariable(variable.name, systemText(variable.entry.tree));
        }
    }

    /// Returns the directories in the order in which they count.
    std::vector<Entry> order() const {
        std::vector<Entry> order;
        if (!variables_.empty()) {
            order.push_back(variables_.front().entry);
        }
        order.insert(order.end(), entries_.begin(), entries_.end());
        return order;
    }

    struct Variable {
        const char* name;
        Entry entry;
    };
    const std::vector<Variable>& variables() const { return variables_; }

private:
    bool coin() { return random_() % 2 == 0; }

    Entry makeEntry(const std::string& name, const std::string& programs) {
        Entry entry{directory_ / name / programs, directory_ / name, coin(), coin()};
        fs::create_directories(entry.directory);
        if (entry.hasLibrary) {
            writeTextFile(entry.directory / libraryFileName(), "");
        }
        if (entry.hasMarker) {
            writeTextFile(entry.tree / "share/pcb/zelmgr/zeldict.l", "");
        }
        return entry;
    }

    TempDirectory directory_;
    std::mt19937 random_;
    std::vector<Entry> entries_;
    std::vector<Variable> variables_;
};

/// Every directory of the lists, with the verdict that it deserves.
void expectEntries(const RandomTrees& trees, const SearchTrace& trace) {
    std::vector<Candidate> told;
    for (const Candidate& candidate : trace.candidates()) {
        if (candidate.source == Source::ListEntry) {
            told.push_back(candidate);
        }
    }
    const std::vector<Entry> order = trees.order();
    ASSERT_EQ(told.size(), order.size());
    bool taken = false;
    for (std::size_t at = 0; at < order.size(); ++at) {
        EXPECT_EQ(told[at].seen, windowsText(order[at].directory));
        const bool fits = order[at].isInstallation();
        EXPECT_EQ(told[at].verdict, !fits ? order[at].refusal() : taken ? Verdict::Shadowed : Verdict::Taken);
        EXPECT_EQ(told[at].variable, at == 0 && !trees.variables().empty() ? trees.variables()[0].name : "PATH");
        taken = taken || fits;
    }
}

void expectVariables(const RandomTrees& trees, const SearchTrace& trace) {
    EXPECT_EQ(with(trace, Verdict::NotDefined).size(), file::kRootVariables.size() - trees.variables().size());
    const std::size_t hidden = trees.variables().empty() ? 0 : trees.variables().size() - 1;
    ASSERT_EQ(with(trace, Verdict::Hidden).size(), hidden);
    for (std::size_t at = 0; at < hidden; ++at) {
        EXPECT_EQ(with(trace, Verdict::Hidden)[at].variable, trees.variables()[at + 1].name);
    }
}

TEST(RootTrace, AgreesWithTheSearchInRandomTrees) {
    int found = 0;
    int shadowed = 0;
    for (unsigned seed = 0; seed < 300 && !testing::Test::HasFailure(); ++seed) {
        SCOPED_TRACE(seed);
        const RandomTrees trees(seed);
        trees.nameInEnvironment();
        Path searched;
        const bool isFound = file::locateRoot(searched);
        SearchTrace whole;
        Path traced;
        EXPECT_EQ(file::locateRoot(traced, whole), isFound);
        EXPECT_EQ(textOf(traced), textOf(searched));
        SearchTrace beginning(SearchTrace::Until::Found);
        EXPECT_EQ(file::locateRoot(traced, beginning), isFound);
        EXPECT_EQ(textOf(traced), textOf(searched));

        const std::vector<Entry> order = trees.order();
        const auto first = std::find_if(order.begin(), order.end(), [](const Entry& e) { return e.isInstallation(); });
        ASSERT_EQ(isFound, first != order.end());
        ASSERT_EQ(with(whole, Verdict::Taken).size(), isFound ? 1U : 0U);
        if (isFound) {
            EXPECT_EQ(textOf(searched), windowsText(first->tree));
            EXPECT_EQ(with(whole, Verdict::Taken)[0].found, textOf(searched));
        }
        expectEntries(trees, whole);
        expectVariables(trees, whole);
        expectBeginning(whole, beginning);
        EXPECT_TRUE(with(beginning, Verdict::Shadowed).empty());
        found += isFound ? 1 : 0;
        shadowed += static_cast<int>(with(whole, Verdict::Shadowed).size());
    }
    EXPECT_GT(found, 50);
    EXPECT_GT(shadowed, 20);
}

// --- Files ----------------------------------------------------------------------------------------------------------

class FileTrace : public testing::Test {
protected:
    FileTrace() {
        clearProductVariables();
        tree_.nameInEnvironment();
    }

    /// Makes or removes the file at random, and says which.
    bool flip(const fs::path& file) {
        const bool there = random_() % 2 == 0;
        if (there) {
            writeTextFile(file, "");
        } else {
            fs::remove(file);
        }
        return there;
    }

    InstallationTree tree_;
    TempDirectory site_;
    std::mt19937 random_{7};
};

TEST_F(FileTrace, AgreesWithFindFileInRandomTrees) {
    setVariable("QTX_SITE", systemText(site_.path()));
    const Path& root = Hierarchy::GetRoot();
    for (int round = 0; round < 60; ++round) {
        const fs::path places[] = {site_ / "pcb/f", site_ / "f", tree_ / "share/local/pcb/f"};
        const Source sources[] = {Source::SiteDirectory, Source::Site, Source::Installation};
        const bool there[] = {flip(places[0]), flip(places[1]), flip(places[2])};
        SearchTrace trace;
        const Path found = file::findFile("f", "share/local/pcb", &root, trace);
        EXPECT_EQ(textOf(found), textOf(Hierarchy::FindFile("f", "share/local/pcb")));
        ASSERT_EQ(trace.candidates().size(), 3U);
        bool taken = false;
        for (std::size_t at = 0; at < 3; ++at) {
            const Candidate& candidate = trace.candidates()[at];
            EXPECT_EQ(candidate.source, sources[at]);
            EXPECT_EQ(candidate.seen, windowsText(places[at]));
            EXPECT_EQ(candidate.verdict, !there[at] ? Verdict::NotThere : taken ? Verdict::Shadowed : Verdict::Taken);
            if (candidate.verdict == Verdict::Taken) {
                EXPECT_EQ(textOf(found), candidate.seen);
            }
            taken = taken || there[at];
        }
        EXPECT_EQ(found.Empty(), !taken);
    }
}

TEST_F(FileTrace, OutsideTheShareOfSitesHasTheInstallationAlone) {
    setVariable("QTX_SITE", systemText(site_.path()));
    writeTextFile(site_ / "f", "");
    SearchTrace trace;
    EXPECT_TRUE(file::findFile("f", "share/pcb", &Hierarchy::GetRoot(), trace).Empty());
    ASSERT_EQ(trace.candidates().size(), 1U);
    EXPECT_EQ(trace.candidates()[0].source, Source::Installation);
    EXPECT_EQ(trace.candidates()[0].seen, windowsText(tree_ / "share/pcb/f"));
    EXPECT_EQ(trace.candidates()[0].verdict, Verdict::NotThere);
}

TEST_F(FileTrace, WithoutAnInstallationHasTheSiteAlone) {
    setVariable("QTX_SITE", systemText(site_.path()));
    writeTextFile(site_ / "f", "");
    SearchTrace trace;
    EXPECT_EQ(textOf(file::findFile("f", "share/local", nullptr, trace)), windowsText(site_ / "f"));
    SearchTrace none;
    EXPECT_TRUE(file::findFile("g", "share/pcb", nullptr, none).Empty());
    EXPECT_TRUE(none.candidates().empty());
}

// --- The user's environment -----------------------------------------------------------------------------------------

TEST(EnvironmentTrace, TellsBothVariablesAndTheDirectory) {
    clearProductVariables();
    setVariable("HOMEDRIVE", "C:");
    setVariable("HOMEPATH", "\\Users\\ann");
    SearchTrace trace;
    EXPECT_EQ(textOf(file::locateUserEnvironment(trace)), "C:\\Users\\ann\\pcbenv");
    EXPECT_EQ(textOf(Hierarchy::GetPcbEnv()), "C:\\Users\\ann\\pcbenv");
    ASSERT_EQ(trace.candidates().size(), 3U);
    EXPECT_TRUE(isSame(trace.candidates()[0], {Source::Variable, Verdict::Noted, "HOMEDRIVE", "C:", ""}));
    EXPECT_TRUE(isSame(trace.candidates()[1], {Source::Variable, Verdict::Noted, "HOMEPATH", "\\Users\\ann", ""}));
    EXPECT_TRUE(
        isSame(trace.candidates()[2], {Source::UserEnvironment, Verdict::Taken, "", "C:\\Users\\ann\\pcbenv", ""}));
}

TEST(EnvironmentTrace, SaysThatAHomeIsNoPath) {
    clearProductVariables();
    setVariable("HOMEPATH", "\\a?b");
    SearchTrace trace;
    EXPECT_TRUE(file::locateUserEnvironment(trace).Empty());
    ASSERT_EQ(trace.candidates().size(), 3U);
    EXPECT_EQ(trace.candidates()[0].verdict, Verdict::NotDefined);
    EXPECT_EQ(trace.candidates()[2].verdict, Verdict::NoPath);
}

}  // namespace
}  // namespace zelutil::test
