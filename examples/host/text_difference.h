#ifndef ZELUTIL_EXAMPLES_HOST_TEXT_DIFFERENCE_H
#define ZELUTIL_EXAMPLES_HOST_TEXT_DIFFERENCE_H

#include <string>

/// Prints the lines that only one of the texts has, "-" before those of `before` and "+" before those of `after`.
void printDifference(const std::string& before, const std::string& after);

#endif
