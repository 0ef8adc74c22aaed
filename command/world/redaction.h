#ifndef ZELUTIL_COMMAND_WORLD_REDACTION_H
#define ZELUTIL_COMMAND_WORLD_REDACTION_H

#include <filesystem>
#include <set>
#include <string>
#include <string_view>
#include <vector>

namespace zelutil::command::world {

/// Takes out of texts what tells who the user is. Each letter becomes "x" and each digit "0"; everything else stays, so
/// that a masked path has a blank where the path had one, and the columns of a masked file are those of the file.
///
///     "ann lee" => "xxx xxx"    "C:\parts\v2" => "x:\xxxxx\x0"
class Redaction {
public:
    /// Masks nothing.
    Redaction() = default;

    /// Masks these words in upper and lower case, and the names of the directories that lead to the user's home: each
    /// as a whole, and each word of one with blanks. Leaves what every machine has, as "home" and "Users", and the
    /// names that the library itself puts into paths.
    Redaction(const std::set<std::string>& words, const std::string& home);

    /// Returns a text with these words masked where they stand as such, between characters that are neither letters nor
    /// digits, and where Windows has shortened them:
    ///
    ///     "C:\Users\ANNABE~1" => "C:\Users\xxxxxx~1" for "Annabel Lee"
    std::string words(std::string_view text) const;
    std::filesystem::path path(const std::filesystem::path& path) const;

    /// Returns the text of a user's file with its values masked, but for numbers, truth values, and texts that the
    /// shipped defaults have as a value too, however they are spelled: those become what `shippedFile` makes of them.
    /// The names of sections, settings and members stay, and so do shortcuts.
    /// Where the text is no JSON, everything from the place of the error on is masked.
    std::string usersFile(std::string_view text, const std::set<std::string>& shippedValues) const;

    /// Returns the text of a shipped file with the words masked in its values that are paths. One that is no JSON, and
    /// so may be anything, is masked as a user's file.
    std::string shippedFile(std::string_view text) const;

    bool isOn() const { return isOn_; }

private:
    std::vector<bool> maskOf(std::string_view text) const;
    void maskShortNames(std::string_view text, std::vector<bool>& mask) const;
    bool isShortNameOfWord(std::string_view name) const;
    std::string shippedValue(std::string_view content) const;

    bool isOn_ = false;
    std::set<std::string> words_;
};

/// Returns all values of the settings in a text of shipped defaults.
std::set<std::string> shippedValuesIn(std::string_view defaults);

}  // namespace zelutil::command::world

#endif
