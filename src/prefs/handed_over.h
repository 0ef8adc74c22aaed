#ifndef ZELUTIL_PREFS_HANDED_OVER_H
#define ZELUTIL_PREFS_HANDED_OVER_H

#include <optional>
#include <string>
#include <utility>

#include "prefs/section.h"

namespace zelutil::prefs {

/// Remembers what hosts handed to `UserPreferenceManager::updateUserPrefSettings` for sub-managers, so that a save of
/// `zelutil::host` neither loses it nor takes it for another process's work.
class HandedOver {
public:
    /// Holds what a file got for the actions.
    struct Actions {
        std::string path;
        /// Empty where the file got nothing.
        std::string text;
        /// Whether a host handed the text over; else it is that of the start.
        bool isHosts = false;
    };

    /// `actions` says what a file holds since a save that was handed `texts`. It has none of the texts that were handed
    /// to earlier ones.
    void written(Actions actions, SubManagerTexts texts) noexcept {
        actions_ = std::move(actions);
        unwritten_.merge(written_);
        for (const auto& [type, text] : texts) {
            unwritten_.erase(type);
        }
        written_ = std::move(texts);
    }

    /// A save that was handed these texts wrote no file.
    void notWritten(SubManagerTexts texts) noexcept {
        texts.merge(unwritten_);
        unwritten_ = std::move(texts);
    }

    /// The file has by now all that was handed over.
    void settle() noexcept {
        unwritten_.merge(written_);
        written_ = std::exchange(unwritten_, {});
    }

    /// Returns the text that the file lacks; null for none.
    const std::string* unwrittenText(SubManagerType type) const { return find(unwritten_, type); }
    /// Returns the text that the file got; null for none.
    const std::string* writtenText(SubManagerType type) const { return find(written_, type); }

    /// Returns what a file got for the actions since this was last called.
    std::optional<Actions> takeActions() noexcept { return std::exchange(actions_, std::nullopt); }

private:
    static const std::string* find(const SubManagerTexts& texts, SubManagerType type) {
        const auto found = texts.find(type);
        return found == texts.end() ? nullptr : &found->second;
    }

    SubManagerTexts written_;
    SubManagerTexts unwritten_;
    std::optional<Actions> actions_;
};

}  // namespace zelutil::prefs

#endif
