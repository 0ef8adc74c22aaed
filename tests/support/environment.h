#ifndef ZELUTIL_TESTS_SUPPORT_ENVIRONMENT_H
#define ZELUTIL_TESTS_SUPPORT_ENVIRONMENT_H

#include <string>

namespace zelutil::test {

/// Sets a variable of this process; an empty value is defined too.
void setVariable(const char* name, const std::string& value);

void unsetVariable(const char* name);

/// Undefines every variable the library looks at but "PATH", TMP and TEMP.
void clearProductVariables();

}  // namespace zelutil::test

#endif
