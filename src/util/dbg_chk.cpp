#include <zelutil/util/dbg_chk.h>

#include "platform/environment.h"

namespace ZelU {

DbgChk::DbgChk(const char* name) : name_(name), evaluated_(false), value_(false) {}

DbgChk::DbgChk(const DbgChk& other)
    : name_(other.name_), evaluated_(other.evaluated_.load()), value_(other.value_.load()) {}

DbgChk& DbgChk::operator=(const DbgChk& other) {
    name_ = other.name_;
    evaluated_ = other.evaluated_.load();
    value_ = other.value_.load();
    return *this;
}

void DbgChk::overrideValue(bool value) {
    value_ = value;
    evaluated_ = true;
}

/// Kept deliberately: any value turns the switch on, "0" too, and a later change of the environment is not seen. That
/// is what makes a test cheap.
bool DbgChk::evaluate() const {
    const bool defined = zelutil::platform::environment(name_).has_value();
    // The answer first: who sees the flag set must see the answer too.
    value_ = defined;
    evaluated_ = true;
    return defined;
}

}  // namespace ZelU
