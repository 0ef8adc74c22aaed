#include "support/environment.h"

#include <cstdlib>

#ifdef _WIN32
#include <windows.h>
#endif

namespace zelutil::test {

#ifdef _WIN32
void setVariable(const char* name, const std::string& value) {
    // The C runtime's own table is kept in step where it can: it knows no empty value.
    _putenv_s(name, value.c_str());
    SetEnvironmentVariableA(name, value.c_str());
}

void unsetVariable(const char* name) {
    _putenv_s(name, "");
    SetEnvironmentVariableA(name, nullptr);
}
#else
void setVariable(const char* name, const std::string& value) { setenv(name, value.c_str(), 1); }

void unsetVariable(const char* name) { unsetenv(name); }
#endif

const std::vector<const char*>& productVariables() {
    static const std::vector<const char*> names = {"QTX_ZELUTIL_DEBUG", "QTXROOT",         "QTX_ROOT",
                                                   "QTXINSTDIR",        "QTX_SITE",        "HOMEDRIVE",
                                                   "HOMEPATH",          "tessel_settings", "regression_testing"};
    return names;
}

void clearProductVariables() {
    for (const char* const name : productVariables()) {
        unsetVariable(name);
    }
}

}  // namespace zelutil::test
