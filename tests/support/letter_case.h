#ifndef ZELUTIL_TESTS_SUPPORT_LETTER_CASE_H
#define ZELUTIL_TESTS_SUPPORT_LETTER_CASE_H

#include <string>

namespace zelutil::test {

/// The text with 'A' to 'Z' in lower case; every other byte as it stands.
std::string lowered(std::string text);

/// The text with 'a' to 'z' in capitals; every other byte as it stands.
std::string raised(std::string text);

}  // namespace zelutil::test

#endif
