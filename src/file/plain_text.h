#ifndef ZELUTIL_FILE_PLAIN_TEXT_H
#define ZELUTIL_FILE_PLAIN_TEXT_H

#include <cstddef>
#include <string>

/// Path texts in which only separators need a change, as in nearly all of them.
///
/// Every text that becomes a `Path` is looked through, and every candidate of a search: "normalise plain paths" of
/// bench/path_bench.cpp. Sixteen characters are looked at together; character by character it takes three times as
/// long.
namespace zelutil::file {

/// Tells what a look at the characters of a text from some place on has found.
struct PlainText {
    /// No character is invalid or goes away, no separator follows one, and no "." does: nothing is to be done but to
    /// convert separators.
    bool plain = false;
    /// There is a "/". Known of a plain text only, as is the next.
    bool slash = false;
    /// There is a blank.
    bool blank = false;
};

/// Looks at the characters from `start` on, and at the one before them for what may follow it.
PlainText lookAtText(const std::string& text, std::size_t start);

/// Converts the separators from `start` on.
void convertSeparators(std::string& text, std::size_t start);

}  // namespace zelutil::file

#endif
