#ifndef ZELUTIL_PREFS_JOINED_NAMES_H
#define ZELUTIL_PREFS_JOINED_NAMES_H

#include <cstddef>
#include <string>
#include <string_view>

#include "prefs/setting_name.h"

namespace zelutil::prefs {

/// Names of nested sections joined into one text that grows and shrinks as a walk goes down and up, so that deep
/// nesting copies nothing. The separator follows only what is not empty.
class JoinedNames {
public:
    const std::string& text() const { return text_; }

    /// The names with one more, until the end of the scope.
    class Level {
    public:
        Level(JoinedNames& names, std::string_view name) : names_(names), outerLength_(names.text_.size()) {
            if (!names.text_.empty()) {
                names.text_ += kNameSeparator;
            }
            names.text_ += name;
        }
        Level(const Level&) = delete;
        Level& operator=(const Level&) = delete;
        ~Level() { names_.text_.resize(outerLength_); }

        /// Returns the names as they were before, as long as nothing else is joined.
        std::string_view outer() const { return std::string_view(names_.text_).substr(0, outerLength_); }

    private:
        JoinedNames& names_;
        std::size_t outerLength_;
    };

private:
    std::string text_;
};

}  // namespace zelutil::prefs

#endif
