#ifndef ZELUTIL_UTIL_CSV_H
#define ZELUTIL_UTIL_CSV_H

#include <zelutil/export.h>

#include <iosfwd>
#include <string>
#include <vector>

/// Helpers for reading delimited text files. White space, letters and digits are those of ASCII, whatever the locale.
/// Nothing is kept between calls.
namespace ZelU::UTL {

/// The character that separates the columns of a delimited text file, found in the line that names the columns: the
/// first line that begins with one of `keys`, ignoring case, followed by white space, if any, and then by a character
/// that is no letter and no digit. That character is the delimiter. `keys` are the names a first column may have, in
/// lower case (a key with an upper-case letter is never found), tried in their order. A line ends at its line feed.
///
/// Reads from where `in` stands, up to the line that gave the delimiter or to the end of the file, and then puts `in`
/// back at the beginning of the file, ready to be read. The longest line that was read is held in memory.
///
/// For the keys "name" and "id":
///
///     "Name;Value"              => ';'
///     "name , value"            => ','
///     "title\n\nID|Title"       => '|'    a line with another beginning is passed over
///     "Name\tValue"             => 'v'    a tab is white space, never the delimiter
///     "Names;Value"             => 's'    no delimiter: what was looked at last, in lower case
///     "Title;Name"              => '\0'   no line begins with a key
///
/// 0 when `in` is not open (it is then left as it is).
ZELUTIL_API char CsvFileDelim(std::ifstream& in, std::vector<std::string>& keys);

/// Takes the double quotes off a field and tells whether they were balanced. Blanks, tabs, line feeds, carriage returns
/// and double quotes around the field count as its surroundings: `leadingQuotes` becomes the number of quotes before
/// the field's text, `trailingQuotes` the number behind it. True when the two are equal.
///
/// As many characters are cut as there are quotes, whatever those characters are: the smaller count from each end, or,
/// where only one end has quotes, that end's count from that end. A field of surroundings alone becomes empty; both
/// counts are then the number of all its quotes, and the result is true.
///
///     "ab"      => ab       1, 1, true         ab     => ab       0, 0, true
///     ""ab"     => "ab      2, 1, false        ab"    => ab       0, 1, false
///     _"ab"_    => "ab"     1, 1, true         _ab    => _ab      0, 0, true      ("_" stands for a blank)
///     """       =>          3, 3, true
ZELUTIL_API bool RemoveLeadingTrailingCharsAndQuotesMixed(std::string& s, int& leadingQuotes, int& trailingQuotes);

}  // namespace ZelU::UTL

#endif
