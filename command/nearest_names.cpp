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

/// An empty text is near to nothing: it would become any name of one letter.
std::size_t mostChangesIn(std::string_view wanted) {
    return wanted.empty() ? 0 : std::max(kFewestChanges, wanted.size() / 3);
}

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
    std::size_t most = mostChangesIn(wanted);
    for (const std::string& name : known) {
        const std::size_t distance = editDistance(wanted, name, most);
        if (distance <= most) {
            candidates.emplace_back(distance, name);
            most = std::min(most, distance + 1);
        }
    }
    std::stable_sort(candidates.begin(), candidates.end(),
                     [](const Candidate& a, const Candidate& b) { return a.first < b.first; });
    return candidates;
}

/// Rows of the table of distances between the beginnings of two texts: the one being made, and the two before it. Only
/// the cells of which the beginnings differ in length by no more than `most` are made: all others are larger.
class DistanceTable {
public:
    DistanceTable(std::string_view a, std::string_view b, std::size_t most)
        : a_(a), b_(b), most_(most), row_(b.size() + 1), before_(row_), twoBefore_(row_) {
        std::iota(before_.begin(), before_.end(), std::size_t{0});
    }

    std::size_t distance() {
        std::size_t leastBefore = 0;
        for (std::size_t i = 1; i <= a_.size(); ++i) {
            const std::size_t least = makeRow(i);
            // Each cell of the rows behind comes from one of the last two.
            if (least > most_ && leastBefore > most_) {
                return most_ + 1;
            }
            leastBefore = least;
            std::swap(twoBefore_, before_);
            std::swap(before_, row_);
        }
        return std::min(before_.back(), most_ + 1);
    }

private:
    /// Returns the least of the row.
    std::size_t makeRow(std::size_t i) {
        const std::size_t first = i > most_ ? i - most_ : 1;
        const std::size_t last = std::min(b_.size(), i + most_);
        row_[first - 1] = first == 1 ? i : most_ + 1;
        std::size_t least = row_[first - 1];
        for (std::size_t j = first; j <= last; ++j) {
            row_[j] = cell(i, j);
            least = std::min(least, row_[j]);
        }
        if (last < b_.size()) {
            row_[last + 1] = most_ + 1;
        }
        return least;
    }

    std::size_t cell(std::size_t i, std::size_t j) const {
        const std::size_t replaced = before_[j - 1] + (isSame(a_[i - 1], b_[j - 1]) ? 0 : 1);
        const std::size_t least = std::min({replaced, before_[j] + 1, row_[j - 1] + 1});
        const bool isSwapped = i > 1 && j > 1 && isSame(a_[i - 1], b_[j - 2]) && isSame(a_[i - 2], b_[j - 1]);
        return isSwapped ? std::min(least, twoBefore_[j - 2] + 1) : least;
    }

    std::string_view a_;
    std::string_view b_;
    std::size_t most_;
    std::vector<std::size_t> row_;
    std::vector<std::size_t> before_;
    std::vector<std::size_t> twoBefore_;
};

}  // namespace

std::size_t editDistance(std::string_view a, std::string_view b, std::size_t most) {
    most = std::min(most, std::max(a.size(), b.size()));
    return differenceInLength(a, b) > most ? most + 1 : DistanceTable(a, b, most).distance();
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
        if (parts[number].size() < known[number].size() && editDistance(parts[number], part, least) == least) {
            names.push_back(known[number]);
        }
    }
    return names;
}

}  // namespace

std::vector<std::string> nearestFullNames(std::string_view wanted, const std::vector<std::string>& known) {
    std::vector<std::string> near = nearestNames(wanted, known);
    const auto hasItsLastPart = [&](const std::string& name) {
        return editDistance(lastPartOf(name), lastPartOf(wanted), 0) == 0;
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
