#ifndef ZELUTIL_COMMAND_WORLD_REDACTION_H
#define ZELUTIL_COMMAND_WORLD_REDACTION_H

#include <filesystem>
#include <set>
#include <string>
#include <string_view>

namespace zelutil::command::world {

/// Takes out of texts what tells who the user is. Each letter becomes "x" and each digit "0"; everything else stays, so
/// that a masked path has a blank where the path had one, and the columns of a masked file are those of the file.
///
///     "ann lee" => "xxx xxx"    "C:\parts\v2" => "x:\xxxxx\x0"
class Redaction {
public:
    /// Masks nothing.
    Redaction() = default;

    /// Masks these words, whatever their case is, and the directories of the home; but not what every machine has, as
    /// "home" and "Users", and no name that the library itself puts into paths.
    Redaction(const std::set<std::string>& words, const std::string& home);

    /// Returns a text with these words masked where they stand as such, between characters that are none of a word.
    std::string words(std::string_view text) const;
    std::filesystem::path path(const std::filesystem::path& path) const;

    /// Returns the text of a user's file with its values masked, but for numbers, truth values, and texts that the
    /// shipped defaults have as a value too. The names of sections, settings and members stay, and so do shortcuts.
    /// Where the text is no JSON, everything from the place of the error on is masked.
    std::string usersFile(std::string_view text, const std::set<std::string>& shippedValues) const;

    /// Returns the text of a shipped file with the words masked in its values that are paths.
    std::string shippedFile(std::string_view text) const;

    bool isOn() const { return isOn_; }

private:
    bool isOn_ = false;
    std::set<std::string> words_;
};

/// Returns all values of the settings in a text of shipped defaults.
std::set<std::string> shippedValuesIn(std::string_view defaults);

}  // namespace zelutil::command::world

#endif
