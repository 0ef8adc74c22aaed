#ifndef ZELUTIL_TESTS_SUPPORT_SYMBOLIC_LINK_H
#define ZELUTIL_TESTS_SUPPORT_SYMBOLIC_LINK_H

#include <filesystem>

namespace zelutil::test {

/// Makes `link` lead to the file `target`, which need not be there. False where the system makes no such links.
bool makeFileLink(const std::filesystem::path& target, const std::filesystem::path& link);

}  // namespace zelutil::test

#endif
