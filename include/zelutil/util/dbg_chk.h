#ifndef ZELUTIL_UTIL_DBG_CHK_H
#define ZELUTIL_UTIL_DBG_CHK_H

#include <zelutil/export.h>

#include <atomic>

namespace ZelU {

/// A switch for diagnostics, on when an environment variable is defined. The environment is read once, at the first
/// test, so that testing is cheap in inner code.
///
///     static ZelU::DbgChk trace("MY_HOST_TRACE");
///     if (trace) { ... }
///
/// Only presence counts:
///
///     undefined => off     "1" => on     "0", "no", "false" => on     defined but empty => on
///
/// A copy takes over whether the switch is on, where that is known already. Tests of one switch may run on several
/// threads at once; `overrideValue` and assignment must not run beside them.
class ZELUTIL_API DbgChk {
public:
    /// Keeps the pointer, not the text: the text has to outlive the switch, as a literal does. Null is a variable that
    /// is never defined. The environment is not read.
    DbgChk(const char* name);
    /// Takes over the name, and whether the switch is on where that is known already.
    DbgChk(const DbgChk& other);
    /// Takes over the name, and whether the switch is on where that is known already.
    DbgChk& operator=(const DbgChk& other);

    /// Whether the variable was defined when this switch was first tested, or else the value it was overridden with.
    operator bool() const { return evaluated_.load() ? value_.load() : evaluate(); }

    /// From now on the switch is `value`, whatever the environment says.
    void overrideValue(bool value);

private:
    bool evaluate() const;

    const char* name_;
    // Not a lock: threads that meet at a fresh switch all read the environment and keep the same answer.
    mutable std::atomic<bool> evaluated_;
    mutable std::atomic<bool> value_;
};

}  // namespace ZelU

#endif
