#ifndef ZELUTIL_PREFS_USER_FILE_FILLING_H
#define ZELUTIL_PREFS_USER_FILE_FILLING_H

// The text of the user's file made of the form that the defaults give it. It is here for the rows of later saves of
// bench/save_bench.cpp (10000 settings): a save changes a few values, and the rest of the text is copied in long pieces
// instead of being written from the defaults, which would have to be parsed again.

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "json/view.h"
#include "prefs/user_file_text.h"

namespace zelutil::prefs {

/// Fills the gaps of a form. The text is the one that `userFileText` returns for the same entries.
class UserFileFilling {
public:
    /// The form has to stay where it is.
    explicit UserFileFilling(const UserFileForm& form);

    /// Begins the list of the next section of a walk. The one before must have been ended.
    void beginList();
    /// Adds an entry to it.
    void add(std::string_view name, std::string_view value);
    void endList();

    /// Puts the value of a sub-manager where the next section would have its list.
    void put(json::View subManagerValue);

    /// Returns the text once all sections are filled; nothing when it could not be read back.
    std::optional<std::string> take() const;

private:
    void layOutLines(unsigned depth);
    std::string_view fillingOf(std::size_t section) const;

    const UserFileForm& form_;
    bool whole_;
    /// The fillings one after another, in the order of the walk, and where each of them ends.
    std::string fillings_;
    std::vector<std::size_t> ends_;
    bool hasEntries_ = false;
    /// The depth of the list for which these hold what stands before an entry, after it and after the last one.
    unsigned depth_ = 0;
    std::string beforeEntry_;
    std::string afterEntry_;
    std::string afterEntries_;
};

}  // namespace zelutil::prefs

#endif
