#ifndef ZELUTIL_TESTS_SUPPORT_CSV_TWIN_H
#define ZELUTIL_TESTS_SUPPORT_CSV_TWIN_H

#include <string>
#include <vector>

/// The CSV helpers once more, slow and step by step, to compare the real ones with.
namespace zelutil::test {

/// Returns the delimiter that `CsvFileDelim` must return for a file with these bytes.
char csvDelimiterTwin(const std::string& file, const std::vector<std::string>& keys);

struct UnquotedTwin {
    std::string text;
    int leadingQuotes;
    int trailingQuotes;
    bool balanced;
};

/// Returns what `RemoveLeadingTrailingCharsAndQuotesMixed` makes of `text`.
UnquotedTwin unquoteTwin(const std::string& text);

}  // namespace zelutil::test

#endif
