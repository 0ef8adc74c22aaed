#ifndef ZELUTIL_TESTS_SUPPORT_LITERAL_NORMALISE_H
#define ZELUTIL_TESTS_SUPPORT_LITERAL_NORMALISE_H

#include <cstddef>
#include <string>

namespace zelutil::test {

struct LiteralPath {
    std::string text;
    bool hasSpace;
    bool absolute;
};

/// The normalisation of path texts told as slowly and plainly as possible: one position at a time on a text in which
/// characters are erased in place. What the real one does must not differ from it on any text.
void literalNormalise(LiteralPath& path, std::size_t start, const std::string& currentDirectory);

}  // namespace zelutil::test

#endif
