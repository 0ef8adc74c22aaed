#ifndef ZELUTIL_TESTS_SUPPORT_ORDINARY_USER_H
#define ZELUTIL_TESTS_SUPPORT_ORDINARY_USER_H

#include <gtest/gtest.h>
#include <unistd.h>

namespace zelutil::test {

inline constexpr uid_t kNobody = 65534;

/// Runs as an ordinary user until the end of its scope. Only root can; elsewhere the process is one already.
class OrdinaryUser {
public:
    OrdinaryUser() : wasRoot_(::geteuid() == 0) {
        if (wasRoot_) {
            EXPECT_EQ(::seteuid(kNobody), 0);
        }
    }
    OrdinaryUser(const OrdinaryUser&) = delete;
    OrdinaryUser& operator=(const OrdinaryUser&) = delete;
    ~OrdinaryUser() {
        if (wasRoot_) {
            EXPECT_EQ(::seteuid(0), 0);
        }
    }

private:
    bool wasRoot_;
};

}  // namespace zelutil::test

#endif
