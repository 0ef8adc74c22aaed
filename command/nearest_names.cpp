#include "command/nearest_names.h"

#include <fmt/format.h>
#include <zelutil/util/ascii.h>

#include <algorithm>
#include <numeric>
#include <utility>

namespace zelutil::command {
namespace {

constexpr std::size_t kMostNames = 3;

/// Short names may be off by this much whatever their length.
constexpr std::size_t kFewestChanges = 1;

bool isSame(char a, char b) { return ascii::lowerCase(a) == ascii::lowerCase(b); }

std::size_t mostChangesIn(std::string_view wanted) { return std::max(kFewestChanges, wanted.size() / 3); }

std::size_t differenceInLength(std::string_view a, std::string_view b) {
    return std::max(a.size(), b.size()) - std::min(a.size(), b.size());
}

constexpr std::string_view kPartSeparator = "::";

std::string_view lastPartOf(std::string_view name) {
    const std::size_t separator = name.rfind(kPartSeparator);
    return separator == std::string_view::npos ? name : name.substr(separator + kPartSeparator.size());
}

using Candidate = std::pair<std::size_t, std::string>;

std::vector<Candidate> candidatesFor(std::string_view wanted, const std::vector<std::string>& known) {
    std::vector<Candidate> candidates;
    for (const std::string& name : known) {
        if (differenceInLength(wanted, name) <= mostChangesIn(wanted)) {
            candidates.emplace_back(editDistance(wanted, name), name);
        }
    }
    std::stable_sort(candidates.begin(), candidates.end(),
                     [](const Candidate& a, const Candidate& b) { return a.first < b.first; });
    return candidates;
}

}  // namespace

std::size_t editDistance(std::string_view a, std::string_view b) {
    // Rows of the table of distances between the beginnings of both texts: the one being made, and the two before it.
    std::vector<std::size_t> row(b.size() + 1);
    std::iota(row.begin(), row.end(), std::size_t{0});
    std::vector<std::size_t> before;
    std::vector<std::size_t> twoBefore;
    for (std::size_t i = 1; i <= a.size(); ++i) {
        twoBefore = std::exchange(before, row);
        row[0] = i;
        for (std::size_t j = 1; j <= b.size(); ++j) {
            const std::size_t replaced = before[j - 1] + (isSame(a[i - 1], b[j - 1]) ? 0 : 1);
            row[j] = std::min({replaced, before[j] + 1, row[j - 1] + 1});
            if (i > 1 && j > 1 && isSame(a[i - 1], b[j - 2]) && isSame(a[i - 2], b[j - 1])) {
                row[j] = std::min(row[j], twoBefore[j - 2] + 1);
            }
        }
    }
    return row.back();
}

std::vector<std::string> nearestNames(std::string_view wanted, const std::vector<std::string>& known) {
    std::vector<std::string> names;
    const std::vector<Candidate> candidates = candidatesFor(wanted, known);
    for (const auto& [distance, name] : candidates) {
        const bool isNear = distance <= mostChangesIn(wanted) && distance <= candidates.front().first + 1;
        if (isNear && names.size() < kMostNames && std::find(names.begin(), names.end(), name) == names.end()) {
            names.push_back(name);
        }
    }
    return names;
}

namespace {

/// Returns the full names among the known ones whose last part is nearest to that one.
std::vector<std::string> nearestByLastPart(std::string_view part, const std::vector<std::string>& known) {
    std::vector<std::string> parts;
    for (const std::string& name : known) {
        parts.emplace_back(lastPartOf(name));
    }
    const std::vector<std::string> near = nearestNames(part, parts);
    const std::size_t least = near.empty() ? 0 : editDistance(near.front(), part);
    std::vector<std::string> names;
    for (std::size_t number = 0; number < known.size() && !near.empty() && names.size() < kMostNames; ++number) {
        if (parts[number].size() < known[number].size() && editDistance(parts[number], part) == least) {
            names.push_back(known[number]);
        }
    }
    return names;
}

}  // namespace

std::vector<std::string> nearestFullNames(std::string_view wanted, const std::vector<std::string>& known) {
    std::vector<std::string> near = nearestNames(wanted, known);
    const auto hasItsLastPart = [&](const std::string& name) {
        return editDistance(lastPartOf(name), lastPartOf(wanted)) == 0;
    };
    if (std::any_of(near.begin(), near.end(), hasItsLastPart)) {
        return near;
    }
    std::vector<std::string> byLastPart = nearestByLastPart(lastPartOf(wanted), known);
    const bool isPartKnown = std::any_of(byLastPart.begin(), byLastPart.end(), hasItsLastPart);
    return near.empty() || isPartKnown ? byLastPart : near;
}

std::string questionAbout(const std::vector<std::string>& names) {
    std::string question;
    for (std::size_t number = 0; number < names.size(); ++number) {
        const char* const separator = number == 0 ? "Did you mean " : number + 1 == names.size() ? " or " : ", ";
        question += separator + names[number];
    }
    return question.empty() ? question : question + '?';
}

}  // namespace zelutil::command
