#ifndef ZELUTIL_COMMAND_NEAREST_NAMES_H
#define ZELUTIL_COMMAND_NEAREST_NAMES_H

#include <string>
#include <string_view>
#include <vector>

namespace zelutil::command {

/// Returns the number of single-character changes that make one text of the other: a character added, removed,
/// replaced, or swapped with the next one; of a larger number than `most` one more than that. Letters of ASCII count as
/// the same in both cases.
std::size_t editDistance(std::string_view a, std::string_view b, std::size_t most = std::string_view::npos - 1);

/// Returns, nearest first, those of the known names that somebody may have meant who wrote `wanted`: at most three,
/// each as far from it as the nearest is, or one change more, and none that differs in more than a third of it. Of
/// names that are equally near the order is kept, and one that is known twice is returned once.
std::vector<std::string> nearestNames(std::string_view wanted, const std::vector<std::string>& known);

/// Does the same for full names, which have sections before a last "::". Where none of the nearest ends as `wanted`
/// does, those that do are returned, as "display::grids::grid" for "display::grid"; where none is near, those that
/// nearly do.
std::vector<std::string> nearestFullNames(std::string_view wanted, const std::vector<std::string>& known);

/// Looking for a near name takes milliseconds among ten thousands, so that only so many findings of a call have one.
class HintBudget {
public:
    static constexpr int kMostHints = 100;

    /// Returns whether one more may be looked for.
    bool take() { return taken_++ < kMostHints; }

private:
    int taken_ = 0;
};

/// Returns "Did you mean a, b or c?", or the empty text where nothing is near.
std::string questionAbout(const std::vector<std::string>& names);

}  // namespace zelutil::command

#endif
