#ifndef ZELUTIL_TESTS_SUPPORT_ENVIRONMENT_H
#define ZELUTIL_TESTS_SUPPORT_ENVIRONMENT_H

#include <string>
#include <vector>

namespace zelutil::test {

/// Sets a variable of this process; an empty value is defined too.
void setVariable(const char* name, const std::string& value);

void unsetVariable(const char* name);

/// Every variable the library looks at but "PATH", TMP and TEMP.
const std::vector<const char*>& productVariables();

/// Undefines them.
void clearProductVariables();

}  // namespace zelutil::test

#endif
